// Replacing a file as a whole, and bringing what was written to its disk.

#include <fcntl.h>
#include <stdlib.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <optional>
#include <vector>

#include "base/text.h"
#include "platform/attributes.h"
#include "platform/disk_sync.h"
#include "platform/exclusive_rename.h"
#include "platform/file_bytes.h"
#include "platform/file_errors.h"
#include "platform/host_files.h"

namespace velmora::platform {
namespace {

constexpr int MaxTemporaryNames = 100;
constexpr std::string_view TemporaryPrefix = ".velmora-";
constexpr std::string_view TemporarySuffix = ".tmp";

// Whoever writes a temporary file holds its lock, so that one without was left by a process that was killed.
// Where a file system has no such locks, no file counts as left.
enum class Held { ByUs, ByOthers, Unknown };
Held TryHold(int file) {
  if (flock(file, LOCK_EX | LOCK_NB) == 0) return Held::ByUs;
  return errno == EWOULDBLOCK ? Held::ByOthers : Held::Unknown;
}

bool IsLinked(int file) {
  struct stat status {};
  return fstat(file, &status) != 0 || status.st_nlink > 0;
}

// Removes the temporary files of processes that were killed.
void RemoveAbandoned(DirectoryIndex& index) {
  const std::string prefix = FoldCase(TemporaryPrefix);
  std::vector<std::string> abandoned;
  for (auto name = index.All().lower_bound(prefix);
       name != index.All().end() && name->first.starts_with(prefix); ++name) {
    if (name->first.ends_with(TemporarySuffix)) abandoned.push_back(name->second.HostName);
  }
  for (const std::string& name : abandoned) {
    const Descriptor file(
        openat(index.Get(), name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat status {};
    const bool isFile = file && fstat(file.Get(), &status) == 0 && S_ISREG(status.st_mode);
    if (isFile && TryHold(file.Get()) == Held::ByUs && unlinkat(index.Get(), name.c_str(), 0) == 0) {
      index.NoteRemoved(name);
    }
  }
}

// A new file of a name that nobody uses, or of one kept for such work, removed again unless it was renamed.
class BesideFile {
 public:
  explicit BesideFile(int directory) : directory_(directory) {}
  BesideFile(const BesideFile&) = delete;
  BesideFile& operator=(const BesideFile&) = delete;
  ~BesideFile() {
    if (file_ && !isKept_) (void)unlinkat(directory_, name_.c_str(), 0);  // nothing more can be done
  }

  // `workName`: the name to use, "" for one of our own.
  int Make(mode_t mode, const std::string& workName) {
    if (!workName.empty()) {
      // What a killed process left may be open to others, or a link.
      if (unlinkat(directory_, workName.c_str(), 0) != 0 && errno != ENOENT) return errno;
      return TryName(workName, mode);
    }
    for (int attempt = 0; attempt < MaxTemporaryNames; ++attempt) {
      const std::string name = std::string(TemporaryPrefix) + std::to_string(getpid()) + "-" +
                               std::to_string(attempt) + std::string(TemporarySuffix);
      const int error = TryName(name, mode);
      if (error != 0 && error != EEXIST) return error;
      // Between its creation and the lock it may have passed for one that was left.
      if (error == 0 && TryHold(file_.Get()) != Held::ByOthers && IsLinked(file_.Get())) return 0;
      file_ = Descriptor();
    }
    return EEXIST;
  }
  int Get() const { return file_.Get(); }

  int RenameOver(const std::string& name, bool exclusive) {
    const int error = exclusive ? RenameExclusively(directory_, name_, directory_, name)
                      : renameat(directory_, name_.c_str(), directory_, name.c_str()) == 0 ? 0
                                                                                           : errno;
    isKept_ = error == 0;
    return error;
  }

 private:
  int TryName(const std::string& name, mode_t mode) {
    name_ = name;
    file_ = Descriptor(openat(directory_, name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    return file_ ? 0 : errno;
  }

  int directory_;
  std::string name_;
  Descriptor file_;
  bool isKept_ = false;
};

int SyncDirectory(int directory) {
  const Descriptor readable(openat(directory, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  // Some file systems cannot sync directories and say so; they keep their names by other means.
  if (!readable || fsync(readable.Get()) == 0 || errno == EINVAL || errno == ENOTSUP) return 0;
  return errno;
}

struct Replacement {
  int Directory;
  std::string Name;
  bool IsExclusive;
  bool OwnerOnly;
  std::optional<DateTime> Time;
  const struct stat* Old;  // null for a new file
  std::string WorkName;    // "" for a name of our own
};

int Replace(const Replacement& wanted, std::string_view bytes) {
  BesideFile beside(wanted.Directory);
  const mode_t mode = wanted.OwnerOnly        ? S_IRUSR | S_IWUSR
                      : wanted.Old != nullptr ? wanted.Old->st_mode & PermissionBits
                                              : 0666;
  if (const int error = beside.Make(mode, wanted.WorkName); error != 0) return error;
  if (wanted.Old != nullptr) {
    if (fchmod(beside.Get(), mode) != 0) return errno;
    // Only the root user may give a file away, and nobody else has to.
    (void)fchown(beside.Get(), wanted.Old->st_uid, wanted.Old->st_gid);
    const Descriptor old(openat(wanted.Directory, wanted.Name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (old) CopyDosAttributes(old.Get(), beside.Get());
  }
  if (const int error = WriteAll(beside.Get(), bytes); error != 0) return error;
  if (wanted.Time) {
    if (const int error = StoreTime(beside.Get(), *wanted.Time); error != 0) return error;
  }
  if (fsync(beside.Get()) != 0) return errno;
  if (const int error = beside.RenameOver(wanted.Name, wanted.IsExclusive); error != 0) return error;
  return SyncDirectory(wanted.Directory);
}

// Where a symbolic link leads: what it points to is replaced, the link stays.
struct LinkTarget {
  Descriptor Directory;
  std::string Name;
};

std::optional<LinkTarget> FollowLink(const std::string& hostPath) {
  const std::unique_ptr<char, decltype(&free)> resolved(realpath(hostPath.c_str(), nullptr), free);
  if (!resolved) return std::nullopt;
  const std::string path = resolved.get();
  const std::size_t separator = path.rfind('/');
  const std::string directory = separator == 0 ? "/" : path.substr(0, separator);
  return LinkTarget{Descriptor(open(directory.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)),
                    path.substr(separator + 1)};
}

}  // namespace

Status HostFiles::ReplaceFile(std::string_view path, std::string_view bytes, const WriteOptions& options) {
  const Result<Place> place = LocateAndTell(path);
  if (!place) return Fail(place.error());
  Folder& folder = *place->In;
  (void)folder.Index.Refresh(DirectoryIndex::Trust::LookUp);  // unreadable: exact names only
  RemoveAbandoned(folder.Index);
  struct stat old {};
  const std::string found = folders_.FindName(*place, &old);
  const bool isExclusive = options.Mode == Create::Exclusive;
  if (!found.empty() && isExclusive) return FailWith(file_error::AlreadyExists);

  Replacement wanted{
      folder.Index.Get(), found.empty() ? place->HostName : found, isExclusive,     options.OwnerOnly,
      options.Time,       found.empty() ? nullptr : &old,          options.WorkName};
  std::optional<LinkTarget> link;
  if (!found.empty() && S_ISLNK(old.st_mode)) {
    link = FollowLink(folder.HostPathOf(found));
    if (!link || !link->Directory ||
        fstatat(link->Directory.Get(), link->Name.c_str(), &old, AT_SYMLINK_NOFOLLOW) != 0) {
      return FailWith(file_error::FileNotFound);
    }
    wanted.Directory = link->Directory.Get();
    wanted.Name = link->Name;
  }
  if (!found.empty() && (!S_ISREG(old.st_mode) || IsReadOnly(old))) return FailWith(file_error::AccessDenied);
  if (!link && !folder.IsWritable()) return FailWith(file_error::AccessDenied);

  // A work file that a killed process left is in the index and goes with the rename.
  const std::string foldedWork = FoldCase(options.WorkName);
  const bool hasOldWork = !link && folder.Index.Find(options.WorkName, foldedWork) != nullptr;

  const int error = Replace(wanted, bytes);
  if (hasOldWork) folder.Index.NoteRemoved(options.WorkName);
  if (found.empty() && error == 0) {
    folder.Index.NoteCreated(place->HostName, NameKind::File);
  } else {
    folder.Index.NoteTouched();
  }
  NoteChange(folder);
  if (error != 0) return FailWithErrno(error, file_error::PathNotFound);
  return {};
}

Status HostFiles::SyncWritten() {
  // One call brings all of a disk's changes to it, however many files they lie in.
  for (const auto& [disk, folder] : written_) {
    if (const int error = SyncDisk(folder, disk); error != 0) return FailWithErrno(error);
  }
  written_.clear();
  return {};
}

}  // namespace velmora::platform
