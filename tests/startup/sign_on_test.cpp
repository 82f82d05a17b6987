#include "startup/sign_on.h"

#include "program_fixture.h"

namespace velmora::startup {
namespace {

class SignOnTest : public ProgramTest {
 protected:
  void ForceStandardRights(const std::string& value) {
    ASSERT_TRUE(Settings().SetMachineSetting("Options", "ForceStandardRights", value));
  }
};

TEST_F(SignOnTest, AnAdministratorStandsAtTheArchiveRoot) {
  ASSERT_TRUE(SignOn(Start("")));
  const store::Session& session = context().session;
  EXPECT_EQ(session.ServerName, Server);
  EXPECT_TRUE(session.IsAdministrator());
  EXPECT_EQ(session.Trustees, session.ServerTrustees);
  EXPECT_EQ(session.DefaultArchive->FullPath(), "/Archive");
}

TEST_F(SignOnTest, AUserStandsAtHisOwnRoot) {
  login = "otto";
  ASSERT_TRUE(SignOn(Start("")));
  const store::Session& session = context().session;
  EXPECT_FALSE(session.IsAdministrator());
  const auto own = session.Account->GetSpecialArchive(store::special::OwnRoot);
  ASSERT_TRUE(own.has_value());
  EXPECT_EQ(session.DefaultArchive->FullPath(), (*own)->FullPath());
}

TEST_F(SignOnTest, AUserWithoutRightsCannotEnter) {
  AddUser("Nina Nichts", "nina", 0);
  login = "nina";
  EXPECT_FALSE(SignOn(Start("")));
  ASSERT_EQ(front.Boxes.size(), 1U);
  EXPECT_EQ(front.Boxes[0].Title, "Velmora - Abbruch");
  EXPECT_EQ(front.Boxes[0].Text, "Der aktuelle Benutzer ist nicht als DvISE-Benutzer eingetragen!");
}

TEST_F(SignOnTest, ForcedRightsMakeAnAdministratorOrdinary) {
  ForceStandardRights("1");
  ASSERT_TRUE(SignOn(Start("")));
  const store::Session& session = context().session;
  EXPECT_TRUE(session.ForcedRights);
  EXPECT_FALSE(session.IsAdministrator());
  EXPECT_FALSE(session.MayDeleteArchives());
  EXPECT_NE(session.Trustees & store::trustee::MoveArchives, 0U);
  EXPECT_TRUE(session.WasAdministrator());
  EXPECT_NE(session.DefaultArchive->FullPath(), "/Archive");
}

TEST_F(SignOnTest, ForcedRightsAreWrittenOnlyByAnAdministratorOfBothSystems) {
  StartSession();
  context().session.ForcedRights = true;
  SaveSettings(context(), true);
  EXPECT_EQ(Settings().GetMachineSetting("Options", "ForceStandardRights", 9), settings::Value(9));
  context().process.IsOsAdministrator = true;
  SaveSettings(context(), true);
  EXPECT_EQ(Settings().GetMachineSetting("Options", "ForceStandardRights", 9),
            settings::Value(std::string("1")));
}

TEST_F(SignOnTest, SigningOnAddsTheServerToTheList) {
  ASSERT_TRUE(SignOn(Start("")));
  EXPECT_EQ(Settings().GetUserSetting("GlobalSettings", "DvServer0", 9),
            settings::Value(std::string(Server)));
}

TEST_F(SignOnTest, ALastUsedServerThatIsGoneEndsTheStartAndSaysWhatToDo) {
  ASSERT_TRUE(Settings().SetUserSetting("Options", "LastUsedServer", std::string("ALT")));
  const std::string reason =
      "Der Server ALT ist auf diesem Rechner nicht eingetragen (eingetragen: ZEB1). Den Server nennt "
      "LastUsedServer in " +
      directory.HostPath("config/settings.toml") + ": dort ";
  EXPECT_EQ(RunMain(""), exit_status::NothingRan);
  ASSERT_EQ(front.Boxes.size(), 1U);
  EXPECT_EQ(front.Boxes[0].Text,
            "Die Anmeldung am DvISE ist fehlgeschlagen!\r\n" + reason + "ändern oder entfernen");
  EXPECT_EQ(context().session.Account, nullptr);  // no other server takes its place
  EXPECT_EQ(RunMain("-b:x.txt"), exit_status::NothingRan);
  EXPECT_EQ(front.Boxes.size(), 1U);
  EXPECT_NE(Log().find("1009 - DvISE-Error " + reason), std::string::npos) << Log();
  ASSERT_TRUE(Settings().DeleteUserSetting("Options", "LastUsedServer"));
  EXPECT_EQ(RunMain(""), exit_status::Done);
}

TEST_F(SignOnTest, WithoutAnyBackendTheLastUsedServerIsNotBlamed) {
  ASSERT_TRUE(Settings().SetUserSetting("Options", "LastUsedServer", std::string(Server)));
  Start("");
  context().makeApi = []() -> Result<std::shared_ptr<store::DvISEAPI>> {
    return Fail(1001, "Kein Speicher");
  };
  EXPECT_EQ(Main(context()), exit_status::NothingRan);
  ASSERT_EQ(front.Boxes.size(), 1U);
  EXPECT_EQ(front.Boxes[0].Text, "Die Anmeldung am DvISE ist fehlgeschlagen!\r\nKein Speicher");
}

TEST_F(SignOnTest, AServerNamedForTheProcessGoesBeforeTheLastUsedOne) {
  ASSERT_TRUE(Settings().SetUserSetting("Options", "LastUsedServer", std::string("ALT")));
  Start("");
  context().process.NamedServer = Server;
  EXPECT_EQ(Main(context()), exit_status::Done);
  EXPECT_TRUE(front.Boxes.empty());
}

TEST_F(SignOnTest, AnEmptyNameChangesNothing) {
  StartSession();
  EXPECT_EQ(ChangeServer(context(), ""), ServerChange::None);
  EXPECT_NE(context().session.Account, nullptr);
}

TEST_F(SignOnTest, AChangeOfServerStartsLateAgain) {
  StartSession();
  EXPECT_EQ(ChangeServer(context(), Server), ServerChange::Changed);
  EXPECT_EQ(windows.Unloads, 1);
  EXPECT_FALSE(context().process.ServerChanging);
  EXPECT_EQ(context().session.LeftArchive->FullPath(), "/Archive");
}

TEST_F(SignOnTest, AFailedChangeFallsBackToTheDefaultServerUnderTheOldName) {
  StartSession();
  context().session.LeftArchive = MakeArchive("Projekte");
  EXPECT_EQ(ChangeServer(context(), "NOWHERE"), ServerChange::Failed);
  ASSERT_EQ(front.Boxes.size(), 1U);
  EXPECT_EQ(front.Boxes[0].Title, "Logon");
  EXPECT_EQ(front.Boxes[0].Text, "Die Anmeldung an NOWHERE ist fehlgeschlagen !");
  EXPECT_EQ(windows.Unloads, 0);  // no restart
  EXPECT_EQ(context().session.ServerName, Server);
  EXPECT_EQ(context().session.Account->Description(), Server);
  EXPECT_EQ(context().session.LeftArchive->FullPath(), "/Archive");  // archives of the old session are gone
  EXPECT_TRUE(context().session.IsAdministrator());
  EXPECT_EQ(front.StatusTexts, std::vector<std::string>{"Warten auf Serveranmeldung"});
}

TEST_F(SignOnTest, WithoutAnyServerTheSessionIsOver) {
  StartSession();
  std::filesystem::rename(directory.HostPath("store"), directory.HostPath("gone"));
  EXPECT_EQ(ChangeServer(context(), "NOWHERE"), ServerChange::Ended);
}

}  // namespace
}  // namespace velmora::startup
