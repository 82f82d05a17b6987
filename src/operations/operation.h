// What every operation inside the store works with, and how its failures are told.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "run/run.h"
#include "store/filter.h"
#include "store/session.h"

namespace velmora::operations {

// Which entries an operation touches: what a user does not see is not touched.
struct EntryScope {
  std::uint32_t ItemFilter = store::filter_preset::None;  // the mask handed to the store
  bool InhibitItems = true;                               // entries hidden by a user are seen too
};

// The caller owns each part.
struct Operation {
  run::Run& run;
  store::Session& session;
  EntryScope Scope;
  bool ClearErrorLog = false;  // at the start of a run
};

// Verbs of LogStoreFailure.
inline constexpr std::string_view CopyVerb = "Kopieren ", DeleteVerb = "Löschen ";

// A failure of the store: the path, the number, "DvISE-Error " + verb + the error's text.
void LogStoreFailure(run::Run& run, std::string_view path, std::string_view verb, const Error& error);

// The box that ends a deletion in which something failed; none in an unattended run.
void TellDeletionErrors(run::Run& run);

// Commits what is pending in the store; a failure is logged.
void CommitStore(const Operation& operation);

enum class Order { Forward, Backward };

// Hands over each entry of the archive that the scope lets through, until a cancel. The bar of the progress
// follows. An entry that has vanished meanwhile is passed over; other failures are logged with `verb`.
void VisitEntries(const Operation& operation, store::DvArchive& archive, Order order, std::string_view verb,
                  const std::function<void(store::DvItem& entry)>& visit);

// What the progress shows of an entry: its subject.
std::string TitleOf(store::DvItem& entry);

}  // namespace velmora::operations
