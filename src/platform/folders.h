// The folders in use: from Windows paths to open host directories. A bounded number is kept open, each with
// the index of its names; the least recently used one goes first.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "base/result.h"
#include "platform/directory_index.h"
#include "platform/path_map.h"
#include "platform/subtree_watch.h"

namespace velmora::platform {

struct Folder {
  std::string HostPath;       // as found, in the case that the host has
  std::string CanonicalPath;  // without symbolic links
  DirectoryIndex Index;
  SubtreeWatch::Scope Scope;
  std::uint64_t LastUse = 0;

  // Of a name in it, by either path.
  std::string HostPathOf(std::string_view hostName) const;
  std::string CanonicalPathOf(std::string_view hostName) const;
  bool IsWritable() const { return (Index.State().st_mode & S_IWUSR) != 0; }
};

// A file or folder that need not exist: the folder that it lies in, and its host name as the caller spelled
// it.
struct Place {
  std::shared_ptr<Folder> In;
  std::string HostName;
  std::string Folded;  // of the Windows name
};

class Folders {
 public:
  // `map` must outlive this.
  explicit Folders(const PathMap& map) : map_(map) {}

  // The folder a path names, its state as of now. PathNotFound, AccessDenied, BadName.
  Result<std::shared_ptr<Folder>> Find(std::string_view windowsPath);
  // Where the last component of a path lies. PathNotFound also for the root of a drive or share.
  Result<Place> Locate(std::string_view windowsPath);
  // The host name that a place stands for: as spelled, else with the case that the host has. "" when
  // nothing of that name exists. `status`: of the name, a symbolic link not followed; may be null.
  std::string FindName(const Place& place, struct stat* status);
  // A folder was renamed or removed: it and what lies below is not known any more.
  void Forget(const std::string& canonicalPath);

 private:
  Result<std::string> FindHostPath(std::string_view windowsPath);
  Result<std::shared_ptr<Folder>> Open(const std::string& hostPath);
  void MakeRoom();

  struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
  };
  using Table = std::unordered_map<std::string, std::shared_ptr<Folder>, TextHash, std::equal_to<>>;

  const PathMap& map_;
  Table byWindowsPath_;  // as callers spell them
  Table byHostPath_;
  std::uint64_t uses_ = 0;
};

}  // namespace velmora::platform
