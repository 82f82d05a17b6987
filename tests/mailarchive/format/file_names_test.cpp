#include "mailarchive/format/file_names.h"

#include <gtest/gtest.h>

#include "base/text.h"

namespace velmora::mailarchive {
namespace {

TEST(SanitizeFileName, MakesAReplySubjectFileSafe) { EXPECT_EQ(EntryBaseName("Re: a/b.c?"), "Re- a-b_c "); }

TEST(SanitizeFileName, ReplacesEveryCharacterOfTheList) {
  EXPECT_EQ(SanitizeFileName("/\\\"?*#:.~|<>", true), "--' +_-_--()");
  EXPECT_EQ(SanitizeFileName("äÄöÖüÜß", true), "aeAEoeOEueUEss");
}

TEST(SanitizeFileName, KeepsTheHashInNamesOfArchives) {
  EXPECT_EQ(SanitizeFileName("C#", false), "C#");
  EXPECT_EQ(SanitizeFileName("C#", true), "C_");
}

TEST(SanitizeFileName, BlanksControlCharacters) {
  EXPECT_EQ(SanitizeFileName(std::string_view("a\tb\r\nc\0d\x1F", 9), true), "a b  c d ");
}

TEST(SanitizeFileName, KeepsWhatTheCodePageHasAndUnderlinesTheRest) {
  EXPECT_EQ(SanitizeFileName("Café – 5 €", true), "Café – 5 €");
  EXPECT_EQ(SanitizeFileName("Отчёт 😀", true), "_____ _");
}

TEST(SanitizeFileName, TakesInvalidBytesAsCharactersThatTheCodePageLacks) {
  EXPECT_EQ(SanitizeFileName("a\xFF\xC3", true), "a__");
}

TEST(SanitizeFileName, LeavesDeviceNamesAndTrailingBlanksAlone) {
  EXPECT_EQ(SanitizeFileName("CON ", true), "CON ");
  EXPECT_EQ(SanitizeFileName("", true), "");
}

TEST(SanitizeFileName, MakesOneBlankOfEachControlCharacterBelowU0020) {
  EXPECT_EQ(SanitizeFileName("a\r\nb\x7F", true), "a  b\x7F");
}

TEST(EntryBaseName, CutsAtFiftyNineCharacters) {
  EXPECT_EQ(EntryBaseName(std::string(70, 'x')), std::string(59, 'x'));
  EXPECT_EQ(CountCharacters(EntryBaseName(std::string(58, 'x') + "é€")), 59u);
}

TEST(EntryBaseName, CutsBehindTheReplacements) {
  // 58 characters and an umlaut that takes two: its second letter is the sixtieth.
  EXPECT_EQ(EntryBaseName(std::string(58, 'x') + "ä"), std::string(58, 'x') + "a");
}

TEST(EntryBaseName, AnEmptySubjectHasAnEmptyName) { EXPECT_EQ(EntryBaseName(""), ""); }

TEST(IsMailArcHelperFile, KnowsTheHelpersInAnyCase) {
  for (const auto* name : {"index2.html", "INDEX3.HTML", "VelmoraRootArc", "velmorasubarc", "VELMORADATAARC",
                           "ShellExec.exe", "a.add", "A.ADD", "b.smtp", "VelmoraRootArc.vla", ".add"}) {
    EXPECT_TRUE(IsMailArcHelperFile(name)) << name;
  }
}

TEST(IsMailArcHelperFile, ShowsEverythingElse) {
  for (const auto* name : {"index.html", "autorun.inf", "VelmoraAddrArc", "a.add.txt", "add", "a.htm", ""}) {
    EXPECT_FALSE(IsMailArcHelperFile(name)) << name;
  }
}

TEST(ArchiveDirectoryName, DeviceNamesAndTrailingBlanksStay) {
  EXPECT_EQ(ArchiveDirectoryName("Vertrieb: Süd", "x"), "Vertrieb- Sued");
  EXPECT_EQ(ArchiveDirectoryName("CON", "x"), "CON");
  EXPECT_EQ(ArchiveDirectoryName("Was?", "x"), "Was ");
  EXPECT_EQ(ArchiveDirectoryName("Ende  ", "x"), "Ende  ");
  EXPECT_EQ(ArchiveDirectoryName(" ", "\\\\S\\DAVID\\ARCHIVE\\POST"), "POST");
}

}  // namespace
}  // namespace velmora::mailarchive
