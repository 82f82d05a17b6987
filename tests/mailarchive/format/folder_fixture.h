// A temporary directory with a file system on it.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "platform/host_file_system.h"
#include "support/temp_dir.h"

namespace velmora::mailarchive {

class FolderTest : public testing::Test {
 protected:
  void Write(std::string_view relative, std::string_view bytes) {
    const std::filesystem::path path = Folder.HostPath(relative);
    std::filesystem::create_directories(path.parent_path());
    Folder.WriteHostFile(relative, bytes);
  }
  std::string Read(std::string_view relative) const { return Folder.ReadHostFile(relative); }
  bool Exists(std::string_view relative) const { return std::filesystem::exists(Folder.HostPath(relative)); }

  test::TempDir Folder;
  std::unique_ptr<platform::FileSystem> Files = platform::MakeHostFileSystem({});
};

}  // namespace velmora::mailarchive
