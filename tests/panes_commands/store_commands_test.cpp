// The commands that work inside the store: what they ask for, what they leave.

#include <algorithm>

#include "panes_commands/commands_fixture.h"
#include "startup/store_objects.h"

namespace velmora::panes {
namespace {

using operations::CopyMode;
using Names = std::vector<std::string>;

// "Rechnungen" and "Leer" at the root on the left, "Leer" on the right.
class StoreCommandsTest : public CommandsTest {
 protected:
  StoreCommandsTest() {
    panes->SetViewMode(view_mode::Archive);
    EXPECT_TRUE(panes->Right().ShowArchive(Archive("Leer")));
    panes->SetActiveView(PaneView::LZEBView);
  }
  run::Prompts& prompts() { return set.prompts; }

  // The model that a command asks to show.
  template <typename Dialog>
  static Dialog& ModelOf(const Outcome& outcome) {
    EXPECT_EQ(outcome.Dialog, DialogKind::Prepared);
    return *std::get<std::shared_ptr<Dialog>>(outcome.Prepared);
  }
  ZEBCopyMoveDialog& Transfer(Outcome& asked, CopyMode mode, const ViewMarks& marks) {
    asked = Run(mode == CopyMode::Move ? Action::Move : Action::Copy, marks);
    return ModelOf<ZEBCopyMoveDialog>(asked);
  }
  Outcome Delete(const ViewMarks& marks, bool structure = true) {
    const Outcome asked = Run(Action::Delete, marks);
    auto& dialog = ModelOf<DelZEBDialog>(asked);
    dialog.SetBox(DelZEBBox::EnDelArchives, structure);
    return RunStoreDeletion(*commands, dialog.Ok(prompts()).value());
  }
  static Names RowsOf(const Pane& pane) {
    Names names;
    for (std::size_t row = 0; row < pane.RowCount(); ++row) names.push_back(pane.Name(row));
    return names;
  }
  static bool Lists(const Pane& pane, std::string_view name) {
    return std::ranges::count(RowsOf(pane), name) > 0;
  }

