// With numbered names no file of another entry is ever overwritten, whatever meets whatever.
#include "mailarchive/export_fixture.h"

namespace velmora::mailarchive {
namespace {

class NameClashTest : public ExportTest {
 protected:
  test::FakeMail& AddHtml(const std::string& subject, const std::string& body) {
    test::FakeMail& mail = store.AddMail(*archive, subject);
    mail.Html = "<html>";
    mail.Fields[store::tag::HtmlRendition] = body;
    mail.Source = body;
    mail.Fields[store::tag::SmtpHeader] = body;
    mail.Fields[store::tag::Comment] = body;
    return mail;
  }
  test::FakeMail& AddPlain(const std::string& subject, const std::string& body) {
    test::FakeMail& mail = AddHtml(subject, body);
    mail.Html.clear();
    mail.Text = body;
    return mail;
  }
};

TEST_F(NameClashTest, OriginalsOfAPlainAndAnHtmlMailOfOneSubject) {
  options.SaveOriginals = options.SaveSmtpHeader = options.SaveComments = true;
  RunMails({AddPlain("x", "plain").Key, AddHtml("x", "html").Key});
  EXPECT_EQ(Names(), (Strings{"Comments", "Eml", "HTMLMails", "x.add", "x.htm", "x_inf.add", "x_inf.htm"}));
  EXPECT_EQ(ReadTarget("Eml\\x.eml"), "plain");
  EXPECT_EQ(ReadTarget("Eml\\x1.eml"), "html");
  EXPECT_EQ(ReadTarget("Eml\\x1.smtp"), "html");
  EXPECT_EQ(ReadTarget("Comments\\x1.txt"), "html");
  EXPECT_EQ(Value("x_inf.add", "EML"), "Eml\\x1.eml");
  EXPECT_EQ(Value("x_inf.add", "SMTP"), "Eml\\x1.smtp");
  EXPECT_EQ(Value("x_inf.add", "COMMENT"), "Comments\\x1.txt");
  EXPECT_EQ(Part("x_inf.htm", "E"), "<a  target=\"_blank\" href=\"Eml/x1.eml\">Original Mail</a><br>");
  EXPECT_EQ(Part("x_inf.htm", "M"), "<a href=\"Comments/x1.txt\">Kommentar</a><br>");
}

TEST_F(NameClashTest, BodiesWithoutSeparateFolders) {
  options.SeparateAttachmentsFolder = false;
  RunMails({AddHtml("x", "1").Key, AddHtml("x", "2").Key, AddPlain("x", "3").Key});
  EXPECT_EQ(Names(), (Strings{"x.htm", "x1.htm", "x2.add", "x2.htm", "x_inf.add", "x_inf.htm", "x_inf1.add",
                              "x_inf1.htm"}));
  EXPECT_EQ(ReadTarget("x.htm"), "1");
  EXPECT_EQ(ReadTarget("x1.htm"), "2");
  EXPECT_EQ(Value("x_inf1.add", "HTML"), "x1.htm");
  EXPECT_EQ(Value("x_inf1.add", "MailArcEntry"), "x_inf1.htm");
  EXPECT_EQ(Value("x_inf1.add", "MailArcAdd"), "x_inf1.add");
  EXPECT_NE(ReadTarget("x_inf1.htm").find("href=\"/x1.htm\""), std::string::npos);
  EXPECT_EQ(Part("x2.htm", "C"), "3");
}

TEST_F(NameClashTest, PageOfAnHtmlMailMeetsAPlainMailNamedSo) {
  RunMails({AddPlain("x_inf", "plain").Key, AddHtml("x", "html").Key});
  EXPECT_EQ(Part("x_inf.htm", "C"), "plain");
  EXPECT_EQ(Value("x_inf1.add", "HTML"), "HTMLMails\\x.htm");
}

TEST_F(NameClashTest, AttachmentTakesThePagesNameWithoutSeparateFolders) {
  options.SeparateAttachmentsFolder = false;
  options.SaveAttachments = true;
  test::FakeMail& mail = AddPlain("Bericht", "Text");
  mail.Attachments = {{"Bericht.htm", "fremd"}, {"Bericht1.htm", "auch fremd"}};
  RunMail(mail);
  EXPECT_EQ(ReadTarget("Bericht.htm"), "fremd");
  EXPECT_EQ(ReadTarget("Bericht1.htm"), "auch fremd");
  EXPECT_EQ(Value("Bericht2.add", "MailArcEntry"), "Bericht2.htm");
  EXPECT_EQ(Part("Bericht2.htm", "C"), "Text");
}

TEST_F(NameClashTest, SecondExportNumbersTheFilesAndKeepsTheMarkers) {
  store.AddMail(*inbox, "x");
  RunArchive(*inbox);
  const std::string marker = ReadTarget("Eingang\\VelmoraSubArc.vla");
  inbox->DisplayName = "Eingang";
  options.Comment = "anders";
  RunArchive(*inbox);
  EXPECT_EQ(Names("Eingang"), (Strings{"x.add", "x.htm", "x1.add", "x1.htm"}));
  EXPECT_EQ(ReadTarget("Eingang\\VelmoraSubArc.vla"), marker);
}

TEST_F(NameClashTest, NamesThatDifferInCaseOnlyClash) {
  RunMails({AddPlain("Angebot", "1").Key, AddPlain("ANGEBOT", "2").Key});
  EXPECT_EQ(Names(), (Strings{"Angebot.add", "Angebot.htm", "ANGEBOT1.add", "ANGEBOT1.htm"}));
}

}  // namespace
}  // namespace velmora::mailarchive
