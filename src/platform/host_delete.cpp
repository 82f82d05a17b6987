// Deleting, making folders, attributes and times.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <vector>

#include "platform/attributes.h"
#include "platform/file_errors.h"
#include "platform/host_files.h"
#include "platform/name_mask.h"
#include "platform/tree_deletion.h"

namespace velmora::platform {
namespace {

struct MaskedPath {
  std::string_view Folder;
  std::string_view Mask;
};

// Nothing when the last component is a plain name.
std::optional<MaskedPath> SplitMask(std::string_view path) {
  const std::size_t separator = path.find_last_of("\\/");
  if (separator == std::string_view::npos || !HasWildcard(path.substr(separator))) return std::nullopt;
  return MaskedPath{path.substr(0, separator), path.substr(separator + 1)};
}

bool LeadsToFolder(const Folder& folder, const std::string& hostName) {
  struct stat status {};
  return fstatat(folder.Index.Get(), hostName.c_str(), &status, 0) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace

Status HostFiles::DeleteFile(std::string_view path, bool force) {
  if (const auto masked = SplitMask(path)) return DeleteMasked(masked->Folder, masked->Mask, force, false);
  const Result<Place> place = LocateAndTell(path);
  if (!place) return Fail(place.error());
  const std::string name = folders_.FindName(*place, nullptr);
  if (name.empty()) return FailWith(file_error::FileNotFound);
  return DeleteOneFile(place->In, name, force);
}

Status HostFiles::DeleteFolder(std::string_view path, bool force) {
  if (const auto masked = SplitMask(path)) return DeleteMasked(masked->Folder, masked->Mask, force, true);
  const Result<Place> place = folders_.Locate(path);
  if (!place) return Fail(place.error());
  const std::string name = folders_.FindName(*place, nullptr);
  if (name.empty()) return FailWith(file_error::PathNotFound);
  return DeleteOneFolder(place->In, name, force);
}

Status HostFiles::DeleteMasked(std::string_view folder, std::string_view mask, bool force, bool folders) {
  const Result<std::shared_ptr<Folder>> found = folders_.Find(folder);
  if (!found) return Fail(found.error());
  DirectoryIndex& index = (*found)->Index;
  const NameMask nameMask(mask);
  if (Status fresh = index.Refresh(DirectoryIndex::Trust::List); !fresh) return fresh;
  std::vector<std::string> names;
  const std::string& prefix = nameMask.LiteralPrefix();
  for (auto name = index.All().lower_bound(prefix); name != index.All().end(); ++name) {
    if (!name->first.starts_with(prefix)) break;
    if (!nameMask.Matches(name->first)) continue;
    if (LeadsToFolder(**found, name->second.HostName) == folders) names.push_back(name->second.HostName);
  }
  if (names.empty()) return FailWith(folders ? file_error::PathNotFound : file_error::FileNotFound);
  Status result;
  for (const std::string& name : names) {
    Status deleted;
    if (folders) {
      deleted = DeleteOneFolder(*found, name, force);
    } else {
      deleted = Tell({*found, name, ""});
      if (deleted) deleted = DeleteOneFile(*found, name, force);
    }
    if (!deleted && result) result = deleted;  // the others go nevertheless; the first failure is told
  }
  return result;
}

Status HostFiles::DeleteOneFile(const std::shared_ptr<Folder>& folder, const std::string& hostName,
                                bool force) {
  struct stat status {};
  const int directory = folder->Index.Get();
  if (fstatat(directory, hostName.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) return FailWithErrno(errno);
  if (LeadsToFolder(*folder, hostName)) return FailWith(file_error::FileNotFound);
  if ((IsReadOnly(status) && !force) || !folder->IsWritable()) return FailWith(file_error::AccessDenied);
  if (unlinkat(directory, hostName.c_str(), 0) != 0) return FailWithErrno(errno);
  folder->Index.NoteRemoved(hostName);
  NoteChange(*folder);
  return {};
}

Status HostFiles::DeleteOneFolder(const std::shared_ptr<Folder>& folder, const std::string& hostName,
                                  bool force) {
  const int directory = folder->Index.Get();
  struct stat status {};
  if (fstatat(directory, hostName.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
    return FailWithErrno(errno, file_error::PathNotFound);
  }
  if (!LeadsToFolder(*folder, hostName)) return FailWith(file_error::PathNotFound);
  if (!folder->IsWritable()) return FailWith(file_error::AccessDenied);
  const std::string path = folder->CanonicalPathOf(hostName);
  if (S_ISLNK(status.st_mode)) {
    if (unlinkat(directory, hostName.c_str(), 0) != 0) return FailWithErrno(errno);
  } else {
    watch_.TellFolder(path);
    // Who was told may have changed the folder.
    if (const int error = folder->Index.Visit(folder->HostPath); error != 0) {
      return FailWithErrno(error, file_error::PathNotFound);
    }
    TreeDeletion deletion{force, {}};
    if (watch_.IsWatched(path)) {
      deletion.BeforeFile = [&](const std::string& below, const std::string& name) {
        SubtreeWatch::Scope scope;
        watch_.TellFile(below.empty() ? path : path + "/" + below, scope, name);
      };
    }
    const Status deleted = DeleteTree(folder->Index.Get(), hostName, deletion);
    folders_.Forget(path);
    watch_.CountFolderChange(path);
    NoteChange(*folder);
    if (!deleted) return deleted;
  }
  folder->Index.NoteRemoved(hostName);
  NoteChange(*folder);
  return {};
}

Status HostFiles::CreateFolder(std::string_view path, bool ownerOnly) {
  const Result<Place> place = folders_.Locate(path);
  if (!place) {
    // The root of a drive or share is not made here, but it may exist.
    if (folders_.Find(path)) return FailWith(file_error::AlreadyExists);
    return Fail(place.error());
  }
  if (!folders_.FindName(*place, nullptr).empty()) return FailWith(file_error::AlreadyExists);
  if (!place->In->IsWritable()) return FailWith(file_error::AccessDenied);
  if (mkdirat(place->In->Index.Get(), place->HostName.c_str(), ownerOnly ? S_IRWXU : 0777) != 0) {
    return FailWithErrno(errno, file_error::PathNotFound);
  }
  place->In->Index.NoteCreated(place->HostName, NameKind::Folder);
  NoteChange(*place->In);
  return {};
}

Status HostFiles::SetHidden(std::string_view path, bool hidden) {
  const Result<std::string> hostPath = ExistingHostPath(path);
  if (!hostPath) return Fail(hostPath.error());
  return StoreHidden(*hostPath, hidden);
}

Status HostFiles::SetReadOnly(std::string_view path, bool readOnly) {
  const Result<std::string> hostPath = ExistingHostPath(path);
  if (!hostPath) return Fail(hostPath.error());
  struct stat status {};
  if (stat(hostPath->c_str(), &status) != 0) return FailWithErrno(errno);
  const mode_t old = status.st_mode & PermissionBits;
  const mode_t wanted = readOnly ? old & ~mode_t{S_IWUSR} : old | S_IWUSR;
  if (wanted != old && chmod(hostPath->c_str(), wanted) != 0) return FailWithErrno(errno);
  return {};
}

Status HostFiles::SetTimes(std::string_view path, DateTime time) {
  const Result<std::string> hostPath = ExistingHostPath(path);
  if (!hostPath) return Fail(hostPath.error());
  const std::array<struct timespec, 2> times{ToTimespec(time), ToTimespec(time)};
  if (utimensat(AT_FDCWD, hostPath->c_str(), times.data(), 0) != 0) return FailWithErrno(errno);
  return {};
}

}  // namespace velmora::platform
