#include "panes_commands/commands_fixture.h"

namespace velmora::panes {
namespace {

using DispatchTest = CommandsTest;

TEST_F(DispatchTest, NoSecondCommandStartsWhileOneRuns) {
  busy.SetBusy();
  EXPECT_FALSE(Run(Action::Refresh).LeftChanged);
  EXPECT_EQ(Run(Action::Options).Dialog, DialogKind::None);
  EXPECT_FALSE(RunNewArchive(*commands, {"X", ""}).LeftChanged);
  EXPECT_FALSE(RunFilterOk(*commands, true).FilterChanged);
  EXPECT_TRUE(busy.IsBusy());
  busy.ClearBusy();
  EXPECT_TRUE(Run(Action::Refresh).LeftChanged);
  EXPECT_FALSE(busy.IsBusy());
}

TEST_F(DispatchTest, ACommandIsBusyWhileItAsks) {
  bool wasBusy = false;
  BusyState watched([&] { wasBusy = wasBusy || watched.IsBusy(); });
  CommandContext other{context(), *panes, *designs, watched, formTexts, patterns};
  (void)RunAction(other, Action::ResetForm, {});
  EXPECT_TRUE(wasBusy);
  EXPECT_FALSE(watched.IsBusy());
  EXPECT_TRUE(watched.FocusesView());
}

TEST_F(DispatchTest, WhatIsNotBuiltDoesNothing) {
  for (const Action action :
       {Action::CleanMessages, Action::DocumentSystem, Action::ActivateTab3, Action::None}) {
    const Outcome outcome = Run(action, At("Rechnungen"));
    EXPECT_EQ(outcome.Dialog, DialogKind::None);
    EXPECT_FALSE(outcome.LeftChanged || outcome.FilesChanged);
  }
  EXPECT_TRUE(front.Boxes.empty());
}

TEST_F(DispatchTest, TheNotesAreAFileOfTheUserThatStays) {
  const std::string path = JoinPath(context().process.PersonalDir, "Velmora-Notizen.txt");
  (void)Run(Action::NotePad);
  EXPECT_EQ(front.Documents, std::vector<std::string>{path});
  ASSERT_TRUE(files->WriteFile(path, "Zentrale anrufen").has_value());
  (void)Run(Action::NotePad);
  EXPECT_EQ(front.Documents.size(), 2u);
  EXPECT_EQ(files->ReadFile(path).value_or(""), "Zentrale anrufen");
  EXPECT_TRUE(front.Boxes.empty());
}

TEST_F(DispatchTest, NotesThatCannotBeMadeAreTold) {
  context().process.PersonalDir = directory.Path("nirgends") + "\\";
  (void)Run(Action::NotePad);
  EXPECT_TRUE(front.Documents.empty());
  ASSERT_EQ(front.Boxes.size(), 1u);
  EXPECT_EQ(front.Boxes.back().Title, "Notizblock");
}

TEST_F(DispatchTest, PathFieldAndDrivesAreReachedByKeys) {
  EXPECT_TRUE(Run(Action::EditPath).EditPath);
  EXPECT_TRUE(Run(Action::ChooseDrive).ChooseDrive);
  panes->SetViewMode(view_mode::Archive);
  EXPECT_FALSE(Run(Action::ChooseDrive).ChooseDrive) << "there are no drives to see";
}

TEST_F(DispatchTest, TheRightSideTogglesBetweenArchiveAndFiles) {
  ActivateFiles();
  Outcome outcome = Run(Action::ToggleViewMode);
  EXPECT_TRUE(outcome.LayoutChanged && outcome.RightChanged);
  EXPECT_EQ(context().options.ViewMode, 0);
  EXPECT_EQ(panes->ActiveView(), PaneView::RZEBView);
  (void)Run(Action::ToggleViewMode);
  EXPECT_EQ(context().options.ViewMode, 1);
}

TEST_F(DispatchTest, TheRuleViewNeedsItsRight) {
  EXPECT_TRUE(Run(Action::ToggleRuleView).LeftChanged);
  EXPECT_TRUE(panes->Left().IsRuleView());
  (void)Run(Action::ToggleRuleView);
  EXPECT_FALSE(panes->Left().IsRuleView());
  context().session.Trustees &= ~0x2000u;
  EXPECT_FALSE(Run(Action::ToggleRuleView).LeftChanged);
  EXPECT_FALSE(panes->Left().IsRuleView());
}

TEST_F(DispatchTest, PanesAreNotSwappedWithTheFileSystem) {
  ASSERT_TRUE(panes->Right().ShowArchive(std::string_view(Archive("Leer")->ID())));
  EXPECT_FALSE(Run(Action::SwapPanes).LeftChanged);
  EXPECT_EQ(panes->Left().CurrentArchive()->ID(), context().session.DefaultArchive->ID());
  panes->SetViewMode(view_mode::Archive);
  panes->SetActiveView(PaneView::LZEBView);
  const Outcome outcome = Run(Action::SwapPanes);
  EXPECT_TRUE(outcome.LeftChanged && outcome.RightChanged);
  EXPECT_EQ(panes->Left().CurrentArchive()->FullPath(), Archive("Leer")->FullPath());
  EXPECT_TRUE(Run(Action::TakeLeftIntoRight).RightChanged);
  EXPECT_EQ(panes->Right().CurrentArchive()->FullPath(), Archive("Leer")->FullPath());
}

TEST_F(DispatchTest, DirectoryAndArchiveFollowEachOther) {
  Enter("Rechnungen");
  EXPECT_TRUE(Run(Action::ArcDirSync).FilesChanged);
  EXPECT_TRUE(EqualsFold(panes->Files().CurrentPath(), Archive("Rechnungen")->ID() + "\\"));
  ASSERT_TRUE(panes->Left().GoToRoot());
  EXPECT_TRUE(Run(Action::DirArcSync).LeftChanged);
  EXPECT_EQ(panes->Left().List().MessageRows, 2);
  context().session.Trustees &= ~0x10u;
  EXPECT_FALSE(Run(Action::ArcDirSync).FilesChanged);
}

TEST_F(DispatchTest, PlacesAreGoneTo) {
  Enter("Rechnungen");
  EXPECT_TRUE(Run(Action::GoUp).LeftChanged);
  EXPECT_FALSE(Run(Action::GoUp).LeftChanged);  // the root has nothing above it
  EXPECT_TRUE(Run(Action::GoBack).LeftChanged);
  EXPECT_TRUE(Run(Action::GoToRoot).LeftChanged);
  EXPECT_TRUE(Run(Action::GoToUserRoot).LeftChanged);
  EXPECT_EQ(panes->Left().CurrentArchive()->FullPath(),
            (*context().session.Account->GetSpecialArchive(store::special::OwnRoot))->FullPath());
}

TEST_F(DispatchTest, TabGoesToTheOtherSide) {
  EXPECT_TRUE(Run(Action::NextPane).ActiveViewChanged);
  EXPECT_EQ(panes->ActiveView(), PaneView::RFSView);
  (void)Run(Action::NextPane);
  EXPECT_EQ(panes->ActiveView(), PaneView::LZEBView);
}

TEST_F(DispatchTest, SizesOfTheWindowAreAskedFor) {
  EXPECT_TRUE(Run(Action::ResetForm).ResetFormSize);
  EXPECT_EQ(LastBox(), "Fenstergröße: Velmora auf Standardgröße zurücksetzen?");
  front.Answers = {run::Answer::No};
  EXPECT_FALSE(Run(Action::LastSavedSize).RestoreFormSize);
  EXPECT_EQ(LastBox(), "Fenstergröße: Letzte gespeicherte Fenstergröße wieder herstellen?");
}

TEST_F(DispatchTest, HelpIsTheManualIfItIsThere) {
  (void)Run(Action::Help);
  EXPECT_EQ(front.Boxes.back().Title, "Hilfe");
  std::filesystem::create_directories(directory.HostPath("program/Handbuch"));
  directory.WriteHostFile("program/Handbuch/index.html", "x");
  (void)Run(Action::Help);
  ASSERT_EQ(front.Documents.size(), 1u);
  EXPECT_TRUE(front.Documents[0].ends_with("\\Handbuch\\index.html"));
}

TEST_F(DispatchTest, DialogsAreLeftToTheWindow) {
  EXPECT_EQ(Run(Action::About).Dialog, DialogKind::About);
  EXPECT_EQ(Run(Action::SystemInformation).Dialog, DialogKind::SystemInformation);
  EXPECT_EQ(Run(Action::ShowArchiveTree).Dialog, DialogKind::ArchiveTree);
}

TEST_F(DispatchTest, HidingIsToggledByPane) {
  context().options.SizeCheck = 1;
  Enter("Rechnungen");
  EXPECT_EQ(panes->Left().List().MessageRows, 0);
  EXPECT_TRUE(Run(Action::ToggleHiding).LeftChanged);
  EXPECT_EQ(panes->Left().List().MessageRows, 2);
  context().options.SizeCheck = 0;
  EXPECT_FALSE(Run(Action::ToggleHiding).LeftChanged);
}

TEST_F(DispatchTest, TheSituationIsWhatTheWindowShows) {
  Situation situation = SituationOf(*commands, At("Rechnungen"));
  EXPECT_EQ(situation.Row, RowKind::Archive);
  EXPECT_FALSE(situation.IsTrash || situation.IsShortCut || situation.IsBusy);
  EXPECT_TRUE(situation.ShowsFiles && situation.UserRights.IsAdministrator);
  ActivateFiles();
  EXPECT_EQ(SituationOf(*commands, {0, {}}).Row, RowKind::DirBack);
  EXPECT_EQ(SituationOf(*commands, {999, {}}).Row, RowKind::None);
  EXPECT_EQ(SituationOf(*commands, {}).Row, RowKind::None);
}

TEST_F(DispatchTest, TheTrashOfAUserIsKnown) {
  const auto own = context().session.Account->GetSpecialArchive(store::special::OwnRoot);
  ASSERT_TRUE(panes->Left().ShowArchive(std::string_view((*own)->ID() + "\\system")));
  bool found = false;
  for (std::size_t row = 0; row < panes->Left().RowCount(); ++row) {
    const Situation situation = SituationOf(*commands, {row, {}});
    found = found || (situation.IsTrash && situation.IsInUserRoot);
  }
  EXPECT_TRUE(found);
}

TEST_F(DispatchTest, OutcomesAdd) {
  Outcome first;
  first.LeftChanged = true;
  first.CurrentRow = 1;
  Outcome second;
  second.FilesChanged = true;
  second.CurrentRow = 2;
  second.Dialog = DialogKind::About;
  first.Add(std::move(second));
  EXPECT_TRUE(first.LeftChanged && first.FilesChanged);
  EXPECT_EQ(first.CurrentRow, 2u);
  EXPECT_EQ(first.Dialog, DialogKind::About);
  first.Add({});
  EXPECT_EQ(first.CurrentRow, 2u);
  EXPECT_EQ(first.Dialog, DialogKind::About);
}

}  // namespace
}  // namespace velmora::panes
