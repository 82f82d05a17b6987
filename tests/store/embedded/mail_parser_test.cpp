#include "store/embedded/mail_parser.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <string>

#include "base/text.h"
#include "store/embedded/attachment_names.h"
#include "store/embedded/content_decoder.h"
#include "store/embedded/mime_structure.h"
#include "store/vocabulary.h"

namespace velmora::store::embedded {
namespace {

std::string ContentOf(std::string_view source, const AttachmentRecord& attachment) {
  const auto& range = attachment.Content;
  return DecodeTransfer(
      source.substr(static_cast<std::size_t>(range.Offset), static_cast<std::size_t>(range.Length)),
      range.Encoding);
}

TEST(MailParserTest, HeaderFieldsAreDecodedToOneLine) {
  EXPECT_EQ(DecodeHeaderText(" =?iso-8859-1?q?Gr=FC=DFe?= aus =?utf-8?b?S8O2bG4=?="), "Grüße aus Köln");
  EXPECT_EQ(DecodeHeaderText("eins\r\n\tzwei\r\n drei"), "eins zwei drei");
  EXPECT_EQ(DecodeHeaderText("=?utf-8?q?a=0D=0AX:_b=00c?="), "a  X: bc");
}

TEST(MailParserTest, RawEightBitHeaderIsUtf8WhereValidElseCodePage) {
  EXPECT_EQ(DecodeHeaderText("Gr\xC3\xBC\xC3\x9F"
                             "e"),
            "Grüße");
  EXPECT_EQ(DecodeHeaderText("Gr\xFC\xDF"
                             "e \x80"),
            "Grüße €");
}

TEST(MailParserTest, UnknownCharsetSurvives) {
  EXPECT_EQ(DecodeHeaderText("=?x-nichts?q?Gr=FC=DFe?="), "Grüße");
  EXPECT_EQ(DecodeHeaderText("=?utf-8?q?kaputt"), "=?utf-8?q?kaputt");
  EXPECT_EQ(DecodeHeaderText("=?utf-8?z?abc?="), "=?utf-8?z?abc?=");
}

TEST(MailParserTest, CharacterCutBetweenEncodedWordsIsWhole) {
  EXPECT_EQ(DecodeHeaderText("=?utf-8?b?w6Q=?= =?utf-8?q?=C3?=\r\n =?utf-8?q?=B6?= =?iso-8859-1?q?=FC?="),
            "äöü");
}

TEST(MailParserTest, StatefulCharsetOverSeveralWordsIsRead) {
  EXPECT_EQ(DecodeHeaderText("=?iso-2022-jp?B?GyRCJVElYCVhITwlayRHJE8kIiRqJF4kOyRzISobKEI=?= =?iso-2022-jp?B?"
                             "GyRCRnxLXDhsJE43b0w+IUolNSVWJTglJyUvJUghSyEhJTkbKEI=?="),
            "パムメールではありません！日本語の件名（サブジェクト）　ス");
}

TEST(MailParserTest, AddressesWithNamesGroupsAndEncodedWords) {
  const auto list = ParseAddresses(
      "=?iso-8859-1?q?M=FCller=2C_J=F6rg?= <joerg@example.org>, \"Meier, Eva\" <eva@example.org>,\r\n"
      " Team: a@example.org, b@example.org;, nur@example.org");
  ASSERT_EQ(list.size(), 5U);
  EXPECT_EQ(list[0], (DvRecipient{"Müller, Jörg", "joerg@example.org"}));
  EXPECT_EQ(list[1], (DvRecipient{"Meier, Eva", "eva@example.org"}));
  EXPECT_EQ(list[2].Address, "a@example.org");
  EXPECT_EQ(list[4], (DvRecipient{"", "nur@example.org"}));
}

// A library that reads groups by recursion took all of the stack for this.
TEST(MailParserTest, GroupsWithinGroupsEnd) {
  const std::string deep(200'000, ':');
  (void)ParseAddresses("a" + deep + "b@example.org" + std::string(200'000, ';'));
  std::string many;
  for (int i = 0; i < 3000; ++i)
    many += "\"Tel: " + std::to_string(i) + "\" <n" + std::to_string(i) + "@example.org>, ";
  const auto recipients = ParseAddresses(many);
  ASSERT_EQ(recipients.size(), 3000U);
  EXPECT_EQ(recipients.front().Name, "Tel: 0");
  EXPECT_EQ(recipients.back().Address, "n2999@example.org");
}

TEST(MailParserTest, SenderWithoutAddressKeepsItsText) {
  EXPECT_EQ(JoinRecipients({ParseMail("From: Systemdienst (intern)\n\nx").Sender}), "Systemdienst");
  EXPECT_FALSE(JoinRecipients({ParseMail("From: Der Dienst, <@>;;\n\nx").Sender}).empty());
  EXPECT_EQ(ParseMail("To: undisclosed-recipients:;\n\nx").RecipientText, "undisclosed-recipients:;");
}

TEST(MailParserTest, EmptyAndHeaderlessTextsAreMails) {
  EXPECT_EQ(ParseMail("").PlainText, "");
  EXPECT_EQ(ParseMail("nur Text\nohne Kopf").PlainText, "nur Text\r\nohne Kopf");
  EXPECT_EQ(ParseMail("Subject: x\nkein Kopf\nText").PlainText, "kein Kopf\r\nText");
  EXPECT_EQ(ParseMail(std::string_view("\0\0\n\0", 4)).PlainText, "\r\n");
}

TEST(MailParserTest, MailboxLineInFrontIsNoField) {
  const auto mail = ParseMail("From joerg@example.org Mon Mar  2 10:11:12 2026\nSubject: x\n\ny\n");
  EXPECT_EQ(mail.Subject, "x");
  EXPECT_EQ(mail.PlainText, "y\r\n");
}

TEST(MailParserTest, BodiesAreTheFirstInlineTexts) {
  constexpr std::string_view source =
      "Content-Type: multipart/mixed; boundary=b\n\nVorspann\n"
      "--b\nContent-Type: text/plain; charset=iso-8859-15\nContent-Transfer-Encoding: quoted-printable\n\n"
      "10 =A4=\n!\n"
      "--b\nContent-Type: text/plain\nContent-Disposition: attachment; filename=eins.txt\n\neins\n"
      "--b\nContent-Type: text/html; charset=windows-1252\n\n<p>\x80</p>\n"
      "--b\nContent-Type: text/plain\n\nzweiter Text\n"
      "--b--\nNachspann\n";
  const auto mail = ParseMail(source);
  EXPECT_EQ(mail.PlainText, "10 €!");
  EXPECT_EQ(mail.HtmlText, "<p>€</p>");
  ASSERT_EQ(mail.Attachments.size(), 2U);
  EXPECT_EQ(mail.Attachments[0].Name, "eins.txt");
  EXPECT_EQ(ContentOf(source, mail.Attachments[0]), "eins");
  EXPECT_EQ(mail.Attachments[1].Name, "Anhang.txt");
  EXPECT_EQ(ContentOf(source, mail.Attachments[1]), "zweiter Text");
}

TEST(MailParserTest, AttachedMessageIsItsRawSource) {
  constexpr std::string_view source =
      "Content-Type: multipart/mixed; boundary=b\r\n\r\n"
      "--b\r\nContent-Type: message/rfc822\r\n\r\nSubject:   innen \r\n\r\n--kein Rand\r\nText\r\n\r\n"
      "--b--\r\n";
  const auto mail = ParseMail(source);
  ASSERT_EQ(mail.Attachments.size(), 1U);
  EXPECT_EQ(mail.Attachments[0].Name, "Anhang.eml");
  EXPECT_EQ(mail.Attachments[0].Flags, attachment_flag::MessageRfc822);
  EXPECT_EQ(ContentOf(source, mail.Attachments[0]), "Subject:   innen \r\n\r\n--kein Rand\r\nText\r\n");
}

TEST(MailParserTest, DigestPartsAreMessages) {
  const auto mail =
      ParseMail("Content-Type: multipart/digest; boundary=\"a\n b\"\n\n--a b\n\nSubject: x\n\ny\n--a b--\n");
  ASSERT_EQ(mail.Attachments.size(), 1U);
  EXPECT_EQ(mail.Attachments[0].Flags, attachment_flag::MessageRfc822);
}

TEST(MailParserTest, MissingCloseAndNestedBoundaries) {
  const auto mail = ParseMail(
      "Content-Type: multipart/mixed; boundary=a\n\n--a\nContent-Type: multipart/alternative; boundary=b\n\n"
      "--b\n\ntext\n--b\nContent-Type: text/html\n\nhtml\n--a\nContent-Type: application/pdf; "
      "name=x.pdf\n\npdf");
  EXPECT_EQ(mail.PlainText, "text");
  EXPECT_EQ(mail.HtmlText, "html");
  ASSERT_EQ(mail.Attachments.size(), 1U);
  EXPECT_EQ(mail.Attachments[0].Name, "x.pdf");
  EXPECT_EQ(mail.Attachments[0].Size, 3);
}

TEST(MailParserTest, MultipartWithoutPartsIsText) {
  EXPECT_EQ(ParseMail("Content-Type: multipart/mixed; boundary=b\n\nkein Rand\n").PlainText, "kein Rand\r\n");
  EXPECT_EQ(ParseMail("Content-Type: multipart/mixed\n\nohne Grenze\n").PlainText, "ohne Grenze\r\n");
}

TEST(MailParserTest, DoubledBoundaryMakesNoPart) {
  const auto mail = ParseMail("Content-Type: multipart/mixed; boundary=b\n\n--b\n--b\n\nText\n--b--\n");
  EXPECT_EQ(mail.PlainText, "Text");
  EXPECT_TRUE(mail.Attachments.empty());
}

TEST(MailParserTest, FileNamesOfEveryKind) {
  const auto name = [](const std::string& header) {
    const auto mail =
        ParseMail("Content-Type: multipart/mixed; boundary=b\n\n--b\n" + header + "\n\nx\n--b--\n");
    return mail.Attachments.empty() ? std::string("none") : mail.Attachments[0].Name;
  };
  EXPECT_EQ(name("Content-Type: image/png; name=\"=?utf-8?q?M=C3=BCll.png?=\""), "Müll.png");
  EXPECT_EQ(name("Content-Type: image/png\nContent-Disposition: attachment; filename*=utf-8''M%C3%BCll.png"),
            "Müll.png");
  EXPECT_EQ(name("Content-Type: image/png\nContent-Disposition: attachment; filename*0*=utf-8''M%C3; "
                 "filename*1*=%BCll; filename*2=.png"),
            "Müll.png");
  EXPECT_EQ(name("Content-Type: image/png; name=\"M\xFCll.png\""), "Müll.png");
  EXPECT_EQ(name("Content-Type: image/png; name=\"/etc/passwd\""), "passwd.png");
  EXPECT_EQ(name("Content-Type: image/png"), "Anhang.png");
  EXPECT_EQ(name("Content-Type: application/x-unbekannt"), "Anhang.bin");
}

TEST(MailParserTest, PriorityAndDate) {
  EXPECT_EQ(ParseMail("X-Priority: 1 (Highest)\n\n").Priority, 2);
  EXPECT_EQ(ParseMail("Importance: Low\n\n").Priority, 1);
  EXPECT_EQ(ParseMail("Date: Mon, 2 Mar 2026 10:11:12 +0100\n\n").UnixTime, 1772442672);
  EXPECT_FALSE(ParseMail("Date: gestern\n\n").UnixTime.has_value());
}

TEST(MailParserTest, HtmlCharsetOfTheDocumentCountsWhereTheHeaderIsSilent) {
  EXPECT_EQ(ParseMail("Content-Type: text/html\n\n<meta charset=koi8-r><p>\xCD</p>").HtmlText,
            "<meta charset=koi8-r><p>м</p>");
}

TEST(AttachmentNamesTest, UnsafeNamesAreMadeSafe) {
  EXPECT_EQ(MakeAttachmentName("..\\..\\boot.ini", ""), "boot.ini");
  EXPECT_EQ(MakeAttachmentName("..", "text/plain"), "Anhang.txt");
  EXPECT_EQ(MakeAttachmentName("a:b*?.txt", ""), "a_b__.txt");
  EXPECT_EQ(MakeAttachmentName("a\r\nb\x01.txt. ", ""), "ab.txt");
  EXPECT_EQ(MakeAttachmentName("rechnung\xE2\x80\xAEtxt.exe", ""), "rechnungtxt.exe");
  EXPECT_EQ(MakeAttachmentName(".bashrc", "text/plain"), ".bashrc.txt");
}

TEST(AttachmentNamesTest, LongNamesKeepTheirExtensionAndWholeCharacters) {
  std::string umlauts;
  for (int i = 0; i < 300; ++i) umlauts += "ä";
  const auto name = MakeAttachmentName(umlauts + ".docx", "");
  EXPECT_EQ(name.size(), 199U);
  EXPECT_TRUE(name.ends_with("ä.docx"));
  EXPECT_TRUE(IsValidUtf8(name));
  EXPECT_LE(MakeAttachmentName(std::string(500, '.') + std::string(500, 'x'), "").size(),
            LongestAttachmentName);
}

// --- What a hostile sender may do. Each of these must end soon: in seconds of processor time, where a walk
// that is not linear would take hours. ---

class HostileMailTest : public testing::Test {
 protected:
  ~HostileMailTest() override { EXPECT_LT(std::clock() - begin_, 20 * CLOCKS_PER_SEC) << "not linear"; }

 private:
  std::clock_t begin_ = std::clock();
};

TEST_F(HostileMailTest, DeepNestingEndsInOneRawAttachment) {
  std::string source;
  for (int level = 0; level < 5'000; ++level) {
    source += "Content-Type: multipart/mixed; boundary=b" + std::to_string(level) + "\n\n--b" +
              std::to_string(level) + "\n";
  }
  const auto mail = ParseMail(source + "\nText\n");
  ASSERT_EQ(mail.Attachments.size(), 1U);
  EXPECT_TRUE(ContentOf(source + "\nText\n", mail.Attachments[0]).ends_with("\nText\n"));
}

TEST_F(HostileMailTest, ManyPartsAreLinear) {
  std::string source = "Content-Type: multipart/mixed; boundary=b\n\n";
  for (int part = 0; part < 150'000; ++part) source += "--b\nContent-Type: image/gif\n\nx\n";
  const auto mail = ParseMail(source);
  EXPECT_EQ(mail.Attachments.size(), MaxParts);
  const auto last = ContentOf(source, mail.Attachments.back());
  EXPECT_EQ(last.size(), (150'000 - MaxParts + 1) * 31 - 4) << "the rest stands in one piece";
}

TEST_F(HostileMailTest, LinesThatLookLikeBoundariesAreLinear) {
  std::string source;
  for (int level = 0; level < 200; ++level) {
    source += "Content-Type: multipart/mixed; boundary=b" + std::to_string(level) + "\n\n--b" +
              std::to_string(level) + "\n";
  }
  source += "\n";
  for (int line = 0; line < 1'000'000; ++line) source += "--x\n";
  EXPECT_EQ(ParseMail(source).Attachments.size(), 1U);
}

TEST_F(HostileMailTest, EndlessHeadersAreLinear) {
  std::string words = "Subject: ", broken = "Subject: ", addresses = "To: ", fields;
  for (int i = 0; i < 100'000; ++i) {
    words += "=?utf-8?q?abc?= ";
    broken += "=?utf-8?q?y";
    addresses += "a@b.c, ";
    fields += "X-A" + std::to_string(i) + ": y\n";
  }
  EXPECT_EQ(ParseMail(words + "\n\n").Subject.size(), 300'000U);
  EXPECT_EQ(ParseMail(broken + "\n\n").Subject.size(), 1'100'000U);
  EXPECT_EQ(ParseMail(addresses + "\n\n").To.size(), 100'000U);
  EXPECT_EQ(ParseMail(fields + "Subject: x\n\n").Subject, "x");
  EXPECT_EQ(ParseMail("Content-Type: a/b" + std::string(1'000'000, ';') + "\n\n").Attachments.size(), 1U);
}

}  // namespace
}  // namespace velmora::store::embedded
