#include "store/record_edit.h"

#include <array>

#include "base/code_page.h"
#include "record_files_fixture.h"
#include "store/archive_key.h"
#include "store/errors.h"

namespace velmora::store {
namespace {

class RecordEditTest : public RecordFilesTest {
 protected:
  // An area of the items given, tag and text.
  static std::string Area(std::initializer_list<std::pair<unsigned char, std::string>> items) {
    std::string area;
    for (const auto& [tag, text] : items) area += std::string(1, static_cast<char>(tag)) + text + '\0';
    return area;
  }
};

TEST_F(RecordEditTest, ARebuiltRecordKeepsEverythingButTheName) {
  const DirRecord source =
      WithArea(Area({{3, R"(\\S\DAVID\ARCHIVE\A)"}, {4, "Alt"}, {200, R"(+\\S\DAVID\ARCHIVE\B)"}}));
  const auto rebuilt = RebuildRecord(source, source, "Größer als zuvor");
  ASSERT_TRUE(rebuilt);
  EXPECT_EQ(rebuilt->Head(), source.Head());
  EXPECT_EQ(rebuilt->Tail(), source.Tail());
  DirRecord expected = source;
  expected.SetTextArea(Area({{3, R"(\\S\DAVID\ARCHIVE\A)"},
                             {4, ToCodePage("Größer als zuvor")},
                             {200, R"(+\\S\DAVID\ARCHIVE\B)"}}));
  EXPECT_EQ(*rebuilt, expected);
}

TEST_F(RecordEditTest, ARebuiltRecordTakesHeadAndTailFromTheFixedParts) {
  const DirRecord source = Record(PathOf("A"), "A", 1), other = Record(PathOf("B"), "B", 9);
  const auto rebuilt = RebuildRecord(source, other, "C");
  ASSERT_TRUE(rebuilt);
  EXPECT_EQ(rebuilt->Head(), other.Head());
  EXPECT_EQ(rebuilt->Tail(), other.Tail());
  EXPECT_EQ(rebuilt->Path(), PathOf("A"));
  EXPECT_EQ(rebuilt->Name(), "C");
}

TEST_F(RecordEditTest, TheAreaIsNotExtendedByALongName) {
  const DirRecord source = WithArea(Area({{3, R"(\\S\D)"}, {4, "Kurz"}, {200, std::string(150, 'p')}}));
  const auto rebuilt = RebuildRecord(source, source, std::string(200, 'n'));
  ASSERT_TRUE(rebuilt);
  EXPECT_EQ(rebuilt->Tail(), source.Tail());
  EXPECT_EQ(rebuilt->Name(), std::string(200, 'n'));
  EXPECT_EQ(rebuilt->TextArea().back(), '\0') << "the item that was cut does not run into the tail";
  const auto longest = RebuildRecord(source, source, std::string(400, 'n'));
  ASSERT_TRUE(longest);
  EXPECT_EQ(longest->Path(), R"(\\S\D)");
  EXPECT_EQ(longest->Name()->size(), DirRecord::TextSize - 7 - 2);
  EXPECT_EQ(longest->Tail(), source.Tail());
}

TEST_F(RecordEditTest, ARecordWithoutANameGetsOne) {
  for (const std::string& area : {Area({{3, R"(\\S\D)"}}), Area({{3, R"(\\S\D)"}}) + "\4offen" +
                                                               std::string(DirRecord::TextSize, 'x')}) {
    const auto rebuilt = RebuildRecord(WithArea(area), WithArea(area), "Neu");
    ASSERT_TRUE(rebuilt);
    EXPECT_EQ(rebuilt->Path(), R"(\\S\D)");
    EXPECT_EQ(rebuilt->Name(), "Neu");
  }
  const std::string full = "\3" + std::string(DirRecord::TextSize - 3, 'p') + '\0';
  EXPECT_EQ(ErrorOf(RebuildRecord(WithArea(full), WithArea(full), "Neu")), store_error::BadName);
  EXPECT_TRUE(RebuildRecord(DirRecord(), DirRecord(), "Neu")) << "a record of zeros has room";
}

TEST_F(RecordEditTest, AReplacedPathMovesTheItemsBehindIt) {
  DirRecord record = WithArea(Area({{3, R"(\\ALT\SYS\DAVID\A)"}, {4, "Name"}, {200, "+x"}}));
  const DirRecord before = record;
  const std::array<PathReplacement, 1> pairs{{{R"(\\ALT\SYS\DAVID)", R"(\\NEU\DAVID)"}}};
  EXPECT_EQ(ReplaceRecordPath(record, pairs), Result<bool>(true));
  DirRecord expected = before;
  expected.SetTextArea(Area({{3, R"(\\NEU\DAVID\A)"}, {4, "Name"}, {200, "+x"}}));
  EXPECT_EQ(record, expected);
  EXPECT_EQ(ReplaceRecordPath(record, pairs), Result<bool>(false));
  EXPECT_EQ(record, expected);
}

TEST_F(RecordEditTest, PathsAreReplacedWithoutRegardToCaseAndUpToABackslash) {
  const auto replaced = [&](std::string_view path, std::string old, std::string fresh) {
    DirRecord record = Record(path, "Name");
    const std::array<PathReplacement, 1> pairs{{{std::move(old), std::move(fresh)}}};
    EXPECT_TRUE(ReplaceRecordPath(record, pairs));
    EXPECT_EQ(record.Name(), "Name");
    return *record.Path();
  };
  EXPECT_EQ(replaced(R"(\\s\david\Über)", R"(\\S\DAVID\ÜBER)", R"(\\S\DAVID\X)"), R"(\\S\DAVID\X)");
  EXPECT_EQ(replaced(R"(\\S\DAVID\AB)", R"(\\S\DAVID\A)", R"(\\S\DAVID\X)"), R"(\\S\DAVID\AB)");
  EXPECT_EQ(replaced(R"(ALT\SYS:DAVID\A)", R"(ALT\SYS:DAVID)", R"(\\NEU\DAVID)"), R"(\\NEU\DAVID\A)");
  EXPECT_EQ(replaced(R"(\\S\A\A)", R"(\A)", R"(\BB)"), R"(\\S\BB\BB)") << "every occurrence";
  EXPECT_EQ(replaced(R"(\\S\A)", "", "x"), R"(\\S\A)");
}

TEST_F(RecordEditTest, SeveralPathsAreReplacedOneAfterTheOther) {
  DirRecord record = Record(R"(\\S\A)", "Name");
  const std::array<PathReplacement, 3> pairs{{{R"(\A)", R"(\B)"}, {R"(\Z)", R"(\Y)"}, {R"(\B)", R"(\C)"}}};
  EXPECT_EQ(ReplaceRecordPath(record, pairs), Result<bool>(true));
  EXPECT_EQ(record.Path(), R"(\\S\C)");
}

TEST_F(RecordEditTest, NothingHappensToARecordWithoutAPath) {
  const std::array<PathReplacement, 1> pairs{{{"a", "b"}}};
  for (const std::string& area :
       {std::string(), "\4" + std::string("nur ein Name") + '\0', std::string(DirRecord::TextSize, 'a'),
        "\3" + std::string(DirRecord::TextSize - 1, 'a')}) {
    DirRecord record = WithArea(area);
    const DirRecord before = record;
    EXPECT_EQ(ReplaceRecordPath(record, pairs), Result<bool>(false));
    EXPECT_EQ(record, before);
  }
}

TEST_F(RecordEditTest, ANewPathThatDoesNotFitIsRefused) {
  DirRecord record = Record(R"(\\S\A)", "Name");
  const DirRecord before = record;
  const auto refused = [&](std::string fresh) {
    const std::array<PathReplacement, 1> pairs{{{R"(\A)", std::move(fresh)}}};
    const int error = ErrorOf(ReplaceRecordPath(record, pairs));
    EXPECT_EQ(record, before);
    return error;
  };
  EXPECT_EQ(refused("\\" + std::string(DirRecord::TextSize, 'x')), store_error::BadName);
  EXPECT_EQ(refused("\\\xD0\x9F"), store_error::BadName) << "not in the code page";
  EXPECT_EQ(refused("\\a\4b"), store_error::BadName) << "a byte that would be a tag";
}

TEST_F(RecordEditTest, WhatFallsOutsideTheAreaIsCutAndClosed) {
  DirRecord record = WithArea(Area({{3, R"(\\S\A)"}, {4, std::string(200, 'n')}}));
  const std::string tail(record.Tail());
  const std::array<PathReplacement, 1> pairs{{{R"(\A)", "\\" + std::string(100, 'x')}}};
  EXPECT_EQ(ReplaceRecordPath(record, pairs), Result<bool>(true));
  EXPECT_EQ(record.Path(), R"(\\S\)" + std::string(100, 'x'));
  EXPECT_EQ(record.Name(), std::string(DirRecord::TextSize - 107 - 1, 'n'));
  EXPECT_EQ(record.Tail(), tail);
}

TEST(ArchiveKeyTest, SpellingsOfOneDirectoryAreOne) {
  EXPECT_TRUE(IsSameArchive(R"(\\S\DAVID\ARCHIVE\A)", R"(\\s\david\archive\a\)"));
  EXPECT_TRUE(IsSameArchive(R"(S\DAVID:ARCHIVE\A)", R"(\\S\DAVID\ARCHIVE\A)"));
  EXPECT_TRUE(IsSameArchive(R"(S\SYS:DAVID\ARCHIVE\A)", R"(\\HOST\DAVID\ARCHIVE\A)")) << "another share";
  EXPECT_TRUE(IsSameArchive(R"(Z:\DAVID\ARCHIVE\A)", R"(\\S\DAVID\ARCHIVE\A)"));
  EXPECT_FALSE(IsSameArchive(R"(\\S\DAVID\ARCHIVE\A)", R"(\\S\DAVID\ARCHIVE\AB)"));
  EXPECT_FALSE(IsSameArchive(R"(\\S\VOL\ARCHIVE\A\DAVID)", R"(\\S\VOL\ARCHIVE\B\DAVID)"))
      << "an archive of that name deeper down";
}

}  // namespace
}  // namespace velmora::store