  run::FrontEnd set = front.Set();
};

// --- Copying and moving. ---

TEST_F(StoreCommandsTest, TheOtherPanesArchiveIsTheTargetOfBoth) {
  const Outcome fromLeft = Run(Action::Copy, At("Rechnungen"));
  EXPECT_EQ(ModelOf<ZEBCopyMoveDialog>(fromLeft).CMDst(), Archive("Leer")->FullPath());
  EXPECT_EQ(ModelOf<ZEBCopyMoveDialog>(fromLeft).Title(), "Kopieren");
  ASSERT_TRUE(panes->Right().ShowArchive(Archive("Rechnungen")));
  panes->SetActiveView(PaneView::RZEBView);
  const Outcome fromRight = Run(Action::Move, At("Angebot"));
  const auto& dialog = ModelOf<ZEBCopyMoveDialog>(fromRight);
  EXPECT_EQ(dialog.CMDst(), context().session.DefaultArchive->FullPath());
  EXPECT_EQ(dialog.Title(), "Verschieben");
  EXPECT_NE(dialog.SourceText().find("1 Message(s) verschieben von"), std::string::npos);
}

TEST_F(StoreCommandsTest, ACopyArrivesInTheOtherPane) {
  Outcome asked;
  const auto request = Transfer(asked, CopyMode::Copy, At("Rechnungen")).Ok(prompts());
  const Outcome outcome = RunStoreTransfer(*commands, request.value());
  EXPECT_TRUE(outcome.LeftChanged && outcome.RightChanged && outcome.ErrorLogChanged);
  EXPECT_FALSE(outcome.Selection.has_value());
  EXPECT_TRUE(Lists(panes->Right(), "Rechnungen"));
  EXPECT_EQ(*Archive("Leer/Rechnungen")->MessageCount(), 2);
  EXPECT_EQ(*Archive("Rechnungen")->MessageCount(), 2);
  EXPECT_EQ(front.ProgressTitles.back(), "Archive/Messages kopieren");
  EXPECT_EQ(front.Boxes.back().Title, "Beendet");
  EXPECT_NE(front.Boxes.back().Text.find("1 Archiv(e)"), std::string::npos);
  EXPECT_FALSE(busy.IsBusy());
}

TEST_F(StoreCommandsTest, AMoveTakesTheMessagesAndTheMarks) {
  Enter("Rechnungen");
  Outcome asked;
  const auto request = Transfer(asked, CopyMode::Move, Marked({"Angebot"})).Ok(prompts());
  const Outcome outcome = RunStoreTransfer(*commands, request.value());
  EXPECT_EQ(RowsOf(panes->Left()), (Names{"[..]", "Bestellung"}));
  EXPECT_TRUE(Lists(panes->Right(), "Angebot"));
  ASSERT_TRUE(outcome.Selection.has_value());
  EXPECT_EQ(CountSelected(*outcome.Selection), 0u);
}

TEST_F(StoreCommandsTest, AMovedArchiveIsGoneFromItsPane) {
  Outcome asked;
  auto& dialog = Transfer(asked, CopyMode::Move, At("Rechnungen"));
  dialog.SetBox(ZEBCopyMoveBox::EnDelArchives, true);
  (void)RunStoreTransfer(*commands, dialog.Ok(prompts()).value());
  EXPECT_FALSE(Lists(panes->Left(), "Rechnungen"));
  EXPECT_TRUE(Lists(panes->Right(), "Rechnungen"));
}

TEST_F(StoreCommandsTest, TheBoxesAreRememberedForTheSession) {
  Outcome asked;
  auto& dialog = Transfer(asked, CopyMode::Copy, At("Rechnungen"));
  EXPECT_FALSE(dialog.IsChecked(ZEBCopyMoveBox::EnCpyProp));
  dialog.SetBox(ZEBCopyMoveBox::EnCpyProp, true);
  ASSERT_TRUE(dialog.Ok(prompts()).has_value());
  EXPECT_TRUE(Transfer(asked, CopyMode::Copy, At("Rechnungen")).IsChecked(ZEBCopyMoveBox::EnCpyProp));
}

TEST_F(StoreCommandsTest, OntoItselfNothingIsCopied) {
  ASSERT_TRUE(panes->Right().ShowArchive(Archive("Rechnungen")));
  Outcome asked;
  (void)RunStoreTransfer(*commands, Transfer(asked, CopyMode::Copy, At("Rechnungen")).Ok(prompts()).value());
  ASSERT_GE(front.Boxes.size(), 1u);
  EXPECT_EQ(front.Boxes.front().Title, "Rekursive Kopie");
  EXPECT_FALSE(Lists(panes->Right(), "Rechnungen"));
}

TEST_F(StoreCommandsTest, NothingMarkedIsTold) {
  Enter("Rechnungen");
  EXPECT_EQ(Run(Action::Copy, {0, {}}).Dialog, DialogKind::None);  // the cursor on the way up
  EXPECT_EQ(LastBox(), "Fehler: Es sind keine Objekte zum Kopieren markiert");
}

TEST_F(StoreCommandsTest, WithoutTheRightAMessageMovesAndAnArchiveStays) {
  context().session.Trustees = 0x1;
  EXPECT_EQ(Run(Action::Move, At("Rechnungen")).Dialog, DialogKind::None);
  EXPECT_TRUE(front.Boxes.empty());
  Enter("Rechnungen");
  EXPECT_EQ(Run(Action::Move, At("Angebot")).Dialog, DialogKind::Prepared);
}

// --- Deleting in the store. ---

TEST_F(StoreCommandsTest, ADeletedArchiveLeavesThePanesThatShowedItAtItsNearestAncestor) {
  const auto sub = Archive("Rechnungen")->CreateSubArchive("2026");
  ASSERT_TRUE(sub.has_value());
  ASSERT_TRUE((*sub)->CreateSubArchive("Mai").has_value());
  ASSERT_TRUE(panes->Right().ShowArchive(Archive("Rechnungen/2026/Mai")));
  Enter("Rechnungen");
  const Outcome outcome = Delete(At("2026"));
  EXPECT_TRUE(outcome.LeftChanged && outcome.RightChanged);
  EXPECT_EQ(RowsOf(panes->Left()), (Names{"[..]", "Angebot", "Bestellung"}));
  EXPECT_EQ(panes->Right().CurrentArchive()->FullPath(), Archive("Rechnungen")->FullPath());
  EXPECT_TRUE(front.Boxes.empty()) << LastBox();
  EXPECT_EQ(Log(), "");
  EXPECT_FALSE(busy.IsBusy());
}

TEST_F(StoreCommandsTest, APaneThatComesUpLaterKnowsThatItsArchiveIsGone) {
  ASSERT_TRUE(panes->Right().ShowArchive(Archive("Rechnungen")));
  panes->SetViewMode(view_mode::FileSystem);
  (void)Delete(At("Rechnungen"));
  panes->SetViewMode(view_mode::Archive);
  EXPECT_EQ(panes->Right().CurrentArchive()->FullPath(), context().session.DefaultArchive->FullPath());
  EXPECT_TRUE(front.Boxes.empty()) << LastBox();
}

TEST_F(StoreCommandsTest, WithoutTheStructureAnArchiveIsEmptied) {
  (void)Delete(At("Rechnungen"), false);
  EXPECT_TRUE(Lists(panes->Left(), "Rechnungen"));
  EXPECT_EQ(*Archive("Rechnungen")->MessageCount(), 0);
}

TEST_F(StoreCommandsTest, OfTwoLinksToOneArchiveTheMarkedOneGoes) {
  test::AddLink(*files, Server, *context().session.DefaultArchive, "Kurz", *Archive("Rechnungen"));
  test::AddLink(*files, Server, *context().session.DefaultArchive, "Lang", *Archive("Rechnungen"));
  ASSERT_TRUE(panes->Left().Refresh());
  const store::Selection marked = MarkedObjects(panes->Left(), At("Lang"));
  EXPECT_EQ(marked.Objects.at(0).Name, "Lang");
  EXPECT_TRUE(marked.Objects.at(0).IsLink);
  (void)Delete(At("Lang"));
  EXPECT_TRUE(Lists(panes->Left(), "Kurz"));
  EXPECT_FALSE(Lists(panes->Left(), "Lang"));
  EXPECT_EQ(*Archive("Rechnungen")->MessageCount(), 2);
}

TEST_F(StoreCommandsTest, WithoutTheRightDeletingAnArchiveIsTold) {
  context().session.Trustees = 0x1;
  EXPECT_EQ(Run(Action::Delete, At("Rechnungen")).Dialog, DialogKind::None);
  EXPECT_EQ(LastBox(),
            "Fehler: Es sind keine Objekte zum Löschen markiert oder \r\n"
            "der Benutzer hat keine Berechtigung zum Löschen.");
  Enter("Rechnungen");
  EXPECT_EQ(Run(Action::Delete, At("Angebot")).Dialog, DialogKind::Prepared);
}

TEST_F(StoreCommandsTest, ACancelKeepsTheRestAndDoesNotStopTheNextRun) {
  const auto archive = Archive("Leer");
  for (int i = 0; i < 20; ++i) AddMail(*archive, "Betreff " + std::to_string(i));
  front.CancelAtPump = front.Pumps + 6;
  (void)Delete(At("Leer"));
  const int left = *Archive("Leer")->MessageCount();
  EXPECT_GT(left, 0);
  EXPECT_LT(left, 20);
  EXPECT_NE(Log().find("Abbruch durch Benutzer"), std::string::npos);
  front.CancelAtPump = 0;
  (void)Delete(At("Leer"));
  EXPECT_FALSE(Lists(panes->Left(), "Leer"));
}

TEST_F(StoreCommandsTest, NothingRunsWhileAnotherCommandDoes) {
  const Outcome asked = Run(Action::Delete, At("Rechnungen"));
  const auto request = ModelOf<DelZEBDialog>(asked).Ok(prompts());
  busy.SetLongOperation(true);
  EXPECT_FALSE(RunStoreDeletion(*commands, request.value()).LeftChanged);
  EXPECT_EQ(Run(Action::Delete, At("Rechnungen")).Dialog, DialogKind::None);
  busy.SetLongOperation(false);
  EXPECT_EQ(*Archive("Rechnungen")->MessageCount(), 2);
}

// --- Rules. ---

class RuleCommandsTest : public StoreCommandsTest {
 protected:
  RuleCommandsTest() {
    const auto archive = Archive("Rechnungen");
    for (const char* name : {"Angebote", "Mahnungen", "Reste"}) test::AddRule(*archive, name);
    EXPECT_TRUE(archive->CreateSubArchive("Unterarchiv").has_value());
    Enter("Rechnungen");
    EXPECT_TRUE(panes->Left().SetRuleView(true));
  }
};

TEST_F(RuleCommandsTest, RulesAreCopiedInTheirReversedOrder) {
  const Outcome asked = Run(Action::Copy, Marked({"Angebote", "Reste"}));
  auto& dialog = ModelOf<RoutCopyMoveDialog>(asked);
  EXPECT_EQ(dialog.CMDst(), Archive("Leer")->FullPath());
  const Outcome outcome = RunRuleTransfer(*commands, dialog.Ok(prompts()).value());
  EXPECT_TRUE(outcome.LeftChanged && outcome.RightChanged);
  EXPECT_EQ(test::RuleNames(*Archive("Leer")), (Names{"Reste", "Angebote"}));
  EXPECT_EQ(test::RuleNames(*Archive("Rechnungen")).size(), 3u);
  EXPECT_EQ(front.Boxes.back().Title, "Beendet");
}

TEST_F(RuleCommandsTest, MovedRulesAreGoneFromThePane) {
  const Outcome asked = Run(Action::Move, Marked({"Mahnungen"}));
  (void)RunRuleTransfer(*commands, ModelOf<RoutCopyMoveDialog>(asked).Ok(prompts()).value());
  EXPECT_EQ(RowsOf(panes->Left()), (Names{"[..]", "Unterarchiv", "Angebote", "Reste"}));
  EXPECT_EQ(test::RuleNames(*Archive("Leer")), Names{"Mahnungen"});
}

TEST_F(RuleCommandsTest, DeletedRulesAreGoneFromThePane) {
  const Outcome asked = Run(Action::Delete, Marked({"Angebote", "Mahnungen"}));
  (void)RunRuleDeletion(*commands, ModelOf<DelRoutDialog>(asked).Ok(prompts()).value());
  EXPECT_EQ(RowsOf(panes->Left()), (Names{"[..]", "Unterarchiv", "Reste"}));
  EXPECT_TRUE(front.Boxes.empty()) << LastBox();
}

TEST_F(RuleCommandsTest, ArchivesAreNoRules) {
  EXPECT_EQ(Run(Action::Copy, At("Unterarchiv")).Dialog, DialogKind::None);
  EXPECT_EQ(LastBox(), "Fehler: Es sind keine Objekte zum Kopieren markiert");
  EXPECT_EQ(Run(Action::Delete, At("Unterarchiv")).Dialog, DialogKind::None);
  EXPECT_EQ(front.Boxes.size(), 2u);
}

TEST_F(RuleCommandsTest, RulesNeedTheRightToBeMovedOrDeleted) {
  context().session.Trustees = 0x2000;
  EXPECT_EQ(Run(Action::Move, At("Reste")).Dialog, DialogKind::None);
  EXPECT_EQ(Run(Action::Delete, At("Reste")).Dialog, DialogKind::None);
  EXPECT_EQ(front.Boxes.size(), 1u);
  EXPECT_EQ(Run(Action::Copy, At("Reste")).Dialog, DialogKind::Prepared);
}

// --- Files. ---

TEST_F(StoreCommandsTest, FilesAndDirectoriesAreDeletedByAnyone) {
  context().session.Trustees = 0x1;
  std::filesystem::create_directories(directory.HostPath("target/Ordner/Unten"));
  directory.WriteHostFile("target/Ordner/a.txt", "x");
  directory.WriteHostFile("target/brief.txt", "x");
  directory.WriteHostFile("target/bleibt.txt", "x");
  panes->SetViewMode(view_mode::FileSystem);
  ActivateFiles();
  const Outcome asked = Run(Action::Delete, Marked({"Ordner", "brief.txt"}));
  auto& dialog = ModelOf<DelFSDialog>(asked);
  dialog.SetBox(DelFSBox::EnDelDirs, true);
  const Outcome outcome = RunFileDeletion(*commands, dialog.Ok(prompts()).value());
  EXPECT_TRUE(outcome.FilesChanged);
  EXPECT_FALSE(Exists("Ordner") || Exists("brief.txt"));
  EXPECT_EQ(RowsOf(panes->Files()), (Names{" [..]", "bleibt.txt"}));
  EXPECT_TRUE(front.Boxes.empty()) << LastBox();
}

TEST_F(StoreCommandsTest, TheArchivesThemselvesAreNotDeletedAsFiles) {
  panes->SetViewMode(view_mode::FileSystem);
  ActivateFiles();
  ASSERT_TRUE(panes->Files().ShowDirectory(directory.Path()));
  const Outcome asked = Run(Action::Delete, At("store"));
  (void)RunFileDeletion(*commands, ModelOf<DelFSDialog>(asked).Ok(prompts()).value());
  EXPECT_EQ(*Archive("Rechnungen")->MessageCount(), 2);
  EXPECT_NE(Log().find("Archivbestand"), std::string::npos);
}

// --- Repairs of the tree. ---

TEST_F(StoreCommandsTest, DoubledEntriesAreReducedToOne) {
  test::AddRecord(*files, *context().session.DefaultArchive, *Archive("Leer"), "Leer");
  ASSERT_TRUE(panes->Left().Refresh());
  EXPECT_EQ(std::ranges::count(RowsOf(panes->Left()), "Leer"), 2);
  const Outcome asked = Run(Action::RemoveDoubleEntries, At("Leer"));
  auto& dialog = ModelOf<DelDblArcEntriesDialog>(asked);
  EXPECT_EQ(dialog.DblCnt(), "2");
  const Outcome outcome = RunDoubleEntriesOk(*commands, dialog);
  EXPECT_TRUE(outcome.LeftChanged && outcome.RightChanged);
  EXPECT_EQ(std::ranges::count(RowsOf(panes->Left()), "Leer"), 1);
  EXPECT_EQ(LastBox(), "Fertig: Es wurden 1 Mehrfacheintragaus \"Archive.dir\" entfernt.");
}

TEST_F(StoreCommandsTest, ASoundArchiveNeedsNoDialog) {
  EXPECT_EQ(Run(Action::RemoveDoubleEntries, At("Leer")).Dialog, DialogKind::None);
  EXPECT_EQ(front.Boxes.back().Title, "Kein doppelter Eintrag vorhanden");
  EXPECT_EQ(Run(Action::RemoveCircularEntries, At("Leer")).Dialog, DialogKind::None);
  EXPECT_EQ(front.Boxes.back().Title, "Keine zirkularen Referenzen");
  EXPECT_EQ(front.Waits.size(), 2u);
  EXPECT_EQ(front.WaitsEnded, 2) << "no box of waiting is left behind";
}

TEST_F(StoreCommandsTest, CircularEntriesGoAfterAYes) {
  const auto sub = Archive("Rechnungen")->CreateSubArchive("2026").value();
  test::AddRecord(*files, *sub, *Archive("Rechnungen"), "Zurück");
  const Outcome asked = Run(Action::RemoveCircularEntries, At("Rechnungen"));
  auto& dialog = ModelOf<DelCircArcEntriesDialog>(asked);
  EXPECT_EQ(dialog.DblCnt(), "1");
  EXPECT_FALSE(RunCircularEntriesOk(*commands, dialog).has_value()) << "the answer without a script is no";
  EXPECT_FALSE(busy.IsBusy());
  front.Answers = {run::Answer::Yes};
  const auto outcome = RunCircularEntriesOk(*commands, dialog);
  ASSERT_TRUE(outcome.has_value());
  EXPECT_TRUE(outcome->LeftChanged);
  EXPECT_EQ(Archive("Rechnungen/2026")->SubArchives()->size(), 0u);
  EXPECT_EQ(front.Boxes.back().Title, "Fertig");
}

TEST_F(StoreCommandsTest, AnEntryGoesAfterAYesAndItsDirectoryStays) {
  const std::string host = files->HostPath(Archive("Leer")->ID()).value();
  EXPECT_FALSE(Run(Action::RemoveArchiveEntry, At("Leer")).LeftChanged);
  EXPECT_TRUE(Lists(panes->Left(), "Leer"));
  front.Answers = {run::Answer::Yes};
  EXPECT_TRUE(Run(Action::RemoveArchiveEntry, At("Leer")).LeftChanged);
  EXPECT_FALSE(Lists(panes->Left(), "Leer"));
  EXPECT_TRUE(std::filesystem::exists(host));
  EXPECT_EQ(panes->Right().CurrentArchive()->FullPath(), context().session.DefaultArchive->FullPath())
      << "the right pane showed it";
}

TEST_F(StoreCommandsTest, AShortCutIsNoEntryToRepair) {
  test::AddLink(*files, Server, *context().session.DefaultArchive, "Kurz", *Archive("Rechnungen"));
  ASSERT_TRUE(panes->Left().Refresh());
  (void)Run(Action::RemoveArchiveEntry, At("Kurz"));
  EXPECT_EQ(LastBox(), "Hinweis: Archivverknüpfungen werden von dieser Funktion nicht berücksichtigt.");
  EXPECT_TRUE(Lists(panes->Left(), "Kurz"));
}

TEST_F(StoreCommandsTest, RepairsAreTheAdministrators) {
  context().session.Trustees = 0x200 | 0x1000 | 0x2000;
  front.Answers = {run::Answer::Yes};
  for (const Action action :
       {Action::RemoveDoubleEntries, Action::RemoveCircularEntries, Action::RemoveArchiveEntry}) {
    EXPECT_EQ(Run(action, At("Leer")).Dialog, DialogKind::None);
  }
  EXPECT_TRUE(front.Boxes.empty());
  EXPECT_TRUE(Lists(panes->Left(), "Leer"));
}

}  // namespace
}  // namespace velmora::panes
