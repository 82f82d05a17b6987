// Drives, shares and host paths; names of one file in both spellings; masks.

#include "platform/path_map.h"

#include <cstdlib>
#include <filesystem>
#include <random>

#include "base/text.h"
#include "platform/file_system_fixture.h"
#include "platform/host_names.h"
#include "platform/name_mask.h"

namespace velmora::platform {
namespace {

using Rows = std::vector<PathMapping>;

std::string HostOf(const PathMap& map, std::string_view path) {
  const Result<MappedPath> mapped = map.Parse(path);
  return mapped ? mapped->HostPath() : std::to_string(mapped.error().Number);
}

TEST(PathMapTest, ZIsTheRootUnlessTheTableSaysOtherwise) {
  EXPECT_EQ(HostOf(PathMap(Rows{}), "Z:\\tmp\\x"), "/tmp/x");
  EXPECT_EQ(HostOf(PathMap(Rows{}), "z:"), "/");
  EXPECT_EQ(HostOf(PathMap(Rows{{"z:", "/data/"}}), "Z:\\tmp"), "/data/tmp");
  EXPECT_EQ(PathMap(Rows{{"Z:", "/data"}}).ToWindows("/tmp"), std::nullopt);
}

TEST(PathMapTest, SharesAndDrivesAreFoundInAnyCase) {
  const PathMap map(Rows{{"\\\\Server\\David", "/srv/david"}, {"D:", "/srv"}});
  EXPECT_EQ(HostOf(map, "\\\\SERVER\\DAVID\\Archive\\x"), "/srv/david/Archive/x");
  EXPECT_EQ(HostOf(map, "//server/david/Archive"), "/srv/david/Archive");
  EXPECT_EQ(HostOf(map, "\\\\server\\david"), "/srv/david");
  EXPECT_EQ(HostOf(map, "d:\\x"), "/srv/x");
}

TEST(PathMapTest, WhatHasNoMappingIsNotFound) {
  const PathMap map(Rows{{"\\\\Server\\David", "/srv/david"}, {"nonsense", "/x"}, {"E:", "relative"}});
  for (const char* path : {"", "\\", "x", "x\\y", "\\x", "Q:\\x", "E:\\x", "\\\\server",
                           "\\\\server\\other\\x", "nonsense\\x", "Z:x", "\\Z:\\x"}) {
    EXPECT_EQ(HostOf(map, path), "76") << path;
  }
}

TEST(PathMapTest, NoComponentLeadsOut) {
  const PathMap map(Rows{{"\\\\Server\\David", "/srv/david"}});
  for (const char* path : {"\\\\Server\\David\\..", "\\\\Server\\David\\..\\x", "\\\\Server\\David\\a\\.\\x",
                           "Z:\\a/../x", "Z:\\a:stream"}) {
    EXPECT_EQ(HostOf(map, path), "52") << path;
  }
}

TEST(PathMapTest, TheLongestHostDirectoryWinsAndSharesComeBeforeDrives) {
  const PathMap map(Rows{{"D:", "/srv/david"},
                         {"\\\\S\\DAVID", "/srv/david"},
                         {"\\\\S\\ALL", "/srv"},
                         {"U:", "/srv/david/user"}});
  EXPECT_EQ(map.ToWindows("/srv/david/archive/x"), "\\\\S\\DAVID\\archive\\x");
  EXPECT_EQ(map.ToWindows("/srv/david"), "\\\\S\\DAVID");
  EXPECT_EQ(map.ToWindows("/srv/david/user/1"), "U:\\1");
  EXPECT_EQ(map.ToWindows("/srv/davidson"), "\\\\S\\ALL\\davidson");
  EXPECT_EQ(map.ToWindows("/srv/./x/../david/a/"), "\\\\S\\DAVID\\a");
  EXPECT_EQ(map.ToWindows("/"), "Z:\\");
  EXPECT_EQ(map.ToWindows("/home/../../tmp"), "Z:\\tmp");
  EXPECT_EQ(map.ShareOfDrive("D:"), "\\\\S\\DAVID");
  EXPECT_EQ(map.ShareOfDrive("d:\\x"), "\\\\S\\DAVID");
  EXPECT_EQ(map.ShareOfDrive("Z:"), "");
  EXPECT_EQ(map.ShareOfDrive("Q:"), "");
  EXPECT_EQ(map.ShareOfDrive("\\\\S\\DAVID"), "");
}

TEST(PathMapTest, ALaterRowReplacesAnEarlierOne) {
  EXPECT_EQ(HostOf(PathMap(Rows{{"D:", "/machine"}, {"d:", "/user"}}), "D:\\x"), "/user/x");
}

TEST(HostNamesTest, EveryHostNameComesBackByteForByte) {
  std::mt19937 random(1);  // fixed: a failure must come again
  for (int round = 0; round < 20'000; ++round) {
    std::string name;
    const std::size_t length = 1 + random() % 8;
    // Many bytes that begin or continue characters of the private range.
    constexpr std::string_view Likely = "\xEF\x80\x81\x82\x83\xBC\xC3\xA4:\\a.";
    while (name.size() < length) {
      const char byte =
          random() % 2 == 0 ? Likely[random() % Likely.size()] : static_cast<char>(1 + random() % 255);
      if (byte != '/') name += byte;
    }
    if (name == "." || name == "..") continue;
    const std::string windowsName = ToWindowsName(name);
    EXPECT_TRUE(IsValidUtf8(windowsName));
    EXPECT_EQ(windowsName.find_first_of("\\/:*?\"<>|"), std::string::npos);
    EXPECT_EQ(ToHostName(windowsName).value(), name);
  }
}

TEST(HostNamesTest, OrdinaryNamesStayAsTheyAre) {
  for (const char* name : {"a.txt", "Übersicht.htm", "\xEF\x81\x81", "\xF0\x9F\x93\xA7", "...", " "}) {
    EXPECT_EQ(ToWindowsName(name), name);
    EXPECT_EQ(ToHostName(name).value(), name);
  }
}

bool Matches(std::string_view mask, std::string_view name) { return NameMask(mask).Matches(FoldCase(name)); }

TEST(NameMaskTest, StarsTakeAnyNumberAndQuestionMarksOneCharacter) {
  EXPECT_TRUE(Matches("*", ""));
  EXPECT_TRUE(Matches("*.*", "noext"));
  EXPECT_TRUE(Matches("a*c", "abbc"));
  EXPECT_TRUE(Matches("a*c", "ac"));
  EXPECT_TRUE(Matches("*a*b", "xxaxxb"));
  EXPECT_TRUE(Matches("M?LLER", "müller"));
  EXPECT_TRUE(Matches("*ü?", "MÜL"));
  EXPECT_FALSE(Matches("a?c", "ac"));
  EXPECT_FALSE(Matches("a*c", "acd"));
  EXPECT_FALSE(Matches("?", ""));
  EXPECT_FALSE(Matches("x*.htm", "x"));
  EXPECT_EQ(NameMask("Report*.htm").LiteralPrefix(), FoldCase("report"));
  EXPECT_EQ(NameMask("*.htm").LiteralPrefix(), "");
  EXPECT_EQ(NameMask("a").LiteralPrefix(), FoldCase("a"));
}

TEST(NameMaskTest, ManyStarsCostNoExponentialTime) {
  std::string mask;
  for (int i = 0; i < 100; ++i) mask += "*a";
  EXPECT_FALSE(Matches(mask + "b", std::string(5000, 'a')));
}

using DriveTest = FileSystemFixture;

TEST_F(DriveTest, DrivesTellTheirShareAndWhetherTheyAreThere) {
  files_ = MakeHostFileSystem(
      {{"\\\\SERVER\\DAVID", dir_.HostPath()}, {"D:", dir_.HostPath() + "/"}, {"M:", H("missing")}});
  const std::vector<Drive> drives = files_->Drives();
  ASSERT_EQ(drives.size(), 3u);
  EXPECT_EQ(drives[0].Name, "D:");
  EXPECT_EQ(drives[0].ShareName, "\\\\SERVER\\DAVID");
  EXPECT_TRUE(drives[0].IsReady);
  EXPECT_EQ(drives[1].Name, "M:");
  EXPECT_FALSE(drives[1].IsReady);
  EXPECT_EQ(drives[2].Name, "Z:");
  EXPECT_EQ(drives[2].ShareName, "");
  EXPECT_EQ(files_->ShareOfDrive("D:"), "\\\\SERVER\\DAVID");
  ASSERT_EQ(ErrorOf(files_->WriteFile("D:\\x", "1")), 0);
  EXPECT_EQ(files_->ReadFile("\\\\server\\david\\X").value(), "1");
  EXPECT_EQ(ErrorOf(files_->WriteFile("M:\\x", "1")), 76);
  EXPECT_EQ(files_->FromHostPath(H("x")), "\\\\SERVER\\DAVID\\x");
}

TEST_F(DriveTest, TypedHostPathsBecomeWindowsPaths) {
  EXPECT_EQ(files_->FromUserPath("/tmp/x"), "Z:\\tmp\\x");
  EXPECT_EQ(files_->FromUserPath("/tmp/x/"), "Z:\\tmp\\x");
  EXPECT_EQ(files_->FromUserPath("/"), "Z:\\");
  EXPECT_EQ(files_->FromUserPath("./x"),
            files_->FromHostPath(std::filesystem::current_path().string() + "/x"));
  ASSERT_EQ(setenv("HOME", "/home/someone", 1), 0);
  EXPECT_EQ(files_->FromUserPath("~/x"), "Z:\\home\\someone\\x");
  for (const char* path : {"Z:\\tmp", "\\\\S\\D\\x", "x", "", "~", ".", "~other/x", "..\\x"}) {
    EXPECT_EQ(files_->FromUserPath(path), path);
  }
}

}  // namespace
}  // namespace velmora::platform
