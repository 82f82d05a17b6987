// A FileSystem that hands every call to another one, but fails a chosen call of a chosen kind with a chosen
// error: for tests of what happens when the disk fails in the middle.
#pragma once

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/forwarding_file_system.h"

namespace velmora::test {

enum class Fault {
  Open,   // ReadFile, OpenReader, OpenWriter, the source of CopyFile
  Read,   // ReadFile, FileReader::Read
  Write,  // WriteFile, ReplaceFile, AppendFile, FileWriter::Write and Close, CopyFile: nothing is written
  ShortWrite,   // the same, but half of the bytes stand in the file (ReplaceFile and AppendFile leave the old
                // content)
  Append,       // AppendFile alone
  Copy,         // CopyFile alone
  Rename,       // MoveFile, ReplaceFile
  LateReplace,  // ReplaceFile: the new content stands, but is not known to stand on the disk
  SetTime,      // SetTimes, and every write with a time: the bytes are written, the time is not set
  Attributes,   // SetHidden, SetReadOnly
  Delete,       // DeleteFile, DeleteFolder
  List,         // List
  CreateFolder,  // CreateFolder
  Sync,          // SyncWritten
  Any,           // each of the calls above, counted once, with nothing done
};

class FaultyFileSystem : public ForwardingFileSystem {
 public:
  explicit FaultyFileSystem(platform::FileSystem& real) : ForwardingFileSystem(real) {}

  static constexpr int Always = std::numeric_limits<int>::max();

  // The `nth` call of the kind from now on (1: the next one) fails with the error number, once; `count` in a
  // row when more are wanted.
  void FailOn(Fault kind, int nth, int errorNumber, int count = 1) {
    plans_.push_back({kind, nth, count, errorNumber});
  }
  void Heal() { plans_.clear(); }
  // Calls on paths that hold this text neither fail nor count.
  void Spare(std::string text) { spared_ = std::move(text); }
  int FailuresSoFar() const { return failures_; }

  // --- Calls that can fail on purpose. ---

  Result<std::vector<platform::FileEntry>> List(std::string_view folder, std::string_view mask,
                                                platform::ListWhat what) override {
    if (const auto hit = Due({Fault::List}, folder)) return Failure(hit->ErrorNumber);
    return Inner.List(folder, mask, what);
  }
  Result<std::string> ReadFile(std::string_view path) override {
    if (const auto hit = Due({Fault::Open, Fault::Read}, path)) return Failure(hit->ErrorNumber);
    return Inner.ReadFile(path);
  }
  Status WriteFile(std::string_view path, std::string_view bytes,
                   const platform::WriteOptions& options) override {
    if (const auto hit = Due({Fault::Write, Fault::ShortWrite}, path)) {
      // The fault is what is told.
      if (hit->Kind == Fault::ShortWrite) (void)Inner.WriteFile(path, Half(bytes), options);
      return Failure(hit->ErrorNumber);
    }
    return Timed(path, options, [&](const auto& rest) { return Inner.WriteFile(path, bytes, rest); });
  }
  Status ReplaceFile(std::string_view path, std::string_view bytes,
                     const platform::WriteOptions& options) override {
    if (const auto hit = Due({Fault::Write, Fault::ShortWrite, Fault::Rename, Fault::LateReplace}, path)) {
      if (hit->Kind == Fault::LateReplace) {
        if (Status replaced = Inner.ReplaceFile(path, bytes, options); !replaced) return replaced;
      }
      return Failure(hit->ErrorNumber);
    }
    return Timed(path, options, [&](const auto& rest) { return Inner.ReplaceFile(path, bytes, rest); });
  }
  Status AppendFile(std::string_view path, std::string_view bytes) override {
    if (const auto hit = Due({Fault::Write, Fault::ShortWrite, Fault::Append}, path))
      return Failure(hit->ErrorNumber);
    return Inner.AppendFile(path, bytes);
  }
  Result<std::unique_ptr<platform::FileReader>> OpenReader(std::string_view path) override {
    if (const auto hit = Due({Fault::Open}, path)) return Failure(hit->ErrorNumber);
    auto reader = Inner.OpenReader(path);
    if (!reader) return Fail(reader.error());
    return std::make_unique<Reader>(*this, std::string(path), std::move(*reader));
  }
  Result<std::unique_ptr<platform::FileWriter>> OpenWriter(std::string_view path,
                                                           const platform::WriteOptions& options) override {
    if (const auto hit = Due({Fault::Open}, path)) return Failure(hit->ErrorNumber);
    auto writer = Inner.OpenWriter(path, options);
    if (!writer) return Fail(writer.error());
    return std::make_unique<Writer>(*this, std::string(path), std::move(*writer));
  }
  Status CopyFile(std::string_view source, std::string_view target,
                  const platform::WriteOptions& options) override {
    if (const auto hit = Due({Fault::Open, Fault::Write, Fault::ShortWrite, Fault::Copy}, target)) {
      if (hit->Kind == Fault::ShortWrite) {
        // The fault is what is told.
        if (const auto bytes = Inner.ReadFile(source)) (void)Inner.WriteFile(target, Half(*bytes), options);
      }
      return Failure(hit->ErrorNumber);
    }
    return Timed(target, options, [&](const auto& rest) { return Inner.CopyFile(source, target, rest); });
  }
  Status MoveFile(std::string_view source, std::string_view target) override {
    if (const auto hit = Due({Fault::Rename}, target)) return Failure(hit->ErrorNumber);
    return Inner.MoveFile(source, target);
  }
  Status DeleteFile(std::string_view path, bool force) override {
    if (const auto hit = Due({Fault::Delete}, path)) return Failure(hit->ErrorNumber);
    return Inner.DeleteFile(path, force);
  }
  Status DeleteFolder(std::string_view path, bool force) override {
    if (const auto hit = Due({Fault::Delete}, path)) return Failure(hit->ErrorNumber);
    return Inner.DeleteFolder(path, force);
  }
  Status CreateFolder(std::string_view path, bool ownerOnly) override {
    if (const auto hit = Due({Fault::CreateFolder}, path)) return Failure(hit->ErrorNumber);
    return Inner.CreateFolder(path, ownerOnly);
  }
  Status SetHidden(std::string_view path, bool hidden) override {
    if (const auto hit = Due({Fault::Attributes}, path)) return Failure(hit->ErrorNumber);
    return Inner.SetHidden(path, hidden);
  }
  Status SetReadOnly(std::string_view path, bool readOnly) override {
    if (const auto hit = Due({Fault::Attributes}, path)) return Failure(hit->ErrorNumber);
    return Inner.SetReadOnly(path, readOnly);
  }
  Status SetTimes(std::string_view path, DateTime time) override {
    if (const auto hit = Due({Fault::SetTime}, path)) return Failure(hit->ErrorNumber);
    return Inner.SetTimes(path, time);
  }
  Status SyncWritten() override {
    if (const auto hit = Due({Fault::Sync}, "")) return Failure(hit->ErrorNumber);
    return Inner.SyncWritten();
  }

