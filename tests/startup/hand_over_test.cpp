#include "startup/hand_over.h"

#include "program_fixture.h"

namespace velmora::startup {
namespace {

class HandOverTest : public ProgramTest {
 protected:
  // A second instance with this line while the program of the test runs its window.
  void StartSecond(const std::string& commandLine) {
    const auto otherFiles = MakeFiles();
    test::ScriptedFrontEnd otherFront;
    Program second({.Directories = directories,
                    .fileSystem = *otherFiles,
                    .clock = clock,
                    .frontEnd = otherFront.Set(),
                    .makeApi = [&]() -> Result<std::shared_ptr<store::DvISEAPI>> {
                      return store::embedded::OpenEmbeddedApi(
                          *otherFiles, clock, {{std::string(Server), directory.HostPath("store")}}, login);
                    },
                    .CommandLine = commandLine,
                    .NamedServer = "",
                    .windows = &secondWindows});
    secondStatus = Main(second.GetContext());
  }

  FakeWindows secondWindows;
  int secondStatus = -1;
};

TEST_F(HandOverTest, ASecondInstanceHandsItsLineToTheFirst) {
  HandOverTick tick, nextTick;
  int startMode = 0;
  std::string argument, leftArchive;
  windows.OnMainWindow = [&](Context& first) {
    StartSecond("-c /Archive");
    tick = PollHandOver(first);
    startMode = first.process.StartMode;
    argument = first.process.StartArchiveArg;
    leftArchive = first.session.LeftArchive->FullPath();
    nextTick = PollHandOver(first);
  };
  EXPECT_EQ(RunMain(""), exit_status::Done);
  EXPECT_EQ(secondStatus, exit_status::Done);
  EXPECT_EQ(secondWindows.MainWindows, 0);
  EXPECT_EQ(secondWindows.Activated, std::vector<std::string>{windows.Caption});
  EXPECT_TRUE(tick.HandedOver);
  EXPECT_FALSE(tick.ShowMessage);
  EXPECT_EQ(startMode, start_mode::Archive);
  EXPECT_EQ(argument, "/Archive");
  EXPECT_EQ(leftArchive, "/Archive");
  EXPECT_FALSE(nextTick.HandedOver);  // the file is gone
}

TEST_F(HandOverTest, AMessageIsShownByTheFirst) {
  HandOverTick tick;
  windows.OnMainWindow = [&](Context& first) {
    StartSecond("-e \\Archive\\1A.001");
    tick = PollHandOver(first);
  };
  RunMain("");
  EXPECT_TRUE(tick.ShowMessage);
}

TEST_F(HandOverTest, ASecondInstanceThatCannotSignOnHandsOverAllTheSame) {
  HandOverTick tick;
  windows.OnMainWindow = [&](Context& first) {
    login = "nobody";
    StartSecond("-c /Archive");
    tick = PollHandOver(first);
  };
  RunMain("");
  EXPECT_EQ(secondStatus, exit_status::NothingRan);
  EXPECT_TRUE(secondWindows.Activated.empty());
  EXPECT_TRUE(tick.HandedOver);
  EXPECT_EQ(context().process.StartArchiveArg, "/Archive");
}

TEST_F(HandOverTest, WithoutASessionTheHandOverGoesWhereTheSettingsSay) {
  ASSERT_TRUE(Settings().SetUserSetting("Information", "MajorVersion", settings::RunningVersion().Major));
  ASSERT_TRUE(Settings().SetUserSetting("Options", "LastUsedServer", std::string(Server)));
  ASSERT_TRUE(Settings().SetUserSetting("ServerSettings_ZEB1", "TempDirPath", directory.Path("mine")));
  HandOverTick tick;
  windows.OnMainWindow = [&](Context& first) {
    login = "nobody";
    StartSecond("-r");
    tick = PollHandOver(first);
  };
  RunMain("");
  EXPECT_TRUE(tick.HandedOver);
  EXPECT_TRUE(context().process.IgnoreLastArchives);
}

TEST_F(HandOverTest, SwitchingTheIntegrationOffEndsTheRunningInstance) {
  HandOverTick tick;
  windows.OnMainWindow = [&](Context& first) {
    StartSecond("-U");
    tick = PollHandOver(first);
  };
  RunMain("");
  EXPECT_EQ(tick.ExitStatus, exit_status::Done);
  EXPECT_EQ(Settings().GetUserSetting("Options", "TICIntegration", 9), settings::Value(std::string("0")));
}

TEST_F(HandOverTest, EveryOptionThatEndsAStartEndsTheRunningInstance) {
  for (const std::string line : {"-i", "-h", "-?", "-w0", "-w1", "-W?"}) {
    HandOverTick tick;
    windows.OnMainWindow = [&](Context& first) {
      StartSecond(line);
      tick = PollHandOver(first);
    };
    RunMain("");
    EXPECT_EQ(tick.ExitStatus, exit_status::Done) << line;
  }
}

TEST_F(HandOverTest, ALaterLineReplacesOneThatWasNotFetchedYet) {
  HandOverTick tick;
  windows.OnMainWindow = [&](Context& first) {
    StartSecond("-c /Archive/Eins");
    StartSecond("-c /Archive/Zwei ");
    tick = PollHandOver(first);
  };
  RunMain("");
  EXPECT_TRUE(tick.HandedOver);
  EXPECT_EQ(context().process.StartArchiveArg, "/Archive/Zwei");
}

TEST_F(HandOverTest, AFileThatCannotBeReadIsAnEmptyLine) {
  StartSession("");
  EXPECT_EQ(ReadHandOverFile(context()), "");
  directory.WriteHostFile("temp/$$Velmora/VelmoraDisplayParms.zeb", "\r\n-u\r\n");
  EXPECT_EQ(ReadHandOverFile(context()), "");  // only the first line counts
}

TEST_F(HandOverTest, ALineThatNoDesktopWritesIsAnEmptyLine) {
  StartSession();
  directory.WriteHostFile("temp/$$Velmora/VelmoraDisplayParms.zeb", "-c " + std::string(10 << 20, 'A'));
  ASSERT_TRUE(HandOverFileExists(context()));
  EXPECT_EQ(ReadHandOverFile(context()), "");
}

TEST_F(HandOverTest, AnUnattendedRunIsNoInstance) {
  directory.WriteHostFile("empty.txt", "; nothing\r\n");
  HandOverTick tick;
  windows.OnMainWindow = [&](Context& first) {
    StartSecond("-b:" + directory.Path("empty.txt"));
    tick = PollHandOver(first);
  };
  RunMain("");
  EXPECT_EQ(secondStatus, exit_status::NothingRan);
  EXPECT_FALSE(tick.HandedOver);
  EXPECT_TRUE(secondWindows.Activated.empty());
}

TEST_F(HandOverTest, ATickIgnoresAnUnattendedLine) {
  StartSession("-c /Archive");
  directory.WriteHostFile("temp/$$Velmora/VelmoraDisplayParms.zeb", "-b:x.txt\r\n");
  const HandOverTick tick = PollHandOver(context());
  EXPECT_TRUE(tick.HandedOver);
  EXPECT_FALSE(tick.ExitStatus.has_value());
  EXPECT_FALSE(context().process.BatchMode);
  EXPECT_EQ(context().process.StartMode, start_mode::None);
}

TEST_F(HandOverTest, AnEmptyLineResetsThePanes) {
  StartSession("");
  const auto other = MakeArchive("Projekte");
  context().session.LeftArchive = context().session.RightArchive = other;
  directory.WriteHostFile("temp/$$Velmora/VelmoraDisplayParms.zeb", "");
  EXPECT_TRUE(PollHandOver(context()).HandedOver);
  EXPECT_EQ(context().session.LeftArchive->FullPath(), context().session.DefaultArchive->FullPath());
}

TEST_F(HandOverTest, AFirstStartReadsItsOwnLineAndRemovesAnOlderHandOver) {
  StartSession("");
  directory.WriteHostFile("temp/$$Velmora/VelmoraDisplayParms.zeb", "-r\r\n");
  ASSERT_TRUE(files->SetTimes(directory.Path("temp\\$$Velmora\\VelmoraDisplayParms.zeb"),
                              DateTime::FromSeconds(clock.Time.Seconds() - 60)));
  program.reset();
  RunMain("-c /Archive");
  EXPECT_EQ(context().process.StartArchiveArg, "/Archive");
  EXPECT_FALSE(context().process.IgnoreLastArchives);
  EXPECT_FALSE(std::filesystem::exists(directory.HostPath("temp/$$Velmora/VelmoraDisplayParms.zeb")));
}

TEST_F(HandOverTest, ANewerHandOverWaitsForTheWindow) {
  StartSession("");
  directory.WriteHostFile("temp/$$Velmora/VelmoraDisplayParms.zeb", "-r\r\n");
  ASSERT_TRUE(files->SetTimes(directory.Path("temp\\$$Velmora\\VelmoraDisplayParms.zeb"),
                              DateTime::FromSeconds(clock.Time.Seconds() + 1)));
  program.reset();
  RunMain("-c /Archive");
  EXPECT_TRUE(HandOverFileExists(context()));
}

}  // namespace
}  // namespace velmora::startup
