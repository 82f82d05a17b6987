// The tree of archives of the built-in store: what the archive.dir files say. Directories are UNC paths
// without "\" at the end; comparisons are without regard to case. Every operation is safe against other
// processes (flock) and atomic (a list is replaced as a whole). The files' layout stands in
// docs/store-format.md.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "platform/file_system.h"
#include "store/patience.h"

namespace velmora::store::embedded {

// The copyable properties that a record's head and tail hold.
struct ArchiveProperties {
  int Kind =
      0;  // the special kind that the store gave the archive (GetSpecialArchive's number), 0 for others
  bool Hidden = false, Packed = false, AdminOnly = false;
  int DisplayType = 0;
  int Owner = 0;  // user id, 0 for the system
  std::uint32_t OptionFlags = 0;

  bool operator==(const ArchiveProperties&) const = default;
};

// One record of a parent's archive.dir.
struct ArchiveRecord {
  std::string Directory;        // tag 3 as it stands; of a link the target's directory
  std::string Name;             // tag 4 as it stands
  std::string ParentDirectory;  // whose list the record stands in; "" for the root
  int RecordNumber = 0;         // from 1
  bool IsLink = false;          // the directory's own record stands elsewhere
  ArchiveProperties Properties;
};

class ArchiveTree {
 public:
  // `rootDirectory`: the directory of the root archive, `\\SERVER\DAVID\ARCHIVE`.
  ArchiveTree(platform::FileSystem& fileSystem, std::string rootDirectory);
  ~ArchiveTree();

  // --- Reading. ---
  void SetPatience(Patience patience);
  ArchiveRecord Root();
  // In record order; a directory without a list has none. store_error::Damaged when the list cannot be read.
  Result<std::vector<ArchiveRecord>> Children(std::string_view directory);
  Result<int> ChildCount(std::string_view directory);
  // The record as its list has it now: other writers may have moved it there. NotFound.
  Result<ArchiveRecord> Refresh(const ArchiveRecord& record);
  // The record that makes a directory an archive (its own record, not a link to it). NotFound.
  Result<ArchiveRecord> FindByDirectory(std::string_view directory);
  // The display names from the root down to the directory, the root's ("Archive") first: what a FullPath
  // joins.
  Result<std::vector<std::string>> NamesDownTo(std::string_view directory);
  // The record reached by names from `from` on, the first of equal names, links followed; an empty list gives
  // `from`'s own. NotFound.
  Result<ArchiveRecord> FindByNames(std::string_view from, const std::vector<std::string>& names);

  // --- Writing. ---
  // `name` may hold the directory's name in braces anywhere; a taken directory gets a fresh name. Makes the
  // directory and the record. store_error::BadName when the path does not fit a record.
  Result<ArchiveRecord> Create(std::string_view parentDirectory, std::string_view name,
                               const ArchiveProperties& properties);
  // As Create, in a physical directory of the caller's choice that need not lie below the parent.
  Result<ArchiveRecord> CreateAt(std::string_view parentDirectory, std::string_view name,
                                 std::string_view directory, const ArchiveProperties& properties);
  Result<ArchiveRecord> AddLink(std::string_view parentDirectory, std::string_view name,
                                std::string_view targetDirectory);
  // The name as it stands now: cut to fit, without what a name cannot hold.
  Result<std::string> Rename(const ArchiveRecord& record, std::string_view name);
  Status SetProperties(const ArchiveRecord& record, const ArchiveProperties& properties);
  // The record only; the files are the caller's.
  Status RemoveRecord(const ArchiveRecord& record);
  // Moves the record to another parent's list; the directory stays where it is.
  Result<ArchiveRecord> MoveRecord(const ArchiveRecord& record, std::string_view newParentDirectory);

  // --- Checking (changes nothing). ---
  struct Finding {
    std::string Directory;
    std::string Text;     // German
    bool IsNote = false;  // worth knowing, no damage
  };
  struct CheckResult {
    std::vector<Finding> Findings;
    std::vector<std::string> Archives;  // the directories of all archives, each once, the root's first
  };
  // Lists of a length that is no multiple of a record, records without tags, dangling and doubled records,
  // circular nesting, directories that no record names, copies of records that differ.
  CheckResult Check();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace velmora::store::embedded
