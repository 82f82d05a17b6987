#include "platform/folders.h"

#include <fcntl.h>
#include <stdlib.h>

#include <algorithm>
#include <cerrno>

#include "base/text.h"
#include "platform/file_errors.h"
#include "platform/host_names.h"

namespace velmora::platform {
namespace {

constexpr std::size_t MaxOpenFolders = 64;
// Spellings of one folder are few; a caller that invents them must not make the table grow for ever.
constexpr std::size_t MaxSpellings = 1024;

std::string Canonical(const std::string& hostPath) {
  const std::unique_ptr<char, decltype(&free)> resolved(realpath(hostPath.c_str(), nullptr), free);
  return resolved ? std::string(resolved.get()) : hostPath;
}

bool IsSameDirectory(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

}  // namespace

std::string Folder::HostPathOf(std::string_view hostName) const { return JoinHostPath(HostPath, hostName); }
std::string Folder::CanonicalPathOf(std::string_view hostName) const {
  return JoinHostPath(CanonicalPath, hostName);
}

Result<std::shared_ptr<Folder>> Folders::Find(std::string_view windowsPath) {
  while (windowsPath.ends_with('\\') || windowsPath.ends_with('/')) windowsPath.remove_suffix(1);
  if (const auto known = byWindowsPath_.find(windowsPath); known != byWindowsPath_.end()) {
    const std::shared_ptr<Folder> folder = known->second;
    const struct stat before = folder->Index.State();
    if (folder->Index.Visit(folder->HostPath) == 0) {
      if (!IsSameDirectory(before, folder->Index.State())) {
        folder->CanonicalPath = Canonical(folder->HostPath);
        folder->Scope = {};
      }
      folder->LastUse = ++uses_;
      return folder;
    }
    byWindowsPath_.erase(known);  // gone or renamed by another program: look where it is now
  }
  Result<std::string> hostPath = FindHostPath(windowsPath);
  if (!hostPath) return Fail(hostPath.error());
  Result<std::shared_ptr<Folder>> folder = Open(*hostPath);
  if (!folder) return folder;
  if (byWindowsPath_.size() >= MaxSpellings) byWindowsPath_.clear();
  byWindowsPath_.emplace(windowsPath, *folder);
  return folder;
}

Result<std::string> Folders::FindHostPath(std::string_view windowsPath) {
  const Result<MappedPath> mapped = map_.Parse(windowsPath);
  if (!mapped) return Fail(mapped.error());
  std::string exact = mapped->HostPath();
  struct stat status {};
  if (stat(exact.c_str(), &status) == 0) {
    if (!S_ISDIR(status.st_mode)) return FailWith(file_error::PathNotFound);
    return exact;
  }
  if (errno != ENOENT && errno != ENOTDIR) return FailWithErrno(errno, file_error::PathNotFound);
  // Not in this case: name by name.
  std::string path = mapped->HostRoot.empty() ? "/" : mapped->HostRoot;
  for (const std::string& name : mapped->Names) {
    Result<std::shared_ptr<Folder>> folder = Open(path);
    if (!folder) return Fail(folder.error());
    const std::string found = FindName({*folder, name, FoldCase(ToWindowsName(name))}, nullptr);
    if (found.empty()) return FailWith(file_error::PathNotFound);
    path = (*folder)->HostPathOf(found);
  }
  return path;
}

Result<std::shared_ptr<Folder>> Folders::Open(const std::string& hostPath) {
  std::shared_ptr<Folder> folder;
  if (const auto known = byHostPath_.find(hostPath); known != byHostPath_.end()) {
    folder = known->second;
  } else {
    folder = std::make_shared<Folder>();
    folder->HostPath = hostPath;
  }
  const struct stat before = folder->Index.State();
  if (const int error = folder->Index.Visit(hostPath); error != 0) {
    byHostPath_.erase(hostPath);
    return FailWithErrno(error, file_error::PathNotFound);
  }
  if (folder->CanonicalPath.empty() || !IsSameDirectory(before, folder->Index.State())) {
    folder->CanonicalPath = Canonical(hostPath);
    folder->Scope = {};
  }
  folder->LastUse = ++uses_;
  if (byHostPath_.emplace(hostPath, folder).second) MakeRoom();
  return folder;
}

void Folders::MakeRoom() {
  if (byHostPath_.size() <= MaxOpenFolders) return;
  const auto oldest =
      std::ranges::min_element(byHostPath_, {}, [](const auto& entry) { return entry.second->LastUse; });
  const std::shared_ptr<Folder> folder = oldest->second;
  byHostPath_.erase(oldest);
  std::erase_if(byWindowsPath_, [&](const auto& entry) { return entry.second == folder; });
}

Result<Place> Folders::Locate(std::string_view windowsPath) {
  while (windowsPath.ends_with('\\') || windowsPath.ends_with('/')) windowsPath.remove_suffix(1);
  const std::size_t separator = windowsPath.find_last_of("\\/");
  if (separator == std::string_view::npos) return FailWith(file_error::PathNotFound);
  const std::string_view name = windowsPath.substr(separator + 1);
  Result<std::string> hostName = ToHostName(name);
  if (!hostName) return Fail(hostName.error());
  Result<std::shared_ptr<Folder>> folder = Find(windowsPath.substr(0, separator));
  if (!folder) return Fail(folder.error());
  return Place{std::move(*folder), std::move(*hostName), FoldCase(name)};
}

std::string Folders::FindName(const Place& place, struct stat* status) {
  struct stat unused {};
  struct stat* const result = status != nullptr ? status : &unused;
  DirectoryIndex& index = place.In->Index;
  if (fstatat(index.Get(), place.HostName.c_str(), result, AT_SYMLINK_NOFOLLOW) == 0) return place.HostName;
  // An unreadable folder still opens what is named exactly.
  if (!index.Refresh(DirectoryIndex::Trust::LookUp)) return "";
  const DirectoryIndex::Name* name = index.Find(place.HostName, place.Folded);
  if (name == nullptr) return "";
  if (fstatat(index.Get(), name->HostName.c_str(), result, AT_SYMLINK_NOFOLLOW) == 0) return name->HostName;
  // Removed by another program since the index was read.
  index.MarkStale();
  if (!index.Refresh(DirectoryIndex::Trust::LookUp)) return "";
  name = index.Find(place.HostName, place.Folded);
  if (name == nullptr) return "";
  return fstatat(index.Get(), name->HostName.c_str(), result, AT_SYMLINK_NOFOLLOW) == 0 ? name->HostName : "";
}

void Folders::Forget(const std::string& canonicalPath) {
  const auto isAtOrBelow = [&](const auto& entry) {
    const std::string& path = entry.second->CanonicalPath;
    return path == canonicalPath || path.starts_with(canonicalPath + "/");
  };
  std::erase_if(byWindowsPath_, isAtOrBelow);
  std::erase_if(byHostPath_, isAtOrBelow);
}

}  // namespace velmora::platform
