#include "program_fixture.h"
#include "startup/command_line.h"

namespace velmora::startup {
namespace {

class MainTest : public ProgramTest {
 protected:
  settings::Value Stored(std::string_view section, std::string_view name) {
    return Settings().GetUserSetting(section, name, std::string("missing"));
  }
};

TEST_F(MainTest, AFirstStartOnACleanMachineOpensBothPanesOnTheDefaultArchive) {
  bool checked = false;
  windows.OnMainWindow = [&](Context& first) {
    EXPECT_EQ(first.session.LeftArchive->FullPath(), "/Archive");
    EXPECT_EQ(first.session.RightArchive->FullPath(), "/Archive");
    EXPECT_EQ(first.process.CurrentPath, directory.Path("docs\\"));
    EXPECT_EQ(first.process.TempDir, directory.Path("temp\\$$Velmora\\"));
    EXPECT_EQ(first.session.ServerName, Server);
    checked = true;
  };
  EXPECT_EQ(RunMain(""), exit_status::Done);
  EXPECT_TRUE(checked);
  EXPECT_TRUE(front.Boxes.empty());
}

TEST_F(MainTest, TheCaptionNamesProductVersionAndUser) {
  StartSession();
  context().process.Version = {3, 7, 1};
  EXPECT_EQ(BuildMainCaption(context()), "Velmora 3.7 - Anna Admin (anna@example.org)");
}

// The account of the offline product, otherwise as the one it stands before.
class OfflineAccount final : public store::DvAccount {
 public:
  explicit OfflineAccount(std::unique_ptr<store::DvAccount> account) : account_(std::move(account)) {}
  int Product() override { return store::DvProductDavidMobile; }

  store::DvUser& User() override { return account_->User(); }
  Result<std::vector<std::unique_ptr<store::DvUser>>> Users() override { return account_->Users(); }
  std::string Description() override { return account_->Description(); }
  std::string DavidRoot() override { return account_->DavidRoot(); }
  std::string ProductName() override { return account_->ProductName(); }
  std::string BackendDescription() override { return account_->BackendDescription(); }
  int BackendType() override { return account_->BackendType(); }
  Result<store::DvSite> Site() override { return account_->Site(); }
  store::DvResources& Resources() override { return account_->Resources(); }
  Result<std::shared_ptr<store::DvArchive>> GetArchive(std::string_view path) override {
    return account_->GetArchive(path);
  }
  Result<std::shared_ptr<store::DvArchive>> GetSpecialArchive(int kind) override {
    return account_->GetSpecialArchive(kind);
  }
  Result<std::string> DVEmlFromMailItem(store::DvItem& item, std::string_view directory) override {
    return account_->DVEmlFromMailItem(item, directory);
  }
  Result<std::unique_ptr<store::DvItem>> DVMailItemFromEml(std::string_view path,
                                                           store::DvArchive& target) override {
    return account_->DVMailItemFromEml(path, target);
  }
  Status Commit() override { return account_->Commit(); }
  void Logoff() override { account_->Logoff(); }

