// What a move deletes, and above all what it does not.
#include "mailarchive/export_fixture.h"

namespace velmora::mailarchive {
namespace {

class MoveTest : public ExportTest {
 protected:
  MoveTest() { options.Mode = CopyMode::Move; }

  test::FakeMail& AddMail(const std::string& subject) {
    test::FakeMail& mail = store.AddMail(*archive, subject);
    mail.Source = "Quelle";
    mail.Fields[store::tag::Comment] = std::string("Kommentar");
    mail.Fields[store::tag::HtmlRendition] = std::string("Html");
    mail.Attachments = {{"a.txt", "A"}};
    return mail;
  }
};

TEST_F(MoveTest, EntryIsDeletedOnceAfterItsFiles) {
  options.SaveAttachments = options.SaveOriginals = options.SaveComments = true;
  const store::EntryKey key = AddMail("x").Key;
  RunMails({key});
  EXPECT_EQ(store.Deletions, Strings{"mail 1"});
  EXPECT_EQ(store.Events, (Strings{"original", "save", "delete", "commit"}));
  EXPECT_TRUE(HasTarget("x.htm"));
}

// Without numbers the second mail's files would replace the first's, and both entries would be gone.
TEST_F(MoveTest, MailsOfOneSubjectAreNumberedWhateverTheOptionSays) {
  options.NoDuplicates = false;
  options.SaveOriginals = true;
  const store::EntryKey first = AddMail("x").Key;
  const store::EntryKey second = AddMail("x").Key;
  RunMails({first, second});
  EXPECT_EQ(store.Deletions, (Strings{"mail 1", "mail 2"}));
  EXPECT_TRUE(HasTarget("x.htm"));
  EXPECT_TRUE(HasTarget("x1.htm"));
  EXPECT_TRUE(HasTarget("Eml\\x.eml"));
  EXPECT_TRUE(HasTarget("Eml\\x1.eml"));
}

TEST_F(MoveTest, CopyDeletesNothing) {
  options.Mode = CopyMode::Copy;
  RunMail(AddMail("x"));
  EXPECT_EQ(store.Deletions, Strings{});
}

TEST_F(MoveTest, EntryStaysWhenItsPageIsNotWritten) {
  faulty.FailingPart = "x.htm";
  RunMail(AddMail("x"));
  EXPECT_EQ(store.Deletions, Strings{});
}

TEST_F(MoveTest, EntryStaysWhenItsDescriptorIsNotWritten) {
  faulty.FailingPart = "x.add";
  RunMail(AddMail("x"));
  EXPECT_EQ(store.Deletions, Strings{});
  EXPECT_EQ(run.counters.Errors, 1);
}

TEST_F(MoveTest, EntryStaysWhenItsFormIsMissing) {
  ASSERT_TRUE(files.DeleteFile(dir.Path("designs\\Mail.htm"), false));
  RunMail(AddMail("x"));
  EXPECT_EQ(store.Deletions, Strings{});
}

TEST_F(MoveTest, EntryStaysWhenAnAttachmentFails) {
  options.SaveAttachments = true;
  test::FakeMail& mail = AddMail("x");
  mail.Attachments[0].Fails = true;
  RunMail(mail);
  EXPECT_TRUE(HasTarget("x.htm"));
  EXPECT_EQ(store.Deletions, Strings{});
}

TEST_F(MoveTest, EntryStaysWhenItsCommentFails) {
  options.SaveComments = true;
  faulty.FailingPart = "x.txt";
  RunMail(AddMail("x"));
  EXPECT_EQ(store.Deletions, Strings{});
}

TEST_F(MoveTest, EntryStaysWhenItsHtmlBodyFails) {
  faulty.FailingPart = "HTMLMails\\x.htm";
  test::FakeMail& mail = AddMail("x");
  mail.Html = "<html>";
  RunMail(mail);
  EXPECT_TRUE(HasTarget("x_inf.htm"));
  EXPECT_EQ(Value("x_inf.add", "HTML"), "");
  EXPECT_EQ(store.Deletions, Strings{});
}

// Whatever the disk has no room for any more: the entry stays, and the log has one line that names the file.
TEST_F(MoveTest, EntryStaysWhicheverFileTheDiskHasNoRoomFor) {
  options.SaveAttachments = options.SaveOriginals = options.SaveSmtpHeader = options.SaveComments = true;
  for (const std::string file : {"Attachments\\a.txt", "Eml\\x.eml", "Eml\\x.smtp", "Comments\\x.txt",
                                 "HTMLMails\\x.htm", "x_inf.htm", "x_inf.add"}) {
    ASSERT_TRUE(files.DeleteFolder(dir.Path("target"), true));
    ASSERT_TRUE(files.CreateFolder(dir.Path("target")));
    test::FakeMail& mail = AddMail("x");
    mail.Html = "<html>";
    mail.Fields[store::tag::SmtpHeader] = std::string("Kopf");
    faulty.FailingPart = "target\\" + file;
    RunMail(mail);
    faulty.FailingPart.clear();
    EXPECT_EQ(store.Deletions, Strings{}) << file;
    EXPECT_EQ(run.counters.Errors, 1) << file;
    EXPECT_TRUE(Log().ends_with(" Fehler: 61 - Datentr\xE4ger voll -> " + Target(file) + "\r\n")) << Log();
    EXPECT_FALSE(HasTarget(file));
  }
}

TEST_F(MoveTest, EntryStaysAndIsLoggedWhenItsOriginalFails) {
  options.SaveOriginals = true;
  test::FakeMail& mail = AddMail("x");
  mail.Source.clear();
  RunMail(mail);
  EXPECT_TRUE(HasTarget("x.htm"));
  EXPECT_EQ(store.Deletions, Strings{});
  EXPECT_EQ(Log(), " Fehler: 1007 - DvISE-Error Umwandlung fehlgeschlagen -> /Archive/x\r\n");
}

TEST_F(MoveTest, EntryStaysWhenAFieldCannotBeRead) {
  options.SaveComments = true;
  test::FakeMail& mail = AddMail("x");
  mail.FailingField = store::tag::Comment;
  RunMail(mail);
  EXPECT_EQ(store.Deletions, Strings{});
  EXPECT_EQ(Log(), " Fehler: 1006 - DvISE-Error Feld nicht lesbar -> /Archive/x\r\n");
}

TEST_F(MoveTest, EntryThatCannotBeFetchedIsLoggedAndStays) {
  test::FakeMail& mail = AddMail("x");
  mail.ViewFails = true;
  RunMail(mail);
  EXPECT_EQ(Names(), Strings{});
  EXPECT_EQ(store.Deletions, Strings{});
  EXPECT_EQ(Log(),
            " Fehler: 1006 - DvISE-Error Eintrag besch\xE4"
            "digt -> /Archive vID falsch\r\n");
}

TEST_F(MoveTest, OnlyOriginalsDelete) {
  options.OnlyOriginals = true;
  RunMail(AddMail("x"));
  EXPECT_EQ(store.Deletions, Strings{"mail 1"});
}

TEST_F(MoveTest, OnlyOriginalsDeleteNothingWithoutTheOriginal) {
  options.OnlyOriginals = true;
  test::FakeMail& mail = AddMail("x");
  mail.Source.clear();
  RunMail(mail);
  EXPECT_EQ(store.Deletions, Strings{});
}

TEST_F(MoveTest, OnlyAttachmentsDeleteMailsThatHadSome) {
  options.OnlyAttachments = true;
  test::FakeMail& without = AddMail("ohne");
  without.Attachments.clear();
  test::FakeMail& with = AddMail("mit");
  RunMails({without.Key, with.Key});
  EXPECT_EQ(store.Deletions, Strings{"mail 2"});
}

TEST_F(MoveTest, OnlyCommentsNeverDelete) {
  options.OnlyComments = true;
  RunMail(AddMail("x"));
  EXPECT_TRUE(HasTarget("x.txt"));
  EXPECT_EQ(store.Deletions, Strings{});
}

TEST_F(MoveTest, SeveralOnlyBranchesDeleteOnce) {
  options.OnlyOriginals = options.OnlyAttachments = options.OnlyComments = true;
  RunMail(AddMail("x"));
  EXPECT_EQ(store.Deletions, Strings{"mail 1"});
}

TEST_F(MoveTest, OneFailedBranchKeepsTheEntry) {
  options.OnlyOriginals = options.OnlyAttachments = true;
  test::FakeMail& mail = AddMail("x");
  mail.Attachments[0].Fails = true;
  RunMail(mail);
  EXPECT_TRUE(HasTarget("x.eml"));
  EXPECT_EQ(store.Deletions, Strings{});
}

TEST_F(MoveTest, NothingIsDeletedAfterACancel) {
  options.DeleteArchives = true;
  for (int i = 0; i < 5; ++i) store.AddMail(*inbox, "m" + std::to_string(i));
  frontEnd.CancelAtPump = 6;
  RunArchive(*inbox);
  const auto deleted = store.Deletions.size();
  EXPECT_GT(deleted, 0U);
  EXPECT_LT(deleted, 5U);
  EXPECT_EQ(inbox->Mails.size(), 5U - deleted);
  for (const std::string& deletion : store.Deletions) EXPECT_TRUE(deletion.starts_with("mail ")) << deletion;
}

TEST_F(MoveTest, ErrorStatusWithoutWithErrorsKeepsTheEntry) {
  test::FakeMail& mail = AddMail("x");
  mail.SendStatus = 79;
  RunMail(mail);
  EXPECT_EQ(Names(), Strings{});
  EXPECT_EQ(store.Deletions, Strings{});
}

}  // namespace
}  // namespace velmora::mailarchive
