// A FileSystem that hands every call to another one, but fails a chosen call of a chosen kind with a chosen
// error: for tests of what happens when the disk fails in the middle.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/file_system.h"

namespace velmora::test {

enum class Fault {
  Open,   // ReadFile, OpenReader, OpenWriter, the source of CopyFile
  Write,  // WriteFile, ReplaceFile, AppendFile, FileWriter::Write and Close, CopyFile: nothing is written
  ShortWrite,  // the same, but half of the bytes stand in the file (ReplaceFile and AppendFile leave the old
               // content)
  Rename,      // MoveFile, ReplaceFile
  SetTime,     // SetTimes, and every write with a time: the bytes are written, the time is not set
  Delete,      // DeleteFile, DeleteFolder
  List,        // List
  CreateFolder,  // CreateFolder
};

class FaultyFileSystem : public platform::FileSystem {
 public:
  explicit FaultyFileSystem(platform::FileSystem& real) : real_(real) {}

  // The `nth` call of the kind from now on (1: the next one) fails with the error number, once; `count` in a
  // row when more are wanted.
  void FailOn(Fault kind, int nth, int errorNumber, int count = 1) {
    plans_.push_back({kind, nth, count, errorNumber});
  }
  void Heal() { plans_.clear(); }
  int FailuresSoFar() const { return failures_; }

  // --- Calls that can fail on purpose. ---

  Result<std::vector<platform::FileEntry>> List(std::string_view folder, std::string_view mask,
                                                platform::ListWhat what) override {
    if (const int error = Due(Fault::List)) return Failure(error);
    return real_.List(folder, mask, what);
  }
  Result<std::string> ReadFile(std::string_view path) override {
    if (const int error = Due(Fault::Open)) return Failure(error);
    return real_.ReadFile(path);
  }
  Status WriteFile(std::string_view path, std::string_view bytes,
                   const platform::WriteOptions& options) override {
    if (const int error = Due(Fault::Write)) return Failure(error);
    if (const int error = Due(Fault::ShortWrite)) {
      (void)real_.WriteFile(path, Half(bytes), options);  // the fault is what is told
      return Failure(error);
    }
    return Timed(options, [&](const auto& rest) { return real_.WriteFile(path, bytes, rest); });
  }
  Status ReplaceFile(std::string_view path, std::string_view bytes,
                     const platform::WriteOptions& options) override {
    for (const Fault kind : {Fault::Write, Fault::ShortWrite, Fault::Rename}) {
      if (const int error = Due(kind)) return Failure(error);
    }
    return Timed(options, [&](const auto& rest) { return real_.ReplaceFile(path, bytes, rest); });
  }
  Status AppendFile(std::string_view path, std::string_view bytes) override {
    for (const Fault kind : {Fault::Write, Fault::ShortWrite}) {
      if (const int error = Due(kind)) return Failure(error);
    }
    return real_.AppendFile(path, bytes);
  }
  Result<std::unique_ptr<platform::FileReader>> OpenReader(std::string_view path) override {
    if (const int error = Due(Fault::Open)) return Failure(error);
    return real_.OpenReader(path);
  }
  Result<std::unique_ptr<platform::FileWriter>> OpenWriter(std::string_view path,
                                                           const platform::WriteOptions& options) override {
    if (const int error = Due(Fault::Open)) return Failure(error);
    auto writer = real_.OpenWriter(path, options);
    if (!writer) return Fail(writer.error());
    return std::make_unique<Writer>(*this, std::move(*writer));
  }
  Status CopyFile(std::string_view source, std::string_view target,
                  const platform::WriteOptions& options) override {
    if (const int error = Due(Fault::Open)) return Failure(error);
    if (const int error = Due(Fault::Write)) return Failure(error);
    if (const int error = Due(Fault::ShortWrite)) {
      // The fault is what is told.
      if (const auto bytes = real_.ReadFile(source)) (void)real_.WriteFile(target, Half(*bytes), options);
      return Failure(error);
    }
    return Timed(options, [&](const auto& rest) { return real_.CopyFile(source, target, rest); });
  }
  Status MoveFile(std::string_view source, std::string_view target) override {
    if (const int error = Due(Fault::Rename)) return Failure(error);
    return real_.MoveFile(source, target);
  }
  Status DeleteFile(std::string_view path, bool force) override {
    if (const int error = Due(Fault::Delete)) return Failure(error);
    return real_.DeleteFile(path, force);
  }
  Status DeleteFolder(std::string_view path, bool force) override {
    if (const int error = Due(Fault::Delete)) return Failure(error);
    return real_.DeleteFolder(path, force);
  }
  Status CreateFolder(std::string_view path, bool ownerOnly) override {
    if (const int error = Due(Fault::CreateFolder)) return Failure(error);
    return real_.CreateFolder(path, ownerOnly);
  }
  Status SetTimes(std::string_view path, DateTime time) override {
    if (const int error = Due(Fault::SetTime)) return Failure(error);
    return real_.SetTimes(path, time);
  }

