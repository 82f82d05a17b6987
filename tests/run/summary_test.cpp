#include "run/summary.h"

#include <gtest/gtest.h>

#include "platform/host_file_system.h"
#include "run/silent_front_end.h"
#include "support/manual_clock.h"
#include "support/scripted_front_end.h"
#include "support/temp_dir.h"

namespace velmora::run {
namespace {

Counters DistinctCounters() {
  Counters counters;
  counters.Mails = 1;
  counters.Attachments = 2;
  counters.Faxes = 3;
  counters.VoiceMails = 4;
  counters.Addresses = 5;
  counters.Links = 6;
  counters.EmlFiles = 7;
  counters.Archives = 8;
  counters.Messages = 9;
  counters.Rules = 10;
  counters.Directories = 11;
  counters.Files = 12;
  counters.ChangedArchives = 13;
  return counters;
}

struct Expected {
  RunKind Kind;
  std::string Text;
};

class SummaryTextTest : public ::testing::TestWithParam<Expected> {};

TEST_P(SummaryTextTest, HasTheCountsAndTheClosingWordOfItsRun) {
  EXPECT_EQ(RunSummaryText(GetParam().Kind, DistinctCounters(), 3723), GetParam().Text);
}

INSTANTIATE_TEST_SUITE_P(
    AllRuns, SummaryTextTest,
    ::testing::Values(
        Expected{RunKind::MailArchiveExport,
                 "1 Mail(s)\r\n2 Attachment(s)\r\n3 Fax(e)\r\n4 VoiceMail(s)\r\n5 Adresse(n)\r\n6 Link(s)\r\n"
                 "7 EML-File(s)\r\nmit 0 Fehler(n)\r\nin 01:02:03 s archiviert"},
        Expected{RunKind::Import,
                 "1 Mail(s)\r\n3 Fax(e)\r\n4 VoiceMail(s)\r\nmit 0 Fehler(n)\r\nin 01:02:03 s importiert"},
        Expected{RunKind::RuleCopy, "10 Regel(n)\r\nmit 0 Fehler(n)\r\nin 01:02:03 s kopiert/verschoben"},
        Expected{RunKind::ArchiveCopy,
                 "8 Archiv(e)\r\n9 Message(s)\r\nmit 0 Fehler(n)\r\nin 01:02:03 s kopiert/verschoben"},
        // "Messages(s)" is what the users know, odd as it is.
        Expected{RunKind::PropertyChange,
                 "9 Messages(s)\r\nin\r\n13 Archiv(en)\r\nmit 0 Fehler(n)\r\nin 01:02:03 s geändert"},
        Expected{RunKind::Cleaning,
                 "9 Messages(s)\r\nin\r\n13 Archiv(en)\r\nmit 0 Fehler(n)\r\nin 01:02:03 s bereinigt"},
        Expected{RunKind::FileSystemCopy,
                 "11 Verzeichniss(e)\r\n12 Datei(en)\r\nmit 0 Fehler(n)\r\nin 01:02:03 s kopiert/verschoben"},
        Expected{RunKind::RemoteAccessChange,
                 "Remote Access von 13 Archiv(en)\r\nmit 0 Fehler(n)\r\nin 01:02:03 s geändert"}));

TEST(Summary, ErrorsPointToTheLog) {
  Counters counters;
  counters.Errors = 2;
  EXPECT_EQ(RunSummaryText(RunKind::RuleCopy, counters, 0),
            "0 Regel(n)\r\nmit 2 Fehler(n) (siehe Fehlerprotokoll)\r\nin 00:00:00 s kopiert/verschoben");
}

class SummaryBoxTest : public ::testing::Test {
 protected:
  test::TempDir directory_;
  test::ManualClock clock_;
  test::ScriptedFrontEnd front_;
  std::unique_ptr<platform::FileSystem> files_ = platform::MakeHostFileSystem({});
  run::Run run_{*files_, clock_, front_.Set(), directory_.Path()};
};

TEST_F(SummaryBoxTest, ShowsTheTimeOfTheRun) {
  run_.counters.Rules = 3;
  clock_.Milliseconds += 5'999;
  ShowRunSummary(run_, RunKind::RuleCopy);
  ASSERT_EQ(front_.Boxes.size(), 1U);
  EXPECT_EQ(front_.Boxes[0].Title, "Beendet");
  EXPECT_EQ(front_.Boxes[0].Text, "3 Regel(n)\r\nmit 0 Fehler(n)\r\nin 00:00:05 s kopiert/verschoben");
}

TEST_F(SummaryBoxTest, AnUnattendedRunShowsNoBox) {
  run_.BatchMode = true;
  ShowRunSummary(run_, RunKind::RuleCopy);
  EXPECT_TRUE(front_.Boxes.empty());
}

TEST(SilentFrontEnd, AnswersWithTheDefaultAndChoosesNothing) {
  SilentFrontEnd silent;
  const FrontEnd set = silent.Set();
  EXPECT_EQ(set.prompts.Question("t", "x", Buttons::YesNoCancel, Answer::No), Answer::No);
  EXPECT_EQ(set.prompts.Question("t", "x", Buttons::YesNo, Answer::Yes), Answer::Yes);
  EXPECT_FALSE(set.prompts.InputLine("t", "l", "v"));
  EXPECT_FALSE(set.choosers.ChooseFolder("t", "s"));
  EXPECT_FALSE(set.progress.Pump());
}

}  // namespace
}  // namespace velmora::run
