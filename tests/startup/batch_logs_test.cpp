#include "program_fixture.h"
#include "startup/david_logs.h"
#include "startup/run_control_file.h"

namespace velmora::startup {
namespace {

class BatchLogsTest : public ProgramTest {
 protected:
  BatchLogsTest() {
    StartSession();
    parent = MakeArchive("Protokolle");
  }
  BatchOutcome Run(const std::string& lines) {
    return RunControlLines(context(), "command=copydavidlogs\ndstarchive=/Archive/Protokolle\n" + lines,
                           "test");
  }
  bool HasArchive(const std::string& name) {
    return context().session.Account->GetArchive("/Archive/Protokolle/" + name).has_value();
  }
  // Mails put into one of the server's logs.
  void FillLog(const std::string& name, const std::string& subject) {
    const auto source = MakeArchive("Quelle");
    AddMail(*source, subject);
    ASSERT_TRUE(context().session.Account->Commit().has_value());
    const std::string data = JoinPath(source->ID(), "archive.dat");
    ASSERT_TRUE(files->CopyFile(data, "\\\\ZEB1\\DAVID\\code\\" + name).has_value());
  }

  std::shared_ptr<store::DvArchive> parent;
};

TEST_F(BatchLogsTest, TheReceiveLogBecomesAnArchive) {
  FillLog("david.rec", "empfangen");
  EXPECT_EQ(Run("logtype=rxlog\n").ExitStatus, exit_status::Done) << Log();
  EXPECT_FALSE(HasArchive("Ausgangsprotokoll"));
  const auto log = context().session.Account->GetArchive("/Archive/Protokolle/Eingangsprotokoll");
  ASSERT_TRUE(log.has_value());
  EXPECT_EQ((*log)->MessageCount().value_or(-1), 1);
}

TEST_F(BatchLogsTest, BothLogs) {
  EXPECT_EQ(Run("logtype=bothlogs\n").ExitStatus, exit_status::Done) << Log();
  EXPECT_TRUE(HasArchive("Eingangsprotokoll"));
  EXPECT_TRUE(HasArchive("Ausgangsprotokoll"));
}

TEST_F(BatchLogsTest, ASecondCopyReplacesTheFirstAndKeepsTheSubArchives) {
  ASSERT_EQ(Run("logtype=txlog\n").ExitStatus, exit_status::Done) << Log();
  const auto log = context().session.Account->GetArchive("/Archive/Protokolle/Ausgangsprotokoll");
  ASSERT_TRUE(log.has_value());
  ASSERT_TRUE((*log)->CreateSubArchive("Alt").has_value());
  FillLog("david.log", "gesendet");
  ASSERT_EQ(Run("logtype=txlog\n").ExitStatus, exit_status::Done) << Log();
  EXPECT_TRUE(HasArchive("Ausgangsprotokoll/Alt"));
  EXPECT_EQ((*context().session.Account->GetArchive("/Archive/Protokolle/Ausgangsprotokoll"))
                ->MessageCount()
                .value_or(-1),
            1);
}

TEST_F(BatchLogsTest, AMissingLogLeavesTheArchiveAsItIs) {
  FillLog("david.log", "gesendet");
  ASSERT_EQ(Run("logtype=txlog\n").ExitStatus, exit_status::Done);
  ASSERT_TRUE(files->DeleteFile("\\\\ZEB1\\DAVID\\code\\david.log", false).has_value());
  EXPECT_EQ(Run("logtype=txlog\n").ExitStatus, exit_status::NothingRan);
  EXPECT_EQ((*context().session.Account->GetArchive("/Archive/Protokolle/Ausgangsprotokoll"))
                ->MessageCount()
                .value_or(-1),
            1);
}

TEST_F(BatchLogsTest, OneOfTwoIsDoneWithErrors) {
  ASSERT_TRUE(files->DeleteFile("\\\\ZEB1\\DAVID\\code\\david.log", false).has_value());
  EXPECT_EQ(Run("logtype=bothlogs\n").ExitStatus, exit_status::DoneWithErrors);
  EXPECT_TRUE(HasArchive("Eingangsprotokoll"));
}

TEST_F(BatchLogsTest, WithoutALogTypeOrAnArchiveNothingRuns) {
  EXPECT_EQ(Run("logtype=alles\n").ExitStatus, exit_status::NothingRan);
  EXPECT_NE(Log().find("logtype"), std::string::npos);
  EXPECT_EQ(RunControlLines(context(), "command=copydavidlogs\nlogtype=rxlog\n", "t").ExitStatus,
            exit_status::NothingRan);
  EXPECT_EQ(RunControlLines(context(), "command=copydavidlogs\nlogtype=rxlog\ndstarchive=/Nirgends\n", "t")
                .ExitStatus,
            exit_status::NothingRan);
  EXPECT_NE(Log().find("DvISE-Error"), std::string::npos);
}

}  // namespace
}  // namespace velmora::startup
