#include "program_fixture.h"

namespace velmora::startup {
namespace {

class SessionSettingsTest : public ProgramTest {
 protected:
  settings::Values Stored() { return Settings().Read(settings::Scope::User); }
  // A session that ends as the window's would.
  void End() { Shutdown(context()); }
};

TEST_F(SessionSettingsTest, AnEndStoresEverySettingAndTheNextStartReadsIt) {
  StartSession();
  context().options.CSVSeparator = "|";
  context().options.FrmWidth = 777;
  context().process.CurrentPath = directory.Path("target\\");
  End();
  StartSession();
  EXPECT_EQ(context().options.CSVSeparator, "|");
  EXPECT_EQ(context().options.FrmWidth, 777);
  EXPECT_EQ(context().process.CurrentPath, directory.Path("target\\"));
  EXPECT_EQ(Stored()["ServerSettings_ZEB1"]["LastUsedPath"], settings::Value(directory.Path("target\\")));
}

TEST_F(SessionSettingsTest, WithAutoSaveOffOnlyThatSwitchAndTheVersionAreWritten) {
  StartSession();
  context().options.AutoSaveSettings = false;
  context().options.FrmWidth = 777;
  End();
  const settings::Values stored = Stored();
  EXPECT_EQ(stored.at("Options").size(), 1U);
  EXPECT_EQ(stored.at("Options").at("AutoSaveSettings"), settings::Value(std::string("0")));
  EXPECT_EQ(stored.at("Information").size(), 5U);
  EXPECT_EQ(stored.count("ServerSettings_ZEB1"), 0U);
  EXPECT_EQ(stored.at("GlobalSettings").count("FrmWidth"), 0U);
}

TEST_F(SessionSettingsTest, TheOptionsDialogSavesAllWhateverTheSwitch) {
  StartSession();
  context().options.AutoSaveSettings = false;
  context().options.FrmWidth = 777;
  SaveSettings(context(), true);
  EXPECT_EQ(Stored()["GlobalSettings"]["FrmWidth"], settings::Value(777));
}

TEST_F(SessionSettingsTest, NothingIsSavedBeforeTheSettingsWereLoaded) {
  Start("");
  ASSERT_TRUE(SignOn(context()));
  SaveSettings(context(), true);
  EXPECT_EQ(Stored().count("Information"), 0U);
}

TEST_F(SessionSettingsTest, ANewMinorVersionWipesButKeepsTheServerListAndTheTabCounts) {
  StartSession();
  context().options.FrmWidth = 777;
  context().options.CSVSeparator = "|";
  context().options.LZEBTabItemCount = 3;
  context().options.AutoSaveSettings = false;
  SaveSettings(context(), true);
  Start("");
  ++context().process.Version.Minor;
  ASSERT_TRUE(StartAfterLogin(context()).CanGoOn);
  EXPECT_EQ(context().options.FrmWidth, 12000);
  EXPECT_EQ(context().options.CSVSeparator, ";");
  EXPECT_FALSE(context().options.AutoSaveSettings);
  EXPECT_EQ(context().options.LZEBTabItemCount, 3);
  EXPECT_EQ(context().options.DvServer[0], Server);
}

TEST_F(SessionSettingsTest, ANewRevisionWipesNothing) {
  StartSession();
  context().options.FrmWidth = 777;
  End();
  Start("");
  ++context().process.Version.Revision;
  ASSERT_TRUE(StartAfterLogin(context()).CanGoOn);
  EXPECT_EQ(context().options.FrmWidth, 777);
}

TEST_F(SessionSettingsTest, TwoProgramsThatEndKeepEachOthersSettings) {
  StartSession();
  test::ScriptedFrontEnd otherFront;
  Program other({.Directories = directories,
                 .fileSystem = *files,
                 .clock = clock,
                 .frontEnd = otherFront.Set(),
                 .makeApi = context().makeApi,
                 .CommandLine = "",
                 .NamedServer = "",
                 .windows = nullptr});
  ASSERT_TRUE(StartAfterLogin(other.GetContext()).CanGoOn);
  context().options.CSVSeparator = "|";
  other.GetContext().options.NABSeparator = "#";
  SaveSettings(context(), true);
  SaveSettings(other.GetContext(), true);
  EXPECT_EQ(Stored()["Options"]["CSVSeparator"], settings::Value(std::string("|")));
  EXPECT_EQ(Stored()["Options"]["NABSeparator"], settings::Value(std::string("#")));
}

TEST_F(SessionSettingsTest, TheLastArchivesAreRestored) {
  StartSession();
  context().session.LeftArchive = MakeArchive("Projekte");
  End();
  StartSession();
  EXPECT_EQ(context().session.LeftArchive->FullPath(), "/Archive/Projekte");
  EXPECT_EQ(context().session.RightArchive->FullPath(), "/Archive");
  End();
  StartSession("-r");
  EXPECT_EQ(context().session.LeftArchive->FullPath(), "/Archive");
}

TEST_F(SessionSettingsTest, OtherRightsCancelTheRestoring) {
  StartSession();
  context().session.LeftArchive = MakeArchive("Projekte");
  End();
  ASSERT_TRUE(Settings().SetUserSetting("Options", "LastUserRights", 1));
  StartSession();
  EXPECT_EQ(context().session.LeftArchive->FullPath(), "/Archive");
}

TEST_F(SessionSettingsTest, AnArchiveThatIsGoneIsTheDefaultArchive) {
  StartSession();
  context().session.LeftArchive = MakeArchive("Projekte");
  End();
  StartSession();
  ASSERT_TRUE(context().session.LeftArchive->Delete());
  context().session.LeftArchive.reset();
  StartSession();
  EXPECT_EQ(context().session.LeftArchive->FullPath(), "/Archive");
}

TEST_F(SessionSettingsTest, AMissingCurrentPathIsThePersonalDirectory) {
  ASSERT_TRUE(
      Settings().SetUserSetting("ServerSettings_ZEB1", "LastUsedPath", std::string("Z:\\nowhere\\x")));
  StartSession();
  EXPECT_EQ(context().process.CurrentPath, directory.Path("docs\\"));
}

TEST_F(SessionSettingsTest, PathsOfTheHostAreTakenFromAFileThatWasEditedByHand) {
  std::filesystem::create_directories(directory.HostPath("forms"));
  ASSERT_TRUE(Settings().SetUserSetting("Information", "MajorVersion", settings::RunningVersion().Major));
  ASSERT_TRUE(Settings().SetUserSetting("Information", "MinorVersion", settings::RunningVersion().Minor));
  ASSERT_TRUE(Settings().SetUserSetting("Options", "DesignPath", directory.HostPath("forms")));
  ASSERT_TRUE(Settings().SetUserSetting("ServerSettings_ZEB1", "LastUsedPath", directory.HostPath("target")));
  ASSERT_TRUE(Settings().SetUserSetting("ServerSettings_ZEB1", "TempDirPath", directory.HostPath("mine")));
  StartSession();
  EXPECT_EQ(context().process.CurrentPath, directory.Path("target\\"));
  EXPECT_EQ(context().options.DesignPath, directory.Path("forms"));
  EXPECT_EQ(context().process.TempDir, directory.Path("mine\\"));
}

TEST_F(SessionSettingsTest, ABarePathIsTheCurrentPath) {
  StartSession(directory.Path("target\\file.htm"));
  EXPECT_EQ(context().process.StartMode, start_mode::Path);
  EXPECT_EQ(context().process.CurrentPath, directory.Path("target\\"));
  EXPECT_EQ(context().session.LeftArchive->FullPath(), "/Archive");
}

TEST_F(SessionSettingsTest, ABareHostPathIsTakenToo) {
  StartSession(directory.HostPath("target/file.htm"));
  EXPECT_EQ(context().process.CurrentPath, directory.Path("target\\"));
}

TEST_F(SessionSettingsTest, ADesignPathThatIsGoneIsTheDefaultOneButStaysStored) {
  const std::string gone = "Z:\\nowhere\\Designs";
  StartSession();
  End();
  ASSERT_TRUE(Settings().SetUserSetting("Options", "DesignPath", gone));
  StartSession();
  EXPECT_EQ(context().options.DesignPath, directory.Path("program\\Designs"));
  End();
  EXPECT_EQ(Stored()["Options"]["DesignPath"], settings::Value(gone));
}

TEST_F(SessionSettingsTest, AFileOfADialogWhoseFolderIsGoneIsForgotten) {
  ASSERT_TRUE(Settings().SetUserSetting("Options", "LastDocFile", directory.Path("target\\a.htm")));
  ASSERT_TRUE(Settings().SetUserSetting("Options", "LastExpFile", std::string("Z:\\nowhere\\a.htm")));
  ASSERT_TRUE(Settings().SetUserSetting("Information", "MajorVersion", settings::RunningVersion().Major));
  ASSERT_TRUE(Settings().SetUserSetting("Information", "MinorVersion", settings::RunningVersion().Minor));
  StartSession();
  EXPECT_EQ(context().options.LastDocFile, directory.Path("target\\a.htm"));
  EXPECT_EQ(context().options.LastExpFile, "");
}

TEST_F(SessionSettingsTest, DeletingArchivesIsOffWithoutTheRight) {
  StartSession();
  EXPECT_TRUE(context().options.DeleteArchive);
  End();
  login = "otto";
  StartSession();
  EXPECT_FALSE(context().options.DeleteArchive);
}

TEST_F(SessionSettingsTest, DamagedSettingsAreDefaults) {
  StartSession();
  End();
  directory.WriteHostFile("config/settings.toml", "[[[");
  StartSession();
  EXPECT_EQ(context().options.FrmWidth, 12000);
  End();
  EXPECT_EQ(directory.ReadHostFile("config/settings.toml.damaged"), "[[[");
}

}  // namespace
}  // namespace velmora::startup
