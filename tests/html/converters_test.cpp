#include "html/converters.h"

#include <gtest/gtest.h>

#include <array>
#include <random>

#include "base/code_page.h"
#include "base/text.h"

namespace velmora::html {
namespace {

// The rule as it is told: pair after pair over the whole text.
std::string ReplacePairs(std::string text, bool withLineBreaks) {
  constexpr std::array<std::array<std::string_view, 2>, 15> pairs = {{{"&", "&amp;"},
                                                                      {"Ä", "&Auml;"},
                                                                      {"ä", "&auml;"},
                                                                      {"Ö", "&Ouml;"},
                                                                      {"ö", "&ouml;"},
                                                                      {"Ü", "&Uuml;"},
                                                                      {"ü", "&uuml;"},
                                                                      {"ß", "&szlig;"},
                                                                      {"<", "&lt;"},
                                                                      {">", "&gt;"},
                                                                      {"\"", "&quot;"},
                                                                      {" ", "&nbsp;"},
                                                                      {"", "&nbsp;"},
                                                                      {"©", "&copy;"},
                                                                      {"\r\n", "<BR>"}}};
  for (std::size_t i = 0; i < pairs.size(); ++i)
    if (withLineBreaks || i + 1 < pairs.size()) text = ReplaceAll(text, pairs[i][0], pairs[i][1]);
  return text;
}

// Short texts of the pieces that matter.
std::string RandomText(std::mt19937& random) {
  constexpr std::array<std::string_view, 24> pieces = {"&", "Ä", "ä",  "Ö",  "ö",  "Ü",    "ü",    "ß",
                                                       "<", ">", "\"", " ",  "©",  "x",    "é",    "€",
                                                       "П", ";", "#",  "\r", "\n", "\r\n", "amp;", "\xC3"};
  std::string text;
  const std::size_t count = random() % 12;
  for (std::size_t i = 0; i < count; ++i) text += pieces[random() % pieces.size()];
  return text;
}

TEST(TextToHtmlTest, BlanksDoNotWrap) { EXPECT_EQ(TextToHtml("a b", false), "a&nbsp;b"); }

TEST(TextToHtmlTest, LineEndsOnlyWhenAsked) {
  EXPECT_EQ(TextToHtml("x\r\n", false), "x\r\n");
  EXPECT_EQ(TextToHtml("x\r\n", true), "x<BR>");
  EXPECT_EQ(TextToHtml("x\ny\r", true), "x\ny\r");
}

TEST(TextToHtmlTest, AnAmpersandIsTakenOnce) {
  EXPECT_EQ(TextToHtml("&", false), "&amp;");
  EXPECT_EQ(TextToHtml("&amp;", false), "&amp;amp;");
}

TEST(TextToHtmlTest, AllPairs) {
  EXPECT_EQ(TextToHtml("ÄäÖöÜüß<>\"©é€", false),
            "&Auml;&auml;&Ouml;&ouml;&Uuml;&uuml;&szlig;&lt;&gt;&quot;&copy;é€");
  EXPECT_EQ(TextToHtml("", true), "");
}

TEST(TextToHtmlTest, OnePassGivesWhatPairAfterPairGives) {
  std::mt19937 random(1);
  for (int i = 0; i < 20000; ++i) {
    const std::string text = RandomText(random);
    for (const bool withLineBreaks : {false, true})
      ASSERT_EQ(TextToHtml(text, withLineBreaks), ReplacePairs(text, withLineBreaks)) << text;
  }
}

TEST(HtmlToTextTest, UndoesTheAmpersandFirst) {
  // "&amp;lt;" becomes "&lt;" and then "<": the double step is what descriptors of old rely on.
  EXPECT_EQ(HtmlToText("&amp;lt;"), "<");
  EXPECT_EQ(HtmlToText("&amp;amp;"), "&amp;");
}

TEST(HtmlToTextTest, ReadsAllPairs) {
  EXPECT_EQ(HtmlToText("&Auml;&auml;&Ouml;&ouml;&Uuml;&uuml;&szlig;&lt;&gt;&quot;&nbsp;&copy;<BR>"),
            "ÄäÖöÜüß<>\" ©\r\n");
  EXPECT_EQ(HtmlToText("&lt;BR&gt;"), "\r\n");
  EXPECT_EQ(HtmlToText("&AUML;<br>&x"), "&AUML;<br>&x");
}

TEST(HtmlToTextTest, ReadsBackWhatHoldsNoEntity) {
  EXPECT_EQ(HtmlToText(TextToHtml("Größe < 5 & \"so\" ©\r\nweiter", true)), "Größe < 5 & \"so\" ©\r\nweiter");
}

TEST(UmlautsToHtmlTest, LeavesHtmlAlone) {
  EXPECT_EQ(UmlautsToHtml("<B>Größe & Maß</B> é©"), "<B>Gr&ouml;&szlig;e & Ma&szlig;</B> é©");
}

TEST(UmlautsToHtmlTest, AppendsBehindWhatIsThere) {
  std::string html = "ä";
  AppendUmlautsToHtml(html, "ä");
  EXPECT_EQ(html, "ä&auml;");
}

TEST(EscapeAngleBracketsTest, NothingElse) {
  EXPECT_EQ(EscapeAngleBrackets("<a@b> & \"ü\""), "&lt;a@b&gt; & \"ü\"");
}

TEST(NumericEntityTest, UmlautsByNameAllOthersByCode) {
  EXPECT_EQ(ToNumericEntities("<p>Größe é</p>"), "<p>Gr&ouml;&szlig;e &#233;</p>");
  EXPECT_EQ(ToNumericEntities("© \u00A0"), "&#169; &#160;");
}

TEST(NumericEntityTest, CodesOfThePageAndPointsBeyondIt) {
  // The code page's own number, not the code point: "&#128;" is what every browser shows as the euro sign.
  EXPECT_EQ(ToNumericEntities("€„"), "&#128;&#132;");
  EXPECT_EQ(ToNumericEntities("П\U0001F600"), "&#1055;&#128512;");
  EXPECT_EQ(ToNumericEntities("\xFF"), "&#65533;");
}

TEST(NumericEntityTest, EveryCodeOfThePageFrom128On) {
  for (int code = 128; code < 256; ++code) {
    const std::string character = FromCodePage(std::string(1, static_cast<char>(code)));
    const std::string html = ToNumericEntities(character + "x" + character);
    if (UmlautsToHtml(character) == character) {
      EXPECT_EQ(html, "&#" + std::to_string(code) + ";x&#" + std::to_string(code) + ";");
    } else {
      EXPECT_EQ(html, UmlautsToHtml(character) + "x" + UmlautsToHtml(character));
    }
  }
}

TEST(NumericEntityTest, TheResultIsAsciiHoweverLongTheText) {
  std::string text;
  for (int i = 0; i < 30000; ++i) text += "éП";
  for (const char byte : ToNumericEntities(text)) ASSERT_LT(static_cast<unsigned char>(byte), 0x80);
}

}  // namespace
}  // namespace velmora::html