 private:
  std::unique_ptr<store::DvAccount> account_;
};

TEST_F(MainTest, TheCaptionTellsOfTheOfflineProduct) {
  StartSession();
  context().process.Version = {3, 7, 1};
  context().session.Account = std::make_unique<OfflineAccount>(std::move(context().session.Account));
  EXPECT_EQ(BuildMainCaption(context()), "Velmora 3.7 - Anna Admin (anna@example.org) Mobil Offline");
}

TEST_F(MainTest, WithoutAWindowAStartEndsWithAHint) {
  hasWindows = false;
  EXPECT_EQ(RunMain(""), exit_status::NothingRan);
  ASSERT_EQ(front.Boxes.size(), 1U);
  EXPECT_NE(front.Boxes[0].Text.find("-b:<Steuerdatei>"), std::string::npos);
  EXPECT_EQ(RunMain("-migrate"), exit_status::NothingRan);
}

TEST_F(MainTest, MigrationShowsItsDialogWithoutSigningOn) {
  login = "nobody";
  EXPECT_EQ(RunMain("  -MIGRATE "), exit_status::Done);
  EXPECT_EQ(windows.MigrationDialogs, 1);
  EXPECT_EQ(windows.MainWindows, 0);
  EXPECT_TRUE(front.Boxes.empty());
}

TEST_F(MainTest, MigrationIsRefusedBesideARunningInstance) {
  int status = -1;
  FakeWindows other;
  test::ScriptedFrontEnd otherFront;
  windows.OnMainWindow = [&](Context&) {
    Program second({.Directories = directories,
                    .fileSystem = *files,
                    .clock = clock,
                    .frontEnd = otherFront.Set(),
                    .makeApi = {},
                    .CommandLine = "-migrate",
                    .NamedServer = "",
                    .windows = &other});
    status = Main(second.GetContext());
  };
  RunMain("");
  EXPECT_EQ(status, exit_status::NothingRan);
  EXPECT_EQ(other.MigrationDialogs, 0);
  ASSERT_EQ(otherFront.Boxes.size(), 1U);
  EXPECT_EQ(otherFront.Boxes[0].Title, "Fehler");
  EXPECT_EQ(otherFront.Boxes[0].Text, "Im Migrationsmode ist der Mehrfachstart nicht erlaubt.");
}

TEST_F(MainTest, MigrateWithMoreTextIsAnOrdinaryLine) {
  RunMain("-migrate now");
  EXPECT_EQ(windows.MigrationDialogs, 0);
  EXPECT_EQ(windows.MainWindows, 1);
  EXPECT_EQ(context().process.StartMode, start_mode::Path);
  EXPECT_EQ(context().process.StartPathArg, "-migrate now");
}

TEST_F(MainTest, APathThatEndsInASlashNamesTheDirectoryItself) {
  const std::string named = directory.HostPath("state");
  RunMain(named + "/");
  EXPECT_EQ(context().process.StartPathArg, context().fileSystem.FromHostPath(named) + "\\");
  RunMain(named);
  EXPECT_EQ(context().process.StartPathArg, context().fileSystem.FromHostPath(named));
}

TEST_F(MainTest, AFailedSignOnEndsTheStart) {
  login = "nobody";
  EXPECT_EQ(RunMain(""), exit_status::NothingRan);
  EXPECT_EQ(windows.MainWindows, 0);
  ASSERT_EQ(front.Boxes.size(), 1U);
  EXPECT_EQ(front.Boxes[0].Title, "Velmora - Anmeldung");
  EXPECT_EQ(front.Boxes[0].Text,
            "Die Anmeldung am DvISE ist fehlgeschlagen!\r\nnobody ist kein Benutzer des Servers ZEB1");
}

TEST_F(MainTest, HelpIsABoxAndAnEnd) {
  for (const std::string line : {"-?", "-h", "-help"}) {
    front.Boxes.clear();
    EXPECT_EQ(RunMain(line), exit_status::Done);
    ASSERT_EQ(front.Boxes.size(), 1U);
    EXPECT_EQ(front.Boxes[0].Title, "Hilfe");
    EXPECT_EQ(front.Boxes[0].Text, HelpText());
  }
  EXPECT_EQ(windows.MainWindows, 0);
}

TEST_F(MainTest, SwitchingTheIntegrationOnStoresItAndTheVersion) {
  EXPECT_EQ(RunMain("-i"), exit_status::Done);
  EXPECT_EQ(Stored("Options", "TICIntegration"), settings::Value(std::string("1")));
  EXPECT_EQ(Stored("Information", "Application"), settings::Value(std::string("Velmora")));
  EXPECT_EQ(Stored("Information", "Revison"), settings::Value(settings::RunningVersion().Revision));
  EXPECT_EQ(windows.MainWindows, 0);
}

TEST_F(MainTest, SwitchingTheIntegrationOffRemovesLogAndSavedLine) {
  StartSession();
  directory.WriteHostFile("state/VelmoraError.log", "x");
  directory.WriteHostFile("state/VelmoraLine.txt", "-r");
  EXPECT_EQ(RunMain("-u"), exit_status::Done);
  EXPECT_EQ(Stored("Options", "TICIntegration"), settings::Value(std::string("0")));
  EXPECT_FALSE(std::filesystem::exists(directory.HostPath("state/VelmoraError.log")));
  EXPECT_FALSE(std::filesystem::exists(directory.HostPath("state/VelmoraLine.txt")));
}

TEST_F(MainTest, SwitchingTheIntegrationOffForcesNoReadOnlyFile) {
  StartSession();
  for (const std::string name : {"state/VelmoraError.log", "state/VelmoraLine.txt"}) {
    directory.WriteHostFile(name, "x");
    std::filesystem::permissions(directory.HostPath(name), std::filesystem::perms(0444));
  }
  EXPECT_EQ(RunMain("-u"), exit_status::Done);
  EXPECT_TRUE(std::filesystem::exists(directory.HostPath("state/VelmoraError.log")));
  EXPECT_TRUE(std::filesystem::exists(directory.HostPath("state/VelmoraLine.txt")));
}

TEST_F(MainTest, ABatchOptionWithoutAColonStartsNormally) {
  EXPECT_EQ(RunMain("-b"), exit_status::Done);
  EXPECT_EQ(windows.MainWindows, 1);
  EXPECT_FALSE(context().process.BatchMode);
}

TEST_F(MainTest, ABatchWithoutAFileNameIsReportedInTheLog) {
  EXPECT_EQ(RunMain("-b:"), exit_status::NothingRan);
  EXPECT_EQ(windows.MainWindows, 0);
  EXPECT_TRUE(front.Boxes.empty());
  EXPECT_NE(Log().find("Es ist keine Steuerdatei angegeben"), std::string::npos) << Log();
}

TEST_F(MainTest, AnUnattendedRunThatCannotSignOnShowsNoBoxAndLogsWhy) {
  login = "nobody";
  EXPECT_EQ(RunMain("-b:x.txt"), exit_status::NothingRan);
  EXPECT_TRUE(front.Boxes.empty());
  EXPECT_NE(Log().find("DvISE-Error"), std::string::npos) << Log();
}

TEST_F(MainTest, AnUnattendedRunSavesNoSettingsAndRegistersNothing) {
  directory.WriteHostFile("c.txt", "command=copydavidlogs\nlogtype=rxlog\ndstarchive=/Archive\n");
  RunMain("-b:" + directory.Path("c.txt"));
  EXPECT_EQ(Stored("Options", "AutoSaveSettings"), settings::Value(std::string("missing")));
  EXPECT_FALSE(std::filesystem::exists(directory.HostPath("userdata")));
}

TEST_F(MainTest, AControlFileWithoutABackslashLiesInTheProgramDirectory) {
  StartSession();
  directory.WriteHostFile("state/nightly.txt", "command=nonsense\n");
  EXPECT_EQ(RunMain("-b:nightly.txt"), exit_status::NothingRan);
  EXPECT_NE(Log().find("Unbekanntes Kommando in der Steuerdatei: nonsense"), std::string::npos) << Log();
}

TEST_F(MainTest, AMissingControlFileIsReportedWithThePathWhereItWasLookedFor) {
  EXPECT_EQ(RunMain("-b:nightly.txt"), exit_status::NothingRan);
  EXPECT_NE(Log().find("Datei nicht gefunden -> " + directory.Path("state\\nightly.txt")), std::string::npos)
      << Log();
}

TEST_F(MainTest, AnUnattendedRunTellsThatSettingsOfAnotherVersionWereWiped) {
  ASSERT_TRUE(Settings().SetUserSetting("Information", "MajorVersion", 99));
  ASSERT_TRUE(Settings().SetUserSetting("Options", "AttachmentFolder", std::string("Anlagen")));
  directory.WriteHostFile("c.txt", "command=copydavidlogs\nlogtype=rxlog\ndstarchive=/Archive\n");
  EXPECT_EQ(RunMain("-b:" + directory.Path("c.txt")), exit_status::DoneWithErrors);
  EXPECT_NE(Log().find("Warnung: 0 - LoadSettings -> Die Einstellungen einer anderen Version"),
            std::string::npos)
      << Log();
  EXPECT_NE(directory.ReadHostFile("config/settings.toml.previous").find("Anlagen"), std::string::npos);
  // Now there is nothing left to lose.
  EXPECT_EQ(RunMain("-b:" + directory.Path("c.txt")), exit_status::Done) << Log();
}

TEST_F(MainTest, AnUnattendedRunTellsOfDamagedSettingsOfUserAndMachine) {
  std::filesystem::create_directories(directory.HostPath("config"));
  std::filesystem::create_directories(directory.HostPath("machine"));
  directory.WriteHostFile("config/settings.toml", "[[[");
  directory.WriteHostFile("machine/settings.toml", "[[[");
  directory.WriteHostFile("c.txt", "command=copydavidlogs\nlogtype=rxlog\ndstarchive=/Archive\n");
  EXPECT_EQ(RunMain("-b:" + directory.Path("c.txt")), exit_status::DoneWithErrors);
  EXPECT_NE(Log().find(directory.Path("config\\settings.toml")), std::string::npos) << Log();
  EXPECT_NE(Log().find(directory.Path("machine\\settings.toml")), std::string::npos) << Log();
  EXPECT_EQ(directory.ReadHostFile("config/settings.toml.damaged"), "[[[");
}

TEST_F(MainTest, AHostPathNamesTheControlFile) {
  directory.WriteHostFile("c.txt", "command=nonsense\n");
  RunMain("-b:" + directory.HostPath("c.txt"));
  EXPECT_NE(Log().find("Unbekanntes Kommando"), std::string::npos) << Log();
}

TEST_F(MainTest, TheEndAsksAndUnloadsTheWindows) {
  StartSession();
  front.Answers = {run::Answer::No, run::Answer::Yes};
  EXPECT_FALSE(ConfirmExit(context(), true));
  EXPECT_EQ(windows.Unloads, 0);
  EXPECT_TRUE(ConfirmExit(context(), true));
  EXPECT_EQ(front.Boxes[0].Title, "Ende");
  EXPECT_EQ(front.Boxes[0].Text, "Velmora wirklich beenden?");
  EXPECT_TRUE(ConfirmExit(context(), false));
  EXPECT_EQ(front.Boxes.size(), 2U);
  EXPECT_EQ(windows.Unloads, 2);
  context().process.ServerChanging = true;
  EXPECT_FALSE(ConfirmExit(context(), false));
}

TEST_F(MainTest, ShutdownRemovesTheTemporaryFilesSavesAndSignsOff) {
  StartSession();
  directory.WriteHostFile("temp/$$Velmora/x.tmp", "x");
  Shutdown(context());
  EXPECT_FALSE(std::filesystem::exists(directory.HostPath("temp/$$Velmora")));
  EXPECT_EQ(Stored("Options", "LastUsedServer"), settings::Value(std::string(Server)));
  EXPECT_EQ(context().session.Account, nullptr);
  EXPECT_EQ(front.Waits, std::vector<std::string>{"Temporäre Dateien werden gelöscht"});
}

TEST_F(MainTest, AChangeOfServerSavesNothingAtTheShutdown) {
  StartSession();
  context().process.ServerChanging = true;
  Shutdown(context());
  EXPECT_EQ(Stored("Options", "LastUsedServer"), settings::Value(std::string("missing")));
}

}  // namespace
}  // namespace velmora::startup
