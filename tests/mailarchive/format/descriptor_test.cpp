#include "mailarchive/format/descriptor.h"

#include <filesystem>

#include "mailarchive/format/folder_fixture.h"

namespace velmora::mailarchive {
namespace {

EntryDescriptor Mail() {
  return {.Kind = EntryKind::Mail,
          .Sortaddr = "a@b.example",
          .Subject = "Angebot = günstig",
          .Date = *DateTime::FromCivil({2026, 11, 20, 14, 3, 27}),
          .From = "a@b.example",
          .To = "c@d.example",
          .Flags = entry_flag::Internal,
          .MailArcEntry = "x_inf.htm",
          .MailArcAdd = "x_inf.add",
          .Body = R"(HTMLMails\x.htm)",
          .Eml = R"(Eml\x.eml)",
          .Smtp = R"(Eml\x.smtp)",
          .Comment = R"(Comments\x.txt)"};
}

TEST(FormatDescriptor, WritesAMailInTheOrderOfTheFormat) {
  auto mail = Mail();
  mail.HasAttachments = true;
  mail.Attachments = {R"(Attachments\a.pdf)", R"(Attachments\b.doc)"};
  EXPECT_EQ(FormatDescriptor(mail),
            "Sortaddr=a@b.example\r\n"
            "Subject=Angebot = g\xFCnstig\r\n"
            "Date=20.11.2026 14:03:27\r\n"
            "From=a@b.example\r\n"
            "To=c@d.example\r\n"
            "Flags=2\r\n"
            "MailArcEntry=x_inf.htm\r\n"
            "MailArcAdd=x_inf.add\r\n"
            "HTML=HTMLMails\\x.htm\r\n"
            "EML=Eml\\x.eml\r\n"
            "SMTP=Eml\\x.smtp\r\n"
            "COMMENT=Comments\\x.txt\r\n"
            "Attachments=\"Attachments\\a.pdf\",\"Attachments\\b.doc\"\r\n");
}

TEST(FormatDescriptor, LeavesAttachmentsOutWhenNoneWereSaved) {
  EXPECT_EQ(FormatDescriptor(Mail()).find("Attachments"), std::string::npos);
}

TEST(FormatDescriptor, WritesAFaxWithoutMailKeys) {
  EntryDescriptor fax;
  fax.Kind = EntryKind::Fax;
  fax.Flags = entry_flag::Fax | entry_flag::Outgoing;
  fax.MailArcEntry = "Fax_x.htm";
  fax.MailArcAdd = "Fax_x.add";
  fax.Body = R"(FaxImages\Fax_x.tif)";
  fax.Comment = R"(Comments\Fax_x.txt)";
  EXPECT_EQ(FormatDescriptor(fax),
            "Sortaddr=\r\nSubject=\r\nDate=30.12.1899 00:00:00\r\nFrom=\r\nTo=\r\nFlags=5\r\n"
            "MailArcEntry=Fax_x.htm\r\nMailArcAdd=Fax_x.add\r\nFAX=FaxImages\\Fax_x.tif\r\n"
            "COMMENT=Comments\\Fax_x.txt\r\n");
}

// Readers of the format expect the keys of a voice mail to end here; its page alone links the comment.
TEST(FormatDescriptor, AVoiceMailHasNoCommentKeyEvenWithAComment) {
  EntryDescriptor voice;
  voice.Kind = EntryKind::Voice;
  voice.Body = R"(VoiceMails\x.wav)";
  voice.Comment = R"(Comments\x.txt)";
  const auto bytes = FormatDescriptor(voice);
  EXPECT_TRUE(bytes.ends_with("VOICE=VoiceMails\\x.wav\r\n"));
  EXPECT_EQ(bytes.find("COMMENT"), std::string::npos);
}

TEST(FormatDescriptor, AValueCannotAddALine) {
  auto mail = Mail();
  mail.Subject = "x\r\nHTML=..\\..\\secret.txt";
  const auto bytes = FormatDescriptor(mail);
  EXPECT_NE(bytes.find("Subject=x  HTML=..\\..\\secret.txt\r\n"), std::string::npos);
  EXPECT_EQ(ParseEntryFields(bytes).Body, R"(HTMLMails\x.htm)");
}

TEST(ParseIndexFields, ReadsBackWhatWasWritten) {
  auto mail = Mail();
  mail.Subject = "Отчёт – ß";
  const auto fields = ParseIndexFields(FormatDescriptor(mail));
  EXPECT_EQ(fields.Subject, "Отчёт – ß");
  EXPECT_EQ(fields.Sortaddr, mail.Sortaddr);
  EXPECT_EQ(fields.Date, mail.Date);
  EXPECT_EQ(fields.From, mail.From);
  EXPECT_EQ(fields.To, mail.To);
  EXPECT_EQ(fields.Flags, 2);
  EXPECT_EQ(fields.Comment, mail.Comment);
}

TEST(ParseIndexFields, KeepsEqualsSignsOfAValue) {
  EXPECT_EQ(ParseIndexFields("Subject= a=b=c \r\n").Subject, "a=b=c");
}

TEST(ParseIndexFields, MissingKeysAreEmpty) {
  const auto fields = ParseIndexFields("");
  EXPECT_EQ(fields.Subject, "");
  EXPECT_TRUE(fields.Date.IsNull());
  EXPECT_EQ(fields.Flags, 0);
}

TEST(ParseIndexFields, AnUnreadableDateIsTheNullDate) {
  EXPECT_TRUE(ParseIndexFields("Date=31.02.2026 10:00:00\r\n").Date.IsNull());
  EXPECT_TRUE(ParseIndexFields("Date=gestern\r\n").Date.IsNull());
}

TEST(ParseIndexFields, FlagsThatAreNoSuchNumberAreZero) {
  for (const auto* flags : {"", "x", "-1", "99999999999", "1e3"}) {
    EXPECT_EQ(ParseIndexFields(std::string("Flags=") + flags).Flags, 0) << flags;
  }
}

TEST(ParseIndexFields, SurvivesNullBytesAndBrokenLines) {
  const auto fields = ParseIndexFields(std::string_view("\0\0=\n=\n\r\r\nSubject=a\0b\nTo", 24));
  EXPECT_EQ(fields.Subject, "a b");
  EXPECT_EQ(fields.To, "");
}

TEST(ParseEntryFields, TheLastBodyKeyWins) {
  EXPECT_EQ(ParseEntryFields("HTML=a.htm\r\nFAX=b.tif\r\n").Body, "b.tif");
  EXPECT_EQ(ParseEntryFields("VOICE=a.wav\r\nHTML=\r\n").Body, "");
}

TEST(ParseEntryFields, ReadsBackWhatWasWritten) {
  auto mail = Mail();
  mail.HasAttachments = true;
  mail.Attachments = {R"(Attachments\a.pdf)"};
  const auto fields = ParseEntryFields(FormatDescriptor(mail));
  EXPECT_EQ(fields.Body, mail.Body);
  EXPECT_EQ(fields.Eml, mail.Eml);
  EXPECT_EQ(fields.Smtp, mail.Smtp);
  EXPECT_EQ(fields.Attachments, R"("Attachments\a.pdf")");
  EXPECT_EQ(fields.Flags, 2);
  EXPECT_EQ(fields.MailArcEntry, "x_inf.htm");
  EXPECT_EQ(fields.MailArcAdd, "x_inf.add");
  EXPECT_EQ(fields.Comment, mail.Comment);
}

TEST(ParseEntryFields, PathsThatLeaveTheDirectoryAreEmpty) {
  for (const std::string path : {R"(..\x.htm)", R"(a\..\..\x)", R"(\x)", R"(\\server\share\x)", R"(C:\x)",
                                 "x:stream", "*.htm", "x?.htm", "../x", "/etc/passwd"}) {
    const auto fields = ParseEntryFields("HTML=" + path + "\r\nEML=" + path + "\r\nSMTP=" + path +
                                         "\r\nCOMMENT=" + path + "\r\nMailArcEntry=" + path + "\r\n");
    EXPECT_EQ(fields.Body + fields.Eml + fields.Smtp + fields.Comment + fields.MailArcEntry, "") << path;
    EXPECT_EQ(ParseIndexFields("COMMENT=" + path).Comment, "") << path;
    EXPECT_TRUE(SplitAttachments('"' + path + '"').empty()) << path;
  }
}

TEST(ParseEntryFields, APathWithANullByteIsEmpty) {
  EXPECT_EQ(ParseEntryFields(std::string_view("HTML=a\0b.htm\r\n", 14)).Body, "");
}

TEST(SplitAttachments, SplitsAtQuotesAndComma) {
  EXPECT_EQ(SplitAttachments(R"("Attachments\a, b.pdf","c.doc")"),
            (std::vector<std::string>{R"(Attachments\a, b.pdf)", "c.doc"}));
  EXPECT_TRUE(SplitAttachments("").empty());
  EXPECT_TRUE(SplitAttachments(R"("","")").empty());
}

TEST(SplitAttachments, LeavesOutWhatIsUnsafeAndKeepsTheRest) {
  EXPECT_EQ(SplitAttachments(R"("..\a","b","C:\c")"), std::vector<std::string>{"b"});
}

TEST(DescriptorName, CutsAtTheFirstHtm) {
  EXPECT_EQ(DescriptorName("x.htm"), "x.add");
  EXPECT_EQ(DescriptorName("x_inf.htm"), "x_inf.add");
  EXPECT_EQ(DescriptorName("X.HTM"), "X.add");
  EXPECT_EQ(DescriptorName("x.html"), "x.add");
  EXPECT_EQ(DescriptorName("x.htm.htm"), "x.add");
  EXPECT_EQ(DescriptorName("x.txt"), "x.txt.add");
  EXPECT_EQ(DescriptorName(".htm"), ".add");
  EXPECT_EQ(DescriptorName(""), ".add");
}

using ReadDescriptorTest = FolderTest;

TEST_F(ReadDescriptorTest, FindsTheDescriptorOfAPage) {
  Write("x_inf.add", "Subject=a\r\nEML=Eml\\x.eml\r\n");
  EXPECT_EQ(ReadIndexFields(*Files, Folder.Path() + "\\", "x_inf.htm")->Subject, "a");
  EXPECT_EQ(ReadEntryFields(*Files, Folder.Path(), "x_inf.htm")->Eml, R"(Eml\x.eml)");
}

TEST_F(ReadDescriptorTest, GivesNothingWithoutADescriptor) {
  EXPECT_FALSE(ReadIndexFields(*Files, Folder.Path(), "x.htm"));
  EXPECT_FALSE(ReadEntryFields(*Files, Folder.Path(), "x.htm"));
}

TEST_F(ReadDescriptorTest, ReadsTheBeginningOfAHugeDescriptor) {
  Write("x.add", "Subject=a\r\n");
  std::filesystem::resize_file(Folder.HostPath("x.add"), 100 * 1024 * 1024);
  EXPECT_EQ(ReadIndexFields(*Files, Folder.Path(), "x.htm")->Subject, "a");
}

}  // namespace
}  // namespace velmora::mailarchive
