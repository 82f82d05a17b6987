#include "store/embedded/move_journal.h"

#include <fcntl.h>
#include <fmt/core.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <optional>
#include <random>
#include <system_error>
#include <utility>

#include "base/paths.h"
#include "base/text.h"
#include "platform/file_bytes.h"
#include "store/errors.h"

namespace velmora::store::embedded {
namespace {

// No process moves into more archives; a longer file was not written here.
constexpr off_t LongestFile = 64 << 20;

Error JournalError(std::string_view directory, int systemError) {
  return {store_error::Failed, fmt::format("Das Verschieben lässt sich in {} nicht vermerken: {}", directory,
                                           std::generic_category().message(systemError))};
}

bool IsStillNamed(int descriptor, const std::string& hostPath) {
  struct stat opened {
  }, named{};
  return ::fstat(descriptor, &opened) == 0 && ::stat(hostPath.c_str(), &named) == 0 &&
         opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

void SyncFolder(const std::string& hostFolder) {
  const int descriptor = ::open(hostFolder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  (void)::fsync(descriptor);  // a note that is lost with its folder leaves an entry twice, not lost
  ::close(descriptor);
}

// Nothing when it cannot be read, or is no file of notes.
std::optional<std::string> ReadNotes(int descriptor) {
  struct stat status {};
  if (::fstat(descriptor, &status) != 0 || status.st_size > LongestFile) return std::nullopt;
  std::string content;
  if (platform::ReadWhole(descriptor, content) != 0) return std::nullopt;
  return content;
}

}  // namespace

// --- Writing. ---

MoveJournal::MoveJournal(platform::FileSystem& fileSystem, std::string directory)
    : fileSystem_(fileSystem), directory_(std::move(directory)) {}

MoveJournal::~MoveJournal() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

Status MoveJournal::NoteTarget(std::string_view archiveDirectory) {
  std::string key = FoldCase(archiveDirectory);
  if (noted_.contains(key)) return {};
  if (descriptor_ < 0) {
    if (const Status made = MakeFile(); !made) return made;
  }
  struct stat before {};
  if (::fstat(descriptor_, &before) != 0) return Fail(JournalError(directory_, errno));
  int error = platform::WriteAll(descriptor_, fmt::format("{}\n", archiveDirectory));
  if (error == 0 && ::fdatasync(descriptor_) != 0) error = errno;
  if (error != 0) {
    // Half a line would make one of itself and the next note, and neither archive would be found.
    (void)::ftruncate(descriptor_, before.st_size);
    return Fail(JournalError(directory_, error));
  }
  noted_.insert(std::move(key));
  return {};
}

Status MoveJournal::MakeFile() {
  if (const Status made = fileSystem_.CreateFolder(directory_);
      !made && made.error().Number != platform::file_error::AlreadyExists)
    return made;
  const auto folder = fileSystem_.HostPath(directory_);
  if (!folder) return Fail(folder.error());
  std::random_device random;
  while (true) {
    const std::string name = fmt::format("{:08x}{:08x}", random(), random());
    const std::string path = *folder + "/" + name;
    const int descriptor = ::open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_EXCL | O_CLOEXEC, 0660);
    if (descriptor < 0 && errno == EEXIST) continue;
    if (descriptor < 0) return Fail(JournalError(directory_, errno));
    int locked = ::flock(descriptor, LOCK_EX);
    while (locked != 0 && errno == EINTR) locked = ::flock(descriptor, LOCK_EX);
    if (locked != 0) {
      const Error error = JournalError(directory_, errno);
      (void)::unlink(path.c_str());  // an empty file means nothing to those that find it
      ::close(descriptor);
      return Fail(error);
    }
    // Between making and locking another process may have taken the empty file for that of a dead one.
    if (!IsStillNamed(descriptor, path)) {
      ::close(descriptor);
      continue;
    }
    SyncFolder(*folder);
    descriptor_ = descriptor;
    name_ = name;
    hostPath_ = path;
    return {};
  }
}

void MoveJournal::Finish() {
  if (descriptor_ < 0) return;
  (void)::unlink(hostPath_.c_str());  // what stays is settled by the next process, which finds nothing to do
  ::close(std::exchange(descriptor_, -1));
  noted_.clear();
}

// --- Finding. ---

std::vector<AbandonedMoves> AbandonedMoves::Find(platform::FileSystem& fileSystem,
                                                 std::string_view directory) {
  std::vector<AbandonedMoves> found;
  const auto files = fileSystem.List(directory, "*", platform::ListWhat::Files);
  if (!files) return found;
  for (const platform::FileEntry& file : *files) {
    if (file.IsLink) continue;
    const auto path = fileSystem.HostPath(JoinPath(directory, file.Name));
    if (!path) continue;
    const int descriptor = ::open(path->c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC);
    if (descriptor < 0) continue;
    AbandonedMoves moves(file.Name, *path, descriptor);
    if (::flock(descriptor, LOCK_EX | LOCK_NB) != 0 || !IsStillNamed(descriptor, *path)) continue;
    const auto notes = ReadNotes(descriptor);
    if (!notes) continue;
    moves.targets_ = Split(*notes, "\n");
    moves.targets_.pop_back();  // the last line is not finished, or empty behind the end of the one before it
    found.push_back(std::move(moves));
  }
  return found;
}

AbandonedMoves::AbandonedMoves(std::string name, std::string hostPath, int descriptor)
    : name_(std::move(name)), hostPath_(std::move(hostPath)), descriptor_(descriptor) {}

AbandonedMoves::AbandonedMoves(AbandonedMoves&& other) noexcept
    : name_(std::move(other.name_)),
      hostPath_(std::move(other.hostPath_)),
      descriptor_(std::exchange(other.descriptor_, -1)),
      targets_(std::move(other.targets_)) {}

AbandonedMoves& AbandonedMoves::operator=(AbandonedMoves&& other) noexcept {
  std::swap(name_, other.name_);
  std::swap(hostPath_, other.hostPath_);
  std::swap(descriptor_, other.descriptor_);
  std::swap(targets_, other.targets_);
  return *this;
}

AbandonedMoves::~AbandonedMoves() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

void AbandonedMoves::Remove() { (void)::unlink(hostPath_.c_str()); }

}  // namespace velmora::store::embedded
