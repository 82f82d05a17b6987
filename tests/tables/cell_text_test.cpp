#include "tables/cell_text.h"

#include <gtest/gtest.h>

#include "tables/utf16.h"
#include "workbook_helpers.h"

namespace velmora::tables {
namespace {

TEST(CellText, KeepsLinesAndTabsAndBlanksOtherControlCharacters) {
  EXPECT_EQ(MakeCellText("a\r\nb\rc\nd\te").Text, "a\nb\nc\nd\te");
  EXPECT_EQ(MakeCellText(std::string("a\0b\x1F\x7F\xC2\x85z", 8)).Text, "a b   z");
  EXPECT_EQ(MakeCellText("Größe €🙂").Text, "Größe €🙂");
  EXPECT_EQ(MakeCellText("\xFF").Text, "\xEF\xBF\xBD");
}

TEST(CellText, IsCutAtTheBoundInUnitsOfUtf16) {
  const std::string full(MaxCellText, 'x');
  EXPECT_FALSE(MakeCellText(full).IsCut);
  EXPECT_EQ(MakeCellText(full).Text, full);
  EXPECT_TRUE(MakeCellText(full + "y").IsCut);
  EXPECT_EQ(MakeCellText(full + "y").Text, full);
}

TEST(CellText, IsNeverCutWithinASurrogatePair) {
  const std::string nearlyFull(MaxCellText - 1, 'x');
  EXPECT_EQ(MakeCellText(nearlyFull + "🙂").Text, nearlyFull);
  EXPECT_TRUE(MakeCellText(nearlyFull + "🙂").IsCut);
  const std::string shorter(MaxCellText - 2, 'x');
  EXPECT_EQ(MakeCellText(shorter + "🙂").Text, shorter + "🙂");
  EXPECT_EQ(CountUtf16(shorter + "🙂"), MaxCellText);
}

TEST(CellText, CountsWideCharactersByUnitsNotBytes) {
  std::string wide;
  for (std::size_t i = 0; i < MaxCellText; ++i) wide += "€";
  EXPECT_FALSE(MakeCellText(wide).IsCut);
  EXPECT_EQ(MakeCellText(wide).Text, wide);
}

TEST(ShowCell, IsGermanWithUpTo15Digits) {
  EXPECT_EQ(ShowCell({}), "");
  EXPECT_EQ(ShowCell(1234.5), "1234,5");
  EXPECT_EQ(ShowCell(0.1 + 0.2), "0,3");
  EXPECT_EQ(ShowCell(4912345678901.0), "4912345678901");
  EXPECT_EQ(ShowCell(-0.0), "0");
  EXPECT_EQ(ShowCell(1e20), "1E+20");
  EXPECT_EQ(ShowCell(true), "WAHR");
  EXPECT_EQ(ShowCell(false), "FALSCH");
  EXPECT_EQ(ShowCell(std::string("Text")), "Text");
}

TEST(ShowCell, ShowsDatesWithoutAMidnightAndTimesWithoutADay) {
  EXPECT_EQ(ShowCell(At(2026, 12, 31, 23, 59)), "31.12.2026 23:59:00");
  EXPECT_EQ(ShowCell(At(2026, 12, 31)), "31.12.2026");
  EXPECT_EQ(ShowCell(DateTime::FromSeconds(3600)), "01:00:00");
  EXPECT_EQ(ShowCell(DateTime()), "");
  EXPECT_EQ(ShowCell(At(1880, 5, 6)), "06.05.1880");
}

TEST(ShowCell, AnEmptyTextIsNoValue) {
  EXPECT_FALSE(HoldsValue({}));
  EXPECT_FALSE(HoldsValue(std::string()));
  EXPECT_TRUE(HoldsValue(std::string(" ")));
  EXPECT_TRUE(HoldsValue(0.0));
  EXPECT_TRUE(HoldsValue(false));
}

TEST(Utf16, ALoneHalfOfAPairBecomesTheReplacementCharacter) {
  EXPECT_EQ(FromUtf16(u"a\xD83D"), "a\xEF\xBF\xBD");
  EXPECT_EQ(FromUtf16(u"\xDE42z"), "\xEF\xBF\xBDz");
  EXPECT_EQ(FromUtf16(u"\xD83D\xDE42"), "🙂");
  EXPECT_EQ(ToUtf16("🙂"), u"\xD83D\xDE42");
}

}  // namespace
}  // namespace velmora::tables
