#include "store/archive_files.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <system_error>
#include <thread>
#include <utility>

#include "base/paths.h"
#include "store/errors.h"

namespace velmora::store {
namespace {

constexpr std::chrono::seconds LongestWait{5};
constexpr std::chrono::milliseconds FirstPause{1}, LongestPause{20};

Error LockError(std::string_view directory, int systemError) {
  const std::string reason = std::generic_category().message(systemError);
  switch (systemError) {
    case ENOENT:
    case ENOTDIR:
      return {store_error::NotFound, fmt::format("Das Archivverzeichnis {} ist nicht vorhanden", directory)};
    case EACCES:
    case EPERM:
      return {store_error::NoAccess,
              fmt::format("Auf das Archivverzeichnis {} besteht kein Zugriff", directory)};
    default:
      return {store_error::Failed,
              fmt::format("Das Archivverzeichnis {} lässt sich nicht sperren: {}", directory, reason)};
  }
}

// Whether the descriptor still is the directory that the path names: it may have been replaced during the
// wait.
bool IsStill(int descriptor, const std::string& hostPath) {
  struct stat opened {
  }, named{};
  return ::fstat(descriptor, &opened) == 0 && ::stat(hostPath.c_str(), &named) == 0 &&
         opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

Error ReadError(std::string_view directory, int number, std::string_view reason) {
  return {number, fmt::format("Die Archivliste in {} ist nicht lesbar: {}", directory, reason)};
}

// A directory that may not be searched looks as one that has no list.
bool MaySearch(platform::FileSystem& fileSystem, const std::string& directory) {
  const Result<std::string> hostPath = fileSystem.HostPath(directory);
  return hostPath && ::faccessat(AT_FDCWD, hostPath->c_str(), X_OK, AT_EACCESS) == 0;
}

Result<std::string> ReadRecordFile(platform::FileSystem& fileSystem, std::string_view directory,
                                   std::string_view name) {
  const std::string file = JoinPath(NormalizePath(directory), name);
  const Result<platform::FileEntry> entry = fileSystem.GetEntry(file);
  if (!entry) return Fail(entry.error());
  if (entry->IsFolder || entry->Size > LongestRecordFile)
    return Fail(ReadError(directory, store_error::Damaged, fmt::format("{} ist keine Archivliste", name)));
  Result<std::string> content = fileSystem.ReadFile(file);
  if (content) return content;
  const bool denied = content.error().Number == platform::file_error::AccessDenied;
  return Fail(
      ReadError(directory, denied ? store_error::NoAccess : store_error::Damaged, content.error().Text));
}

}  // namespace

Result<ArchiveLock> ArchiveLock::Acquire(platform::FileSystem& fileSystem, std::string_view directory,
                                         Mode mode, Patience patience) {
  const Result<std::string> hostPath = fileSystem.HostPath(directory);
  if (!hostPath) return Fail(LockError(directory, ENOENT));
  const auto deadline =
      std::chrono::steady_clock::now() + (patience == Patience::Usual ? LongestWait : LongestWait.zero());
  const int operation = (mode == Mode::Exclusive ? LOCK_EX : LOCK_SH) | LOCK_NB;
  auto pause = FirstPause;
  while (true) {
    ArchiveLock lock(::open(hostPath->c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (lock.descriptor_ < 0) return Fail(LockError(directory, errno));
    while (::flock(lock.descriptor_, operation) != 0) {
      if (errno == EINTR) continue;
      if (errno != EWOULDBLOCK) return Fail(LockError(directory, errno));
      if (std::chrono::steady_clock::now() >= deadline)
        return Fail(
            store_error::Busy,
            fmt::format("Das Archivverzeichnis {} wird von einem anderen Programm benutzt", directory));
      std::this_thread::sleep_for(pause);
      pause = std::min(pause * 2, LongestPause);
    }
    if (IsStill(lock.descriptor_, *hostPath)) return lock;
  }
}

ArchiveLock::ArchiveLock(ArchiveLock&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}

ArchiveLock& ArchiveLock::operator=(ArchiveLock&& other) noexcept {
  std::swap(descriptor_, other.descriptor_);
  return *this;
}

ArchiveLock::~ArchiveLock() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

DirectoryState LookForDirectory(platform::FileSystem& fileSystem, std::string_view directory) {
  std::string place = StripBackslash(NormalizePath(directory));
  if (fileSystem.FolderExists(place)) return DirectoryState::There;
  while (true) {
    std::string above = StripBackslash(DirectoryOf(place));
    if (above.empty() || above.size() >= place.size() || above == "\\") return DirectoryState::Unknown;
    place = std::move(above);
    if (fileSystem.FolderExists(place))
      return MaySearch(fileSystem, place) ? DirectoryState::Gone : DirectoryState::Unknown;
  }
}

bool IsListInterrupted(platform::FileSystem& fileSystem, std::string_view directory) {
  const std::string place = NormalizePath(directory);
  return fileSystem.FileExists(JoinPath(place, archive_file::Work)) &&
         fileSystem.FileExists(JoinPath(place, archive_file::ListBackup)) &&
         !fileSystem.FileExists(JoinPath(place, archive_file::List));
}

Result<std::string> ReadArchiveList(platform::FileSystem& fileSystem, std::string_view directory) {
  const std::string place = NormalizePath(directory);
  Result<std::string> content = ReadRecordFile(fileSystem, place, archive_file::List);
  if (content) return content;
  switch (content.error().Number) {
    case platform::file_error::FileNotFound:
      break;
    case platform::file_error::PathNotFound:
      return Fail(LockError(directory, ENOENT));
    case platform::file_error::AccessDenied:
      return Fail(LockError(directory, EACCES));
    default:
      return content;
  }
  if (!fileSystem.FolderExists(place)) return Fail(LockError(directory, ENOENT));
  if (!MaySearch(fileSystem, place)) return Fail(LockError(directory, EACCES));
  if (IsListInterrupted(fileSystem, place))
    return ReadRecordFile(fileSystem, place, archive_file::ListBackup);
  return std::string();
}

Status RecoverArchiveList(platform::FileSystem& fileSystem, std::string_view directory) {
  if (!IsListInterrupted(fileSystem, directory)) return {};
  const std::string place = NormalizePath(directory);
  const Result<std::string> backup = ReadRecordFile(fileSystem, place, archive_file::ListBackup);
  if (!backup) return Fail(backup.error());
  // Not by way of the work file: it is what tells of the interruption, until the list stands again.
  if (const Status restored = fileSystem.ReplaceFile(JoinPath(place, archive_file::List), *backup); !restored)
    return restored;
  // One that stays means nothing any more, and the next rewrite takes it away.
  (void)fileSystem.DeleteFile(JoinPath(place, archive_file::Work), true);
  return {};
}

Error ArchiveWriteError(std::string_view directory, const Error& error) {
  namespace file_error = platform::file_error;
  int number = store_error::Failed;
  if (error.Number == file_error::AccessDenied) number = store_error::NoAccess;
  if (error.Number == file_error::PathNotFound) number = store_error::NotFound;
  if (error.Number >= store_error::NotFound) number = error.Number;
  return {number, fmt::format("{}: {}", directory, error.Text)};
}

Status ReplaceArchiveList(platform::FileSystem& fileSystem, std::string_view directory,
                          std::string_view content) {
  if (const Status recovered = RecoverArchiveList(fileSystem, directory); !recovered) return recovered;
  const std::string place = NormalizePath(directory);
  const std::string list = JoinPath(place, archive_file::List);
  const std::string backup = JoinPath(place, archive_file::ListBackup);
  platform::WriteOptions options;
  options.WorkName = archive_file::Work;
  if (fileSystem.FileExists(list)) {
    platform::WriteOptions inPlace;
    inPlace.InPlace = true;  // freeing the blocks of the last backup at each change costs more than writing
    if (const Status kept = fileSystem.CopyFile(list, backup, inPlace); !kept) return kept;
  } else if (fileSystem.FileExists(backup)) {
    // Beside a backup without a list, the work file would tell of an interruption.
    options.WorkName.clear();
  }
  return fileSystem.ReplaceFile(list, content, options);
}

}  // namespace velmora::store
