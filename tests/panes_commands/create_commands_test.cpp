#include "base/paths.h"
#include "panes_commands/commands_fixture.h"

namespace velmora::panes {
namespace {

using CreateTest = CommandsTest;

TEST_F(CreateTest, ANewDirectoryIsMadeAndUnderTheCursor) {
  ActivateFiles();
  front.Inputs = {"Neu"};
  const Outcome outcome = Run(Action::Create);
  EXPECT_TRUE(Exists("Neu"));
  EXPECT_TRUE(outcome.FilesChanged);
  ASSERT_TRUE(outcome.CurrentRow.has_value());
  EXPECT_EQ(panes->Files().Name(*outcome.CurrentRow), "Neu");
}

TEST_F(CreateTest, AnEmptyAnswerOrNoneStops) {
  ActivateFiles();
  front.Inputs = {"", "  ", std::nullopt};
  for (int i = 0; i < 3; ++i) EXPECT_FALSE(Run(Action::NewDirectory).FilesChanged);
  EXPECT_TRUE(front.Boxes.empty());
}

TEST_F(CreateTest, ADirectoryThatCannotBeMadeIsTold) {
  ActivateFiles();
  std::filesystem::create_directory(directory.HostPath("target/da"));
  for (const std::string name : {"da", "a\\b", "..", "x:y"}) {
    front.Inputs = {name};
    EXPECT_FALSE(Run(Action::NewDirectory).FilesChanged);
    EXPECT_EQ(LastBox(), "Fehler: Fehler bei Anlegen des Verzeichnisses " + name);
  }
}

TEST_F(CreateTest, ANewArchiveIsMadeAndUnderTheCursor) {
  EXPECT_EQ(Run(Action::Create).Dialog, DialogKind::NewArchive);
  const Outcome outcome = RunNewArchive(*commands, {"Verträge", "VERTR"});
  ASSERT_TRUE(outcome.CurrentRow.has_value());
  EXPECT_TRUE(outcome.LeftChanged);
  EXPECT_FALSE(outcome.RightChanged);  // the file system stands there
  EXPECT_EQ(panes->Left().Name(*outcome.CurrentRow), "Verträge");
  EXPECT_TRUE(EqualsFold(FileNameOf(panes->Left().Tag(*outcome.CurrentRow)), "VERTR"));
}

TEST_F(CreateTest, TheSameArchiveOnBothSidesShowsItTwice) {
  panes->SetViewMode(view_mode::Archive);
  panes->SetActiveView(PaneView::LZEBView);
  EXPECT_TRUE(RunNewArchive(*commands, {"Verträge", ""}).RightChanged);
  EXPECT_GE(FindByDisplayName(panes->Right(), "verträge"), 0);
}

TEST_F(CreateTest, ATakenDirectoryNamesItsHolder) {
  (void)RunNewArchive(*commands, {"Verträge", "VERTR"});
  for (const NewArchiveRequest& request :
       {NewArchiveRequest{"Andere", "vertr"}, NewArchiveRequest{"Andere{VERTR}", ""}}) {
    const Outcome outcome = RunNewArchive(*commands, request);
    EXPECT_EQ(LastBox(), "Fehler: Das Archiv\r\nVerträge\r\nbelegt bereits das angebene Verzeichnis.");
    EXPECT_FALSE(outcome.CurrentRow.has_value());
  }
  EXPECT_EQ(FindByDisplayName(panes->Left(), "andere"), -1);
}

TEST_F(CreateTest, AnArchiveThatCannotBeMadeIsTold) {
  const Outcome outcome = RunNewArchive(*commands, {"Zu lang", std::string(300, 'x')});
  if (!outcome.CurrentRow) {
    EXPECT_EQ(LastBox(), "Fehler: Fehler bei Anlegen des Archives Zu lang");
  }
  std::filesystem::permissions(files->HostPath(Archive("Leer")->ID()).value(),
                               std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
  Enter("Leer");
  EXPECT_TRUE(RunNewArchive(*commands, {"Drin", ""}).ErrorLogChanged);
  EXPECT_EQ(LastBox(), "Fehler: Fehler bei Anlegen des Archives Drin");
  EXPECT_NE(Log().find("DvISE-Error "), std::string::npos);
}

TEST_F(CreateTest, ArchivesAreNotMadeInTheFileView) {
  ActivateFiles();
  EXPECT_EQ(Run(Action::NewArchive).Dialog, DialogKind::None);
  EXPECT_FALSE(RunNewArchive(*commands, {"X", ""}).LeftChanged);
}

}  // namespace
}  // namespace velmora::panes
