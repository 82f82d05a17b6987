// Copying and moving archives and messages from archive to archive. Entries go through the object layer; an
// archive's configuration goes by file copy between the physical directories.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>

#include "operations/operation.h"
#include "operations/same_names.h"
#include "store/selection.h"
#include "store/tree_walk.h"

namespace velmora::operations {

using store::CopyMode;

// The names are those of the dialog's check boxes.
struct StoreCopyOptions {
  CopyMode Mode = CopyMode::Copy;
  bool EnDelArchives = false;   // on a move: the source archives go too
  bool EnCopyOnlyArcs = false;  // the tree without its messages
  bool EnDblArcNames = false;   // merge into an archive of the same display name
  bool EnLinkedArcs = false;    // follow links instead of copying them as links
  bool EnSaveOrgArcs = false;   // keep the names of the physical directories
  bool EnCpyProp = false;       // properties and configuration files
  bool EnRoutings = false;      // rules, as they stand
};

// The whole run on marked objects: log, progress, objects, commit, summary. The target must be no link.
void RunStoreCopy(const Operation& operation, const StoreCopyOptions& options,
                  const store::Selection& selection, const std::shared_ptr<store::DvArchive>& target);

// Whether copying would put an archive onto or into itself: the target's physical ID is the source's or lies
// below it, without regard to case.
bool IsRecursiveCopy(std::string_view sourceId, std::string_view targetId);

// The box that tells of it.
void TellRecursiveCopy(run::Run& run, std::string_view sourceId, std::string_view targetId);

// What asks the store for the source's directory name: the name in braces. "" when the target's directory
// holds a folder of that name already, which the user is told.
std::string KeepDirectoryName(run::Run& run, std::string_view sourceId, std::string_view targetId);

// One per run.
class ArchiveCopy {
 public:
  ArchiveCopy(const Operation& operation, const StoreCopyOptions& options)
      : operation_(operation), options_(options) {}

  void CopyMessage(store::DvArchive& source, store::EntryKey key, store::DvArchive& target);
  // One archive and what lies below it, as a new sub-archive of the target or merged into one of its name. A
  // link arrives as a link unless links are followed; `parent`: in whose list it stands.
  void CopyArchiveTree(store::DvArchive& source, const store::DvArchive* parent, store::DvArchive& target,
                       SameNames& names);
  // As above, the source given by its path.
  void CopyArchiveTree(std::string_view sourcePath, std::string_view targetPath);

 private:
  using ArchivePointer = std::shared_ptr<store::DvArchive>;

  // What follows once it is clear that content is copied: the archive, its entries, what lies below.
  void CopyContent(store::DvArchive& source, const store::DvArchive* parent, store::DvArchive& target,
                   SameNames& names);
  void CopySubArchives(store::DvArchive& source, store::DvArchive& target);
  void CopyEntries(store::DvArchive& source, store::DvArchive& target);
  void CopyEntry(store::DvItem& entry, store::DvArchive& target, std::string_view logPath);
  void CopyLink(store::DvArchive& link, const store::DvArchive& parent, store::DvArchive& target);
  // The new archive in the target and whether all of the configuration that was asked for came along; null
  // when it could not be made.
  struct Made {
    ArchivePointer Archive;
    bool IsWhole = true;
  };
  Made MakeTarget(store::DvArchive& source, const store::DvArchive* parent, std::string_view name,
                  store::DvArchive& target);
  bool CopyProperties(store::DvArchive& source, const store::DvArchive* parent, store::DvArchive& made,
                      const store::DvArchive& target);
  bool CopyFiles(store::DvArchive& source, store::DvArchive& made, std::string_view mask);
  bool TakesContent(const store::DvArchive& archive) const;
  void NoteTarget(const store::DvArchive& archive);
  void DeleteMoved(store::DvArchive& source);
  bool DeletesSources() const;

  const Operation& operation_;
  const StoreCopyOptions options_;
  store::WalkPath path_;
  // What receives content in this run is no source of it: a link may lead into the target.
  std::unordered_set<std::string> targets_;
};

}  // namespace velmora::operations
