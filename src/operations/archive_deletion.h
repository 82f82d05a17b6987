// Deleting archives and entries of the store.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "operations/operation.h"
#include "store/selection.h"
#include "store/tree_walk.h"

namespace velmora::operations {

// The names are those of the dialog's check boxes.
struct StoreDeleteOptions {
  bool EnDelArchives = false;  // the archives themselves, not only what is in them
  bool EnPhysErase = false;    // with EnDelArchives and without a filter: the directories, file by file
  bool EnLinkedArcs = false;   // what links lead to as well
};

// The whole run on marked objects. There is no summary; when something failed a box tells it.
void RunStoreDelete(const Operation& operation, const StoreDeleteOptions& options,
                    const store::Selection& selection);

// One per run.
class ArchiveDeletion {
 public:
  ArchiveDeletion(const Operation& operation, const StoreDeleteOptions& options)
      : operation_(operation), options_(options) {}

  void DeleteMessage(store::DvArchive& archive, store::EntryKey key);
  // What is in the archive and below it, and with EnDelArchives the archive. A link that is not followed
  // loses its record; `parent`: in whose list it stands, null when unknown.
  void DeleteArchiveTree(store::DvArchive& archive, const store::DvArchive* parent);

 private:
  void DeleteContent(store::DvArchive& archive);
  void DeleteSubArchives(store::DvArchive& archive);
  void DeleteEntry(store::DvItem& entry, std::string_view logPath);
  void DeleteArchive(store::DvArchive& archive);
  void RemoveLink(store::DvArchive& link, const store::DvArchive& parent);
  void ErasePhysically(store::DvArchive& archive, const store::DvArchive* parent);
  void TellCircle(const store::DvArchive& archive, store::DvArchive& sub);

  const Operation& operation_;
  const StoreDeleteOptions options_;
  store::WalkPath path_;
};

}  // namespace velmora::operations