  // --- Calls that are only handed on. ---

  bool FileExists(std::string_view path) override { return real_.FileExists(path); }
  bool FolderExists(std::string_view path) override { return real_.FolderExists(path); }
  Result<platform::FileEntry> GetEntry(std::string_view path) override { return real_.GetEntry(path); }
  Status SetHidden(std::string_view path, bool hidden) override { return real_.SetHidden(path, hidden); }
  Status SetReadOnly(std::string_view path, bool readOnly) override {
    return real_.SetReadOnly(path, readOnly);
  }
  Status SyncWritten() override { return real_.SyncWritten(); }
  std::string UniqueFileName(std::string_view folder, std::string_view fileName) override {
    return real_.UniqueFileName(folder, fileName);
  }
  std::vector<platform::Drive> Drives() override { return real_.Drives(); }
  std::string ShareOfDrive(std::string_view drive) override { return real_.ShareOfDrive(drive); }
  std::string FromUserPath(std::string_view text) override { return real_.FromUserPath(text); }
  Result<std::string> HostPath(std::string_view path) override { return real_.HostPath(path); }
  std::string FromHostPath(std::string_view hostPath) override { return real_.FromHostPath(hostPath); }
  std::shared_ptr<void> RegisterSubtree(std::string_view folder,
                                        std::function<void(std::string_view path)> before) override {
    return real_.RegisterSubtree(folder, std::move(before));
  }
  std::uint64_t Generation(std::string_view folder) override { return real_.Generation(folder); }

 private:
  struct Plan {
    Fault Kind;
    int CallsToGo;  // 1: the next one
    int Count;
    int ErrorNumber;
  };

  class Writer : public platform::FileWriter {
   public:
    Writer(FaultyFileSystem& faults, std::unique_ptr<platform::FileWriter> real)
        : faults_(faults), real_(std::move(real)) {}
    Status Write(std::string_view bytes) override {
      if (const int error = faults_.Due(Fault::Write)) return Failure(error);
      if (const int error = faults_.Due(Fault::ShortWrite)) {
        (void)real_->Write(Half(bytes));  // the fault is what is told
        return Failure(error);
      }
      return real_->Write(bytes);
    }
    Status Close() override {
      const Status closed = real_->Close();
      if (const int error = faults_.Due(Fault::Write)) return Failure(error);
      return closed;
    }

   private:
    FaultyFileSystem& faults_;
    std::unique_ptr<platform::FileWriter> real_;
  };

  static tl::unexpected<Error> Failure(int number) { return Fail(number, platform::FileErrorText(number)); }
  static std::string_view Half(std::string_view bytes) { return bytes.substr(0, bytes.size() / 2); }

  // Counts a call; the error number when it is one that fails, else 0.
  int Due(Fault kind) {
    int error = 0;
    for (Plan& plan : plans_) {
      if (plan.Kind != kind) continue;
      --plan.CallsToGo;
      const bool isDue = plan.CallsToGo <= 0 && plan.CallsToGo > -plan.Count;
      if (isDue && error == 0) error = plan.ErrorNumber;
    }
    failures_ += error != 0 ? 1 : 0;
    return error;
  }

  // A write whose time, if it has one, may be what fails.
  template <typename Call>
  Status Timed(const platform::WriteOptions& options, const Call& call) {
    const int error = options.Time ? Due(Fault::SetTime) : 0;
    if (error == 0) return call(options);
    platform::WriteOptions withoutTime = options;
    withoutTime.Time.reset();
    if (Status written = call(withoutTime); !written) return written;
    return Failure(error);
  }

  platform::FileSystem& real_;
  std::vector<Plan> plans_;
  int failures_ = 0;
};

}  // namespace velmora::test
