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

}  // namespace

Result<ArchiveLock> ArchiveLock::Acquire(platform::FileSystem& fileSystem, std::string_view directory,
                                         Mode mode) {
  const Result<std::string> hostPath = fileSystem.HostPath(directory);
  if (!hostPath) return Fail(LockError(directory, ENOENT));
  const auto deadline = std::chrono::steady_clock::now() + LongestWait;
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

Status ReplaceArchiveList(platform::FileSystem& fileSystem, std::string_view directory,
                          std::string_view content) {
  const std::string list = JoinPath(directory, archive_file::List);
  if (fileSystem.FileExists(list)) {
    platform::WriteOptions inPlace;
    inPlace.InPlace = true;  // freeing the blocks of the last backup at each change costs more than writing
    const Status backup = fileSystem.CopyFile(list, JoinPath(directory, archive_file::ListBackup), inPlace);
    if (!backup) return backup;
  }
  platform::WriteOptions options;
  options.WorkName = archive_file::Work;
  return fileSystem.ReplaceFile(list, content, options);
}

}  // namespace velmora::store
