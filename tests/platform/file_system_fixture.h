// What the tests of FileSystem share: a temporary directory, a file system over it, short names for both.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/date_time.h"
#include "platform/host_file_system.h"
#include "support/temp_dir.h"

namespace velmora::platform {

using Strings = std::vector<std::string>;

inline const DateTime SomeTime = DateTime::FromCivil({2019, 7, 8, 9, 10, 11}).value();

// The error's number, 0 for success.
template <typename T>
int ErrorOf(const Result<T>& result) {
  return result ? 0 : result.error().Number;
}

class FileSystemFixture : public testing::Test {
 protected:
  std::string P(std::string_view relative) const { return dir_.Path(relative); }
  std::string H(std::string_view relative) const { return dir_.HostPath(relative); }

  Strings NamesIn(std::string_view folder, std::string_view mask, ListWhat what = ListWhat::All) {
    Strings names;
    const auto entries = files_->List(folder, mask, what);
    EXPECT_EQ(ErrorOf(entries), 0);
    if (entries) {
      for (const FileEntry& entry : *entries) names.push_back(entry.Name);
    }
    return names;
  }
  Strings Names(std::string_view mask, ListWhat what = ListWhat::All) {
    return NamesIn(dir_.Path(), mask, what);
  }

  test::TempDir dir_;
  std::unique_ptr<FileSystem> files_ = MakeHostFileSystem({});
};

// Rights of files do not bind the root user; while this lives, a test that runs as root is somebody else.
class AsOrdinaryUser {
 public:
  AsOrdinaryUser() : before_(geteuid()) {
    constexpr uid_t Nobody = 65534;
    if (before_ != 0) return;
    EXPECT_EQ(seteuid(Nobody), 0);
  }
  AsOrdinaryUser(const AsOrdinaryUser&) = delete;
  AsOrdinaryUser& operator=(const AsOrdinaryUser&) = delete;
  ~AsOrdinaryUser() { EXPECT_EQ(seteuid(before_), 0); }

 private:
  uid_t before_;
};

}  // namespace velmora::platform
