// What the viewer makes of hostile and odd messages.

#include <gtest/gtest.h>

#include "base/text.h"
#include "ui/html_text.h"
#include "ui/message_content.h"
#include "ui_fixture.h"

namespace velmora::ui {
namespace {

TEST(MessageContentTest, OnlyPartsOfTheMessageAreParts) {
  EXPECT_EQ(InlinePartOf("velmora-part:01"), 1);
  EXPECT_EQ(InlinePartOf("velmora-part:42"), 42);
  for (const char* other : {"", "velmora-part:", "velmora-part:1", "velmora-part:001", "velmora-part:0x",
                            "http://example.org/velmora-part:01", "file:///etc/passwd"}) {
    EXPECT_EQ(InlinePartOf(other), 0) << other;
  }
}

TEST(MessageContentTest, TablesWithinTablesAreCounted) {
  EXPECT_EQ(TableDepth(""), 0);
  EXPECT_EQ(TableDepth("<table><tr><td><TABLE></TABLE><table></table></td></tr></table>"), 2);
  EXPECT_EQ(TableDepth("</table></table><table>"), 1);
  EXPECT_EQ(TableDepth("<"), 0);
  std::string deep;
  for (int i = 0; i < 10000; ++i) deep += "<table><tr><td>";
  EXPECT_EQ(TableDepth(deep), 10000);
}

TEST(MessageContentTest, ProgramsAreKnownByTheirNames) {
  for (const char* name : {"a.exe", "Rechnung.pdf.SCR", "x.desktop", "x.sh", "x.js ", "a.b.lnk"}) {
    EXPECT_TRUE(IsExecutableName(name)) << name;
  }
  for (const char* name : {"a.pdf", "exe", "", "x.exe.txt", "sh"})
    EXPECT_FALSE(IsExecutableName(name)) << name;
}

TEST(HtmlTextTest, OnlyWhatAPersonReadsIsLeft) {
  EXPECT_EQ(
      TextOfHtml(
          "<html><head><title>T</title><style>p{a:b}</style></head><body>\r\n <P class=x>Guten  Tag,</P>"
          "<!-- <p>nicht --><p>1 &lt; 2<br/>Gr&uuml;&szlig;e<script>alert('<p>')</script></body>"),
      "Guten Tag,\n1 < 2\nGrüße");
  EXPECT_EQ(TextOfHtml("a<"), "a");
  EXPECT_EQ(TextOfHtml("a<!--"), "a");
  EXPECT_EQ(TextOfHtml(""), "");
}

class MessageContentStoreTest : public startup::ProgramTest {
 protected:
  MessageContent Content(const std::string& source) {
    if (program == nullptr) StartSession();
    directory.WriteHostFile("mail.eml", source);
    const auto archive = MakeArchive("Inhalt");
    const auto made = context().session.Account->DVMailItemFromEml(directory.Path("mail.eml"), *archive);
    EXPECT_TRUE(made.has_value()) << made.error().Text;
    auto content = ReadMessageContent(*archive, (*made)->Key());
    EXPECT_TRUE(content.has_value()) << content.error().Text;
    return *std::move(content);
  }
  static std::string Head(const std::string& type) {
    return "From: Max <max@example.org>\r\nTo: anna@example.org\r\nSubject: Gruß\r\n"
           "Date: Tue, 3 Mar 2026 10:00:00 +0100\r\nMIME-Version: 1.0\r\nContent-Type: " +
           type + "\r\nContent-Transfer-Encoding: 8bit\r\n\r\n";
  }
};

TEST_F(MessageContentStoreTest, APlainMailHasItsHeaderAndText) {
  const MessageContent content = Content(Head("text/plain; charset=utf-8") + "Guten Tag\r\n");
  EXPECT_EQ(content.Kind, ContentKind::Text);
  EXPECT_EQ(content.Title, "Gruß");
  EXPECT_NE(content.Text.find("Guten Tag"), std::string::npos);
  ASSERT_GE(content.Header.size(), 4U);
  EXPECT_EQ(content.Header[0].Label, "Von:");
  EXPECT_EQ(content.Header[0].Value, "Max <max@example.org>");
  EXPECT_EQ(content.Notice, "");
}

TEST_F(MessageContentStoreTest, ABodyOfFiftyMebibytesIsCutAndSaidSo) {
  const MessageContent content =
      Content(Head("text/plain; charset=utf-8") + std::string(std::size_t{50} << 20, 'x') + "\r\n");
  EXPECT_EQ(content.Kind, ContentKind::Text);
  EXPECT_LE(content.Text.size(), ShownBodyBytes + ShownBodyBytes / ShownLineBytes);
  EXPECT_NE(content.Notice.find("zu lang"), std::string::npos);
}

// The toolkit lays out a line as a whole: one of megabytes would stop the window for minutes.
TEST_F(MessageContentStoreTest, ALineWithoutAnEndIsBrokenBetweenCharacters) {
  std::string line;
  for (std::size_t i = 0; i < ShownLineBytes; ++i) line += "ä€";
  const MessageContent content =
      Content(Head("text/plain; charset=utf-8") + "kurz\r\n" + line + "\r\nkurz\r\n");
  std::string joined;
  for (const std::string& shown : Split(content.Text, "\n")) {
    EXPECT_LE(shown.size(), ShownLineBytes + 1);
    EXPECT_TRUE(IsValidUtf8(shown));
    joined += shown;
  }
  EXPECT_EQ(joined.substr(0, 5 + line.size()), "kurz\r" + line);
  EXPECT_NE(content.Notice.find("umgebrochen"), std::string::npos);
}

TEST_F(MessageContentStoreTest, NothingInAHeaderTurnsTheDirectionOfWriting) {
  const MessageContent content = Content(
      "From: \"a\xE2\x80\xAE\" <max@example.org>\r\nTo: anna@example.org\r\n"
      "Subject: Bild \xE2\x80\xAEgpj.exe\r\nDate: Tue, 3 Mar 2026 10:00:00 +0100\r\n\r\nText\r\n");
  EXPECT_EQ(content.Title, "Bild [U+202E]gpj.exe");
  for (const ContentLine& line : content.Header) {
    EXPECT_EQ(line.Value.find("\xE2\x80\xAE"), std::string::npos) << line.Label;
  }
}

// The text beside it may have been cut, which is nothing to who reads the HTML.
TEST_F(MessageContentStoreTest, AShortHtmlBodyBesideALongTextHasNoNotice) {
  const std::string parts = "--b\r\nContent-Type: text/plain\r\n\r\n" + std::string(3 * ShownLineBytes, 'x') +
                            "\r\n--b\r\nContent-Type: text/html\r\n\r\n<p>kurz</p>\r\n--b--\r\n";
  const MessageContent content = Content(Head("multipart/alternative; boundary=b") + parts);
  EXPECT_EQ(content.Kind, ContentKind::Html);
  EXPECT_EQ(content.Notice, "");
}

TEST_F(MessageContentStoreTest, ALongHtmlBodyIsShownAsText) {
  std::string html = "<html><body>Anfang";
  while (html.size() <= ShownHtmlBytes) html += "<p>Zeile mit Text</p>\r\n";
  const MessageContent content = Content(Head("text/html; charset=utf-8") + html);
  EXPECT_EQ(content.Kind, ContentKind::Text);
  EXPECT_NE(content.Text.find("Anfang"), std::string::npos);
  EXPECT_EQ(content.Text.find("<p>"), std::string::npos) << "its source is no text";
  EXPECT_NE(content.Notice.find("zu lang"), std::string::npos);
}

TEST_F(MessageContentStoreTest, TablesThatNoStackHoldsAreShownAsText) {
  std::string html = "<html><body>Anfang\r\n";
  for (int i = 0; i < 5000; ++i) html += "<table><tr><td>\r\n";
  const MessageContent content = Content(Head("text/html; charset=utf-8") + html + "Ende");
  EXPECT_EQ(content.Kind, ContentKind::Text);
  EXPECT_NE(content.Notice.find("verschachtelt"), std::string::npos);
}

TEST_F(MessageContentStoreTest, AnEntryThatHasVanishedIsAnError) {
  StartSession();
  const auto archive = MakeArchive("Leer");
  EXPECT_FALSE(ReadMessageContent(*archive, 4711).has_value());
}

}  // namespace
}  // namespace velmora::ui
