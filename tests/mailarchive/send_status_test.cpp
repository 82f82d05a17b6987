// Which entries an export takes: kinds, hidden entries, entries whose sending failed.
#include "mailarchive/export_fixture.h"

namespace velmora::mailarchive {
namespace {

class SendStatusTest : public ExportTest {};

TEST_F(SendStatusTest, FailedEntryIsLeftOutAndLogged) {
  test::FakeMail& mail = store.AddMail(*archive, "x");
  mail.SendStatus = 79;
  RunMail(mail);
  EXPECT_EQ(Names(), Strings{});
  EXPECT_EQ(Log(), " Fehler: Mailbox voll - DvISE Mailstatus Error (nicht archiviert) -> /Archive/x\r\n");
  EXPECT_EQ(run.counters.Errors, 1);
  EXPECT_EQ(run.counters.Entries, 1);
}

TEST_F(SendStatusTest, WithErrorsTheFailedEntryIsExportedAndTheAdministratorWarned) {
  options.WithErrors = true;
  test::FakeMail& mail = store.AddMail(*archive, "x");
  mail.SendStatus = 79;
  RunMail(mail);
  EXPECT_TRUE(HasTarget("x.htm"));
  EXPECT_EQ(Log(), " Warnung: Mailbox voll - DvISE Mailstatus Error (trotzdem archiviert) -> /Archive/x\r\n");
}

TEST_F(SendStatusTest, OrdinaryUsersAreNotWarned) {
  options.WithErrors = true;
  session.Trustees = 0;
  test::FakeMail& mail = store.AddMail(*archive, "x");
  mail.SendStatus = 79;
  RunMail(mail);
  EXPECT_TRUE(HasTarget("x.htm"));
  EXPECT_EQ(Log(), "");
}

TEST_F(SendStatusTest, OnlyOriginalsWarnTwice) {
  options.WithErrors = options.OnlyOriginals = true;
  test::FakeMail& mail = store.AddMail(*archive, "x");
  mail.SendStatus = 79;
  mail.Source = "Quelle";
  RunMail(mail);
  EXPECT_EQ(Log(),
            " Warnung: Mailbox voll - DvISE-Error (trotzdem archiviert) -> /Archive/x\r\n"
            " Warnung: Mailbox voll - DvISE Mailstatus Error (trotzdem archiviert) -> /Archive/x\r\n");
}

TEST_F(SendStatusTest, StatusBeyondTheTableIsNoFailure) {
  test::FakeMail& mail = store.AddMail(*archive, "x");
  mail.SendStatus = 4711;
  RunMail(mail);
  EXPECT_TRUE(HasTarget("x.htm"));
  EXPECT_EQ(Log(), "");
}

TEST_F(SendStatusTest, EntryHiddenByItsUserIsPassedOverWithoutACount) {
  options.InhibitItems = false;
  test::FakeMail& hidden = store.AddMail(*archive, "a");
  hidden.Fields[store::tag::Flags] = std::int64_t{2048};
  test::FakeMail& hiddenByBoth = store.AddMail(*archive, "b");
  hiddenByBoth.Fields[store::tag::Flags] = std::int64_t{2048 + 32};
  RunMails({hidden.Key, hiddenByBoth.Key});
  EXPECT_EQ(Names(), (Strings{"b.add", "b.htm"}));
  EXPECT_EQ(run.counters.Entries, 1);
}

TEST_F(SendStatusTest, HiddenEntriesAreExportedWithInhibitItems) {
  test::FakeMail& hidden = store.AddMail(*archive, "a");
  hidden.Fields[store::tag::Flags] = std::int64_t{2048};
  RunMail(hidden);
  EXPECT_TRUE(HasTarget("a.htm"));
}

TEST_F(SendStatusTest, SmsVideoAndAudioAreExportedLikeMailsAndOddKindsNotAtAll) {
  std::vector<store::EntryKey> keys;
  for (const int type : {4, 6, 7, 8, 9, 10, 11, 12}) {
    test::FakeMail& mail = store.AddMail(*archive, "t" + std::to_string(type));
    mail.Type = type;
    keys.push_back(mail.Key);
  }
  RunMails(keys);
  EXPECT_EQ(Names(), (Strings{"t10.add", "t10.htm", "t4.add", "t4.htm", "t9.add", "t9.htm"}));
  EXPECT_EQ(run.counters.Mails, 3);
  EXPECT_EQ(run.counters.Entries, 3);
}

TEST_F(SendStatusTest, StatusLineShowsTheCountersInTheirOrder) {
  options.SaveAttachments = true;
  test::FakeMail& mail = store.AddMail(*archive, "x");
  mail.Attachments = {{"a.txt", ""}, {"b.txt", "", true}};
  RunMail(mail);
  EXPECT_EQ(frontEnd.StatusTexts, Strings{"Mail:1/Att:1/Fax:0/Voice:0/Addr:0/Err:1"});
  EXPECT_EQ(frontEnd.ItemTexts, Strings{"x"});
}

}  // namespace
}  // namespace velmora::mailarchive
