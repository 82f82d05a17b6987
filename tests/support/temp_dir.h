// A directory of its own for one test, removed with all that is in it when the test ends.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace velmora::test {

class TempDir {
 public:
  TempDir() {
    std::string pattern = (std::filesystem::temp_directory_path() / "velmora-test-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary directory: " + pattern);
    hostPath_ = std::filesystem::canonical(pattern).string();
  }
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;
  ~TempDir() {
    std::error_code ignored;  // what a test left undeletable must not hide the test's own result
    std::filesystem::remove_all(hostPath_, ignored);
  }

  // "/tmp/velmora-test-x" and, of something in it, "/tmp/velmora-test-x/a/b".
  const std::string& HostPath() const { return hostPath_; }
  std::string HostPath(std::string_view relative) const { return hostPath_ + "/" + std::string(relative); }

  // `Z:\tmp\velmora-test-x` and, of something in it (`a\b`), `Z:\tmp\velmora-test-x\a\b`; right for a file
  // system whose "Z:" is "/".
  std::string Path() const {
    std::string path = "Z:" + hostPath_;
    for (char& character : path) {
      if (character == '/') character = '\\';
    }
    return path;
  }
  std::string Path(std::string_view relative) const { return Path() + "\\" + std::string(relative); }

  // A file written and read past the file system under test.
  void WriteHostFile(std::string_view relative, std::string_view bytes) const {
    std::ofstream file(HostPath(relative), std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) throw std::runtime_error("cannot write " + HostPath(relative));
  }
  std::string ReadHostFile(std::string_view relative) const {
    std::ifstream file(HostPath(relative), std::ios::binary);
    if (!file) throw std::runtime_error("cannot read " + HostPath(relative));
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return std::move(bytes).str();
  }
  // All that stands below a directory, by its path from there: the bytes of a file, "<DIR>" for a directory.
  std::map<std::string, std::string> HostTree(std::string_view relative = ".") const {
    std::map<std::string, std::string> tree;
    const std::filesystem::path top(HostPath(relative));
    for (const auto& entry : std::filesystem::recursive_directory_iterator(top)) {
      const std::string name = entry.path().lexically_relative(top).string();
      tree[name] = entry.is_directory() ? "<DIR>" : ReadHostFile(std::string(relative) + "/" + name);
    }
    return tree;
  }

 private:
  std::string hostPath_;
};

}  // namespace velmora::test
