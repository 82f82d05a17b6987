#include "store/archive_records.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <functional>
#include <utility>

#include "base/paths.h"
#include "base/text.h"
#include "store/archive_files.h"
#include "store/archive_key.h"
#include "store/errors.h"

namespace velmora::store {
namespace {

// A search with what it compares made ready once.
class Matcher {
 public:
  explicit Matcher(const RecordSearch& search) : search_(search), folded_(FoldCase(search.Path)) {}

  bool Matches(const DirRecord& record) const {
    const std::optional<std::string> path = record.Path();
    if (!path) return false;
    const bool same =
        search_.Match == PathMatch::Text ? FoldCase(*path) == folded_ : IsSameArchive(*path, search_.Path);
    return same && (!search_.Name || record.Name() == search_.Name);
  }

 private:
  const RecordSearch& search_;
  std::string folded_;
};

Error NoRecord(std::string_view path) {
  return {store_error::NotFound, fmt::format("Record für {} in archive.dir nicht gefunden", path)};
}

// The numbers at which the records stand that match, no more than `most`.
std::vector<NumberedRecord> Matching(std::string_view content, const RecordSearch& search, std::size_t most) {
  const Matcher matcher(search);
  std::vector<NumberedRecord> found;
  const std::size_t count = CountRecords(content);
  for (auto number = static_cast<std::size_t>(std::max(search.FirstRecord, 1));
       number <= count && found.size() < most; ++number) {
    const DirRecord record = *RecordAt(content, number);
    if (matcher.Matches(record)) found.push_back({static_cast<int>(number), record});
  }
  return found;
}

Result<std::vector<NumberedRecord>> FindOnDisk(platform::FileSystem& fileSystem, std::string_view directory,
                                               const RecordSearch& search, std::size_t most) {
  const std::string place = NormalizePath(directory);
  const auto lock = ArchiveLock::Acquire(fileSystem, place, ArchiveLock::Mode::Shared);
  if (!lock) return Fail(lock.error());
  const Result<std::string> content = ReadArchiveList(fileSystem, place);
  if (!content) return Fail(content.error());
  return Matching(*content, search, most);
}

std::size_t OffsetOf(std::size_t number) { return (number - 1) * DirRecord::Size; }

bool StandsAt(std::string_view content, const NumberedRecord& record) {
  return record.Number >= 1 && RecordAt(content, static_cast<std::size_t>(record.Number)) == record.Record;
}

// The number of a record that others may have moved in its list; 0 when it is gone.
std::size_t NumberNow(std::string_view content, const NumberedRecord& record) {
  if (StandsAt(content, record)) return static_cast<std::size_t>(record.Number);
  for (std::size_t number = CountRecords(content); number > 0; --number)
    if (RecordAt(content, number) == record.Record) return number;
  return 0;
}

std::string PathOf(const DirRecord& record) { return record.Path().value_or(""); }

// Passes every record through ReplaceRecordPath.
RewrittenPaths ReplacePaths(std::string& content, std::span<const PathReplacement> replacements) {
  RewrittenPaths rewritten;
  for (std::size_t number = 1; number <= CountRecords(content); ++number) {
    DirRecord record = *RecordAt(content, number);
    const Result<bool> changed = ReplaceRecordPath(record, replacements);
    if (!changed) rewritten.TooLong.push_back(static_cast<int>(number));
    if (!changed || !*changed) continue;
    content.replace(OffsetOf(number), DirRecord::Size, record.Bytes());
    ++rewritten.Changed;
  }
  return rewritten;
}

struct BackupName {
  std::string_view File, Backup;
};
constexpr std::array<BackupName, 4> BackupNames{{
    {archive_file::List, archive_file::ListBackup},
    {archive_file::Messages, "archivedat.bak"},
    {archive_file::Self, "archiveadd.bak"},
    {archive_file::Rules, "archiveurt.bak"},
}};

}  // namespace

Status ChangeArchiveList(platform::FileSystem& fileSystem, std::string_view directory,
                         const std::function<Status(std::string& records)>& change) {
  const std::string place = NormalizePath(directory);
  const auto lock = ArchiveLock::Acquire(fileSystem, place, ArchiveLock::Mode::Exclusive);
  if (!lock) return Fail(lock.error());
  if (const Status recovered = RecoverArchiveList(fileSystem, place); !recovered)
    return Fail(ArchiveWriteError(directory, recovered.error()));
  const Result<std::string> content = ReadArchiveList(fileSystem, place);
  if (!content) return Fail(content.error());
  std::string records = content->substr(0, CountRecords(*content) * DirRecord::Size);
  if (const Status changed = change(records); !changed) return changed;
  if (records == *content) return {};
  if (const Status replaced = ReplaceArchiveList(fileSystem, place, records); !replaced)
    return Fail(ArchiveWriteError(directory, replaced.error()));
  return {};
}

std::optional<NumberedRecord> FindRecordIn(std::string_view content, const RecordSearch& search) {
  std::vector<NumberedRecord> found = Matching(content, search, 1);
  if (found.empty()) return std::nullopt;
  return std::move(found.front());
}

Result<NumberedRecord> FindArchiveRecord(platform::FileSystem& fileSystem, std::string_view directory,
                                         const RecordSearch& search) {
  auto found = FindOnDisk(fileSystem, directory, search, 1);
  if (!found) return Fail(found.error());
  if (found->empty()) return Fail(NoRecord(search.Path));
  return std::move(found->front());
}

Result<std::vector<NumberedRecord>> FindAllRecords(platform::FileSystem& fileSystem,
                                                   std::string_view directory, const RecordSearch& search) {
  return FindOnDisk(fileSystem, directory, search, static_cast<std::size_t>(-1));
}

Status WriteOwnRecord(platform::FileSystem& fileSystem, const DirRecord& record) {
  const std::string place = NormalizePath(PathOf(record));
  if (place.empty() || !fileSystem.FolderExists(place)) return {};
  const Status written = fileSystem.ReplaceFile(JoinPath(place, archive_file::Self), record.Bytes());
  if (!written) return Fail(ArchiveWriteError(place, written.error()));
  return {};
}

Status WriteArchiveRecord(platform::FileSystem& fileSystem, std::string_view directory,
                          const NumberedRecord& old, const DirRecord& record, RecordKind kind) {
  const Status written = ChangeArchiveList(fileSystem, directory, [&](std::string& records) -> Status {
    const std::size_t number = NumberNow(records, old);
    if (number == 0) return Fail(NoRecord(PathOf(old.Record)));
    records.replace(OffsetOf(number), DirRecord::Size, record.Bytes());
    return {};
  });
  if (!written || kind == RecordKind::Link) return written;
  return WriteOwnRecord(fileSystem, record);
}

Result<int> AppendArchiveRecord(platform::FileSystem& fileSystem, std::string_view directory,
                                const DirRecord& record) {
  int number = 0;
  const Status appended = ChangeArchiveList(fileSystem, directory, [&](std::string& records) -> Status {
    records += record.Bytes();
    number = static_cast<int>(CountRecords(records));
    return {};
  });
  if (!appended) return Fail(appended.error());
  return number;
}

Status DeleteArchiveRecord(platform::FileSystem& fileSystem, std::string_view directory,
                           const NumberedRecord& record) {
  const Result<int> deleted = DeleteArchiveRecords(fileSystem, directory, {&record, 1});
  if (!deleted) return Fail(deleted.error());
  if (*deleted == 0) return Fail(NoRecord(PathOf(record.Record)));
  return {};
}

Result<int> DeleteArchiveRecords(platform::FileSystem& fileSystem, std::string_view directory,
                                 std::span<const NumberedRecord> records) {
  std::vector<NumberedRecord> doomed(records.begin(), records.end());
  std::ranges::sort(doomed, {}, &NumberedRecord::Number);
  const auto repeated = std::ranges::unique(doomed, {}, &NumberedRecord::Number);
  doomed.erase(repeated.begin(), repeated.end());
  int deleted = 0;
  const Status changed = ChangeArchiveList(fileSystem, directory, [&](std::string& list) -> Status {
    std::string kept;
    kept.reserve(list.size());
    std::size_t next = 0;  // where what is not yet copied begins
    for (const NumberedRecord& record : doomed) {
      if (!StandsAt(list, record)) continue;
      const std::size_t offset = OffsetOf(static_cast<std::size_t>(record.Number));
      kept.append(list, next, offset - next);
      next = offset + DirRecord::Size;
      ++deleted;
    }
    kept.append(list, next);
    list = std::move(kept);
    return {};
  });
  if (!changed) return Fail(changed.error());
  return deleted;
}

Result<RewrittenPaths> RewriteRecordPaths(platform::FileSystem& fileSystem, std::string_view directory,
                                          std::span<const PathReplacement> replacements) {
  const std::string place = NormalizePath(directory);
  RewrittenPaths rewritten;
  const Status changed = ChangeArchiveList(fileSystem, place, [&](std::string& records) -> Status {
    rewritten = ReplacePaths(records, replacements);
    return {};
  });
  if (!changed) return Fail(changed.error());

  const std::string selfFile = JoinPath(place, archive_file::Self);
  if (!fileSystem.FileExists(selfFile)) return rewritten;
  const Result<std::string> self = fileSystem.ReadFile(selfFile);
  if (!self) return Fail(ArchiveWriteError(directory, self.error()));
  std::string own = *self;
  (void)ReplacePaths(own, replacements);  // a path that does not fit is told of by the parent's list
  if (own == *self) return rewritten;
  if (const Status written = fileSystem.ReplaceFile(selfFile, own); !written)
    return Fail(ArchiveWriteError(directory, written.error()));
  return rewritten;
}

Result<int> BackupArchiveFiles(platform::FileSystem& fileSystem, std::string_view directory) {
  const std::string place = NormalizePath(directory);
  const auto lock = ArchiveLock::Acquire(fileSystem, place, ArchiveLock::Mode::Exclusive);
  if (!lock) return Fail(lock.error());
  // The backup of an interrupted list is the list.
  if (const Status recovered = RecoverArchiveList(fileSystem, place); !recovered)
    return Fail(ArchiveWriteError(directory, recovered.error()));
  int copied = 0;
  Status outcome;
  for (const auto& [file, backup] : BackupNames) {
    const std::string source = JoinPath(place, file);
    if (!fileSystem.FileExists(source)) continue;
    const Status done = fileSystem.CopyFile(source, JoinPath(place, backup));
    if (done)
      ++copied;
    else if (outcome)
      outcome = Fail(ArchiveWriteError(source, done.error()));
  }
  if (!outcome) return Fail(outcome.error());
  return copied;
}

}  // namespace velmora::store
