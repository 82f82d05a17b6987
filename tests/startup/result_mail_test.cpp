#include "startup/result_mail.h"

#include "program_fixture.h"
#include "startup/run_control_file.h"
#include "store/filter.h"

namespace velmora::startup {
namespace {

struct SentMail {
  std::string Subject, Text;
  std::vector<std::string> To;
  int Attachments = 0;
};

class ResultMailTest : public ProgramTest {
 protected:
  std::vector<SentMail> Sent() {
    std::vector<SentMail> mails;
    const auto outgoing = context().session.Account->GetSpecialArchive(store::special::Outgoing);
    const auto entries = (*outgoing)->GetEntries(0x301FB);
    EXPECT_TRUE(entries.has_value());
    for (int i = 0; entries && i < (*entries)->Count(); ++i) {
      const auto view = (*outgoing)->ItemView((*entries)->Key(i));
      store::DvMailItem& mail = *(*view)->AsMail();
      SentMail sent{mail.Subject().value_or("?"), mail.Text().value_or("?"), {}, 0};
      for (const store::DvRecipient& recipient : mail.To().value_or(std::vector<store::DvRecipient>{})) {
        sent.To.push_back(recipient.Address);
      }
      sent.Attachments = mail.Item().Attachments().Count().value_or(-1);
      mails.push_back(sent);
    }
    return mails;
  }
};

TEST_F(ResultMailTest, GoesToEveryRecipientWithItsAttachments) {
  StartSession();
  directory.WriteHostFile("a.txt", "a");
  const Status sent = SendResultMail(context().session, " anna@example.org , ,otto@example.org", "",
                                     "Betreff", "Zeile 1\r\nZeile 2", directory.Path("a.txt") + ",");
  ASSERT_TRUE(sent.has_value()) << sent.error().Text;
  const std::vector<SentMail> mails = Sent();
  ASSERT_EQ(mails.size(), 1U);
  EXPECT_EQ(mails[0].Subject, "Betreff");
  EXPECT_EQ(mails[0].Text, "Zeile 1\r\nZeile 2");
  EXPECT_EQ(mails[0].To, (std::vector<std::string>{"anna@example.org", "otto@example.org"}));
  EXPECT_EQ(mails[0].Attachments, 1);
}

TEST_F(ResultMailTest, WithoutARecipientItFails) {
  StartSession();
  EXPECT_FALSE(SendResultMail(context().session, " , ", "", "s", "b", "").has_value());
  EXPECT_TRUE(Sent().empty());
}

TEST_F(ResultMailTest, AMissingAttachmentSendsNothing) {
  StartSession();
  EXPECT_FALSE(
      SendResultMail(context().session, "anna@example.org", "", "s", "b", "Z:\\nowhere.txt").has_value());
}

TEST_F(ResultMailTest, TheExportFillsAllPlaceholders) {
  StartSession();
  AddMail(*MakeArchive("Projekte"), "Hallo");
  clock.Milliseconds += 1000;
  RunControlLines(
      context(),
      "command=archivecopymove\nsrcarchive=/Archive/Projekte/\ndstdirectory=" + directory.Path("target") +
          "\nonlyeml=y\nsaveeml=y\nsendmail=y\nmailto=anna@example.org\nmailsubject=Lauf vom %1 %2\n"
          "mailbody=%1 %2\\n%4\\n%5%6\\n%7\\n%8\\n%9Ende\n",
      "nightly.txt");
  const std::vector<SentMail> mails = Sent();
  ASSERT_EQ(mails.size(), 1U);
  EXPECT_EQ(mails[0].Subject, "Lauf vom 31.12.2026 23:59:00");
  EXPECT_EQ(
      mails[0].Text,
      "31.12.2026 23:59:00\r\n0s\r\n/Archive/Projekte/\r\n" + directory.Path("target") +
          "\r\nnightly.txt\r\nCopy\r\nCopy /Archive/Projekte\r\n0 Mail(s)\r\n0 Attachment(s)\r\n0 Fax(e)\r\n"
          "0 VoiceMail(s)\r\n0 Adresse(n)\r\n0 Link(s)\r\n1 EML-File(s)\r\n0 Fehler(n)\r\nEnde");
}

TEST_F(ResultMailTest, TheLogsFillTheirPlaceholders) {
  StartSession();
  MakeArchive("Protokolle");
  RunControlLines(context(),
                  "command=copydavidlogs\nlogtype=bothlogs\ndstarchive=/Archive/Protokolle\nsendmail=y\n"
                  "mailto=anna@example.org\nmailsubject=%1, %4\nmailbody=%1 %2\\n%4 %5 %6 %7\n",
                  "logs.txt");
  const std::vector<SentMail> mails = Sent();
  ASSERT_EQ(mails.size(), 1U);
  EXPECT_EQ(mails[0].Subject, "31.12.2026, %4");  // only the moment stands in a subject
  EXPECT_EQ(mails[0].Text,
            "31.12.2026 23:59:00\r\n0s /Archive/Protokolle logs.txt Sende- und Empfangsprotokoll");
}

TEST_F(ResultMailTest, TellsAlsoOfARunThatOpenedNoArchive) {
  StartSession();
  RunControlLines(context(),
                  "command=archivecopymove\nsrcarchive=/Archive/Nirgends\ncopymode=mov\ndstdirectory=" +
                      directory.Path("target") + "\nsendmail=y\nmailto=anna@example.org\nmailbody=%8:%9.\n",
                  "x");
  const std::vector<SentMail> mails = Sent();
  ASSERT_EQ(mails.size(), 1U);
  EXPECT_EQ(mails[0].Text, "Move:.");
}

TEST_F(ResultMailTest, AMailThatNobodyTakesIsAnErrorOfTheRun) {
  StartSession();
  MakeArchive("Projekte");
  const BatchOutcome outcome = RunControlLines(
      context(),
      "command=archivecopymove\nsrcarchive=/Archive/Projekte\ndstdirectory=" + directory.Path("target") +
          "\nmakeidx=n\nsendmail=y\nmailto=anna@example.org, fern@example.net\n",
      "x");
  EXPECT_EQ(outcome.ExitStatus, exit_status::DoneWithErrors);
  EXPECT_EQ(Sent().size(), 1U);  // it stands in the outgoing archive all the same
  EXPECT_NE(Log().find("nicht zugestellt (Mail Server nicht erreichbar): Ergebnismail an "
                       "\"anna@example.org, fern@example.net\""),
            std::string::npos)
      << Log();
}

TEST_F(ResultMailTest, ADamagedSendLogIsAWarningAndTheMailIsSent) {
  StartSession();
  MakeArchive("Projekte");
  directory.WriteHostFile("store/code/david.log", std::string(5000, 'x'));
  RunControlLines(context(),
                  "command=archivecopymove\nsrcarchive=/Archive/Projekte\ndstdirectory=" +
                      directory.Path("target") + "\nmakeidx=n\nsendmail=y\nmailto=anna@example.org\n",
                  "x");
  EXPECT_EQ(Sent().size(), 1U);
  EXPECT_NE(Log().find("Warnung: 1006 - Das Protokoll ist nicht zu schreiben"), std::string::npos) << Log();
}

TEST_F(ResultMailTest, AMailThatCannotBeSentIsAnErrorOfTheRun) {
  StartSession();
  MakeArchive("Projekte");
  const BatchOutcome outcome = RunControlLines(
      context(),
      "command=archivecopymove\nsrcarchive=/Archive/Projekte\ndstdirectory=" + directory.Path("target") +
          "\nmakeidx=n\nsendmail=y\n",
      "x");
  EXPECT_EQ(outcome.ExitStatus, exit_status::DoneWithErrors);
  EXPECT_NE(Log().find("keinen Empf"), std::string::npos) << Log();
}

}  // namespace
}  // namespace velmora::startup
