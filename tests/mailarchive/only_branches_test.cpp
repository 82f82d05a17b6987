// The branches that write only a part of a mail, without page and descriptor.
#include "mailarchive/export_fixture.h"

namespace velmora::mailarchive {
namespace {

class OnlyBranchesTest : public ExportTest {
 protected:
  test::FakeMail& AddFullMail(const std::string& subject) {
    test::FakeMail& mail = store.AddMail(*archive, subject);
    mail.Source = "Quelle " + subject;
    mail.Fields[store::tag::SmtpHeader] = "Kopf " + subject;
    mail.Fields[store::tag::Comment] = "Kommentar " + subject;
    mail.Attachments = {{"Übersicht #1.tar.gz", "A"}};
    return mail;
  }
};

TEST_F(OnlyBranchesTest, OnlyOriginalsLieInTheDirectoryItself) {
  options.OnlyOriginals = true;
  options.SaveSmtpHeader = true;
  test::FakeMail& mail = AddFullMail("x");
  RunMail(mail);
  EXPECT_EQ(Names(), (Strings{"x.eml", "x.smtp"}));
  EXPECT_EQ(ReadTarget("x.eml"), "Quelle x");
  EXPECT_EQ(ReadTarget("x.smtp"), "Kopf x");
  EXPECT_EQ(files.GetEntry(Target("x.eml"))->Modified, mail.Date);
  EXPECT_EQ(run.counters.EmlFiles, 1);
  EXPECT_EQ(run.counters.Mails, 0);
}

TEST_F(OnlyBranchesTest, OriginalsAndHeadersOfOneSubjectAreNumbered) {
  options.OnlyOriginals = true;
  options.SaveSmtpHeader = true;
  RunMails({AddFullMail("x").Key, AddFullMail("x").Key});
  EXPECT_EQ(Names(), (Strings{"x.eml", "x.smtp", "x1.eml", "x1.smtp"}));
}

TEST_F(OnlyBranchesTest, HeaderIsWrittenThoughTheOriginalFails) {
  options.OnlyOriginals = true;
  options.SaveSmtpHeader = true;
  test::FakeMail& mail = AddFullMail("x");
  mail.Source.clear();
  RunMail(mail);
  EXPECT_EQ(Names(), Strings{"x.smtp"});
  EXPECT_EQ(Log(), " Fehler: 1007 - DvISE-Error Umwandlung fehlgeschlagen -> /Archive vID falsch\r\n");
}

TEST_F(OnlyBranchesTest, FailedOriginalIsLoggedForAdministratorsOnly) {
  options.OnlyOriginals = true;
  session.Trustees = 0;
  test::FakeMail& mail = AddFullMail("x");
  mail.Source.clear();
  RunMail(mail);
  EXPECT_EQ(run.counters.Errors, 0);
}

TEST_F(OnlyBranchesTest, OnlyAttachmentsKeepTheirNamesAsTheyStand) {
  options.OnlyAttachments = true;
  RunMails({AddFullMail("a").Key, AddFullMail("b").Key});
  EXPECT_EQ(Names(), (Strings{"Übersicht #1.tar.gz", "Übersicht #11.tar.gz"}));
  EXPECT_EQ(run.counters.Attachments, 2);
}

TEST_F(OnlyBranchesTest, OnlyCommentsAreNumberedAndDated) {
  options.OnlyComments = true;
  test::FakeMail& mail = AddFullMail("x");
  test::FakeMail& silent = AddFullMail("still");
  silent.Fields.erase(store::tag::Comment);
  RunMails({mail.Key, AddFullMail("x").Key, silent.Key});
  EXPECT_EQ(Names(), (Strings{"x.txt", "x1.txt"}));
  EXPECT_EQ(files.GetEntry(Target("x.txt"))->Modified, mail.Date);
  EXPECT_EQ(run.counters.Mails, 0);
}

TEST_F(OnlyBranchesTest, FailedCommentIsLogged) {
  options.OnlyComments = true;
  faulty.FailingPart = "x.txt";
  RunMail(AddFullMail("x"));
  EXPECT_EQ(Log(), " Fehler: 61 - Datentr\xE4ger voll -> " + Target("x.txt") + "\r\n");
}

TEST_F(OnlyBranchesTest, AllThreeMayRunTogether) {
  options.OnlyOriginals = options.OnlyAttachments = options.OnlyComments = true;
  RunMail(AddFullMail("x"));
  EXPECT_EQ(Names(), (Strings{"x.eml", "x.txt", "Übersicht #1.tar.gz"}));
}

TEST_F(OnlyBranchesTest, NeitherRootMarkerNorIndexIsWritten) {
  options.OnlyComments = true;
  options.MakeIndex = true;
  RunMail(AddFullMail("x"));
  EXPECT_FALSE(HasTarget("VelmoraRootArc.vla"));
  EXPECT_FALSE(HasTarget("index.html"));
}

}  // namespace
}  // namespace velmora::mailarchive
