#include <chrono>
#include <thread>

#include "base/paths.h"
#include "panes_commands/commands_fixture.h"
#include "store/special_archives.h"

namespace velmora::panes {
namespace {

using RowCommandsTest = CommandsTest;

TEST_F(RowCommandsTest, EnterOpensAnArchiveAndGoesUpAgain) {
  const Outcome in = Run(Action::Open, At("Rechnungen"));
  EXPECT_TRUE(in.LeftChanged);
  EXPECT_EQ(panes->Left().List().MessageRows, 2);
  const Outcome up = Run(Action::Open, {0, {}});
  EXPECT_EQ(panes->Left().Name(*up.CurrentRow), "Rechnungen");  // the cursor stands where it came from
}

TEST_F(RowCommandsTest, EnterAndF3ShowAMessage) {
  Enter("Rechnungen");
  const auto key = panes->Left().Message(RowNamed("Angebot"))->RecNo;
  for (const Action action : {Action::Open, Action::ShowMessage}) {
    const Outcome outcome = Run(action, At("Angebot"));
    ASSERT_TRUE(outcome.Message.has_value());
    EXPECT_EQ(outcome.Message->Key, key);
    EXPECT_EQ(outcome.Message->Archive->FullPath(), Archive("Rechnungen")->FullPath());
  }
}

TEST_F(RowCommandsTest, F3OnAnArchiveDoesNothing) {
  const Outcome outcome = Run(Action::ShowMessage, At("Rechnungen"));
  EXPECT_FALSE(outcome.Message || outcome.LeftChanged);
}

TEST_F(RowCommandsTest, FilesOpenWithTheDesktop) {
  directory.WriteHostFile("target/a.txt", "a");
  std::filesystem::create_directory(directory.HostPath("target/Ordner"));
  ASSERT_TRUE(panes->Files().Refresh());
  ActivateFiles();
  (void)Run(Action::Open, At("a.txt"));
  (void)Run(Action::OpenFile, At("a.txt"));
  (void)Run(Action::OpenFile, At("Ordner"));
  EXPECT_EQ(front.Documents,
            (std::vector<std::string>{directory.Path("target\\a.txt"), directory.Path("target\\a.txt")}));
  EXPECT_TRUE(Run(Action::Open, At("Ordner")).FilesChanged);
}

TEST_F(RowCommandsTest, TheSelectionFlipsAndMovesOn) {
  Enter("Rechnungen");
  const Outcome first = Run(Action::FlipSelection, {1, {}});
  EXPECT_EQ(*first.Selection, (SelectionSet{false, true, false}));
  EXPECT_EQ(first.CurrentRow, 2u);
  const Outcome second = Run(Action::FlipSelection, {2, *first.Selection});
  EXPECT_EQ(*second.Selection, (SelectionSet{false, true, true}));
  EXPECT_EQ(second.CurrentRow, 2u);  // the end of the list
  // The way up is never part of a selection.
  EXPECT_EQ(*Run(Action::FlipSelection, {0, {}}).Selection, (SelectionSet{false, false, false}));
}

TEST_F(RowCommandsTest, AllNoneAndTheOthers) {
  Enter("Rechnungen");
  EXPECT_EQ(*Run(Action::SelectAll).Selection, (SelectionSet{false, true, true}));
  EXPECT_EQ(*Run(Action::ClearSelection).Selection, (SelectionSet{false, false, false}));
  EXPECT_EQ(*Run(Action::NegateSelection, {std::nullopt, {false, true, false}}).Selection,
            (SelectionSet{false, false, true}));
}

TEST_F(RowCommandsTest, APatternIsAskedForByView) {
  EXPECT_EQ(Run(Action::ExtendSelection).PatternAction, SelectionAction::ExtendMessages);
  EXPECT_EQ(Run(Action::ReduceSelection).Dialog, DialogKind::Pattern);
  ActivateFiles();
  EXPECT_EQ(Run(Action::ReduceSelection).PatternAction, SelectionAction::ReduceFiles);
}

TEST_F(RowCommandsTest, APatternExtendsAndReducesWhatItMatches) {
  Enter("Rechnungen");
  const Outcome more = RunPattern(*commands, SelectionAction::ExtendMessages, "*gebot", {});
  EXPECT_EQ(CountSelected(*more.Selection), 1u);
  const Outcome less = RunPattern(*commands, SelectionAction::ReduceMessages, "a*", {{}, *more.Selection});
  EXPECT_EQ(CountSelected(*less.Selection), 0u);
  directory.WriteHostFile("target/a.txt", "a");
  directory.WriteHostFile("target/b.txt", "b");
  ASSERT_TRUE(panes->Files().Refresh());
  ActivateFiles();
  const Outcome filesOutcome = RunPattern(*commands, SelectionAction::ExtendFiles, "b*", {});
  EXPECT_EQ(panes->Files().Name(*filesOutcome.CurrentRow), "b.txt");  // the view scrolls there
}

TEST_F(RowCommandsTest, TheSizeOfARowIsShown) {
  EXPECT_TRUE(Run(Action::RowSize, At("Rechnungen")).LeftChanged);
  EXPECT_EQ(panes->Left().Text(RowNamed("Rechnungen"), 1), "0 Arc(s)/ 2 Msg(s)");
  Enter("Rechnungen");
  EXPECT_FALSE(Run(Action::RowSize, At("Angebot")).LeftChanged);
}

TEST_F(RowCommandsTest, ThePhysicalDirectoryComesUpOnTheRight) {
  panes->SetViewMode(view_mode::Archive);
  panes->SetActiveView(PaneView::LZEBView);
  const std::string id = Archive("Rechnungen")->ID();
  const Outcome outcome = Run(Action::ShowPhysical, At("Rechnungen"));
  EXPECT_TRUE(outcome.LayoutChanged && outcome.FilesChanged && outcome.ActiveViewChanged);
  EXPECT_EQ(panes->ActiveView(), PaneView::RFSView);
  EXPECT_EQ(panes->Files().CurrentPath(), AddBackslash(id));
}

TEST_F(RowCommandsTest, ThePhysicalFileIsUnderTheCursor) {
  Enter("Rechnungen");
  const Outcome outcome = Run(Action::ShowPhysicalFile, At("Angebot"));
  ASSERT_TRUE(outcome.CurrentRow.has_value());
  EXPECT_TRUE(panes->Files().Name(*outcome.CurrentRow).ends_with(".001"));
}

TEST_F(RowCommandsTest, PhysicalThingsAreTheAdministrators) {
  context().session.Trustees = 0x200 | 0x1000 | 0x2000;
  EXPECT_FALSE(Run(Action::ShowPhysical, At("Rechnungen")).FilesChanged);
}

TEST_F(RowCommandsTest, FromADirectoryOfTheStoreToItsArchiveAndFromAFileToItsEntry) {
  const std::string id = Archive("Rechnungen")->ID();
  ASSERT_TRUE(panes->Files().ShowDirectory(DirectoryOf(id)));
  ActivateFiles();
  EXPECT_TRUE(Run(Action::ShowArchiveOfDirectory, At(FileNameOf(id))).LeftChanged);
  EXPECT_EQ(panes->Left().List().MessageRows, 2);
  ActivateFiles();
  ASSERT_TRUE(panes->Files().ShowDirectory(id));
  for (std::size_t row = 0; row < panes->Files().RowCount(); ++row) {
    if (!panes->Files().Name(row).ends_with(".001")) continue;
    ActivateFiles();
    const Outcome outcome = Run(Action::ShowEntryOfFile, {row, {}});
    ASSERT_TRUE(outcome.CurrentRow.has_value()) << LastBox();
    EXPECT_NE(panes->Left().Message(*outcome.CurrentRow), nullptr);
  }
  EXPECT_EQ(LastBox(), "");
}

TEST_F(RowCommandsTest, TheArchivesOfAUserOpenFromTheList) {
  front.Inputs = {"Otto Ohne"};
  const Outcome outcome = Run(Action::UserArchives);
  EXPECT_TRUE(outcome.LeftChanged) << LastBox();
  const std::string id = panes->Left().CurrentArchive()->ID();
  EXPECT_TRUE(store::IsUserArchive(*context().session.Account, id)) << id;
  front.Inputs = {"Niemand", std::nullopt};
  EXPECT_FALSE(Run(Action::UserArchives).LeftChanged);
  EXPECT_FALSE(Run(Action::UserArchives).LeftChanged);
}

TEST_F(RowCommandsTest, TheExternalProgramGetsThePathsOfThisHost) {
  const std::string script = directory.HostPath("show.sh");
  directory.WriteHostFile("show.sh",
                          "#!/bin/sh\nprintf '%s\\n' \"$@\" > \"$0.part\" && mv \"$0.part\" \"$0.out\"\n");
  std::filesystem::permissions(script, std::filesystem::perms::owner_all);
  ASSERT_TRUE(panes->Left().ShowArchive(std::string_view(Archive("Rechnungen")->ID())));
  context().options.ExternalApplication = "\"" + directory.Path("show.sh") + "\" %L --rechts=%r";
  (void)Run(Action::ExternalApplication);
  for (int i = 0; i < 500 && !std::filesystem::exists(script + ".out"); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  EXPECT_EQ(directory.ReadHostFile("show.sh.out"), files->HostPath(Archive("Rechnungen")->ID()).value() +
                                                       "\n--rechts=" + directory.HostPath("target") + "\n");
}

TEST_F(RowCommandsTest, AnExternalProgramThatIsMissingIsNotReported) {
  context().options.ExternalApplication = "c:\\windows\\explorer.exe";
  (void)Run(Action::ExternalApplication);
  EXPECT_TRUE(front.Boxes.empty());
}

}  // namespace
}  // namespace velmora::panes
