#include <fmt/format.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "base/device_names.h"
#include "base/paths.h"
#include "base/text.h"
#include "store/archive_files.h"
#include "store/archive_records.h"
#include "store/embedded/archive_tree.h"
#include "store/embedded/archive_tree_state.h"
#include "store/embedded/directory_names.h"
#include "store/embedded/record_properties.h"
#include "store/errors.h"

namespace velmora::store::embedded {
namespace {

namespace file_error = platform::file_error;

Error ProtectedRoot() {
  return {store_error::Protected, "Die Archiv-Root kann nicht umbenannt, verschoben oder entfernt werden"};
}

Result<ArchiveLock> LockList(platform::FileSystem& fileSystem, std::string_view directory) {
  return ArchiveLock::Acquire(fileSystem, NormalizePath(directory), ArchiveLock::Mode::Exclusive);
}

// The whole records of a list, with room for one more; a torn one at its end goes at the first rewrite.
std::string WholeRecords(const ArchiveList& list) {
  const std::size_t size = CountRecords(list.Content()) * DirRecord::Size;
  std::string records;
  records.reserve(size + DirRecord::Size);
  records.append(list.Content(), 0, size);
  return records;
}

// Where the caller's record stands now: other writers may have moved or renamed it.
const ListedRecord* FindAgain(const ArchiveList& list, const ArchiveRecord& record) {
  const std::string key = DirectoryKey(record.Directory);
  const ListedRecord* sameNumber = list.WithNumber(record.RecordNumber);
  if (sameNumber != nullptr && sameNumber->Key == key) return sameNumber;
  for (const std::size_t position : list.NamingDirectory(key))
    if (list.Records()[position].Name == record.Name) return &list.Records()[position];
  return nullptr;
}

Error NoRecord(const ArchiveRecord& record) {
  return {store_error::NotFound,
          fmt::format("Record für {} in archive.dir nicht gefunden", record.Directory)};
}

// New directories are open to whom the directory around them is open.
Status MakeDirectory(platform::FileSystem& fileSystem, const std::string& directory) {
  struct stat around {};
  const auto hostParent = fileSystem.HostPath(StripBackslash(DirectoryOf(directory)));
  const bool known = hostParent && ::stat(hostParent->c_str(), &around) == 0;
  const bool ownerOnly = !known || (around.st_mode & (S_IRWXG | S_IRWXO)) == 0;
  return fileSystem.CreateFolder(directory, ownerOnly);
}

using ListPointer = std::shared_ptr<const ArchiveList>;

// Appends to a list, just read, whose exclusive lock the caller holds; gives the record's number. Lets go of
// the list, so that the cached one can grow in place.
Result<int> Append(ListCache& lists, std::string_view directory, ListPointer list, const DirRecord& record) {
  std::string content = WholeRecords(*list);
  list.reset();
  content += record.Bytes();
  const auto number = static_cast<int>(CountRecords(content));
  if (const Status put = lists.Put(directory, std::move(content)); !put)
    return Fail(ArchiveWriteError(directory, put.error()));
  return number;
}

Result<int> Append(ListCache& lists, std::string_view directory, const DirRecord& record) {
  auto list = lists.GetLocked(directory);
  if (!list) return Fail(list.error());
  return Append(lists, directory, std::move(*list), record);
}

// The copy of an archive's own record in its directory. Where the directory is gone there is nothing to keep.
Status WriteSelf(platform::FileSystem& fileSystem, std::string_view directory, const DirRecord& record) {
  const std::string place = NormalizePath(directory);
  if (!fileSystem.FolderExists(place)) return {};
  if (const Status written = fileSystem.ReplaceFile(JoinPath(place, archive_file::Self), record.Bytes());
      !written)
    return Fail(ArchiveWriteError(directory, written.error()));
  return {};
}

// Changes one record in its parent's list, which decides, and then the copy in its directory.
Status Edit(platform::FileSystem& fileSystem, ListCache& lists, const ArchiveRecord& record,
            const std::function<Status(DirRecord&)>& change) {
  const auto lock = LockList(fileSystem, record.ParentDirectory);
  if (!lock) return Fail(lock.error());
  auto list = lists.GetLocked(record.ParentDirectory);
  if (!list) return Fail(list.error());
  const ListedRecord* found = FindAgain(**list, record);
  if (found == nullptr) return Fail(NoRecord(record));
  const auto number = static_cast<std::size_t>(found->Number);
  std::string content = WholeRecords(**list);
  list->reset();
  DirRecord edited = *RecordAt(content, number);
  if (const Status changed = change(edited); !changed) return changed;
  content.replace((number - 1) * DirRecord::Size, DirRecord::Size, edited.Bytes());
  if (const Status put = lists.Put(record.ParentDirectory, std::move(content)); !put)
    return Fail(ArchiveWriteError(record.ParentDirectory, put.error()));
  return record.IsLink ? Status{} : WriteSelf(fileSystem, record.Directory, edited);
}

// Takes a record out of a list whose exclusive lock the caller holds.
Status TakeOut(ListCache& lists, const ArchiveRecord& record) {
  auto list = lists.GetLocked(record.ParentDirectory);
  if (!list) return Fail(list.error());
  const ListedRecord* found = FindAgain(**list, record);
  if (found == nullptr) return Fail(NoRecord(record));
  const auto number = static_cast<std::size_t>(found->Number);
  std::string content = WholeRecords(**list);
  list->reset();
  content.erase((number - 1) * DirRecord::Size, DirRecord::Size);
  if (const Status put = lists.Put(record.ParentDirectory, std::move(content)); !put)
    return Fail(ArchiveWriteError(record.ParentDirectory, put.error()));
  return {};
}

Result<DirRecord> MakeRecord(std::string_view directory, std::string_view name, const HeadContent& head) {
  auto record = DirRecord::Make(directory, ShownName(name, directory));
  if (record) WriteHead(*record, head);
  return record;
}

// The directory made for a new archive, and its record, which is not yet in the list.
struct NewDirectory {
  std::string Path;
  DirRecord Record;
};

// Makes the directory of that name; nothing when the name is taken.
Result<std::optional<NewDirectory>> TryDirectory(platform::FileSystem& fileSystem, const ListCache& lists,
                                                 const ArchiveList& list, const std::string& parent,
                                                 std::string_view directoryName, std::string_view displayName,
                                                 const HeadContent& head) {
  const std::string path = JoinPath(parent, directoryName);
  const std::string key = DirectoryKey(path);
  if (IsDeviceName(directoryName) || !list.NamingDirectory(key).empty() || !lists.ListsNaming(key).empty())
    return std::nullopt;
  auto record = MakeRecord(path, displayName, head);
  if (!record) return Fail(record.error());
  const Status made = MakeDirectory(fileSystem, path);
  if (made) return NewDirectory{path, *record};
  if (made.error().Number == file_error::AlreadyExists) return std::nullopt;
  return Fail(ArchiveWriteError(path, made.error()));
}

// For whoever holds the lock.
bool MayName(platform::FileSystem& fileSystem, std::string_view parent, const std::string& directory) {
  const auto list = ReadArchiveList(fileSystem, parent);
  return !list || FindRecordIn(*list, {.Path = directory}).has_value();
}

// Appends the record of a directory just made, and takes the directory away again if that fails.
Result<int> Enter(platform::FileSystem& fileSystem, ListCache& lists, const std::string& parent,
                  ListPointer list, const NewDirectory& fresh) {
  // Only a copy: the list decides, so this needs no sync of its own.
  const Status self = fileSystem.WriteFile(JoinPath(fresh.Path, archive_file::Self), fresh.Record.Bytes());
  Result<int> number = self ? Append(lists, parent, std::move(list), fresh.Record)
                            : Fail(ArchiveWriteError(fresh.Path, self.error()));
  // What cannot be removed shows up in a check as a directory without a record. Where the new list stands, or
  // may stand, although it could not be brought to the disk, the directory that it names stays.
  if (!number && !MayName(fileSystem, parent, fresh.Path)) (void)fileSystem.DeleteFolder(fresh.Path, true);
  return number;
}

}  // namespace

Result<ArchiveRecord> ArchiveTree::Create(std::string_view parentDirectory, std::string_view name,
                                          const ArchiveProperties& properties) {
  const std::string parent = StripBackslash(NormalizePath(parentDirectory));
  const GivenName given = SplitGivenName(name);
  const std::string base = given.Directory.empty() ? DirectoryNameFor(given.DisplayName) : given.Directory;
  const HeadContent head{properties, false};
  const auto lock = LockList(state_->FileSystem, parent);
  if (!lock) return Fail(lock.error());
  auto list = state_->Lists.GetLocked(parent);
  if (!list) return Fail(list.error());

  const auto attempt = [&](std::string_view directoryName) {
    return TryDirectory(state_->FileSystem, state_->Lists, **list, parent, directoryName, given.DisplayName,
                        head);
  };
  Result<std::optional<NewDirectory>> fresh = attempt(base);
  std::size_t firstNumber = 1;
  for (std::size_t digits = 1; fresh && !*fresh && digits < DirectoryNameLength;
       ++digits, firstNumber *= 10) {
    const std::string_view stem = NumberedStem(base, digits);
    std::size_t& next = state_->NextNumber(parent, stem, digits);
    for (next = std::max(next, firstNumber); fresh && !*fresh && next < firstNumber * 10; ++next)
      fresh = attempt(fmt::format("{}{}", stem, next));
  }
  if (!fresh) return Fail(fresh.error());
  if (!*fresh)
    return Fail(store_error::Failed, fmt::format("In {} ist kein Verzeichnisname mehr frei", parent));

  const auto number = Enter(state_->FileSystem, state_->Lists, parent, std::move(*list), **fresh);
  if (!number) return Fail(number.error());
  return ArchiveRecord{(*fresh)->Path, (*fresh)->Record.Name().value_or(""), parent, *number, false,
                       properties};
}

Result<ArchiveRecord> ArchiveTree::CreateAt(std::string_view parentDirectory, std::string_view name,
                                            std::string_view directory, const ArchiveProperties& properties) {
  const std::string parent = StripBackslash(NormalizePath(parentDirectory));
  const std::string place = StripBackslash(NormalizePath(directory));
  const auto record = MakeRecord(place, name, {properties, false});
  if (!record) return Fail(record.error());
  const bool existed = state_->FileSystem.FolderExists(place);
  if (state_->HasOwnRecord(place) || (existed && FindByDirectory(place)))
    return Fail(store_error::Failed, fmt::format("Das Verzeichnis {} gehört bereits zu einem Archiv", place));

  const auto lock = LockList(state_->FileSystem, parent);
  if (!lock) return Fail(lock.error());
  auto list = state_->Lists.GetLocked(parent);
  if (!list) return Fail(list.error());
  Result<int> number = 0;
  if (existed) {
    const Status self = WriteSelf(state_->FileSystem, place, *record);
    number =
        self ? Append(state_->Lists, parent, std::move(*list), *record) : Result<int>(Fail(self.error()));
  } else {
    const Status made = MakeDirectory(state_->FileSystem, place);
    if (!made) return Fail(ArchiveWriteError(place, made.error()));
    number = Enter(state_->FileSystem, state_->Lists, parent, std::move(*list), {place, *record});
  }
  if (!number) return Fail(number.error());
  return ArchiveRecord{place, record->Name().value_or(""), parent, *number, false, properties};
}

Result<ArchiveRecord> ArchiveTree::AddLink(std::string_view parentDirectory, std::string_view name,
                                           std::string_view targetDirectory) {
  const auto target = FindByDirectory(targetDirectory);
  if (!target) return Fail(target.error());
  // The special kind is the target's alone: a link to the trash is no second trash.
  HeadContent head{target->Properties, true};
  head.Properties.Kind = 0;
  const auto record = MakeRecord(target->Directory, name, head);
  if (!record) return Fail(record.error());
  const std::string parent = StripBackslash(NormalizePath(parentDirectory));
  const auto lock = LockList(state_->FileSystem, parent);
  if (!lock) return Fail(lock.error());
  const auto number = Append(state_->Lists, parent, *record);
  if (!number) return Fail(number.error());
  return ArchiveRecord{target->Directory, record->Name().value_or(""), parent, *number, true,
                       head.Properties};
}

Result<std::string> ArchiveTree::Rename(const ArchiveRecord& record, std::string_view name) {
  if (record.ParentDirectory.empty()) return Fail(ProtectedRoot());
  std::string written;
  const Status renamed = Edit(state_->FileSystem, state_->Lists, record, [&](DirRecord& edited) {
    const Status set = edited.SetName(ShownName(name, record.Directory));
    written = edited.Name().value_or("");
    return set;
  });
  if (!renamed) return Fail(renamed.error());
  return written;
}

Status ArchiveTree::SetProperties(const ArchiveRecord& record, const ArchiveProperties& properties) {
  const auto change = [&](DirRecord& edited) -> Status {
    WriteHead(edited, {properties, ReadHead(edited).IsLink});
    return {};
  };
  if (!record.ParentDirectory.empty()) return Edit(state_->FileSystem, state_->Lists, record, change);

  const auto lock = LockList(state_->FileSystem, state_->RootDirectory);
  if (!lock) return Fail(lock.error());
  const std::string selfFile = JoinPath(state_->RootDirectory, archive_file::Self);
  const std::string content = state_->FileSystem.ReadFile(selfFile).value_or("");
  std::optional<DirRecord> self = RecordAt(content, 1);
  if (!self) {
    auto made = MakeRecord(state_->RootDirectory, RootName, {});
    if (!made) return Fail(made.error());
    self = *made;
  }
  if (const Status changed = change(*self); !changed) return changed;
  return WriteSelf(state_->FileSystem, state_->RootDirectory, *self);
}

Status ArchiveTree::RemoveRecord(const ArchiveRecord& record) {
  if (record.ParentDirectory.empty()) return Fail(ProtectedRoot());
  const auto lock = LockList(state_->FileSystem, record.ParentDirectory);
  if (!lock) return Fail(lock.error());
  return TakeOut(state_->Lists, record);
}

Result<ArchiveRecord> ArchiveTree::MoveRecord(const ArchiveRecord& record,
                                              std::string_view newParentDirectory) {
  if (record.ParentDirectory.empty()) return Fail(ProtectedRoot());
  const std::string target = StripBackslash(NormalizePath(newParentDirectory));
  std::array<std::string, 2> places{record.ParentDirectory, target};
  std::ranges::sort(places, {}, DirectoryKey);
  if (DirectoryKey(places[0]) == DirectoryKey(places[1])) return record;
  if (!record.IsLink) {
    if (IsSameOrBelow(DirectoryKey(target), DirectoryKey(record.Directory)) ||
        state_->LiesBelow(target, record))
      return Fail(store_error::Failed,
                  fmt::format("{} kann nicht in sich selbst verschoben werden", record.Directory));
  }

  const auto first = LockList(state_->FileSystem, places[0]);
  if (!first) return Fail(first.error());
  const auto second = LockList(state_->FileSystem, places[1]);
  if (!second) return Fail(second.error());
  auto list = state_->Lists.GetLocked(record.ParentDirectory);
  if (!list) return Fail(list.error());
  const ListedRecord* found = FindAgain(**list, record);
  if (found == nullptr) return Fail(NoRecord(record));
  DirRecord moved = *RecordAt((*list)->Content(), static_cast<std::size_t>(found->Number));
  // Away from its place a record no longer shows by itself which of the two it is.
  if (record.IsLink) WriteHead(moved, {found->Head.Properties, true});
  list->reset();

  // The new place first: killed in between, the archive stands twice, but is not lost.
  const auto number = Append(state_->Lists, target, moved);
  if (!number) return Fail(number.error());
  if (const Status taken = TakeOut(state_->Lists, record); !taken) return Fail(taken.error());
  ArchiveRecord result = record;
  result.ParentDirectory = target;
  result.RecordNumber = *number;
  return result;
}

}  // namespace velmora::store::embedded
