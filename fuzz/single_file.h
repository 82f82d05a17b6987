// A file system in which every file that is read holds the same bytes, and which remembers where files were
// copied and folders made.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/host_file_system.h"
#include "support/forwarding_file_system.h"

namespace velmora::fuzz {

class SingleFile final : public test::ForwardingFileSystem {
 public:
  SingleFile(platform::FileSystem& unused, std::string_view bytes)
      : ForwardingFileSystem(unused), bytes_(bytes) {}

  std::vector<std::string> Made;

  bool FileExists(std::string_view) override { return true; }
  bool FolderExists(std::string_view) override { return false; }
  Result<std::string> ReadFile(std::string_view) override { return std::string(bytes_); }
  Result<std::unique_ptr<platform::FileReader>> OpenReader(std::string_view) override {
    return std::make_unique<Reader>(bytes_);
  }
  Status CopyFile(std::string_view, std::string_view target, const platform::WriteOptions&) override {
    Made.emplace_back(target);
    return {};
  }
  Status CreateFolder(std::string_view path, bool) override {
    Made.emplace_back(path);
    return {};
  }

 private:
  class Reader final : public platform::FileReader {
   public:
    explicit Reader(std::string_view rest) : rest_(rest) {}
    Result<std::string> Read(std::size_t count) override {
      const std::string bytes(rest_.substr(0, count));
      rest_.remove_prefix(bytes.size());
      return bytes;
    }
    Status Seek(std::int64_t) override { return {}; }
    Result<std::int64_t> Size() override { return static_cast<std::int64_t>(rest_.size()); }

   private:
    std::string_view rest_;
  };

  std::string_view bytes_;
};

}  // namespace velmora::fuzz