 private:
  struct Plan {
    Fault Kind;
    int CallsToGo;  // 1: the next one
    int Count;
    int ErrorNumber;
  };
  struct Hit {
    Fault Kind;
    int ErrorNumber;
  };

  class Reader : public platform::FileReader {
   public:
    Reader(FaultyFileSystem& faults, std::string path, std::unique_ptr<platform::FileReader> real)
        : faults_(faults), path_(std::move(path)), real_(std::move(real)) {}
    Result<std::string> Read(std::size_t count) override {
      if (const auto hit = faults_.Due({Fault::Read}, path_)) return Failure(hit->ErrorNumber);
      return real_->Read(count);
    }
    Status Seek(std::int64_t position) override { return real_->Seek(position); }
    Result<std::int64_t> Size() override { return real_->Size(); }

   private:
    FaultyFileSystem& faults_;
    std::string path_;
    std::unique_ptr<platform::FileReader> real_;
  };

  class Writer : public platform::FileWriter {
   public:
    Writer(FaultyFileSystem& faults, std::string path, std::unique_ptr<platform::FileWriter> real)
        : faults_(faults), path_(std::move(path)), real_(std::move(real)) {}
    Status Write(std::string_view bytes) override {
      if (const auto hit = faults_.Due({Fault::Write, Fault::ShortWrite}, path_)) {
        if (hit->Kind == Fault::ShortWrite) (void)real_->Write(Half(bytes));  // the fault is what is told
        return Failure(hit->ErrorNumber);
      }
      return real_->Write(bytes);
    }
    Status Close() override {
      const Status closed = real_->Close();
      if (const auto hit = faults_.Due({Fault::Write}, path_)) return Failure(hit->ErrorNumber);
      return closed;
    }

   private:
    FaultyFileSystem& faults_;
    std::string path_;
    std::unique_ptr<platform::FileWriter> real_;
  };

  static tl::unexpected<Error> Failure(int number) { return Fail(number, platform::FileErrorText(number)); }
  static std::string_view Half(std::string_view bytes) { return bytes.substr(0, bytes.size() / 2); }

  // Counts a call that can fail in each of these ways; the one in which it does.
  std::optional<Hit> Due(std::initializer_list<Fault> kinds, std::string_view path) {
    if (!spared_.empty() && path.find(spared_) != std::string_view::npos) return std::nullopt;
    std::optional<Hit> hit;
    for (Plan& plan : plans_) {
      if (plan.Kind != Fault::Any && std::ranges::find(kinds, plan.Kind) == kinds.end()) continue;
      if (plan.CallsToGo > 0) --plan.CallsToGo;
      if (plan.CallsToGo > 0 || plan.Count == 0) continue;
      if (plan.Count != Always) --plan.Count;
      if (!hit) hit = Hit{plan.Kind, plan.ErrorNumber};
    }
    failures_ += hit ? 1 : 0;
    return hit;
  }

  // A write whose time, if it has one, may be what fails.
  template <typename Call>
  Status Timed(std::string_view path, const platform::WriteOptions& options, const Call& call) {
    const auto hit = options.Time ? Due({Fault::SetTime}, path) : std::nullopt;
    if (!hit) return call(options);
    platform::WriteOptions withoutTime = options;
    withoutTime.Time.reset();
    if (Status written = call(withoutTime); !written) return written;
    return Failure(hit->ErrorNumber);
  }

  std::vector<Plan> plans_;
  std::string spared_;
  int failures_ = 0;
};

}  // namespace velmora::test
