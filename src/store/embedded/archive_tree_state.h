// What the parts of ArchiveTree share: the lists and the way through them.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "store/embedded/archive_tree.h"
#include "store/embedded/list_cache.h"

namespace velmora::store::embedded {

inline constexpr std::string_view RootName = "Archive";

struct ArchiveTree::State {
  State(platform::FileSystem& fileSystem, std::string rootDirectory);

  bool IsRoot(std::string_view directory) const { return DirectoryKey(directory) == RootKey; }
  // The record as callers see it. Whether it is a link may need a look into another list.
  ArchiveRecord Describe(const ListedRecord& record, std::string_view listDirectory);
  // Whether a record makes its directory an archive or only leads to it.
  bool IsLink(const ListedRecord& record, std::string_view listDirectory);
  // The records from the root's child down to the directory's own; empty for the root. NotFound.
  Result<std::vector<ArchiveRecord>> ChainTo(std::string_view directory);
  // Whether a record in one of the likely places makes the directory an archive.
  bool HasOwnRecord(const std::string& directory) { return !OwnRecords(directory).empty(); }
  // Whether the directory lies below the record's archive in the tree, wherever it lies on the disk.
  bool LiesBelow(std::string_view directory, const ArchiveRecord& record);
  // Visits each list that the tree reaches over records that are no links, once, from the root on.
  void VisitLists(const std::function<void(const std::string& directory,
                                           const Result<std::shared_ptr<const ArchiveList>>& list)>& visit);
  // How many numbers below this one were found taken, by stem and number of digits of new directories.
  std::size_t& NextNumber(std::string_view parentDirectory, std::string_view stem, std::size_t digits);

  platform::FileSystem& FileSystem;
  const std::string RootDirectory;
  const std::string RootKey;
  ListCache Lists;

 private:
  bool FindChain(const std::string& directory, std::vector<std::string>& path,
                 std::vector<ArchiveRecord>& chain);
  std::vector<ArchiveRecord> OwnRecords(const std::string& directory);
  bool IsNamedWhereItLies(const ListedRecord& record);

  std::unordered_map<std::string, std::size_t> nextNumbers_;
};

}  // namespace velmora::store::embedded
