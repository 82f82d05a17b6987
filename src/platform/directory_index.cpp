#include "platform/directory_index.h"

#include <dirent.h>
#include <fcntl.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <tuple>
#include <utility>
#include <vector>

#include "base/text.h"
#include "platform/file_errors.h"
#include "platform/host_names.h"

namespace velmora::platform {
namespace {

// Reading so few names costs no more than a few look-ups.
constexpr std::size_t AlwaysWorthReading = 32;
// Names that one own change pays for: the reading of a growing directory sums up to a few times its size.
constexpr std::size_t CreditPerChange = 2;

bool IsSameMoment(const struct timespec& a, const struct timespec& b) {
  return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

bool IsOlderThanASecond(const struct timespec& stamp) {
  struct timespec now {};
  clock_gettime(CLOCK_REALTIME, &now);
  return now.tv_sec - stamp.tv_sec > 1 || (now.tv_sec - stamp.tv_sec == 1 && now.tv_nsec >= stamp.tv_nsec);
}

NameKind KindOf(unsigned char directoryType) {
  if (directoryType == DT_DIR) return NameKind::Folder;
  // A symbolic link counts as what it points to.
  return directoryType == DT_UNKNOWN || directoryType == DT_LNK ? NameKind::Unknown : NameKind::File;
}

std::string FoldHostName(const std::string& hostName) { return FoldCase(ToWindowsName(hostName)); }

}  // namespace

int DirectoryIndex::Visit(const std::string& hostPath) {
  struct stat now {};
  if (stat(hostPath.c_str(), &now) != 0) return errno;
  if (!S_ISDIR(now.st_mode)) return ENOTDIR;
  const bool isSame = descriptor_ && now.st_dev == seen_.st_dev && now.st_ino == seen_.st_ino;
  // A removed directory's number may be given to the next one, so a foreign change opens it again, too.
  if (!isSame || !IsSameMoment(now.st_ctim, isRead_ ? stamp_ : seen_.st_ctim)) {
    Descriptor opened(open(hostPath.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!opened || fstat(opened.Get(), &now) != 0) return errno;
    descriptor_ = std::move(opened);
    isRead_ = false;
  }
  seen_ = now;
  return 0;
}

bool DirectoryIndex::IsWorthReading(Trust trust) const {
  if (!isRead_) return true;
  if (isSettled_) return false;
  if (trust == Trust::List || !isOwnChange_ || IsOlderThanASecond(stamp_)) return true;
  return names_.size() <= std::max(credit_, AlwaysWorthReading);
}

Status DirectoryIndex::Refresh(Trust trust) {
  if (!IsWorthReading(trust)) return {};
  return Read();
}

Status DirectoryIndex::Read() {
  names_.clear();
  numbers_.Clear();
  isRead_ = false;
  const int fd = openat(descriptor_.Get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd < 0) return FailWithErrno(errno, file_error::PathNotFound);
  const std::unique_ptr<DIR, int (*)(DIR*)> directory(fdopendir(fd), closedir);
  if (!directory) {
    const int error = errno;
    close(fd);
    return FailWithErrno(error, file_error::PathNotFound);
  }
  // The stamp is taken before the names: a change while they are read shows as another stamp.
  struct stat before {};
  if (fstat(fd, &before) != 0) return FailWithErrno(errno, file_error::PathNotFound);
  const bool isSettled = IsOlderThanASecond(before.st_ctim);

  std::vector<std::pair<std::string, Name>> found;
  // Null stands for the end and for a failure, which leaves its number. Anything else may leave one, too.
  const auto next = [&] {
    errno = 0;
    return readdir(directory.get());
  };
  while (const dirent* entry = next()) {
    std::string name = entry->d_name;
    if (name == "." || name == "..") continue;
    std::string folded = FoldHostName(name);
    found.emplace_back(std::move(folded), Name{std::move(name), KindOf(entry->d_type)});
  }
  if (errno != 0) return FailWithErrno(errno, file_error::PathNotFound);
  std::ranges::sort(found, [](const auto& a, const auto& b) {
    return std::tie(a.first, a.second.HostName) < std::tie(b.first, b.second.HostName);
  });
  for (auto& name : found) names_.emplace_hint(names_.end(), std::move(name.first), std::move(name.second));

  seen_ = before;
  stamp_ = before.st_ctim;
  isRead_ = true;
  isSettled_ = isSettled;
  isOwnChange_ = false;
  credit_ = 0;
  return {};
}

const DirectoryIndex::Name* DirectoryIndex::Find(const std::string& hostName, std::string_view folded) const {
  const auto [first, last] = names_.equal_range(folded);
  const Name* best = nullptr;
  for (auto name = first; name != last; ++name) {
    if (name->second.HostName == hostName) return &name->second;
    if (best == nullptr || name->second.HostName < best->HostName) best = &name->second;
  }
  return best;
}

void DirectoryIndex::NoteTouched() {
  // Not up to date before the change: then it is not after it either, and is read again at the next use.
  const bool wasRight = isRead_ && IsSameMoment(seen_.st_ctim, stamp_);
  isRead_ = wasRight && fstat(descriptor_.Get(), &seen_) == 0;
  if (!isRead_) return;
  stamp_ = seen_.st_ctim;
  isSettled_ = false;
  isOwnChange_ = true;
  credit_ += CreditPerChange;
}

void DirectoryIndex::NoteCreated(const std::string& hostName, NameKind kind) {
  NoteTouched();
  if (!isRead_) return;
  std::string folded = FoldHostName(hostName);
  const auto [first, last] = names_.equal_range(folded);
  for (auto name = first; name != last; ++name) {
    if (name->second.HostName == hostName) {
      name->second.Kind = kind;
      return;
    }
  }
  names_.emplace(std::move(folded), Name{hostName, kind});
}

void DirectoryIndex::NoteRemoved(const std::string& hostName) {
  NoteTouched();
  if (!isRead_) return;
  const std::string folded = FoldHostName(hostName);
  const auto [first, last] = names_.equal_range(folded);
  for (auto name = first; name != last; ++name) {
    if (name->second.HostName != hostName) continue;
    names_.erase(name);
    numbers_.Release(folded);
    return;
  }
  isRead_ = false;  // a host that ignores case removed what it spells differently
}

}  // namespace velmora::platform
