// Reading and writing of whole files.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/attributes.h"
#include "platform/file_bytes.h"
#include "platform/file_errors.h"
#include "platform/host_files.h"

namespace velmora::platform {
namespace {

// No pipe, terminal or link trick may block or take over the program.
constexpr int SafeOpening = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;

class HostReader : public FileReader {
 public:
  explicit HostReader(Descriptor file) : file_(std::move(file)) {}

  Result<std::string> Read(std::size_t count) override {
    std::string bytes;
    if (const int error = ReadUpTo(file_.Get(), count, bytes); error != 0) return FailWithErrno(error);
    return bytes;
  }

  Status Seek(std::int64_t position) override {
    if (lseek(file_.Get(), position, SEEK_SET) < 0) return FailWithErrno(errno);
    return {};
  }

  Result<std::int64_t> Size() override {
    struct stat status {};
    if (fstat(file_.Get(), &status) != 0) return FailWithErrno(errno);
    return status.st_size;
  }

 private:
  Descriptor file_;
};

// Cuts off what a failed append has written, unless somebody else has appended behind it.
void TakeBack(int file, off_t oldSize) {
  const off_t end = lseek(file, 0, SEEK_CUR);
  struct stat status {};
  const bool isLast = end > oldSize && fstat(file, &status) == 0 && status.st_size == end;
  if (isLast) (void)ftruncate(file, oldSize);  // the failure of the append is what is told
}

}  // namespace

class HostWriter : public FileWriter {
 public:
  HostWriter(HostFiles& files, HostFiles::Target target, std::optional<DateTime> time)
      : files_(files), target_(std::move(target)), time_(time) {}

  Status Write(std::string_view bytes) override {
    if (!target_.File) return FailWith(file_error::DeviceError);
    files_.NoteChange(*target_.Where.In);
    if (const int error = WriteAll(target_.File.Get(), bytes); error != 0) return FailWithErrno(error);
    return {};
  }

  Status Close() override {
    if (!target_.File) return {};
    target_.IsNew = false;  // what stands stays
    return files_.FinishTarget(target_, 0, time_);
  }

