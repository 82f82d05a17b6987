// The archive.dir lists in memory: each is read once, checked against its file at every use, and replaced
// under the directory's exclusive lock. A directory without a list, and one that is not there, have an empty
// one.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "base/result.h"
#include "platform/file_system.h"
#include "store/archive_files.h"
#include "store/archive_record.h"
#include "store/embedded/record_properties.h"

struct stat;

namespace velmora::store::embedded {

// The form under which two spellings of one directory are equal.
std::string DirectoryKey(std::string_view directory);

// A record that names a directory. Others (without a path, or with one that leads nowhere) keep their number
// and their bytes, but are not listed.
struct ListedRecord {
  int Number = 0;
  std::string Directory;  // as it stands
  std::string Name;
  std::string Key;  // DirectoryKey of the directory
  HeadContent Head;
};

class ArchiveList {
 public:
  // The new content of the file. Records that did not change are not read again: appending, changing and
  // removing cost what was appended, changed or removed. Returns the positions in Records of those that are
  // new.
  std::vector<std::size_t> Assign(std::string content);

  const std::string& Content() const { return content_; }
  const std::vector<ListedRecord>& Records() const { return records_; }
  // Positions in Records, rising; empty when there is none.
  const std::vector<std::size_t>& NamingDirectory(const std::string& key) const;
  // Positions of the records whose shown name is the given one; `foldedName` by FoldCase.
  const std::vector<std::size_t>& WithName(const std::string& foldedName) const;
  const ListedRecord* WithNumber(int number) const;

 private:
  using Positions = std::unordered_map<std::string, std::vector<std::size_t>>;

  // As Assign, for a content of the same length; nothing when a record has gained or lost its path, so that
  // those behind it stand elsewhere.
  std::optional<std::vector<std::size_t>> ChangeRecords(std::string& content);
  // As Assign, for a content in which some records in a row are missing; false for any other.
  bool RemoveRecords(std::string& content);
  void Enter(std::size_t position);
  void Forget(std::size_t position);

  std::string content_;
  std::vector<ListedRecord> records_;
  Positions byDirectory_, byName_;
};

// The name shown for an archive: the record's, or that of the directory when the record has an empty one.
std::string ShownName(std::string_view recordName, std::string_view directory);

class ListCache {
 public:
  explicit ListCache(platform::FileSystem& fileSystem) : fileSystem_(fileSystem) {}

  // Of reading. Usual at first.
  void SetPatience(Patience patience) { patience_ = patience; }
  // The list as the file has it now. store_error::Damaged, NoAccess, Busy.
  Result<std::shared_ptr<const ArchiveList>> Get(std::string_view directory);
  // The same for who holds a lock on the directory.
  Result<std::shared_ptr<const ArchiveList>> GetLocked(std::string_view directory);
  // Replaces the list; the caller holds the exclusive lock.
  Status Put(std::string_view directory, std::string content);
  // The directories whose lists, when last read, held a record of a directory that does not lie directly in
  // them. A hint: the lists decide.
  std::vector<std::string> ListsNaming(const std::string& key) const;

 private:
  // What tells that a file changed. Of a list that is missing, the stamp of its directory.
  struct Stamp {
    bool ListExists = false;
    std::uint64_t Device = 0, Inode = 0;
    std::int64_t Size = 0, ChangedNanoseconds = 0;

    bool operator==(const Stamp&) const = default;
  };
  struct Entry {
    std::string HostDirectory;  // "" when there is none
    std::string HostList;
    Stamp Seen;
    bool Settled = false;  // the stamp was older than a second when it was taken
    std::shared_ptr<ArchiveList> List;
  };

  static Stamp MakeStamp(const struct stat& status, bool listExists);
  Result<std::shared_ptr<const ArchiveList>> Fetch(std::string_view directory, bool locked);
  Result<Stamp> TakeStamp(std::string_view directory, Entry& entry);
  std::optional<Stamp> StampAtKnownPlace(const Entry& entry) const;
  Status Read(std::string_view directory, Entry& entry);
  void Accept(std::string_view directory, Entry& entry, std::string content);

  platform::FileSystem& fileSystem_;
  Patience patience_ = Patience::Usual;
  std::unordered_map<std::string, Entry> entries_;
  std::unordered_map<std::string, std::unordered_set<std::string>> strayed_;
};

}  // namespace velmora::store::embedded
