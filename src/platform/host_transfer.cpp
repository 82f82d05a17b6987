// Copying and moving.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "platform/attributes.h"
#include "platform/exclusive_rename.h"
#include "platform/file_bytes.h"
#include "platform/file_errors.h"
#include "platform/host_files.h"

namespace velmora::platform {
namespace {

int CopyTime(const struct stat& source, int target) {
  const std::array<struct timespec, 2> times{source.st_mtim, source.st_mtim};
  return futimens(target, times.data()) == 0 ? 0 : errno;
}

// The file ends where it has been written to.
int CutHere(int file) {
  const off_t end = lseek(file, 0, SEEK_CUR);
  return end >= 0 && ftruncate(file, end) == 0 ? 0 : errno;
}

// A copy is as private as its source, but can be written: a copy from a read-only disc would else resist
// every later change.
mode_t ModeOfCopy(const struct stat& source) { return (source.st_mode & 0666) | S_IWUSR; }

}  // namespace

Status HostFiles::CopyFile(std::string_view source, std::string_view target, const WriteOptions& options) {
  const Result<Place> from = LocateAndTell(source);
  if (!from) return Fail(from.error());
  const Result<Descriptor> file = OpenSource(*from);
  if (!file) return Fail(file.error());
  struct stat status {};
  if (fstat(file->Get(), &status) != 0) return FailWithErrno(errno);

  Result<Place> to = LocateAndTell(target);
  if (!to) return Fail(to.error());
  Result<Target> copy =
      OpenTarget(std::move(*to), {.Mode = options.Mode,
                                  .How = options.InPlace ? Opening::InPlace : Opening::Replace,
                                  .NewFile = ModeOfCopy(status),
                                  .OwnerOnly = options.OwnerOnly,
                                  .Source = &status});
  if (!copy) return Fail(copy.error());
  int error = CopyAll(file->Get(), copy->File.Get());
  if (error == 0 && options.InPlace) error = CutHere(copy->File.Get());
  if (error == 0) CopyDosAttributes(file->Get(), copy->File.Get());
  if (error == 0 && !options.Time) error = CopyTime(status, copy->File.Get());
  return FinishTarget(*copy, error, options.Time);
}

Status HostFiles::MoveFile(std::string_view source, std::string_view target) {
  Result<Place> from = folders_.Locate(source);
  if (!from) return Fail(from.error());
  struct stat status {};
  std::string oldName = folders_.FindName(*from, &status);
  if (oldName.empty()) return FailWith(file_error::FileNotFound);
  Result<Place> to = folders_.Locate(target);
  if (!to) return Fail(to.error());

  const bool isFolder = S_ISDIR(status.st_mode);
  if (isFolder) {
    watch_.TellFolder(from->In->CanonicalPathOf(oldName));
  } else if (Status told = Tell(*from); !told) {
    return told;
  }
  if (Status told = Tell(*to); !told) return told;
  // Who was told may have changed either folder.
  from = folders_.Locate(source);
  if (!from) return Fail(from.error());
  to = folders_.Locate(target);
  if (!to) return Fail(to.error());
  oldName = folders_.FindName(*from, &status);
  if (oldName.empty()) return FailWith(file_error::FileNotFound);

  const std::string taken = folders_.FindName(*to, nullptr);
  const bool isSameName = from->In == to->In && taken == oldName;
  if (!taken.empty() && !isSameName) return FailWith(file_error::AlreadyExists);
  if (isSameName && oldName == to->HostName) return {};
  if (!from->In->IsWritable() || !to->In->IsWritable()) return FailWith(file_error::AccessDenied);

  const int error = RenameExclusively(from->In->Index.Get(), oldName, to->In->Index.Get(), to->HostName);
  if (error == EXDEV && !isFolder) return MoveAcrossDisks(*from, oldName, target);
  if (error == EEXIST) to->In->Index.MarkStale();
  if (error != 0) return FailWithErrno(error);
  from->In->Index.NoteRemoved(oldName);
  to->In->Index.NoteCreated(to->HostName, isFolder ? NameKind::Folder : NameKind::File);
  if (isFolder) {
    const std::string oldPath = from->In->CanonicalPathOf(oldName);
    folders_.Forget(oldPath);
    watch_.CountFolderChange(oldPath);
    watch_.CountFolderChange(to->In->CanonicalPathOf(to->HostName));
  }
  NoteChange(*from->In);
  NoteChange(*to->In);
  return {};
}

Status HostFiles::MoveAcrossDisks(const Place& source, const std::string& sourceName,
                                  std::string_view target) {
  Result<Descriptor> file = OpenSource({source.In, sourceName, source.Folded});
  if (!file) return Fail(file.error());
  struct stat status {};
  if (fstat(file->Get(), &status) != 0) return FailWithErrno(errno);
  Result<Place> to = folders_.Locate(target);
  if (!to) return Fail(to.error());
  Result<Target> copy =
      OpenTarget(std::move(*to), {.Mode = Create::Exclusive, .NewFile = ModeOfCopy(status)});
  if (!copy) return Fail(copy.error());
  int error = CopyAll(file->Get(), copy->File.Get());
  if (error == 0) CopyDosAttributes(file->Get(), copy->File.Get());
  if (error == 0) error = CopyTime(status, copy->File.Get());
  if (error == 0 && fchmod(copy->File.Get(), status.st_mode & 0777) != 0) error = errno;
  // The source goes only when the copy cannot be lost any more.
  if (error == 0 && fsync(copy->File.Get()) != 0) error = errno;
  if (Status finished = FinishTarget(*copy, error, std::nullopt); !finished) return finished;
  if (unlinkat(source.In->Index.Get(), sourceName.c_str(), 0) != 0) return FailWithErrno(errno);
  source.In->Index.NoteRemoved(sourceName);
  NoteChange(*source.In);
  return {};
}

}  // namespace velmora::platform
