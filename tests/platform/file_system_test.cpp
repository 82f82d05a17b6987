// FileSystem on host files: looking, reading and writing, errors.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <memory>

#include "platform/clock.h"
#include "platform/host_file_system.h"
#include "support/temp_dir.h"

namespace velmora::platform {
namespace {

namespace fs = std::filesystem;

class FileSystemTest : public testing::Test {
 protected:
  std::string P(std::string_view relative) const { return dir_.Path(relative); }
  int ErrorOf(const Status& status) const { return status ? 0 : status.error().Number; }
  template <typename T>
  int ErrorOf(const Result<T>& result) const {
    return result ? 0 : result.error().Number;
  }
  std::vector<std::string> Names(std::string_view mask, ListWhat what = ListWhat::All) {
    std::vector<std::string> names;
    const auto entries = files_->List(dir_.Path(), mask, what);
    EXPECT_TRUE(entries.has_value());
    if (entries) {
      for (const FileEntry& entry : *entries) names.push_back(entry.Name);
    }
    return names;
  }

  test::TempDir dir_;
  std::unique_ptr<FileSystem> files_ = MakeHostFileSystem({});
};

using Strings = std::vector<std::string>;

TEST_F(FileSystemTest, WhatIsWrittenIsRead) {
  ASSERT_TRUE(files_->WriteFile(P("a.txt"), std::string("x\0y\r\n", 5)));
  EXPECT_EQ(files_->ReadFile(P("a.txt")).value(), std::string("x\0y\r\n", 5));
  EXPECT_EQ(dir_.ReadHostFile("a.txt").size(), 5u);
}

TEST_F(FileSystemTest, WritingReplacesTheWholeContent) {
  ASSERT_TRUE(files_->WriteFile(P("a.txt"), "long content"));
  ASSERT_TRUE(files_->WriteFile(P("A.TXT"), "short"));
  EXPECT_EQ(dir_.ReadHostFile("a.txt"), "short");
  EXPECT_EQ(Names("*"), Strings{"a.txt"});
}

TEST_F(FileSystemTest, ExactNameComesBeforeAnotherCase) {
  dir_.WriteHostFile("Name.txt", "upper");
  dir_.WriteHostFile("name.txt", "lower");
  EXPECT_EQ(files_->ReadFile(P("name.txt")).value(), "lower");
  EXPECT_EQ(files_->ReadFile(P("Name.txt")).value(), "upper");
  EXPECT_EQ(files_->ReadFile(P("NAME.TXT")).value(), "upper");  // the first in the order of the bytes
}

TEST_F(FileSystemTest, FoldersAreFoundInAnyCase) {
  fs::create_directories(dir_.HostPath("Alpha/BETA"));
  ASSERT_TRUE(files_->WriteFile(P("ALPHA\\beta\\x.txt"), "1"));
  EXPECT_EQ(dir_.ReadHostFile("Alpha/BETA/x.txt"), "1");
  EXPECT_TRUE(files_->FolderExists(P("alpha\\Beta")));
  EXPECT_TRUE(files_->FileExists(P("alpha/Beta/X.TXT")));
}

TEST_F(FileSystemTest, UmlautsAreFolded) {
  dir_.WriteHostFile("Übersicht.txt", "1");
  EXPECT_TRUE(files_->FileExists(P("übersicht.TXT")));
}

}  // namespace
}  // namespace velmora::platform
