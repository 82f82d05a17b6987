// A file system that hands every call to another one: tests derive from it and let single calls fail.
#pragma once

#include "platform/file_system.h"

namespace velmora::test {

class ForwardingFileSystem : public platform::FileSystem {
 public:
  explicit ForwardingFileSystem(platform::FileSystem& inner) : Inner(inner) {}

  bool FileExists(std::string_view path) override { return Inner.FileExists(path); }
  bool FolderExists(std::string_view path) override { return Inner.FolderExists(path); }
  Result<platform::FileEntry> GetEntry(std::string_view path) override { return Inner.GetEntry(path); }
  Result<std::vector<platform::FileEntry>> List(std::string_view folder, std::string_view mask,
                                                platform::ListWhat what) override {
    return Inner.List(folder, mask, what);
  }
  Result<std::string> ReadFile(std::string_view path) override { return Inner.ReadFile(path); }
  Status WriteFile(std::string_view path, std::string_view bytes,
                   const platform::WriteOptions& options) override {
    return Inner.WriteFile(path, bytes, options);
  }
  Status ReplaceFile(std::string_view path, std::string_view bytes,
                     const platform::WriteOptions& options) override {
    return Inner.ReplaceFile(path, bytes, options);
  }
  Status AppendFile(std::string_view path, std::string_view bytes) override {
    return Inner.AppendFile(path, bytes);
  }
  Result<std::unique_ptr<platform::FileReader>> OpenReader(std::string_view path) override {
    return Inner.OpenReader(path);
  }
  Result<std::unique_ptr<platform::FileWriter>> OpenWriter(std::string_view path,
                                                           const platform::WriteOptions& options) override {
    return Inner.OpenWriter(path, options);
  }
  Status CopyFile(std::string_view source, std::string_view target,
                  const platform::WriteOptions& options) override {
    return Inner.CopyFile(source, target, options);
  }
  Status MoveFile(std::string_view source, std::string_view target) override {
    return Inner.MoveFile(source, target);
  }
  Status DeleteFile(std::string_view path, bool force) override { return Inner.DeleteFile(path, force); }
  Status DeleteFolder(std::string_view path, bool force) override { return Inner.DeleteFolder(path, force); }
  Status CreateFolder(std::string_view path, bool ownerOnly) override {
    return Inner.CreateFolder(path, ownerOnly);
  }
  Status SetHidden(std::string_view path, bool hidden) override { return Inner.SetHidden(path, hidden); }
  Status SetReadOnly(std::string_view path, bool readOnly) override {
    return Inner.SetReadOnly(path, readOnly);
  }
  Status SetTimes(std::string_view path, DateTime time) override { return Inner.SetTimes(path, time); }
  Status SyncWritten() override { return Inner.SyncWritten(); }
  std::string UniqueFileName(std::string_view folder, std::string_view fileName) override {
    return Inner.UniqueFileName(folder, fileName);
  }
  std::vector<platform::Drive> Drives() override { return Inner.Drives(); }
  std::string ShareOfDrive(std::string_view drive) override { return Inner.ShareOfDrive(drive); }
  std::string FromUserPath(std::string_view text) override { return Inner.FromUserPath(text); }
  Result<std::string> HostPath(std::string_view path) override { return Inner.HostPath(path); }
  std::string FromHostPath(std::string_view hostPath) override { return Inner.FromHostPath(hostPath); }
  std::shared_ptr<void> RegisterSubtree(std::string_view folder,
                                        std::function<void(std::string_view path)> before) override {
    return Inner.RegisterSubtree(folder, std::move(before));
  }
  std::uint64_t Generation(std::string_view folder) override { return Inner.Generation(folder); }

 protected:
  platform::FileSystem& Inner;
};

}  // namespace velmora::test
