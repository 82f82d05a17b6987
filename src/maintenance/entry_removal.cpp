#include "maintenance/entry_removal.h"

#include <fmt/format.h>

#include "store/errors.h"

namespace velmora::maintenance {
namespace {

constexpr std::string_view LogOrigin = "Velmora Error";

void LogRecord(run::Run& run, std::string_view directory, const Error& error) {
  const bool isMissing = error.Number == store::store_error::NotFound;
  run.LogError(isMissing ? fmt::format("Record für {} in archive.dir nicht gefunden", directory)
                         : fmt::format("{}: {}", directory, error.Text),
               isMissing ? 0 : error.Number, LogOrigin, run::Severity::Error);
}

}  // namespace

Result<std::shared_ptr<store::DvArchive>> FetchArchive(run::Run& run, store::DvAccount& account,
                                                       std::string_view id) {
  auto archive = account.GetArchive(id);
  if (archive) return archive;
  const std::string text = fmt::format("{}{}", entry_text::NoAccess, id);
  run.frontEnd().prompts.Message(entry_text::ErrorTitle, text, run::Icon::Stop);
  run.LogError(text, archive.error());
  return archive;
}

bool DeleteArchiveEntry(run::Run& run, store::DvAccount& account, store::DvArchive& parent,
                        const ChosenEntry& entry) {
  run::Prompts& prompts = run.frontEnd().prompts;
  if (entry.IsShortCut) {
    prompts.Message("Hinweis", "Archivverknüpfungen werden von dieser Funktion nicht berücksichtigt.",
                    run::Icon::Information);
    return false;
  }
  if (!FetchArchive(run, account, entry.ID)) return false;
  const std::string question = fmt::format(
      "Archiveintrag \"{}\" wirklich löschen?\r\n(Der Inhalt des Archivverzeichnisses wird nicht verändert)",
      entry.DisplayName);
  if (prompts.Question("Eintrag löschen", question, run::Buttons::YesNo, run::Answer::No) != run::Answer::Yes)
    return false;
  // A failure is in the log; the list may have changed all the same.
  (void)store::RemoveArchiveEntry(run, {parent.ID(), entry.ID, entry.DisplayName});
  return true;
}

Status RemoveArchiveRecord(run::Run& run, std::string_view parentId, const store::NumberedRecord& record) {
  const Status removed = store::DeleteArchiveRecord(run.fileSystem(), parentId, record);
  if (!removed) LogRecord(run, record.Record.Path().value_or(""), removed.error());
  return removed;
}

int RemoveArchiveRecords(run::Run& run, std::string_view parentId,
                         std::span<const store::NumberedRecord> records) {
  if (records.empty()) return 0;
  const auto removed = store::DeleteArchiveRecords(run.fileSystem(), parentId, records);
  if (!removed) LogRecord(run, parentId, removed.error());
  return removed.value_or(0);
}

int RemoveDuplicates(run::Run& run, store::DvAccount& account, store::DvArchive& archive) {
  const auto parent = store::FindParentArchive(account, archive);
  const auto records =
      parent ? store::FindChildRecords(run.fileSystem(), **parent, archive.ID()) : Fail(parent.error());
  if (!records) {
    LogRecord(run, archive.ID(), records.error());
    return 0;
  }
  if (records->size() < 2) return 0;
  return RemoveArchiveRecords(run, (*parent)->ID(), std::span(*records).subspan(1));
}

}  // namespace velmora::maintenance
