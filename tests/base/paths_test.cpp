#include "base/paths.h"
#include "base/device_names.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

std::string NoShare(std::string_view) { return ""; }

std::string ShareOfZ(std::string_view drive) { return drive == "Z:" ? "\\\\SERVER\\SYS" : ""; }

TEST(SeparatorTest, OnlyTheLastCharacterCounts) {
  EXPECT_EQ(AddBackslash("C:\\x"), "C:\\x\\");
  EXPECT_EQ(AddBackslash("C:\\"), "C:\\");
  EXPECT_EQ(AddBackslash(""), "\\");
  EXPECT_EQ(StripBackslash("C:\\x\\\\"), "C:\\x\\");
  EXPECT_EQ(StripBackslash(""), "");
  EXPECT_EQ(AddSlash("/a"), "/a/");
  EXPECT_EQ(StripSlash("/a/"), "/a");
  EXPECT_EQ(StripSlash("/a\\"), "/a\\");
}

TEST(ComponentTest, SplitsAtTheLastBackslash) {
  EXPECT_EQ(FileNameOf("C:\\x\\y.txt"), "y.txt");
  EXPECT_EQ(FileNameOf("y.txt"), "y.txt");
  EXPECT_EQ(FileNameOf("C:\\x\\"), "");
  EXPECT_EQ(DirectoryOf("C:\\x\\y.txt"), "C:\\x\\");
  EXPECT_EQ(DirectoryOf("y.txt"), "");
  EXPECT_EQ(JoinPath("C:\\x", "y"), "C:\\x\\y");
  EXPECT_EQ(JoinPath("C:\\x\\", "\\y"), "C:\\x\\y");
  EXPECT_EQ(PathToUrl("a\\b/c"), "a/b/c");
}

TEST(NormalizePathTest, TurnsTheNetWareFormIntoUnc) {
  EXPECT_EQ(NormalizePath("SERVER\\SYS:DAVID"), "\\\\SERVER\\SYS\\DAVID");
  EXPECT_EQ(NormalizePath("\\\\SERVER\\SYS\\DAVID"), "\\\\SERVER\\SYS\\DAVID");
  EXPECT_EQ(NormalizePath("SERVER\\SYS"), "\\\\SERVER\\SYS");
  EXPECT_EQ(NormalizePath("SYS:DAVID"), "\\\\SYS\\DAVID");
}

TEST(NormalizePathTest, KeepsDrivesAndPlainNames) {
  EXPECT_EQ(NormalizePath("C:\\x"), "C:\\x");
  EXPECT_EQ(NormalizePath("ä:\\x"), "ä:\\x");
  EXPECT_EQ(NormalizePath("DAVID"), "DAVID");
  EXPECT_EQ(NormalizePath("a/b"), "a/b");
  EXPECT_EQ(NormalizePath(""), "");
}

TEST(NormalizePathTest, DoingItTwiceChangesNothing) {
  for (const std::string_view path : {"SERVER\\SYS:DAVID", "C:\\x", "DAVID", "\\x", "a:b:c", "ab:c:"})
    EXPECT_EQ(NormalizePath(NormalizePath(path)), NormalizePath(path));
}

TEST(NetWareFormTest, TurnsUncIntoVolumeAndFolder) {
  EXPECT_EQ(ToNetWareForm("\\\\SERVER\\SYS\\DAVID", NoShare), "SERVER\\SYS:DAVID");
  EXPECT_EQ(ToNetWareForm("\\\\A\\B\\C\\D", NoShare), "A\\B:C\\D");
  EXPECT_EQ(ToNetWareForm("\\\\A\\B\\C\\D\\E", NoShare), "A\\B:C\\D\\E");
}

TEST(NetWareFormTest, ReplacesADriveByItsShare) {
  EXPECT_EQ(ToNetWareForm("Z:\\DAVID\\x", ShareOfZ), "SERVER\\SYS:DAVID\\x");
  EXPECT_EQ(ToNetWareForm("Z:\\", ShareOfZ), "SERVER\\SYS:");
  EXPECT_EQ(ToNetWareForm("Z:", ShareOfZ), "SERVER\\SYS:");
}

