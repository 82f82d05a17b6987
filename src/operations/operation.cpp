#include "operations/operation.h"

#include <fmt/core.h>

#include "store/errors.h"

namespace velmora::operations {
namespace {

bool IsVisible(store::DvItem& entry, const EntryScope& scope) {
  if (scope.InhibitItems) return true;
  const auto flags = entry.Fields().Get(store::tag::Flags);
  return store::PassesInhibition(static_cast<std::uint32_t>(flags ? store::FieldNumber(*flags) : 0),
                                 scope.InhibitItems);
}

}  // namespace

void LogStoreFailure(run::Run& run, std::string_view path, std::string_view verb, const Error& error) {
  run.LogError(path, error.Number, fmt::format("DvISE-Error {}{}", verb, error.Text), run::Severity::Error);
}

void TellDeletionErrors(run::Run& run) {
  if (run.counters.Errors == 0 || run.BatchMode) return;
  run.frontEnd().prompts.Message(
      "Beendet", fmt::format("mit {} Fehler(n) (siehe Fehlerprotokoll) gelöscht", run.counters.Errors),
      run::Icon::Exclamation);
}

void CommitStore(const Operation& operation) {
  const Status committed = operation.session.Account->Commit();
  if (!committed) LogStoreFailure(operation.run, operation.session.ServerName, "", committed.error());
}

void VisitEntries(const Operation& operation, store::DvArchive& archive, Order order, std::string_view verb,
                  const std::function<void(store::DvItem& entry)>& visit) {
  run::Run& run = operation.run;
  const auto entries = archive.GetEntries(operation.Scope.ItemFilter);
  if (!entries) return LogStoreFailure(run, archive.FullPath(), verb, entries.error());
  const int count = (*entries)->Count();
  for (int done = 0; done < count; ++done) {
    if (run.CheckCancel()) return;
    run.frontEnd().progress.SetBar(done, count);
    const int index = order == Order::Forward ? done : count - 1 - done;
    const auto entry = (*entries)->Item(index);
    if (entry && IsVisible(**entry, operation.Scope)) visit(**entry);
    if (!entry && entry.error().Number != store::store_error::NotFound)
      LogStoreFailure(run, archive.FullPath(), verb, entry.error());
  }
  run.frontEnd().progress.SetBar(count, count);
}

std::string TitleOf(store::DvItem& entry) {
  const auto subject = entry.Fields().Get(store::tag::Subject);
  return subject ? store::FieldText(*subject) : std::string();
}

}  // namespace velmora::operations
