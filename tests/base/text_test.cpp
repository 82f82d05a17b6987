#include "base/text.h"

#include <gtest/gtest.h>

#include "base/case_table.h"

namespace velmora {
namespace {

TEST(CaseTest, MapsAsciiLatinGreekAndCyrillic) {
  EXPECT_EQ(ToLower("ABC xyz 09 ÄÖÜ ÉÑÇ ŁŠŽ Ÿ ΑΣΩ АЯЁ"), "abc xyz 09 äöü éñç łšž ÿ ασω аяё");
  EXPECT_EQ(ToUpper("abc xyz 09 äöü éñç łšž ÿ ασω аяё"), "ABC XYZ 09 ÄÖÜ ÉÑÇ ŁŠŽ Ÿ ΑΣΩ АЯЁ");
}

TEST(CaseTest, LettersWithoutAPartnerOfTheirOwnStay) {
  // Otherwise two names that are different on a disk would be one.
  for (const std::string_view lonely : {"ß", "ſ", "ı", "µ", "ς"}) {
    EXPECT_EQ(ToUpper(lonely), lonely);
    EXPECT_EQ(ToLower(lonely), lonely);
  }
  EXPECT_FALSE(EqualsFold("Straße", "STRASSE"));
}

TEST(CaseTest, EveryPairOfTheTableLeadsThereAndBack) {
  std::size_t pairs = 0;
  for (const case_table::Run& run : case_table::Runs) {
    for (char32_t capital = run.First; capital <= run.Last; capital += run.Step, ++pairs) {
      std::string upper, lower;
      AppendCharacter(upper, capital);
      AppendCharacter(lower, static_cast<char32_t>(static_cast<std::int32_t>(capital) + run.Delta));
      EXPECT_EQ(ToLower(upper), lower);
      EXPECT_EQ(ToUpper(lower), upper);
      EXPECT_EQ(ToUpper(upper), upper);
      EXPECT_EQ(ToLower(lower), lower);
      EXPECT_TRUE(EqualsFold(upper, lower));
    }
  }
  EXPECT_GT(pairs, 1000U);
}

TEST(CaseTest, FoldingTwiceChangesNothing) {
  for (char32_t character = 1; character < 0x3000; ++character) {
    std::string text;
    AppendCharacter(text, character);
    EXPECT_EQ(FoldCase(FoldCase(text)), FoldCase(text)) << static_cast<std::uint32_t>(character);
    EXPECT_EQ(FoldCase(ToUpper(text)), FoldCase(text)) << static_cast<std::uint32_t>(character);
  }
}

TEST(CaseTest, InvalidBytesStayAndDiffer) {
  EXPECT_EQ(ToLower("A\xFF"
                    "B"),
            "a\xFF"
            "b");
  EXPECT_TRUE(EqualsFold("a\xFF", "A\xFF"));
  EXPECT_FALSE(EqualsFold("a\xFF", "a\xFE"));
  EXPECT_FALSE(EqualsFold("a\xFF", "a\xEF\xBF\xBD"));
}

TEST(CaseTest, ComparesPrefixesAndParts) {
  EXPECT_TRUE(StartsWithFold("ÄRGER und mehr", "ärger"));
  EXPECT_FALSE(StartsWithFold("Är", "ärger"));
  EXPECT_TRUE(StartsWithFold("x", ""));
  EXPECT_TRUE(ContainsFold("Große ÜBERSICHT", "übers"));
  EXPECT_FALSE(ContainsFold("Große ÜBERSICHT", "uebers"));
  EXPECT_FALSE(EqualsFold("abc", "ab"));
  EXPECT_FALSE(EqualsFold("ab", "abc"));
  EXPECT_TRUE(EqualsFold("", ""));
}

TEST(TrimTest, TakesBlanksTabsAndLineEnds) {
  EXPECT_EQ(Trim(" \t\r\n a b \r\n"), "a b");
  EXPECT_EQ(Trim(" \t "), "");
  EXPECT_EQ(Trim(""), "");
  EXPECT_EQ(Trim("\u00A0x"), "\u00A0x");
}

TEST(SplitTest, KeepsEmptyPieces) {
  EXPECT_EQ(Split("a,,b,", ","), (std::vector<std::string>{"a", "", "b", ""}));
  EXPECT_EQ(Split("", ","), (std::vector<std::string>{""}));
  EXPECT_EQ(Split("a\r\nb", "\r\n"), (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(Split("abc", ""), (std::vector<std::string>{"abc"}));
}

TEST(SplitTest, LastPieceHoldsTheRest) {
  EXPECT_EQ(Split("key=a=b", "=", 2), (std::vector<std::string>{"key", "a=b"}));
  EXPECT_EQ(Split("key", "=", 2), (std::vector<std::string>{"key"}));
  EXPECT_EQ(Split("a=b=c", "=", 1), (std::vector<std::string>{"a=b=c"}));
}

TEST(JoinTest, PutsSeparatorsBetween) {
  EXPECT_EQ(Join({"a", "", "b"}, "; "), "a; ; b");
  EXPECT_EQ(Join({}, ";"), "");
}

TEST(ReplaceAllTest, GoesFromLeftToRightOnce) {
  EXPECT_EQ(ReplaceAll("aaa", "aa", "b"), "ba");
  EXPECT_EQ(ReplaceAll("a", "a", "aa"), "aa");
  EXPECT_EQ(ReplaceAll("abc", "", "x"), "abc");
  EXPECT_EQ(ReplaceAll("abc", "b", ""), "ac");
}

TEST(CharacterTest, CountsCodePoints) {
  EXPECT_EQ(CountCharacters("Größe €\U0001F600"), 8U);
  EXPECT_EQ(CountCharacters("a\xFF\xC3"), 3U);
  EXPECT_EQ(CountCharacters(""), 0U);
}

TEST(CharacterTest, CutsBetweenCodePoints) {
  EXPECT_EQ(LeftCharacters("Größe", 3), "Grö");
  EXPECT_EQ(LeftCharacters("Größe", 9), "Größe");
  EXPECT_EQ(LeftCharacters("Größe", 0), "");
  EXPECT_EQ(LeftCharacters("\xFFü", 1), "\xFF");
}

TEST(CharacterTest, EveryCodePointComesBack) {
  for (char32_t character = 0; character <= 0x10FFFF; ++character) {
    if (character >= 0xD800 && character <= 0xDFFF) continue;
    std::string text;
    AppendCharacter(text, character);
    std::size_t position = 0;
    ASSERT_EQ(NextCharacter(text, position), character);
    ASSERT_EQ(position, text.size());
  }
}

TEST(CharacterTest, ImpossibleCodePointsBecomeTheReplacement) {
  for (const char32_t impossible : {0xD800U, 0xDFFFU, 0x110000U, 0xFFFFFFFFU}) {
    std::string text;
    AppendCharacter(text, impossible);
    EXPECT_EQ(text, "\uFFFD");
  }
}

TEST(Utf8Test, RefusesOverlongSurrogatesTooLargeAndTruncated) {
  for (const std::string_view bad :
       {"\xC0\x80", "\xE0\x80\xAF", "\xF0\x80\x80\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE2\x82",
        "\x80", "\xF8\x88\x80\x80\x80", "\xC3("}) {
    EXPECT_FALSE(IsValidUtf8(bad));
    std::size_t position = 0;
    EXPECT_EQ(NextCharacter(bad, position), 0xFFFDU);
    EXPECT_EQ(position, 1U);
    EXPECT_TRUE(IsValidUtf8(MakeValidUtf8(bad)));
  }
  EXPECT_TRUE(IsValidUtf8("Grüße \U0001F600"));
}

TEST(Utf8Test, RepairKeepsWhatIsValid) {
  EXPECT_EQ(MakeValidUtf8("a\xFFü\xC3"), "a\uFFFDü\uFFFD");
  EXPECT_EQ(MakeValidUtf8("Grüße"), "Grüße");
}

TEST(ControlCharacterTest, EachBecomesOneBlank) {
  EXPECT_EQ(BlankControlCharacters("a\r\nb\tc\x7F"
                                   "d\u0085e\u009F"),
            "a  b c d e ");
  EXPECT_EQ(BlankControlCharacters(std::string_view("\0x", 2)), " x");
  EXPECT_EQ(BlankControlCharacters("ÄÖ\u00A0€"), "ÄÖ\u00A0€");
}

}  // namespace
}  // namespace velmora