TEST(NetWareFormTest, KeepsWhatHasNoSuchForm) {
  EXPECT_EQ(ToNetWareForm("SERVER\\SYS:DAVID", NoShare), "SERVER\\SYS:DAVID");
  EXPECT_EQ(ToNetWareForm("\\\\SERVER\\SYS", NoShare), "\\\\SERVER\\SYS");
  EXPECT_EQ(ToNetWareForm("DAVID", NoShare), "DAVID");
  EXPECT_EQ(ToNetWareForm("a\\b\\c\\d\\e", NoShare), "a\\b\\c\\d\\e");
  EXPECT_EQ(ToNetWareForm("C:\\DAVID\\x", ShareOfZ), "C:\\DAVID\\x");
  EXPECT_EQ(ToNetWareForm("", NoShare), "");
}

TEST(NetWareFormTest, NormalizePathLeadsBack) {
  for (const std::string_view path : {"\\\\SERVER\\SYS\\DAVID", "\\\\A\\B\\C\\D\\E"})
    EXPECT_EQ(NormalizePath(ToNetWareForm(path, NoShare)), path);
}

TEST(DavidRootTest, TakesTheRootsSpellingUpToDavid) {
  EXPECT_EQ(MapToDavidRoot("X:\\Apps\\David\\Archive\\USER", "\\\\SERVER\\Apps\\DAVID"),
            "\\\\server\\apps\\DAVID\\archive\\user");
  EXPECT_EQ(MapToDavidRoot("\\\\S\\DAVID", "Z:\\david"), "z:\\DAVID");
}

TEST(DavidRootTest, SplitsAtTheFirstDavidOnly) {
  EXPECT_EQ(MapToDavidRoot("X:\\david\\archive\\david", "\\\\S\\david\\david"),
            "\\\\s\\DAVID\\archive\\david");
}

TEST(DavidRootTest, TwoSpellingsOfOneFolderBecomeEqual) {
  const std::string_view root = "\\\\SERVER\\DAVID";
  EXPECT_EQ(MapToDavidRoot("M:\\David\\Archive\\In", root),
            MapToDavidRoot("\\\\host\\DAVID\\ARCHIVE\\IN", root));
}

TEST(DavidRootTest, KeepsATextWithoutDavid) {
  EXPECT_EQ(MapToDavidRoot("C:\\Temp", "\\\\SERVER\\DAVID"), "C:\\Temp");
}

TEST(SameOrBelowTest, ComparesUpToABackslash) {
  EXPECT_TRUE(IsSameOrBelow("\\\\S\\D\\User\\A", "\\\\s\\d\\USER"));
  EXPECT_TRUE(IsSameOrBelow("\\\\S\\D\\User", "\\\\s\\d\\USER\\"));
  EXPECT_TRUE(IsSameOrBelow("\\\\S\\D\\User\\", "\\\\s\\d\\USER"));
  EXPECT_FALSE(IsSameOrBelow("\\\\S\\D\\User2", "\\\\S\\D\\User"));
  EXPECT_FALSE(IsSameOrBelow("\\\\S\\D", "\\\\S\\D\\User"));
  EXPECT_TRUE(IsSameOrBelow("Z:\\x", "Z:\\"));
}

TEST(SafePathTest, AcceptsPathsThatStayInside) {
  for (const std::string_view safe :
       {"Att\\Bild.png", "Att/Bild.png", "a..b\\c", ".hidden", "x", "ä\\ö", "."})
    EXPECT_TRUE(IsSafeRelativePath(safe)) << safe;
}

TEST(SafePathTest, RefusesWaysOut) {
  for (const std::string_view unsafe :
       {"", "\\x", "/x", "\\\\S\\x", "C:\\x", "C:x", "file.txt:stream", "..", "..\\x", "a\\..\\..\\x",
        "a/../x", "a\\..", ".. \\x", "...", "a\\. .\\x", "a\nb", "a\x7F", "a\u0085"})
    EXPECT_FALSE(IsSafeRelativePath(unsafe)) << unsafe;
}

TEST(PathsTest, NamesOfDevicesAreKnownWithAnyExtension) {
  for (const char* name : {"CON", "con", "nul.txt", "AUX .tar.gz", "PRN.", "COM1", "lpt9.x", "COM0",
                           "com².txt", "CONIN$", "conout$.txt"}) {
    EXPECT_TRUE(IsDeviceName(name)) << name;
  }
  for (const char* name :
       {"", ".", "CO", "COM", "COM10", "COMA", "CONTROL.txt", "x.con", "LPT", "NULL", ".CON"}) {
    EXPECT_FALSE(IsDeviceName(name)) << name;
  }
}

}  // namespace
}  // namespace velmora
