#include <gtest/gtest.h>

#include "platform/host_file_system.h"
#include "run/error_log_view.h"
#include "run/run.h"
#include "support/manual_clock.h"
#include "support/scripted_front_end.h"
#include "support/temp_dir.h"

namespace velmora::run {
namespace {

class ErrorLogTest : public ::testing::Test {
 protected:
  std::string Log() const { return directory_.ReadHostFile("VelmoraError.log"); }

  test::TempDir directory_;
  test::ManualClock clock_;
  test::ScriptedFrontEnd front_;
  std::unique_ptr<platform::FileSystem> files_ = platform::MakeHostFileSystem({});
  run::Run run_{*files_, clock_, front_.Set(), directory_.Path()};
};

TEST_F(ErrorLogTest, FirstEntryCreatesTheLogWithItsStartLine) {
  run_.LogError("Z:\\x.htm", std::int64_t{53}, "Datei nicht gefunden", Severity::Error);
  EXPECT_EQ(Log(),
            "Start Logfile 31.12.2026 23:59:00\r\n"
            " Fehler: 53 - Datei nicht gefunden -> Z:\\x.htm\r\n");
}

TEST_F(ErrorLogTest, LaterEntriesAreAppended) {
  run_.LogError("a", std::int64_t{1}, "b", Severity::Error);
  run_.LogError("c", std::int64_t{2}, "d", Severity::Warning);
  EXPECT_EQ(Log(), "Start Logfile 31.12.2026 23:59:00\r\n Fehler: 1 - b -> a\r\n Warnung: 2 - d -> c\r\n");
}

TEST_F(ErrorLogTest, AWarningCountsAsAnError) {
  run_.LogError("a", std::int64_t{1}, "b", Severity::Warning);
  EXPECT_EQ(run_.counters.Errors, 1);
}

TEST_F(ErrorLogTest, ANumberMayBeTheTextOfAStatus) {
  run_.LogError("a", std::string("besetzt"), "b", Severity::Error);
  EXPECT_NE(Log().find(" Fehler: besetzt - b -> a\r\n"), std::string::npos);
}

TEST_F(ErrorLogTest, TheLogIsWindows1252) {
  run_.LogError("Größe – 5 € Привет", std::int64_t{1}, "b", Severity::Error);
  EXPECT_NE(Log().find("Gr\xF6\xDF"
                       "e \x96 5 \x80 ??????\r\n"),
            std::string::npos);
}

TEST_F(ErrorLogTest, ATextOfAMailCannotForgeALine) {
  run_.LogError("x\r\n Fehler: 0 - nichts -> gelogen", std::int64_t{1}, "b", Severity::Error);
  const std::string log = Log();
  EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 2);
}

TEST_F(ErrorLogTest, ALogThatCannotBeWrittenStillCounts) {
  run::Run lost(*files_, clock_, front_.Set(), directory_.Path("missing"));
  lost.LogError("a", std::int64_t{1}, "b", Severity::Error);
  EXPECT_EQ(lost.counters.Errors, 1);
  EXPECT_FALSE(lost.ErrorLogExists());
}

TEST_F(ErrorLogTest, DeletingAMissingLogIsNoError) {
  run_.DeleteErrorLog();
  EXPECT_EQ(run_.counters.Errors, 0);
}

TEST_F(ErrorLogTest, TwoChecksAfterOneCancelGiveOneEntry) {
  EXPECT_FALSE(run_.CheckCancel());
  run_.RequestCancel();
  EXPECT_TRUE(run_.CheckCancel());
  EXPECT_TRUE(run_.CheckCancel());
  EXPECT_EQ(run_.counters.Errors, 1);
  EXPECT_EQ(Log(),
            "Start Logfile 31.12.2026 23:59:00\r\n Fehler: -1 - CancelReq -> Abbruch durch Benutzer\r\n");
}

TEST_F(ErrorLogTest, TheProgressBoxCanCancel) {
  front_.CancelAtPump = 2;
  EXPECT_FALSE(run_.CheckCancel());
  EXPECT_TRUE(run_.CheckCancel());
}

TEST_F(ErrorLogTest, AfterAResetACancelIsLoggedAgain) {
  run_.RequestCancel();
  EXPECT_TRUE(run_.CheckCancel());
  run_.ResetCancel();
  EXPECT_FALSE(run_.CheckCancel());
  run_.RequestCancel();
  EXPECT_TRUE(run_.CheckCancel());
  EXPECT_EQ(run_.counters.Errors, 2);
}

TEST_F(ErrorLogTest, ResettingTheCountersStartsTheTime) {
  clock_.Milliseconds += 61'000;
  EXPECT_EQ(run_.ElapsedSeconds(), 61);
  run_.counters.Mails = 7;
  run_.ResetRunCounters();
  EXPECT_EQ(run_.counters, Counters{});
  EXPECT_EQ(run_.ElapsedSeconds(), 0);
  EXPECT_EQ(run_.StartTime(), clock_.Time);
}

TEST_F(ErrorLogTest, TheLogButtonFollowsTheLog) {
  EXPECT_FALSE(ErrLogButtonEnabled(run_));
  run_.LogError("a", std::int64_t{1}, "b", Severity::Error);
  EXPECT_TRUE(ErrLogButtonEnabled(run_));
  run_.DeleteErrorLog();
  EXPECT_FALSE(ErrLogButtonEnabled(run_));
}

TEST_F(ErrorLogTest, ViewingShowsTheWholeLog) {
  run_.LogError("Größe", std::int64_t{1}, "b", Severity::Error);
  ViewErrorLog(run_);
  ASSERT_EQ(front_.ViewedTexts.size(), 1U);
  EXPECT_EQ(front_.ViewedTexts[0].Title, "Fehlerprotokoll");
  EXPECT_EQ(front_.ViewedTexts[0].Text, "Start Logfile 31.12.2026 23:59:00\r\n Fehler: 1 - b -> Größe\r\n");
  EXPECT_TRUE(front_.Boxes.empty());
  EXPECT_EQ(front_.WaitsEnded, 1);
}

TEST_F(ErrorLogTest, TheViewedLogIsDeletedAfterAQuestionWhoseDefaultIsNo) {
  run_.LogError("a", std::int64_t{1}, "b", Severity::Error);
  front_.DeletesViewedText = true;
  ViewErrorLog(run_);
  ASSERT_EQ(front_.Boxes.size(), 1U);
  EXPECT_EQ(front_.Boxes[0],
            (test::ScriptedFrontEnd::Box{"Protokoll löschen", "Fehlerprotokoll wirklich löschen ?", true}));
  EXPECT_FALSE(front_.ViewedTextDeleted);
  EXPECT_TRUE(run_.ErrorLogExists());
  front_.Answers = {Answer::Yes};
  ViewErrorLog(run_);
  EXPECT_TRUE(front_.ViewedTextDeleted);
  EXPECT_FALSE(run_.ErrorLogExists());
}

TEST_F(ErrorLogTest, ViewingAMissingLogTellsSo) {
  ViewErrorLog(run_);
  ASSERT_EQ(front_.Boxes.size(), 1U);
  EXPECT_EQ(front_.Boxes[0].Text, "Es ist kein Fehlerprotokoll vorhanden.");
  EXPECT_TRUE(front_.ViewedTexts.empty());
  EXPECT_EQ(front_.WaitsEnded, 1);
}

}  // namespace
}  // namespace velmora::run
