#include "store/embedded/content_files.h"

#include <dirent.h>
#include <fcntl.h>
#include <fmt/core.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <memory>
#include <utility>

#include "platform/descriptor.h"
#include "platform/file_bytes.h"
#include "platform/file_errors.h"

namespace velmora::store::embedded {
namespace {

using platform::Descriptor;

constexpr std::size_t BaseLength = 8;
constexpr std::size_t ComparedBytes = 262'144;
constexpr mode_t OwnerOnly = S_IRUSR | S_IWUSR;
constexpr mode_t OwnerAndGroup = OwnerOnly | S_IRGRP | S_IWGRP;
// Up to here each file is synced by itself; above it one sync of the file system is cheaper.
constexpr std::size_t MostSingleSyncs = 8;

tl::unexpected<Error> Failure(int systemError, std::string_view path) {
  const int number = platform::FailWithErrno(systemError).value().Number;
  return Fail(number, fmt::format("{}: {}", platform::FileErrorText(number), path));
}

Descriptor Open(const std::string& path, int flags, mode_t mode = 0) {
  return Descriptor(open(path.c_str(), flags | O_CLOEXEC, mode));
}

// Fills a new file by `fill`; a file that could not be filled is removed.
template <typename Fill>
Status MakeFile(const std::string& path, mode_t mode, Fill fill) {
  Descriptor file = Open(path, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, OwnerOnly);
  if (!file) return Failure(errno, path);
  Status filled = fill(file.Get());
  // Beyond what the process's mask lets through.
  if (filled && mode != OwnerOnly && fchmod(file.Get(), mode) != 0) filled = Failure(errno, path);
  // What a network file system reports only now.
  const int late = file.Close();
  if (filled && late != 0) filled = Failure(late, path);
  if (!filled) unlink(path.c_str());
  return filled;
}

Status Sync(const std::string& path, int flags) {
  const Descriptor file = Open(path, O_RDONLY | flags);
  if (!file || fsync(file.Get()) != 0) return Failure(errno, path);
  return {};
}

}  // namespace

std::string ContentFileBase(EntryKey key) { return fmt::format("{:08X}", key); }
std::string ContentFileName(EntryKey key, int number) { return fmt::format("{:08X}.{:03}", key, number); }

std::optional<EntryKey> KeyOfContentFile(std::string_view fileName) {
  if (fileName.size() < BaseLength + 2 || fileName[BaseLength] != '.') return std::nullopt;
  EntryKey key = 0;
  const auto* const end = fileName.data() + BaseLength;
  const auto [stop, error] = std::from_chars(fileName.data(), end, key, 16);
  return error == std::errc{} && stop == end ? std::optional(key) : std::nullopt;
}

Result<std::vector<FoundContentFile>> ListContentFiles(const std::string& directory) {
  const std::unique_ptr<DIR, int (*)(DIR*)> listing(opendir(directory.c_str()), &closedir);
  if (!listing) return Failure(errno, directory);
  std::vector<FoundContentFile> files;
  errno = 0;
  while (const dirent* entry = readdir(listing.get())) {
    const std::string_view name = static_cast<const char*>(entry->d_name);
    if (const auto key = KeyOfContentFile(name)) files.push_back({*key, std::string(name)});
    errno = 0;
  }
  if (errno != 0) return Failure(errno, directory);
  return files;
}

mode_t MailFileMode(const std::string& directory) {
  struct stat status {};
  const bool isForGroup = stat(directory.c_str(), &status) == 0 && (status.st_mode & S_IWGRP) != 0;
  return isForGroup ? OwnerAndGroup : OwnerOnly;
}

Status WriteContentFile(const std::string& path, std::string_view bytes, mode_t mode) {
  return MakeFile(path, mode, [&](int file) -> Status {
    if (const int error = platform::WriteAll(file, bytes); error != 0) return Failure(error, path);
    return {};
  });
}

Status CopyContentFile(const std::string& source, const std::string& target, mode_t mode, bool mayShare) {
  if (mayShare && linkat(AT_FDCWD, source.c_str(), AT_FDCWD, target.c_str(), 0) == 0) return {};
  if (mayShare && errno == EEXIST) return Failure(EEXIST, target);
  const auto reader = ContentReader::Open(source);
  if (!reader) return Fail(reader.error());
  return MakeFile(target, mode, [&](int file) -> Status {
    for (std::int64_t offset = 0;;) {
      const auto piece = reader->Read(offset, ComparedBytes);
      if (!piece) return Fail(piece.error());
      if (piece->empty()) return {};
      if (const int error = platform::WriteAll(file, *piece); error != 0) return Failure(error, target);
      offset += static_cast<std::int64_t>(piece->size());
    }
  });
}

bool IsContentFile(const std::string& path) { return SizeOfContentFile(path).has_value(); }

std::optional<std::int64_t> SizeOfContentFile(const std::string& path) {
  struct stat status {};
  if (lstat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  return status.st_size;
}

Status RemoveContentFile(const std::string& path) {
  if (unlink(path.c_str()) != 0 && errno != ENOENT) return Failure(errno, path);
  return {};
}

std::optional<StrayFile> DescribeStrayFile(const std::string& path, bool isDoomed) {
  constexpr std::uint64_t nanoseconds = 1'000'000'000;
  struct stat status {};
  if (lstat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  // Only to be compared: a time far off may wrap.
  const std::uint64_t modified = static_cast<std::uint64_t>(status.st_mtim.tv_sec) * nanoseconds +
                                 static_cast<std::uint64_t>(status.st_mtim.tv_nsec);
  return StrayFile{path.substr(path.rfind('/') + 1), static_cast<std::int64_t>(status.st_ino),
                   static_cast<std::int64_t>(modified), isDoomed};
}

bool IsStillThere(const std::string& directory, const StrayFile& file) {
  const auto found = DescribeStrayFile(directory + "/" + file.Name, file.IsDoomed);
  return found && found->Inode == file.Inode && found->Modified == file.Modified;
}

Status SyncContentFiles(const std::string& directory, const std::vector<std::string>& paths) {
  if (paths.empty()) return {};
  if (paths.size() > MostSingleSyncs) {
    const Descriptor folder = Open(directory, O_RDONLY | O_DIRECTORY);
    if (!folder || syncfs(folder.Get()) != 0) return Failure(errno, directory);
    return {};
  }
  for (const auto& path : paths) {
    if (Status synced = Sync(path, 0); !synced) return synced;
  }
  return Sync(directory, O_DIRECTORY);
}

Result<ContentReader> ContentReader::Open(const std::string& path) {
  Descriptor file = embedded::Open(path, O_RDONLY | O_NOFOLLOW);
  if (!file) return Failure(errno, path);
  return ContentReader(std::move(file), path);
}

Result<std::string> ContentReader::Read(std::int64_t offset, std::size_t count) const {
  std::string bytes(count, '\0');
  const auto size = pread(file_.Get(), bytes.data(), count, offset);
  if (size < 0) return Failure(errno, path_);
  bytes.resize(static_cast<std::size_t>(size));
  return bytes;
}

}  // namespace velmora::store::embedded
