#include "platform/tree_deletion.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "platform/attributes.h"
#include "platform/descriptor.h"
#include "platform/file_errors.h"

namespace velmora::platform {
namespace {

class Deleter {
 public:
  Deleter(int parent, const TreeDeletion& deletion) : parent_(parent), deletion_(deletion) {}

  Status Run(const std::string& name) {
    Enter(parent_, name);
    while (!levels_.empty()) {
      std::vector<std::string>& folders = levels_.back().Folders;
      if (folders.empty()) {
        if (!Leave()) break;
      } else {
        const std::string next = std::move(folders.back());
        folders.pop_back();
        Enter(current_.Get(), next);
      }
    }
    if (firstError_) return Fail(*firstError_);
    return {};
  }

 private:
  struct Level {
    std::string Name;
    dev_t Device;
    ino_t Number;
    std::vector<std::string> Folders;  // still to delete
  };

  void Note(tl::unexpected<Error> failure) {
    if (!firstError_) firstError_ = std::move(failure.value());
  }
  void NoteErrno() {
    if (errno != ENOENT) Note(FailWithErrno(errno));  // gone already is as good
  }

  Descriptor OpenFolder(int parent, const std::string& name) const {
    constexpr int Flags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
    Descriptor folder(openat(parent, name.c_str(), Flags));
    if (!folder && errno == EACCES && deletion_.Force && fchmodat(parent, name.c_str(), S_IRWXU, 0) == 0) {
      return Descriptor(openat(parent, name.c_str(), Flags));
    }
    return folder;
  }

  void Enter(int parent, const std::string& name) {
    Descriptor folder = OpenFolder(parent, name);
    struct stat status {};
    if (!folder || fstat(folder.Get(), &status) != 0) return NoteErrno();
    if (IsReadOnly(status)) {
      // A folder that may not be written loses none of its files.
      if (!deletion_.Force) return Note(FailWith(file_error::AccessDenied));
      if (fchmod(folder.Get(), status.st_mode | S_IRWXU) != 0) return NoteErrno();
    }
    levels_.push_back({name, status.st_dev, status.st_ino, {}});
    current_ = std::move(folder);
    DeleteFiles();
  }

  void DeleteFiles() {
    const int fd = openat(current_.Get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) return NoteErrno();
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(fdopendir(fd), closedir);
    if (!directory) {
      NoteErrno();
      close(fd);
      return;
    }
    // Taken whole first: what a directory lists while it is changed is nobody's promise.
    std::vector<std::string> names;
    while (const dirent* entry = readdir(directory.get())) names.emplace_back(entry->d_name);
    const std::string folder = deletion_.BeforeFile ? FolderBelowTree() : "";
    for (std::string& name : names) {
      if (name == "." || name == "..") continue;
      struct stat status {};
      if (fstatat(current_.Get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
        NoteErrno();
      } else if (S_ISDIR(status.st_mode)) {
        levels_.back().Folders.push_back(std::move(name));
      } else if (IsReadOnly(status) && !deletion_.Force) {
        Note(FailWith(file_error::AccessDenied));
      } else {
        if (deletion_.BeforeFile) deletion_.BeforeFile(folder, name);
        if (unlinkat(current_.Get(), name.c_str(), 0) != 0) NoteErrno();
      }
    }
  }

  std::string FolderBelowTree() const {
    std::string folder;
    for (std::size_t i = 1; i < levels_.size(); ++i) folder += (folder.empty() ? "" : "/") + levels_[i].Name;
    return folder;
  }

  // Back to the parent, which then loses the folder. False when the way back leads elsewhere: somebody moved
  // the folder meanwhile, and nothing of another place may be deleted.
  bool Leave() {
    const std::string name = std::move(levels_.back().Name);
    levels_.pop_back();
    if (levels_.empty()) {
      current_ = Descriptor();
      if (unlinkat(parent_, name.c_str(), AT_REMOVEDIR) != 0) NoteErrno();
      return true;
    }
    Descriptor above(openat(current_.Get(), "..", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    struct stat status {};
    if (!above || fstat(above.Get(), &status) != 0 || status.st_dev != levels_.back().Device ||
        status.st_ino != levels_.back().Number) {
      Note(FailWith(file_error::AccessDenied));
      return false;
    }
    current_ = std::move(above);
    if (unlinkat(current_.Get(), name.c_str(), AT_REMOVEDIR) != 0) NoteErrno();
    return true;
  }

  const int parent_;
  const TreeDeletion& deletion_;
  Descriptor current_;
  std::vector<Level> levels_;
  std::optional<Error> firstError_;
};

}  // namespace

Status DeleteTree(int parent, const std::string& name, const TreeDeletion& deletion) {
  return Deleter(parent, deletion).Run(name);
}

}  // namespace velmora::platform
