#include "panes_commands/commands_fixture.h"

namespace velmora::panes {
namespace {

using TransferTest = CommandsTest;

TEST_F(TransferTest, RulesAreNoFiles) {
  ASSERT_TRUE(panes->Left().SetRuleView(true));
  EXPECT_EQ(Run(Action::Copy).Dialog, DialogKind::None);
  EXPECT_EQ(LastBox(), "Funktion nicht verfügbar: Regeln können nicht als Datei kopiert werden");
  (void)Run(Action::Move);
  EXPECT_EQ(LastBox(), "Funktion nicht verfügbar: Regeln können nicht als Datei verschoben werden");
}

TEST_F(TransferTest, FromFilesIsNotAvailableYet) {
  std::filesystem::create_directories(directory.HostPath("target/Ordner"));
  ASSERT_TRUE(panes->Files().Refresh());
  ActivateFiles();
  EXPECT_EQ(Run(Action::Copy, At("Ordner")).Dialog, DialogKind::None);
  EXPECT_EQ(Run(Action::Move, At("Ordner")).Dialog, DialogKind::None);
  EXPECT_TRUE(front.Boxes.empty()) << "a key that can do nothing says nothing";
}

TEST_F(TransferTest, NothingMarkedIsTold) {
  Enter("Rechnungen");
  EXPECT_EQ(Run(Action::Copy, {0, {}}).Dialog, DialogKind::None);  // the cursor on the way up
  EXPECT_EQ(LastBox(), "Fehler: Es sind keine Objekte zum Kopieren markiert");
  (void)Run(Action::Move, {});
  EXPECT_EQ(LastBox(), "Fehler: Es sind keine Objekte zum Verschieben markiert");
}

TEST_F(TransferTest, TheDialogOpensWithWhatIsMarked) {
  Enter("Rechnungen");
  const Outcome outcome = Run(Action::Move, Marked({"Angebot", "Bestellung"}));
  ASSERT_EQ(outcome.Dialog, DialogKind::CopyMove);
  EXPECT_EQ(outcome.Export->Mode, mailarchive::CopyMode::Move);
  EXPECT_EQ(outcome.Export->Selection.Objects.size(), 2u);
  EXPECT_EQ(outcome.Export->CurrentPath, directory.Path("target") + "\\");
  // Without a mark it is the row under the cursor.
  EXPECT_EQ(Run(Action::Copy, At("Angebot")).Export->Selection.Objects.size(), 1u);
}

TEST_F(TransferTest, ACopyWritesTheArchiveAndKeepsTheMessages) {
  const Outcome asked = Run(Action::Copy, At("Rechnungen"));
  const auto request = CopyMoveDialog(*asked.Export).Ok(front.Set().prompts);
  ASSERT_TRUE(request.has_value());
  const Outcome outcome = RunCopyMove(*commands, *request);
  EXPECT_TRUE(outcome.LeftChanged && outcome.FilesChanged && outcome.ErrorLogChanged);
  EXPECT_TRUE(Exists("Rechnungen/Angebot.htm"));
  EXPECT_TRUE(Exists("index.html"));
  EXPECT_EQ(front.Boxes.back().Title, "Beendet");
  EXPECT_GE(FindByDisplayName(panes->Files(), "rechnungen"), 0);  // the file pane shows it already
  EXPECT_EQ(*Archive("Rechnungen")->MessageCount(), 2);
  EXPECT_FALSE(busy.IsBusy());
}

TEST_F(TransferTest, AMoveTakesTheMessagesAndTheMarks) {
  Enter("Rechnungen");
  const Outcome asked = Run(Action::Move, Marked({"Angebot"}));
  const auto request = CopyMoveDialog(*asked.Export).Ok(front.Set().prompts);
  const Outcome outcome = RunCopyMove(*commands, *request);
  EXPECT_TRUE(Exists("Angebot.htm"));
  EXPECT_EQ(*Archive("Rechnungen")->MessageCount(), 1);
  ASSERT_TRUE(outcome.Selection.has_value());
  EXPECT_EQ(CountSelected(*outcome.Selection), 0u);
  EXPECT_EQ(panes->Left().List().MessageRows, 1);
}

TEST_F(TransferTest, AnArchiveThatMovedAwayLeavesThePaneAtAPlaceThatExists) {
  Enter("Rechnungen");
  const Outcome asked = Run(Action::Move, Marked({"Angebot", "Bestellung"}));
  auto request = CopyMoveDialog(*asked.Export).Ok(front.Set().prompts);
  ASSERT_TRUE((*Archive("Rechnungen")).GetEntries(0x301FB).has_value());
  (void)RunCopyMove(*commands, *request);
  EXPECT_NE(panes->Left().CurrentArchive(), nullptr);
  EXPECT_GE(panes->Left().RowCount(), 1u);
}

TEST_F(TransferTest, ACancelFromAnEarlierRunDoesNotStopTheNext) {
  context().run.RequestCancel();
  const Outcome asked = Run(Action::Copy, At("Rechnungen"));
  const auto request = CopyMoveDialog(*asked.Export).Ok(front.Set().prompts);
  (void)RunCopyMove(*commands, *request);
  EXPECT_TRUE(Exists("Rechnungen/Angebot.htm"));
}

TEST_F(TransferTest, WithoutTheRightAMessageMovesAndAnArchiveStays) {
  context().session.Trustees = 0x1;
  EXPECT_EQ(Run(Action::Move, At("Rechnungen")).Dialog, DialogKind::None);
  Enter("Rechnungen");
  EXPECT_EQ(Run(Action::Move, At("Angebot")).Dialog, DialogKind::CopyMove);
}

TEST_F(TransferTest, AddressesAreExportedByTheRunOfTheirDialog) {
  EXPECT_EQ(Run(Action::ExportAddresses).Dialog, DialogKind::AddressExport);
  addresses::AddressExportRequest request;
  request.ArchivePath = Archive("Rechnungen")->FullPath();
  request.Options =
      addresses::OptionsFromSettings(context().options, addresses::AddressFormat::Delimited, "");
  request.Options.Target = {directory.Path("target") + "\\", "a.csv"};
  const Outcome outcome = RunAddressExport(*commands, request);
  EXPECT_TRUE(outcome.FilesChanged && outcome.ErrorLogChanged);
  EXPECT_EQ(front.ProgressTitles.back(), "Adressen exportieren");
  EXPECT_FALSE(busy.IsBusy());
}

}  // namespace
}  // namespace velmora::panes
