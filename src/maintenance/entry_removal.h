// Taking entries out of archive.dir: single ones, and those that stand for one archive several times. What
// changes is the tree, never an archive's content.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "base/result.h"
#include "run/run.h"
#include "store/account.h"
#include "store/archive_entries.h"

namespace velmora::maintenance {

// An entry that a user has chosen in the list of `Parent`.
struct ChosenEntry {
  std::string ID;  // of a short-cut its target's
  std::string DisplayName;
  bool IsShortCut = false;
};

namespace entry_text {
inline constexpr std::string_view NoAccess = "Fehler beim Zugriff auf den Archiveintrag ";  // + ID
inline constexpr std::string_view ErrorTitle = "Fehler";
}  // namespace entry_text

// The command "Archiveintrag löschen": asks, and takes the entry out of the parent's list. True: the list is
// to be shown anew. Short-cuts are refused, and an archive that cannot be fetched is told and logged.
bool DeleteArchiveEntry(run::Run& run, store::DvAccount& account, store::DvArchive& parent,
                        const ChosenEntry& entry);

// The archive of an entry, fetched by its ID; on a failure the user is told and the log, too.
Result<std::shared_ptr<store::DvArchive>> FetchArchive(run::Run& run, store::DvAccount& account,
                                                       std::string_view id);

// Takes one record out of a parent's list; a failure is logged.
Status RemoveArchiveRecord(run::Run& run, std::string_view parentId, const store::NumberedRecord& record);
// Several in one rewrite of the list, so that archivedir.bak holds it as it was before. Gives how many went;
// failures are logged.
int RemoveArchiveRecords(run::Run& run, std::string_view parentId,
                         std::span<const store::NumberedRecord> records);

// Of the records that stand for an archive in its parent's list, only the first stays. Gives how many went.
int RemoveDuplicates(run::Run& run, store::DvAccount& account, store::DvArchive& archive);

}  // namespace velmora::maintenance
