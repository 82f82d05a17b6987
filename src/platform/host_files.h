// FileSystem on the operating system's files: the class itself. Its parts stand in one source file each:
// host_look.cpp (looking, listing, drives), host_write.cpp (reading and writing), host_replace.cpp
// (replacing, syncing), host_transfer.cpp (copying, moving), host_delete.cpp (deleting, folders, attributes).
//
// Every operation goes the same way: find the folder (one system call when it is known), tell who watches it,
// look the name up, do the work relative to the open folder, note the change in the folder's index. For one
// thread.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/descriptor.h"
#include "platform/folders.h"
#include "platform/host_file_system.h"
#include "platform/path_map.h"
#include "platform/subtree_watch.h"

namespace velmora::platform {

class HostFiles final : public FileSystem {
 public:
  explicit HostFiles(const std::vector<PathMapping>& mappings);

  bool FileExists(std::string_view path) override;
  bool FolderExists(std::string_view path) override;
  Result<FileEntry> GetEntry(std::string_view path) override;
  Result<std::vector<FileEntry>> List(std::string_view folder, std::string_view mask, ListWhat what) override;

  Result<std::string> ReadFile(std::string_view path) override;
  Status WriteFile(std::string_view path, std::string_view bytes, const WriteOptions& options) override;
  Status ReplaceFile(std::string_view path, std::string_view bytes, const WriteOptions& options) override;
  Status AppendFile(std::string_view path, std::string_view bytes) override;
  Result<std::unique_ptr<FileReader>> OpenReader(std::string_view path) override;
  Result<std::unique_ptr<FileWriter>> OpenWriter(std::string_view path, const WriteOptions& options) override;
  Status CopyFile(std::string_view source, std::string_view target, const WriteOptions& options) override;
  Status MoveFile(std::string_view source, std::string_view target) override;

  Status DeleteFile(std::string_view path, bool force) override;
  Status DeleteFolder(std::string_view path, bool force) override;

  Status CreateFolder(std::string_view path, bool ownerOnly) override;
  Status SetHidden(std::string_view path, bool hidden) override;
  Status SetReadOnly(std::string_view path, bool readOnly) override;
  Status SetTimes(std::string_view path, DateTime time) override;
  Status SyncWritten() override;

  std::string UniqueFileName(std::string_view folder, std::string_view fileName) override;

  std::vector<Drive> Drives() override;
  std::string ShareOfDrive(std::string_view drive) override { return map_.ShareOfDrive(drive); }
  std::string FromUserPath(std::string_view text) override;
  Result<std::string> HostPath(std::string_view path) override;
  std::string FromHostPath(std::string_view hostPath) override;

  std::shared_ptr<void> RegisterSubtree(std::string_view folder,
                                        std::function<void(std::string_view path)> before) override;
  std::uint64_t Generation(std::string_view folder) override;

 private:
  friend class HostWriter;

  // A file opened for writing.
  struct Target {
    Place Where;
    std::string HostName;  // may differ from the place's in case
    Descriptor File;
    bool IsNew = false;
  };
  enum class Opening { Replace, Append, InPlace };
  struct TargetOptions {
    Create Mode = Create::Overwrite;
    Opening How = Opening::Replace;
    mode_t NewFile = 0666;                // permissions of a new file, before the umask
    bool OwnerOnly = false;               // also of an existing one
    const struct stat* Source = nullptr;  // a file that must not be its own target
  };

  // Where the path's last component lies, after who watches it was told.
  Result<Place> LocateAndTell(std::string_view path);
  Status Tell(const Place& place);
  // An existing name opened for reading: regular files only, so that no pipe can block the program.
  Result<Descriptor> OpenSource(const Place& place);
  Result<Target> OpenTarget(Place place, const TargetOptions& options);
  Result<Descriptor> OpenExistingTarget(const Place& place, const std::string& hostName,
                                        const TargetOptions& options);
  // Sets the time, closes; a new file that failed (`error` so far, or now) is removed again.
  Status FinishTarget(Target& target, int error, const std::optional<DateTime>& time);
  // Counts a change in the folder and remembers its disk for SyncWritten.
  void NoteChange(Folder& folder);

  Status DeleteMasked(std::string_view folder, std::string_view mask, bool force, bool folders);
  Status DeleteOneFile(const std::shared_ptr<Folder>& folder, const std::string& hostName, bool force);
  Status DeleteOneFolder(const std::shared_ptr<Folder>& folder, const std::string& hostName, bool force);
  Status MoveAcrossDisks(const Place& source, const std::string& sourceName, std::string_view target);
  // The host path of something that exists.
  Result<std::string> ExistingHostPath(std::string_view path);
  // The canonical host path of a folder that need not exist (yet); "" without a mapping.
  std::string CanonicalPathOf(std::string_view windowsFolder);

  PathMap map_;
  Folders folders_;
  SubtreeWatch watch_;
  std::vector<std::pair<dev_t, std::string>> written_;  // disks to sync, each with a folder on it
};

}  // namespace velmora::platform
