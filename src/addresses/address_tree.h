// The walk of an address export through the store's tree: every archive with addresses gets its file, and
// with sub-archives its folder.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "addresses/address_export.h"
#include "store/archive.h"
#include "store/tree_walk.h"

namespace velmora::addresses {

class AddressTree {
 public:
  AddressTree(run::Run& run, const AddressExportOptions& options) : run_(run), options_(options) {}

  void Export(store::DvArchive& archive);

 private:
  // A directory of the target. One that belongs to an archive is made, with all above it, when the first
  // address comes: an archive without addresses leaves nothing behind.
  struct Folder {
    std::string Path;                     // with "\" at its end
    Folder* Parent = nullptr;             // null: the target directory, which has to exist
    store::DvArchive* Archive = nullptr;  // null: likewise
    bool IsMade = false;
  };

  void ExportSubArchives(store::DvArchive& archive, Folder& folder, store::WalkPath& path);
  // One archive into the directory, or with sub-archives into a folder of its own there; the folder used.
  Folder ExportArchiveAddresses(store::DvArchive& archive, Folder& target);
  Folder FolderOf(store::DvArchive& archive, Folder& target);
  Status Make(Folder& folder);

  // The keys of the entries that open as addresses, by subject.
  std::vector<store::EntryKey> CollectKeys(store::DvArchive& archive);
  void WriteBook(store::DvArchive& archive, const std::vector<store::EntryKey>& keys, const Folder& folder);
  void WriteCards(store::DvArchive& archive, const std::vector<store::EntryKey>& keys, const Folder& folder);
  // Reads each address, shows the progress and hands the record to `write` until that answers false or the
  // user cancels.
  template <typename Write>
  void ForEachAddress(store::DvArchive& archive, const std::vector<store::EntryKey>& keys, Write write);
  Result<AddressRecord> Read(store::DvArchive& archive, store::EntryKey key);
  void WarnOfLosses(std::string_view path, const std::string& losses);

  run::Run& run_;
  const AddressExportOptions& options_;
  std::set<std::string, std::less<>> used_;  // folders that this run has filled, in folded form
};

// A log entry with the path, and the box that tells of it.
void ReportFailure(run::Run& run, std::string_view path, const Error& error);
void ReportStoreFailure(run::Run& run, std::string_view path, const Error& error);

}  // namespace velmora::addresses
