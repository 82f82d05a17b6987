#include "store/embedded/list_cache.h"

#include <fmt/format.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <system_error>
#include <utility>

#include "base/paths.h"
#include "base/text.h"
#include "store/archive_key.h"
#include "store/errors.h"

namespace velmora::store::embedded {
namespace {

constexpr std::int64_t NanosecondsPerSecond = 1'000'000'000;
// A stamp younger than this may stand for two states of a file: clocks of file systems tick coarsely.
constexpr std::int64_t SettlingTime = NanosecondsPerSecond;

const std::vector<std::size_t> NoPositions;

std::int64_t WallClockNanoseconds() {
  return std::chrono::duration_cast<std::chrono::nanoseconds>(
             std::chrono::system_clock::now().time_since_epoch())
      .count();
}

bool HasParentReference(std::string_view path) {
  const std::vector<std::string> parts = Split(path, "\\");
  return std::ranges::find(parts, "..") != parts.end();
}

std::optional<ListedRecord> ReadRecord(std::string_view content, std::size_t number) {
  const std::optional<DirRecord> record = RecordAt(content, number);
  std::optional<std::string> path = record->Path();
  if (!path || path->empty() || HasParentReference(*path)) return std::nullopt;
  std::string key = DirectoryKey(*path);
  return ListedRecord{static_cast<int>(number), std::move(*path), record->Name().value_or(""), std::move(key),
                      ReadHead(*record)};
}

// How many records at the beginning of two lists are the same.
std::size_t CountEqualRecords(std::string_view a, std::string_view b) {
  const std::size_t count = std::min(CountRecords(a), CountRecords(b));
  std::size_t equal = 0;
  for (; equal < count; ++equal) {
    const std::size_t offset = equal * DirRecord::Size;
    if (a.substr(offset, DirRecord::Size) != b.substr(offset, DirRecord::Size)) break;
  }
  return equal;
}

using Positions = std::unordered_map<std::string, std::vector<std::size_t>>;

void AddPosition(Positions& positions, const std::string& key, std::size_t position) {
  std::vector<std::size_t>& found = positions[key];
  found.insert(std::ranges::lower_bound(found, position), position);
}

void RemovePosition(Positions& positions, const std::string& key, std::size_t position) {
  const auto found = positions.find(key);
  found->second.erase(std::ranges::lower_bound(found->second, position));
  if (found->second.empty()) positions.erase(found);
}

std::string NameKey(const ListedRecord& record) { return FoldCase(ShownName(record.Name, record.Directory)); }

std::string_view BytesOf(const std::string& content, std::size_t number) {
  return std::string_view(content).substr((number - 1) * DirRecord::Size, DirRecord::Size);
}

const std::vector<std::size_t>& PositionsOf(const Positions& positions, const std::string& key) {
  const auto found = positions.find(key);
  return found == positions.end() ? NoPositions : found->second;
}

bool IsMissing(int systemError) { return systemError == ENOENT || systemError == ENOTDIR; }

Error AccessError(std::string_view directory, int systemError) {
  const bool denied = systemError == EACCES || systemError == EPERM;
  return {denied ? store_error::NoAccess : store_error::Damaged,
          fmt::format("Die Archivliste in {} ist nicht lesbar: {}", directory,
                      std::generic_category().message(systemError))};
}

}  // namespace

std::string DirectoryKey(std::string_view directory) { return ArchiveKey(directory); }

std::string ShownName(std::string_view recordName, std::string_view directory) {
  return std::string(recordName.empty() ? FileNameOf(StripBackslash(directory)) : recordName);
}

std::vector<std::size_t> ArchiveList::Assign(std::string content) {
  if (auto changed = ChangeRecords(content)) return std::move(*changed);
  if (RemoveRecords(content)) return {};
  const std::size_t kept = CountEqualRecords(content, content_);
  while (!records_.empty() && static_cast<std::size_t>(records_.back().Number) > kept) {
    Forget(records_.size() - 1);
    records_.pop_back();
  }
  content_ = std::move(content);
  std::vector<std::size_t> fresh;
  const std::size_t count = CountRecords(content_);
  for (std::size_t number = kept + 1; number <= count; ++number) {
    std::optional<ListedRecord> record = ReadRecord(content_, number);
    if (!record) continue;
    fresh.push_back(records_.size());
    records_.push_back(std::move(*record));
    Enter(fresh.back());
  }
  return fresh;
}

std::optional<std::vector<std::size_t>> ArchiveList::ChangeRecords(std::string& content) {
  if (content.size() != content_.size()) return std::nullopt;
  std::vector<std::pair<std::size_t, ListedRecord>> changes;
  for (std::size_t number = 1; number <= CountRecords(content); ++number) {
    if (BytesOf(content, number) == BytesOf(content_, number)) continue;
    std::optional<ListedRecord> record = ReadRecord(content, number);
    const ListedRecord* const old = WithNumber(static_cast<int>(number));
    if (record.has_value() != (old != nullptr)) return std::nullopt;
    if (record) changes.emplace_back(static_cast<std::size_t>(old - records_.data()), std::move(*record));
  }
  content_ = std::move(content);
  std::vector<std::size_t> changed;
  for (auto& [position, record] : changes) {
    Forget(position);
    records_[position] = std::move(record);
    Enter(position);
    changed.push_back(position);
  }
  return changed;
}

bool ArchiveList::RemoveRecords(std::string& content) {
  const std::size_t count = CountRecords(content), oldCount = CountRecords(content_);
  if (count >= oldCount) return false;
  const std::size_t gone = oldCount - count, kept = CountEqualRecords(content, content_);
  const auto behind = [](std::string_view text, std::size_t number) {
    return text.substr(number * DirRecord::Size);
  };
  if (behind(content, kept) != behind(content_, kept + gone)) return false;

  const auto positionOf = [&](std::size_t number) {
    const auto found =
        std::ranges::lower_bound(records_, static_cast<int>(number), {}, &ListedRecord::Number);
    return static_cast<std::size_t>(found - records_.begin());
  };
  const std::size_t first = positionOf(kept + 1), last = positionOf(kept + gone + 1), removed = last - first;
  for (std::size_t position = first; position < last; ++position) Forget(position);
  records_.erase(records_.begin() + static_cast<std::ptrdiff_t>(first),
                 records_.begin() + static_cast<std::ptrdiff_t>(last));
  for (std::size_t position = first; position < records_.size(); ++position)
    records_[position].Number -= static_cast<int>(gone);
  for (Positions* const places : {&byDirectory_, &byName_})
    for (auto& [key, positions] : *places)
      for (std::size_t& position : positions)
        if (position >= last) position -= removed;
  content_ = std::move(content);
  return true;
}

void ArchiveList::Enter(std::size_t position) {
  AddPosition(byDirectory_, records_[position].Key, position);
  AddPosition(byName_, NameKey(records_[position]), position);
}

void ArchiveList::Forget(std::size_t position) {
  RemovePosition(byDirectory_, records_[position].Key, position);
  RemovePosition(byName_, NameKey(records_[position]), position);
}

const std::vector<std::size_t>& ArchiveList::NamingDirectory(const std::string& key) const {
  return PositionsOf(byDirectory_, key);
}

const std::vector<std::size_t>& ArchiveList::WithName(const std::string& foldedName) const {
  return PositionsOf(byName_, foldedName);
}

const ListedRecord* ArchiveList::WithNumber(int number) const {
  const auto found = std::ranges::lower_bound(records_, number, {}, &ListedRecord::Number);
  return found == records_.end() || found->Number != number ? nullptr : &*found;
}

Result<std::shared_ptr<const ArchiveList>> ListCache::Get(std::string_view directory) {
  return Fetch(directory, false);
}

Result<std::shared_ptr<const ArchiveList>> ListCache::GetLocked(std::string_view directory) {
  return Fetch(directory, true);
}

Result<std::shared_ptr<const ArchiveList>> ListCache::Fetch(std::string_view directory, bool locked) {
  Entry& entry = entries_[DirectoryKey(directory)];
  if (entry.List && entry.Settled && StampAtKnownPlace(entry) == entry.Seen) return entry.List;

  std::optional<ArchiveLock> lock;
  if (!locked) {
    Result<ArchiveLock> shared =
        ArchiveLock::Acquire(fileSystem_, NormalizePath(directory), ArchiveLock::Mode::Shared, patience_);
    if (shared)
      lock = std::move(*shared);
    else if (shared.error().Number != store_error::NotFound)
      return Fail(shared.error());
  }
  if (const Status read = Read(directory, entry); !read) return Fail(read.error());
  return entry.List;
}

Status ListCache::Read(std::string_view directory, Entry& entry) {
  const Result<Stamp> stamp = TakeStamp(directory, entry);
  if (!stamp) return Fail(stamp.error());
  std::string content;
  if (stamp->ListExists) {
    Result<std::string> read = fileSystem_.ReadFile(JoinPath(NormalizePath(directory), archive_file::List));
    if (!read) {
      const int number = read.error().Number == platform::file_error::AccessDenied ? store_error::NoAccess
                                                                                   : store_error::Damaged;
      return Fail(number,
                  fmt::format("Die Archivliste in {} ist nicht lesbar: {}", directory, read.error().Text));
    }
    content = std::move(*read);
  } else if (IsListInterrupted(fileSystem_, directory)) {
    Result<std::string> backup = ReadArchiveList(fileSystem_, directory);
    if (!backup) return Fail(backup.error());
    content = std::move(*backup);
  }
  entry.Seen = *stamp;
  entry.Settled = WallClockNanoseconds() - stamp->ChangedNanoseconds >= SettlingTime;
  Accept(directory, entry, std::move(content));
  return {};
}

// Lists handed out keep what they showed: only one that nobody else holds is changed in place.
void ListCache::Accept(std::string_view directory, Entry& entry, std::string content) {
  if (!entry.List)
    entry.List = std::make_shared<ArchiveList>();
  else if (entry.List->Content() == content)
    return;
  else if (entry.List.use_count() > 1)
    entry.List = std::make_shared<ArchiveList>(*entry.List);

  // What was set aside for reading or composing it is many times a short list, and it stays for a session.
  content.shrink_to_fit();
  const std::vector<std::size_t> fresh = entry.List->Assign(std::move(content));
  const std::string parentPrefix = AddBackslash(DirectoryKey(directory));
  const std::vector<ListedRecord>& records = entry.List->Records();
  for (const std::size_t position : fresh)
    if (DirectoryOf(records[position].Key) != parentPrefix)
      strayed_[records[position].Key].insert(StripBackslash(NormalizePath(directory)));
}

Status ListCache::Put(std::string_view directory, std::string content) {
  const std::string place = NormalizePath(directory);
  if (const Status replaced = ReplaceArchiveList(fileSystem_, place, content); !replaced) return replaced;
  Entry& entry = entries_[DirectoryKey(directory)];
  const Result<Stamp> stamp = TakeStamp(directory, entry);
  if (!stamp) return Fail(stamp.error());
  entry.Seen = *stamp;
  entry.Settled = false;
  Accept(directory, entry, std::move(content));
  return {};
}

std::vector<std::string> ListCache::ListsNaming(const std::string& key) const {
  const auto found = strayed_.find(key);
  if (found == strayed_.end()) return {};
  std::vector<std::string> directories(found->second.begin(), found->second.end());
  std::ranges::sort(directories);
  return directories;
}

ListCache::Stamp ListCache::MakeStamp(const struct stat& status, bool listExists) {
  return {listExists, static_cast<std::uint64_t>(status.st_dev), static_cast<std::uint64_t>(status.st_ino),
          static_cast<std::int64_t>(status.st_size),
          static_cast<std::int64_t>(status.st_ctim.tv_sec) * NanosecondsPerSecond + status.st_ctim.tv_nsec};
}

std::optional<ListCache::Stamp> ListCache::StampAtKnownPlace(const Entry& entry) const {
  const std::string& place = entry.Seen.ListExists ? entry.HostList : entry.HostDirectory;
  struct stat status {};
  if (place.empty() || ::stat(place.c_str(), &status) != 0) return std::nullopt;
  return MakeStamp(status, entry.Seen.ListExists);
}

// The change time serves, not the time of the last write: a copy may set that one back.
Result<ListCache::Stamp> ListCache::TakeStamp(std::string_view directory, Entry& entry) {
  const std::string place = NormalizePath(directory);
  entry.HostDirectory = fileSystem_.HostPath(place).value_or("");
  entry.HostList = fileSystem_.HostPath(JoinPath(place, archive_file::List)).value_or("");
  struct stat status {};
  if (!entry.HostDirectory.empty() && !entry.HostList.empty()) {
    if (::stat(entry.HostList.c_str(), &status) == 0) {
      if (!S_ISREG(status.st_mode) || status.st_size > LongestRecordFile)
        return Fail(store_error::Damaged, fmt::format("In {} ist archive.dir keine Archivliste", directory));
      return MakeStamp(status, true);
    }
    if (!IsMissing(errno)) return Fail(AccessError(directory, errno));
  }
  if (!entry.HostDirectory.empty()) {
    if (::stat(entry.HostDirectory.c_str(), &status) == 0) return MakeStamp(status, false);
    if (!IsMissing(errno)) return Fail(AccessError(directory, errno));
  }
  return Stamp{};
}

}  // namespace velmora::store::embedded
