#include "store/archive_entries.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "base/paths.h"
#include "base/text.h"
#include "store/archive_files.h"
#include "store/archive_key.h"
#include "store/errors.h"

namespace velmora::store {
namespace {

constexpr std::string_view LogOrigin = "Velmora Error";

// Logs a failure under the number it has, and hands it back.
Status Logged(run::Run& run, std::string_view text, const Error& error) {
  run.LogError(fmt::format("{}: {}", text, error.Text), error.Number, LogOrigin, run::Severity::Error);
  return Fail(error);
}

Error NoEntry(std::string_view directory) {
  return {store_error::NotFound, fmt::format("Record für {} in archive.dir nicht gefunden", directory)};
}

// Of a record that is missing, the text tells all, and there is no number.
Status LoggedMissing(run::Run& run, std::string_view directory) {
  const Error error = NoEntry(directory);
  run.LogError(error.Text, 0, LogOrigin, run::Severity::Error);
  return Fail(error);
}

Status LoggedSearch(run::Run& run, std::string_view directory, const Error& error) {
  if (error.Number == store_error::NotFound) return LoggedMissing(run, directory);
  return Logged(run, directory, error);
}

// The ways to look for an entry, the narrowest first. An archive whose record has an empty name is shown
// under its directory's.
std::vector<RecordSearch> SearchesFor(const EntryPlace& entry) {
  std::vector<RecordSearch> searches;
  for (const PathMatch match : {PathMatch::Text, PathMatch::SameArchive}) {
    if (entry.Name.empty()) {
      searches.push_back({entry.Directory, std::nullopt, 0, match});
      continue;
    }
    searches.push_back({entry.Directory, entry.Name, 0, match});
    if (entry.Name == FileNameOf(StripBackslash(NormalizePath(entry.Directory))))
      searches.push_back({entry.Directory, std::string(), 0, match});
  }
  return searches;
}

std::optional<NumberedRecord> FindEntryIn(std::string_view content, const EntryPlace& entry) {
  for (const RecordSearch& search : SearchesFor(entry))
    if (auto found = FindRecordIn(content, search)) return found;
  return std::nullopt;
}

void Erase(std::string& records, int number) {
  records.erase((static_cast<std::size_t>(number) - 1) * DirRecord::Size, DirRecord::Size);
}

void Overwrite(std::string& records, int number, const DirRecord& record) {
  records.replace((static_cast<std::size_t>(number) - 1) * DirRecord::Size, DirRecord::Size, record.Bytes());
}

// Takes the entry's record out of its list; found and taken under one lock.
Status TakeOut(platform::FileSystem& fileSystem, const EntryPlace& entry) {
  return ChangeArchiveList(fileSystem, entry.ParentDirectory, [&](std::string& records) -> Status {
    const auto found = FindEntryIn(records, entry);
    if (!found) return Fail(NoEntry(entry.Directory));
    Erase(records, found->Number);
    return {};
  });
}

Status RemoveEntry(run::Run& run, const EntryPlace& entry, std::string_view what) {
  const Status removed = TakeOut(run.fileSystem(), entry);
  if (removed) return {};
  if (removed.error().Number == store_error::NotFound) return LoggedMissing(run, entry.Directory);
  return Logged(run, fmt::format("Fehler beim Löschen {} \"{}\"", what, entry.Name), removed.error());
}

// --- Moving. ---

// A temporary sub-archive, removed with its record unless the entry's record has taken that over.
class TemporaryEntry {
 public:
  TemporaryEntry(run::Run& run, std::shared_ptr<DvArchive> archive)
      : run_(run), archive_(std::move(archive)), directory_(archive_->ID()) {}
  TemporaryEntry(const TemporaryEntry&) = delete;
  TemporaryEntry& operator=(const TemporaryEntry&) = delete;
  ~TemporaryEntry() {
    const Status removed =
        isReplaced_ ? run_.fileSystem().DeleteFolder(NormalizePath(directory_), false) : archive_->Delete();
    // The result is the move's; the log names what was left.
    if (!removed) (void)Logged(run_, directory_, removed.error());
  }

