#include "operations/physical_erase.h"

#include <fmt/core.h>

#include <set>
#include <string>
#include <vector>

#include "base/paths.h"
#include "store/archive_entries.h"
#include "store/archive_files.h"
#include "store/archive_key.h"
#include "store/errors.h"
#include "store/tree_walk.h"

namespace velmora::operations {
namespace {

// The directories of an archive and of what the tree shows below it.
class DoomedTree {
 public:
  explicit DoomedTree(platform::FileSystem& files) : files_(files) {}

  // Parents stand before their children.
  const std::vector<std::string>& Directories() const { return directories_; }
  bool Holds(std::string_view directory) const { return keys_.contains(store::ArchiveKey(directory)); }

  Status Add(store::DvArchive& archive) {
    if (archive.IsSpecial()) {
      return Fail(store::store_error::Protected,
                  fmt::format("Das Archiv {} kann nicht gelöscht werden", archive.FullPath()));
    }
    if (!path_.Enter(archive.ID())) return {};
    directories_.push_back(StripBackslash(NormalizePath(archive.ID())));
    keys_.insert(store::ArchiveKey(archive.ID()));
    const auto subArchives = archive.SubArchives();
    if (!subArchives) {
      // What an earlier deletion has left: the entry of an archive whose directory is gone.
      if (!IsGone(archive)) return Fail(subArchives.error());
      path_.Leave();
      return {};
    }
    for (const auto& sub : *subArchives) {
      if (sub->IsShortCut()) continue;
      if (const Status added = Add(*sub); !added) return added;
    }
    path_.Leave();
    return {};
  }

 private:
  bool IsGone(store::DvArchive& archive) const {
    return store::LookForDirectory(files_, archive.ID()) == store::DirectoryState::Gone;
  }

  platform::FileSystem& files_;
  std::vector<std::string> directories_;
  std::set<std::string> keys_;
  store::WalkPath path_;
};

// A folder below may belong to an archive that was moved elsewhere in the tree.
Status RequireNothingForeign(const Operation& operation, const DoomedTree& tree,
                             const std::string& directory) {
  platform::FileSystem& files = operation.run.fileSystem();
  const auto folders = files.List(directory, "*", platform::ListWhat::Folders);
  if (!folders && folders.error().Number == platform::file_error::PathNotFound) return {};
  if (!folders) return Fail(folders.error());
  for (const platform::FileEntry& folder : *folders) {
    if (folder.IsLink) continue;
    const std::string path = JoinPath(directory, folder.Name);
    if (tree.Holds(path)) continue;
    if (const auto foreign = operation.session.Account->GetArchive(path)) {
      return Fail(store::store_error::NotEmpty,
                  fmt::format("Im Verzeichnis {} liegt das Archiv {}, das an anderer Stelle des Baums steht. "
                              "Bitte ohne \"Archive auf Dateiebene löschen\" wiederholen",
                              directory, (*foreign)->FullPath()));
    }
    if (const Status inside = RequireNothingForeign(operation, tree, path); !inside) return inside;
  }
  return {};
}

// Stops at the first directory that resists: those around it hold the lists by which it is found.
Status DeleteFolders(run::Run& run, const std::vector<std::string>& directories) {
  for (auto directory = directories.rbegin(); directory != directories.rend(); ++directory) {
    const Status deleted = run.fileSystem().DeleteFolder(*directory, true);
    const bool isGone = deleted || deleted.error().Number == platform::file_error::PathNotFound;
    if (!isGone) return deleted;
  }
  return {};
}

}  // namespace

Status EraseArchiveDirectories(const Operation& operation, store::DvArchive& archive,
                               const store::DvArchive* parent) {
  DoomedTree tree(operation.run.fileSystem());
  if (const Status added = tree.Add(archive); !added) return added;
  for (const std::string& directory : tree.Directories()) {
    if (const Status checked = RequireNothingForeign(operation, tree, directory); !checked) return checked;
  }
  store::EntryPlace place{parent != nullptr ? parent->ID() : "", archive.ID(),
                          archive.DisplayName().value_or("")};
  if (parent == nullptr) {
    const auto around = store::FindParentArchive(*operation.session.Account, archive);
    if (!around) return Fail(around.error());
    place.ParentDirectory = (*around)->ID();
  }
  CommitStore(operation);
  if (const Status deleted = DeleteFolders(operation.run, tree.Directories()); !deleted) return deleted;
  return store::RemoveArchiveEntry(operation.run, place);
}

}  // namespace velmora::operations