 private:
  HostFiles& files_;
  HostFiles::Target target_;
  std::optional<DateTime> time_;
};

Status HostFiles::Tell(const Place& place) {
  if (!watch_.TellFile(place.In->CanonicalPath, place.In->Scope, place.HostName)) return {};
  // Who was told may have changed the folder.
  if (const int error = place.In->Index.Visit(place.In->HostPath); error != 0) {
    return FailWithErrno(error, file_error::PathNotFound);
  }
  return {};
}

Result<Place> HostFiles::LocateAndTell(std::string_view path) {
  Result<Place> place = folders_.Locate(path);
  if (!place) return place;
  if (Status told = Tell(*place); !told) return Fail(told.error());
  return place;
}

void HostFiles::NoteChange(Folder& folder) {
  watch_.CountChange(folder.CanonicalPath, folder.Scope);
  const dev_t device = folder.Index.State().st_dev;
  for (const auto& [known, path] : written_) {
    if (known == device) return;
  }
  written_.emplace_back(device, folder.HostPath);
}

Result<Descriptor> HostFiles::OpenSource(const Place& place) {
  const int directory = place.In->Index.Get();
  Descriptor file(openat(directory, place.HostName.c_str(), O_RDONLY | SafeOpening));
  if (!file && errno == ENOENT) {
    const std::string name = folders_.FindName(place, nullptr);
    if (name.empty()) return FailWith(file_error::FileNotFound);
    file = Descriptor(openat(place.In->Index.Get(), name.c_str(), O_RDONLY | SafeOpening));
  }
  if (!file) return FailWithErrno(errno);
  struct stat status {};
  if (fstat(file.Get(), &status) != 0) return FailWithErrno(errno);
  if (S_ISDIR(status.st_mode)) return FailWith(file_error::FileNotFound);
  if (!S_ISREG(status.st_mode)) return FailWith(file_error::AccessDenied);
  return file;
}

Result<std::string> HostFiles::ReadFile(std::string_view path) {
  const Result<Place> place = LocateAndTell(path);
  if (!place) return Fail(place.error());
  const Result<Descriptor> file = OpenSource(*place);
  if (!file) return Fail(file.error());
  std::string bytes;
  if (const int error = ReadWhole(file->Get(), bytes); error != 0) return FailWithErrno(error);
  return bytes;
}

Result<std::unique_ptr<FileReader>> HostFiles::OpenReader(std::string_view path) {
  const Result<Place> place = LocateAndTell(path);
  if (!place) return Fail(place.error());
  Result<Descriptor> file = OpenSource(*place);
  if (!file) return Fail(file.error());
  return std::make_unique<HostReader>(std::move(*file));
}

Result<HostFiles::Target> HostFiles::OpenTarget(Place place, const TargetOptions& options) {
  DirectoryIndex& index = place.In->Index;
  // The second round follows a contradiction between the index and the disk, and starts from a fresh one.
  for (int round = 0; round < 2; ++round, index.MarkStale()) {
    const Status fresh = index.Refresh(DirectoryIndex::Trust::LookUp);
    // Of a folder that may not be read, only exact names are known.
    if (!fresh && fresh.error().Number != file_error::AccessDenied) return Fail(fresh.error());
    const DirectoryIndex::Name* known = fresh ? index.Find(place.HostName, place.Folded) : nullptr;
    std::string name = known != nullptr ? known->HostName : place.HostName;
    if (known == nullptr) {
      if (!place.In->IsWritable()) {
        struct stat status {};
        if (fstatat(index.Get(), name.c_str(), &status, 0) != 0) return FailWith(file_error::AccessDenied);
      }
      Descriptor file(openat(index.Get(), name.c_str(), O_WRONLY | O_CREAT | O_EXCL | SafeOpening,
                             options.OwnerOnly ? S_IRUSR | S_IWUSR : options.NewFile));
      if (file) {
        index.NoteCreated(name, NameKind::File);
        NoteChange(*place.In);
        return Target{std::move(place), std::move(name), std::move(file), true};
      }
      if (errno != EEXIST) return FailWithErrno(errno, file_error::PathNotFound);
    }
    struct stat status {};
    if (options.Mode == Create::Exclusive &&
        fstatat(index.Get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0) {
      if (known == nullptr) index.MarkStale();
      return FailWith(file_error::AlreadyExists);
    }
    Result<Descriptor> file = OpenExistingTarget(place, name, options);
    if (file) {
      NoteChange(*place.In);
      return Target{std::move(place), std::move(name), std::move(*file), false};
    }
    if (file.error().Number != file_error::FileNotFound) return Fail(file.error());
  }
  return FailWith(file_error::FileNotFound);
}

Result<Descriptor> HostFiles::OpenExistingTarget(const Place& place, const std::string& hostName,
                                                 const TargetOptions& options) {
  const bool isAppend = options.How == Opening::Append;
  Descriptor file(
      openat(place.In->Index.Get(), hostName.c_str(), O_WRONLY | SafeOpening | (isAppend ? O_APPEND : 0)));
  if (!file) return FailWithErrno(errno);
  struct stat status {};
  if (fstat(file.Get(), &status) != 0) return FailWithErrno(errno);
  if (IsReadOnly(status) || !(S_ISREG(status.st_mode) || S_ISCHR(status.st_mode))) {
    return FailWith(file_error::AccessDenied);
  }
  const bool isSource = options.Source != nullptr && options.Source->st_dev == status.st_dev &&
                        options.Source->st_ino == status.st_ino;
  if (isSource) return FailWith(file_error::AccessDenied);
  if (options.OwnerOnly && fchmod(file.Get(), S_IRUSR | S_IWUSR) != 0) return FailWithErrno(errno);
  if (options.How == Opening::Replace && S_ISREG(status.st_mode) && ftruncate(file.Get(), 0) != 0)
    return FailWithErrno(errno);
  return file;
}

Status HostFiles::FinishTarget(Target& target, int error, const std::optional<DateTime>& time) {
  if (error == 0 && time) error = StoreTime(target.File.Get(), *time);
  const int lateError = target.File.Close();
  if (error == 0) error = lateError;
  NoteChange(*target.Where.In);
  if (error == 0) return {};
  // Half a file of a new name would pass for a whole one.
  if (target.IsNew && unlinkat(target.Where.In->Index.Get(), target.HostName.c_str(), 0) == 0) {
    target.Where.In->Index.NoteRemoved(target.HostName);
  }
  return FailWithErrno(error);
}

Status HostFiles::WriteFile(std::string_view path, std::string_view bytes, const WriteOptions& options) {
  Result<Place> place = LocateAndTell(path);
  if (!place) return Fail(place.error());
  Result<Target> target =
      OpenTarget(std::move(*place), {.Mode = options.Mode, .OwnerOnly = options.OwnerOnly});
  if (!target) return Fail(target.error());
  return FinishTarget(*target, WriteAll(target->File.Get(), bytes), options.Time);
}

Status HostFiles::AppendFile(std::string_view path, std::string_view bytes) {
  Result<Place> place = LocateAndTell(path);
  if (!place) return Fail(place.error());
  Result<Target> target = OpenTarget(std::move(*place), {.How = Opening::Append});
  if (!target) return Fail(target.error());
  struct stat before {};
  if (fstat(target->File.Get(), &before) != 0) return FailWithErrno(errno);
  const int error = WriteAll(target->File.Get(), bytes);
  if (error != 0) TakeBack(target->File.Get(), before.st_size);
  return FinishTarget(*target, error, std::nullopt);
}

Result<std::unique_ptr<FileWriter>> HostFiles::OpenWriter(std::string_view path,
                                                          const WriteOptions& options) {
  Result<Place> place = LocateAndTell(path);
  if (!place) return Fail(place.error());
  Result<Target> target =
      OpenTarget(std::move(*place), {.Mode = options.Mode, .OwnerOnly = options.OwnerOnly});
  if (!target) return Fail(target.error());
  return std::make_unique<HostWriter>(*this, std::move(*target), options.Time);
}

}  // namespace velmora::platform