  const std::string& Directory() const { return directory_; }
  void SetReplaced() { isReplaced_ = true; }

 private:
  run::Run& run_;
  std::shared_ptr<DvArchive> archive_;
  std::string directory_;  // as it was made: what is deleted is this and nothing else
  bool isReplaced_ = false;
};

Result<DirRecord> NewRecord(const EntryMove& move, const DirRecord& entry, const DirRecord& temporary) {
  const DirRecord& fixedParts = move.Parts == FixedParts::OfEntry ? entry : temporary;
  if (!move.Name.empty()) return RebuildRecord(entry, fixedParts, move.Name);
  DirRecord record = entry;
  record.SetHead(fixedParts.Head());
  record.SetTail(fixedParts.Tail());
  return record;
}

// Writes the entry's record over the temporary one. The old one goes in the same rewrite when both stand in
// one list.
Result<DirRecord> Take(platform::FileSystem& fileSystem, std::string_view targetDirectory,
                       const std::string& temporaryDirectory, const EntryMove& move,
                       const std::optional<DirRecord>& found) {
  std::optional<DirRecord> written;
  const Status changed = ChangeArchiveList(fileSystem, targetDirectory, [&](std::string& records) -> Status {
    const EntryPlace temporaryPlace{std::string(targetDirectory), temporaryDirectory, ""};
    const auto temporary = FindEntryIn(records, temporaryPlace);
    if (!temporary) return Fail(NoEntry(temporaryPlace.Directory));
    const auto here = found ? std::nullopt : FindEntryIn(records, move.Entry);
    if (!found && !here) return Fail(NoEntry(move.Entry.Directory));
    auto record = NewRecord(move, found ? *found : here->Record, temporary->Record);
    if (!record) return Fail(record.error());
    Overwrite(records, temporary->Number, *record);
    if (here && move.Form == EntryForm::Move) Erase(records, here->Number);
    written = *record;
    return {};
  });
  if (!changed) return Fail(changed.error());
  return *written;
}

// An archive may lie below another in the tree and elsewhere on the disk, so that both ways are looked at.
bool LiesInItself(const DvArchive& target, const EntryMove& move) {
  if (move.Form != EntryForm::Move || move.IsShortCut) return false;
  if (IsSameOrBelow(NormalizePath(target.ID()), StripBackslash(NormalizePath(move.Entry.Directory))))
    return true;
  const auto asFilePath = [](std::string_view path) { return ReplaceAll(path, "/", "\\"); };
  return !move.FullPath.empty() && IsSameOrBelow(asFilePath(target.FullPath()), asFilePath(move.FullPath));
}

// --- Entries that stand for one archive. ---

// Whether the list of `parent` has an entry of this ID that is no short-cut.
bool Lists(DvArchive& parent, const std::string& key) {
  const auto subArchives = parent.SubArchives();
  if (!subArchives) return false;
  for (const auto& sub : *subArchives)
    if (!sub->IsShortCut() && ArchiveKey(sub->ID()) == key) return true;
  return false;
}

// Whether a list has this very record. The store takes the second entry of an archive for a short-cut, so
// that only the bytes tell.
bool Holds(platform::FileSystem& fileSystem, std::string_view directory, const DirRecord& record) {
  const auto found = FindAllRecords(fileSystem, directory, {.Path = record.Path().value_or("")});
  return found && std::ranges::find(*found, record, &NumberedRecord::Record) != found->end();
}

// What is left to do of a move whose new entry stands: the old one goes, and the archive's own record
// follows.
Status FinishMove(run::Run& run, DvArchive& target, const EntryMove& move, const NumberedRecord& entry) {
  platform::FileSystem& fileSystem = run.fileSystem();
  const Status gone = DeleteArchiveRecord(fileSystem, move.Entry.ParentDirectory, entry);
  if (!gone) return LoggedSearch(run, move.Entry.Directory, gone.error());
  const Status own = WriteOwnRecord(fileSystem, entry.Record);
  if (!own) return Logged(run, move.Entry.Directory, own.error());
  ++run.counters.Archives;
  if (const Status updated = target.Update(); !updated) return Logged(run, target.ID(), updated.error());
  return {};
}

}  // namespace

Result<NumberedRecord> FindEntryRecord(platform::FileSystem& fileSystem, const EntryPlace& entry) {
  const std::string place = NormalizePath(entry.ParentDirectory);
  const auto lock = ArchiveLock::Acquire(fileSystem, place, ArchiveLock::Mode::Shared);
  if (!lock) return Fail(lock.error());
  const auto content = ReadArchiveList(fileSystem, place);
  if (!content) return Fail(content.error());
  auto found = FindEntryIn(*content, entry);
  if (!found) return Fail(NoEntry(entry.Directory));
  return std::move(*found);
}

Status RemoveLinkEntry(run::Run& run, const EntryPlace& link) {
  return RemoveEntry(run, link, "der Verknüpfung");
}

Status RemoveArchiveEntry(run::Run& run, const EntryPlace& entry) {
  return RemoveEntry(run, entry, "des Archiveintrages");
}

Status MoveArchiveEntry(run::Run& run, DvArchive& target, const EntryMove& move) {
  platform::FileSystem& fileSystem = run.fileSystem();
  const std::string targetDirectory = target.ID();
  if (LiesInItself(target, move))
    return Logged(run, move.Entry.Directory,
                  {store_error::Failed, "Ein Archiv kann nicht in sich selbst verschoben werden"});
  const bool isOneList = ArchiveKey(targetDirectory) == ArchiveKey(move.Entry.ParentDirectory);
  const auto entry = FindEntryRecord(fileSystem, move.Entry);
  if (!entry) return LoggedSearch(run, move.Entry.Directory, entry.error());

  // A move that was broken off has left the new entry beside the old one: a second new one would be a double.
  if (move.Form == EntryForm::Move && !move.IsShortCut && !isOneList &&
      Holds(fileSystem, targetDirectory, entry->Record))
    return FinishMove(run, target, move, *entry);

  auto made = target.CreateSubArchive(TemporaryArchiveName);
  if (!made) return Logged(run, targetDirectory, made.error());
  TemporaryEntry temporary(run, std::move(*made));
  const auto taken = Take(fileSystem, targetDirectory, temporary.Directory(), move,
                          isOneList ? std::nullopt : std::optional(entry->Record));
  if (!taken) return LoggedSearch(run, move.Entry.Directory, taken.error());
  temporary.SetReplaced();

  // The new entry stands: from here on the archive is in the tree whatever fails.
  if (move.Form == EntryForm::Move) {
    if (!isOneList) {
      const Status left = DeleteArchiveRecord(fileSystem, move.Entry.ParentDirectory, *entry);
      const Status gone = left || left.error().Number != store_error::NotFound
                              ? left
                              : TakeOut(fileSystem, move.Entry);  // others have changed the list meanwhile
      if (!gone) return LoggedSearch(run, move.Entry.Directory, gone.error());
    }
    if (!move.IsShortCut) {
      const Status own = WriteOwnRecord(fileSystem, *taken);
      if (!own) return Logged(run, move.Entry.Directory, own.error());
    }
  }
  ++run.counters.Archives;
  if (const Status updated = target.Update(); !updated) return Logged(run, targetDirectory, updated.error());
  return {};
}

Status CopyLinkEntry(run::Run& run, const EntryPlace& link, DvArchive& target) {
  const auto record = FindEntryRecord(run.fileSystem(), link);
  if (!record) return LoggedSearch(run, link.Directory, record.error());
  const auto appended = AppendArchiveRecord(run.fileSystem(), target.ID(), record->Record);
  if (!appended) return Logged(run, target.ID(), appended.error());
  return {};
}

namespace {

// The record that describes an archive: that of its parent's list, or the copy in its own directory.
Result<DirRecord> DescribingRecord(platform::FileSystem& fileSystem, const EntryPlace& archive) {
  if (!archive.ParentDirectory.empty()) {
    const auto record = FindEntryRecord(fileSystem, archive);
    if (!record) return Fail(record.error());
    return record->Record;
  }
  const auto self = fileSystem.ReadFile(JoinPath(NormalizePath(archive.Directory), archive_file::Self));
  const auto record = self ? RecordAt(*self, 1) : std::nullopt;
  if (!record) return Fail(NoEntry(archive.Directory));
  return *record;
}

}  // namespace

Status RepairArchiveDirRecord(run::Run& run, const EntryPlace& source, const EntryPlace& made) {
  const auto described = DescribingRecord(run.fileSystem(), source);
  if (!described) return LoggedSearch(run, source.Directory, described.error());
  DirRecord repaired;
  const Status written =
      ChangeArchiveList(run.fileSystem(), made.ParentDirectory, [&](std::string& records) -> Status {
        const auto found = FindEntryIn(records, made);
        if (!found) return Fail(NoEntry(made.Directory));
        repaired = found->Record;
        repaired.SetHead(described->Head());
        repaired.SetTail(described->Tail());
        Overwrite(records, found->Number, repaired);
        return {};
      });
  if (!written) return LoggedSearch(run, made.Directory, written.error());
  if (const Status own = WriteOwnRecord(run.fileSystem(), repaired); !own)
    return Logged(run, made.Directory, own.error());
  return {};
}

Result<std::shared_ptr<DvArchive>> FindParentArchive(DvAccount& account, DvArchive& archive) {
  const std::string key = ArchiveKey(archive.ID());
  const std::string path = archive.FullPath();
  const std::string around = StripBackslash(DirectoryOf(StripBackslash(NormalizePath(archive.ID()))));
  const std::size_t separator = path.find_last_of("/\\");
  const std::string above = separator == std::string::npos ? "" : path.substr(0, separator);
  for (const std::string& place : {above, around}) {
    if (place.empty()) continue;
    auto parent = account.GetArchive(place);
    if (parent && Lists(**parent, key)) return parent;
  }
  return Fail(store_error::NotFound,
              fmt::format("Das Archiv {} steht in keiner Archivliste", archive.FullPath()));
}

Result<std::vector<ListedEntry>> ReadListedEntries(platform::FileSystem& fileSystem, DvArchive& parent) {
  const std::string directory = parent.ID();
  // While the lock is held, the file and the store, which reads under a shared lock too, say the same.
  const auto lock = ArchiveLock::Acquire(fileSystem, NormalizePath(directory), ArchiveLock::Mode::Shared);
  if (!lock) return Fail(lock.error());
  const auto content = ReadArchiveList(fileSystem, directory);
  if (!content) return Fail(content.error());
  auto subArchives = parent.SubArchives();
  if (!subArchives) return Fail(subArchives.error());

  std::vector<ListedEntry> entries;
  entries.reserve(subArchives->size());
  std::size_t number = 0;
  const std::size_t count = CountRecords(*content);
  for (auto& sub : *subArchives) {
    const std::string key = ArchiveKey(sub->ID());
    // Records that stand for nothing are passed over by the store, too.
    std::optional<DirRecord> record;
    while (!record && number < count) {
      record = RecordAt(*content, ++number);
      const auto path = record->Path();
      if (!path || ArchiveKey(*path) != key) record.reset();
    }
    if (!record)
      return Fail(store_error::Busy, fmt::format("Die Archivliste in {} wird gerade geändert", directory));
    entries.push_back({{static_cast<int>(number), *record}, std::move(sub)});
  }
  return entries;
}

Result<std::vector<NumberedRecord>> FindChildRecords(platform::FileSystem& fileSystem, DvArchive& parent,
                                                     std::string_view childId) {
  const auto entries = ReadListedEntries(fileSystem, parent);
  if (!entries) return Fail(entries.error());
  const std::string key = ArchiveKey(childId);
  std::vector<NumberedRecord> records;
  for (const ListedEntry& entry : *entries)
    if (!entry.Archive->IsShortCut() && ArchiveKey(entry.Archive->ID()) == key)
      records.push_back(entry.Record);
  return records;
}

Result<std::vector<NumberedRecord>> FindArchiveRecords(platform::FileSystem& fileSystem, DvAccount& account,
                                                       DvArchive& archive) {
  const auto parent = FindParentArchive(account, archive);
  if (!parent) return Fail(parent.error());
  return FindChildRecords(fileSystem, **parent, archive.ID());
}

}  // namespace velmora::store
