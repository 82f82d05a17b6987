#include "panes/dialogs/filter_dialog.h"
#include "panes_commands/commands_fixture.h"

namespace velmora::panes {
namespace {

class SessionCommandsTest : public CommandsTest {
 protected:
  OptionsAnswer Edit(std::string_view control, bool on, bool saves) {
    OptionsDialog dialog(*files, context().options, context().session, true);
    dialog.SetSwitch(*FindOptionField(control), on);
    return saves ? dialog.Save(front.Set().prompts) : dialog.Ok(front.Set().prompts);
  }
};

TEST_F(SessionCommandsTest, SettingsAreSavedAfterAYes) {
  context().options.AutoSaveSettings = false;
  context().options.SizeCheck = 77;
  const auto stored = [&] {
    return settings::ToText(Settings().GetUserSetting("Options", "SizeCheck", std::string("none")));
  };
  front.Answers = {run::Answer::No};
  (void)Run(Action::SaveSettings);
  EXPECT_EQ(LastBox(), "Speichern: Aktuelle Einstellungen speichern ?");
  EXPECT_EQ(stored(), "none");
  front.Answers = {run::Answer::Yes};
  (void)Run(Action::SaveSettings);
  EXPECT_EQ(stored(), "77");  // although they are not saved by themselves
}

TEST_F(SessionCommandsTest, TheEndIsAskedForUnlessByItsKey) {
  front.Answers = {run::Answer::No};
  EXPECT_FALSE(Run(Action::Exit).ExitStatus.has_value());
  EXPECT_EQ(LastBox(), "Ende: Velmora wirklich beenden?");
  EXPECT_EQ(windows.Unloads, 0);
  front.Boxes.clear();
  EXPECT_EQ(Run(Action::ExitWithoutAsking).ExitStatus, startup::exit_status::Done);
  EXPECT_TRUE(front.Boxes.empty());
  EXPECT_EQ(windows.Unloads, 1);
}

TEST_F(SessionCommandsTest, ANewSignOnKeepsThePlacesOfThePanes) {
  Enter("Rechnungen");
  front.Answers = {run::Answer::No};
  EXPECT_EQ(Run(Action::RefreshAccount).Session, SessionChange::None);
  EXPECT_EQ(LastBox(), "Account: Account aktualisieren nach Änderung der Benutzerkonfiguration ?");
  const auto before = context().session.Api;  // held, so that the new one has another address
  front.Answers = {run::Answer::Yes};
  const Outcome outcome = Run(Action::RefreshAccount);
  EXPECT_EQ(outcome.Session, SessionChange::Reloaded);
  EXPECT_NE(context().session.Api, before);
  EXPECT_EQ(panes->Left().List().MessageRows, 2);
  EXPECT_EQ(panes->Left().CurrentArchive()->FullPath(), Archive("Rechnungen")->FullPath());
}

TEST_F(SessionCommandsTest, ASignOnThatFailsEndsTheProgram) {
  login = "niemand";
  front.Answers = {run::Answer::Yes};
  const Outcome outcome = Run(Action::RefreshAccount);
  EXPECT_EQ(outcome.Session, SessionChange::Ended);
  EXPECT_EQ(outcome.ExitStatus, startup::exit_status::NothingRan);
}

TEST_F(SessionCommandsTest, AnotherServerThatCannotBeReachedLeavesTheDefaultOne) {
  EXPECT_EQ(Run(Action::ChangeServer).Dialog, DialogKind::ChangeServer);
  Enter("Rechnungen");
  const Outcome outcome = RunChangeServer(*commands, "FEHLT");
  EXPECT_EQ(LastBox(), "Logon: Die Anmeldung an FEHLT ist fehlgeschlagen !");
  EXPECT_EQ(outcome.Session, SessionChange::Reloaded);
  EXPECT_EQ(context().session.ServerName, Server);
  EXPECT_EQ(panes->Left().CurrentArchive()->ID(), context().session.DefaultArchive->ID());
  EXPECT_GT(panes->Left().RowCount(), 0u);
}

TEST_F(SessionCommandsTest, AChangeOfServerStartsLateAgain) {
  const Outcome outcome = RunChangeServer(*commands, std::string(Server));
  EXPECT_EQ(outcome.Session, SessionChange::Reloaded);
  EXPECT_EQ(windows.Unloads, 1);
  EXPECT_EQ(RunChangeServer(*commands, "").Session, SessionChange::None);
}

TEST_F(SessionCommandsTest, OnlyAdministratorsChangeTheServer) {
  context().session.Trustees = 0x200;
  EXPECT_EQ(Run(Action::ChangeServer).Dialog, DialogKind::None);
}

TEST_F(SessionCommandsTest, TheFilterListsTheMessagesAnewAfterAChange) {
  EXPECT_EQ(Run(Action::Filter).Dialog, DialogKind::Filter);
  Enter("Rechnungen");
  FilterDialog dialog(context().options, true);
  dialog.StdFltChange(store::filter_preset::OnlyFax);
  const Outcome outcome = RunFilterOk(*commands, dialog.Ok());
  EXPECT_TRUE(outcome.FilterChanged && outcome.LeftChanged);
  EXPECT_EQ(outcome.CurrentRow, 0u);
  EXPECT_EQ(panes->Left().List().MessageRows, 0);
  const Outcome unchanged = RunFilterOk(*commands, false);
  EXPECT_TRUE(unchanged.FilterChanged);
  EXPECT_FALSE(unchanged.LeftChanged);
}

TEST_F(SessionCommandsTest, TheDoubleClickOnTheWarningLeavesTheHiddenEntriesAlone) {
  Enter("Rechnungen");
  context().options.DvItemFilter = static_cast<std::int32_t>(store::filter_preset::OnlyFax);
  context().options.DvInhibitItems = false;
  ASSERT_TRUE(panes->Left().Refresh());
  const Outcome outcome = Run(Action::ResetFilter);
  EXPECT_EQ(LastBox(), "Filterstatus: Alle Message Filter wurden deaktiviert");
  EXPECT_TRUE(outcome.FilterChanged && outcome.LeftChanged);
  EXPECT_EQ(context().options.DvItemFilter, settings::NoItemFilter);
  EXPECT_FALSE(context().options.DvInhibitItems);  // so the warning goes on blinking
  EXPECT_EQ(panes->Left().List().MessageRows, 2);
}

TEST_F(SessionCommandsTest, TheWarningDoesNothingWhileBusy) {
  context().options.DvItemFilter = 0;
  busy.SetBusy();
  EXPECT_FALSE(Run(Action::ResetFilter).FilterChanged);
  EXPECT_EQ(context().options.DvItemFilter, 0);
}

TEST_F(SessionCommandsTest, OptionsListThePanesAnewAndSaveIfAsked) {
  EXPECT_EQ(Run(Action::Options).Dialog, DialogKind::Options);
  Outcome outcome = RunOptionsOk(*commands, Edit("EnDisplayFileIcons", false, false));
  EXPECT_TRUE(outcome.OptionsChanged && outcome.LeftChanged && outcome.FilesChanged);
  EXPECT_FALSE(RunOptionsOk(*commands, Edit("EnDisplayFileIcons", false, false)).LeftChanged);
  (void)RunOptionsOk(*commands, Edit("EnMakeIndex", false, true));
  EXPECT_EQ(settings::ToText(Settings().GetUserSetting("Options", "MakeIndex", std::string("none"))), "0");
}

TEST_F(SessionCommandsTest, ForcedRightsTakeEffectAtOnceAndCanBeLifted) {
  isOsAdministrator = context().process.IsOsAdministrator = true;
  (void)RunOptionsOk(*commands, Edit("EnForceStandardRights", true, true));
  EXPECT_EQ(context().session.Trustees & 0x1210u, 0x200u);
  EXPECT_EQ(
      settings::ToText(Settings().GetMachineSetting("Options", "ForceStandardRights", std::string("0"))),
      "1");
  (void)RunOptionsOk(*commands, Edit("EnForceStandardRights", false, true));
  EXPECT_EQ(context().session.Trustees, context().session.ServerTrustees);
}

TEST_F(SessionCommandsTest, AnotherDesignIsReadAtOnce) {
  directory.WriteHostFile("program/Designs/Firma.ini", "[Messages]\r\nform=Firma.htm\r\n");
  OptionsDialog dialog(*files, context().options, context().session, true);
  dialog.SetText(*FindOptionField("InpArchiveDesign"), "Firma");
  dialog.SetText(*FindOptionField("ArcFormCopyRight"), "wir");
  (void)RunOptionsOk(*commands, dialog.Ok(front.Set().prompts));
  EXPECT_EQ(designs->FormName(mailarchive::Form::Mail), "Firma.htm");
  EXPECT_EQ(formTexts.CopyRight, "wir");
}

TEST_F(SessionCommandsTest, TheErrorLogIsShownAndTheButtonAskedAgain) {
  EXPECT_FALSE(SituationOf(*commands, {}).ErrorLogExists);
  context().run.LogError("x", std::int64_t{1}, "y", run::Severity::Error);
  EXPECT_TRUE(SituationOf(*commands, {}).ErrorLogExists);
  EXPECT_TRUE(Run(Action::ShowErrorLog).ErrorLogChanged);
  EXPECT_EQ(front.ViewedTexts.back().Title, "Fehlerprotokoll");
}

}  // namespace
}  // namespace velmora::panes
