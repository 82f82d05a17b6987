#include "base/paths.h"
#include "mailarchive/export_run.h"
#include "panes_commands/commands_fixture.h"
#include "startup/store_objects.h"
#include "store/archive_files.h"
#include "store/archive_record.h"

namespace velmora::panes {
namespace {

class RenameTest : public CommandsTest {
 protected:
  Outcome Rename(std::string_view name, std::string_view newName) {
    return RunRename(*commands, RowNamed(name), newName);
  }
  // A link record to an archive in the root of the store, as the server writes them.
  void AddLink(const std::string& name, const std::string& target) {
    const std::string parent = context().session.DefaultArchive->ID();
    const std::string list = JoinPath(parent, store::archive_file::List);
    const std::string content = files->ReadFile(list).value();
    const auto link = store::DirRecord::Make(target, name);
    ASSERT_TRUE(link.has_value());
    ASSERT_TRUE(store::ReplaceArchiveList(*files, parent, content + std::string(link->Bytes())));
    ASSERT_TRUE(panes->RefreshAll());
  }
};

TEST_F(RenameTest, TheKeyAsksForTheLabel) {
  EXPECT_TRUE(Run(Action::Rename, At("Rechnungen")).EditLabel);
  Enter("Rechnungen");
  EXPECT_FALSE(Run(Action::Rename, {0, {}}).EditLabel);
}

TEST_F(RenameTest, AnArchiveGetsItsNewName) {
  const Outcome outcome = Rename("Rechnungen", " Abrechnung ");
  EXPECT_TRUE(outcome.LeftChanged);
  ASSERT_TRUE(outcome.CurrentRow.has_value());
  EXPECT_EQ(panes->Left().Name(*outcome.CurrentRow), "Abrechnung");
  EXPECT_EQ(*Archive("Abrechnung")->MessageCount(), 2);
}

TEST_F(RenameTest, AMessageGetsItsNewSubject) {
  Enter("Rechnungen");
  const Outcome outcome = Rename("Angebot", "Zusage");
  ASSERT_TRUE(outcome.CurrentRow.has_value());
  EXPECT_EQ(panes->Left().Name(*outcome.CurrentRow), "Zusage");
  EXPECT_EQ(FindByDisplayName(panes->Left(), "angebot"), -1);
  // It stands in the store, not only in the list.
  const auto* const row = panes->Left().Message(*outcome.CurrentRow);
  const auto item = Archive("Rechnungen")->GetEntry(row->RecNo);
  EXPECT_EQ(store::FieldText(*(*item)->Fields().Get(store::tag::Subject)), "Zusage");
}

TEST_F(RenameTest, ARuleIsCutAtThirtyCharacters) {
  const auto archive = Archive("Rechnungen");
  const auto rule = archive->Rules().Add("Regel");
  ASSERT_TRUE(rule.has_value() && (*rule)->Update());
  Enter("Rechnungen");
  ASSERT_TRUE(panes->Left().SetRuleView(true));
  const std::string name(29, 'x');
  const Outcome outcome = Rename("Regel", name + "äö");
  ASSERT_TRUE(outcome.CurrentRow.has_value());
  EXPECT_EQ((*archive->Rules().Item(0))->Data().Name, name + "ä");
}

TEST_F(RenameTest, ARuleThatHasMovedMeanwhileIsLeftAlone) {
  const auto archive = context().session.DefaultArchive;
  for (const char* name : {"Erste", "Zweite"}) test::AddRule(*archive, name);
  ASSERT_TRUE(panes->Left().SetRuleView(true));
  // Somebody else deletes the first one: another rule stands at its place.
  ASSERT_TRUE((*Archive(archive->FullPath())->Rules().Item(0))->Delete());
  Rename("Erste", "Neu");
  EXPECT_EQ(test::RuleNames(*Archive(archive->FullPath())), std::vector<std::string>{"Zweite"});
  EXPECT_NE(LastBox().find("An dieser Stelle steht inzwischen die Regel \"Zweite\""), std::string::npos);
}

TEST_F(RenameTest, AShortCutIsItsRecordAndItsTargetKeepsItsName) {
  const auto target = Archive("Rechnungen")->CreateSubArchive("Ziel");
  ASSERT_TRUE(target.has_value());
  AddLink("Verweis", (*target)->ID());
  const std::size_t row = RowNamed("Verweis");
  ASSERT_TRUE(panes->Left().Archive(row)->IsShortCut);
  const Outcome outcome = RunRename(*commands, row, "Hinweis");
  ASSERT_TRUE(outcome.CurrentRow.has_value()) << LastBox();
  EXPECT_EQ(panes->Left().Name(*outcome.CurrentRow), "Hinweis");
  EXPECT_TRUE(panes->Left().Archive(*outcome.CurrentRow)->IsShortCut);
  EXPECT_EQ(*(*context().session.Account->GetArchive((*target)->ID()))->DisplayName(), "Ziel");
}

TEST_F(RenameTest, TheSameNameAndNoneChangeNothing) {
  EXPECT_FALSE(Rename("Rechnungen", "Rechnungen").LeftChanged);
  EXPECT_FALSE(Rename("Rechnungen", "  ").LeftChanged);
  Enter("Rechnungen");
  EXPECT_FALSE(RunRename(*commands, 0, "hinauf").LeftChanged);
  EXPECT_FALSE(RunRename(*commands, 999, "nirgends").LeftChanged);
}

TEST_F(RenameTest, WhatTheStoreRefusesIsToldAndLogged) {
  const auto root = context().session.Account->GetSpecialArchive(store::special::UserRoots);
  ASSERT_TRUE(root.has_value());
  const std::string name = *(*root)->DisplayName();
  const Outcome outcome = Rename(name, "Anders");
  EXPECT_TRUE(outcome.ErrorLogChanged);
  EXPECT_EQ(front.Boxes.back().Title, "Fehler");
  EXPECT_GE(FindByDisplayName(panes->Left(), ToLower(name)), 0);
}

// --- Files and directories. ---

class RenameFileTest : public RenameTest {
 protected:
  RenameFileTest() {
    directory.WriteHostFile("target/a.txt", "a");
    directory.WriteHostFile("target/b.txt", "b");
    std::filesystem::create_directory(directory.HostPath("target/Ordner"));
    ActivateFiles();
    EXPECT_TRUE(panes->Files().Refresh());
  }
};

TEST_F(RenameFileTest, AFileIsRenamedAndKeepsTheCursor) {
  const Outcome outcome = Rename("a.txt", "C.txt");
  EXPECT_TRUE(Exists("C.txt"));
  EXPECT_FALSE(Exists("a.txt"));
  ASSERT_TRUE(outcome.CurrentRow.has_value());
  EXPECT_EQ(panes->Files().Name(*outcome.CurrentRow), "C.txt");
}

TEST_F(RenameFileTest, OnlyTheCaseMayChange) {
  (void)Rename("a.txt", "A.TXT");
  EXPECT_TRUE(Exists("A.TXT"));
  EXPECT_TRUE(front.Boxes.empty());
}

TEST_F(RenameFileTest, AnExistingTargetIsAskedAndKeptWithoutAYes) {
  (void)Rename("a.txt", "B.txt");
  EXPECT_EQ(front.Boxes.back().Title, "Umbenennen");
  EXPECT_EQ(front.Boxes.back().Text, directory.Path("target\\B.txt") + " existiert bereits. Überschreiben ?");
  EXPECT_EQ(directory.ReadHostFile("target/b.txt"), "b");
  EXPECT_EQ(directory.ReadHostFile("target/a.txt"), "a");
}

TEST_F(RenameFileTest, AYesOverwritesAndLeavesNothingBehind) {
  front.Answers = {run::Answer::Yes};
  (void)Rename("a.txt", "b.txt");
  EXPECT_EQ(directory.ReadHostFile("target/b.txt"), "a");
  EXPECT_FALSE(Exists("a.txt"));
  EXPECT_EQ(panes->Files().List().Files, 1);
}

TEST_F(RenameFileTest, ANameThatLeadsElsewhereIsRefused) {
  for (const std::string_view name : {"..\\x.txt", "Ordner/x.txt", "c:x", ".."}) {
    (void)Rename("a.txt", name);
    EXPECT_EQ(LastBox(),
              "Fehler: Unzulässiger Verzeichnisname oder ein gleichnamiges Verzeichnis existiert bereits.");
  }
  EXPECT_TRUE(Exists("a.txt"));
}

TEST_F(RenameFileTest, ADirectoryIsRenamedButNeverOverANother) {
  std::filesystem::create_directory(directory.HostPath("target/Zwei"));
  (void)Rename("Ordner", "Zwei");
  EXPECT_EQ(LastBox(),
            "Fehler: Unzulässiger Verzeichnisname oder ein gleichnamiges Verzeichnis existiert bereits.");
  EXPECT_TRUE(Exists("Ordner"));
  (void)Rename("Ordner", "Drei");
  EXPECT_TRUE(Exists("Drei"));
}

TEST_F(RenameFileTest, ADirectoryOfTheStoreIsAskedFor) {
  const std::string id = Archive("Leer")->ID();
  ASSERT_TRUE(panes->Files().ShowDirectory(StripBackslash(DirectoryOf(id))));
  const std::string name(FileNameOf(id));
  (void)Rename(name, "ANDERS");
  EXPECT_EQ(LastBox(), "Umbenennen: Das Verzeichnis\r\n" + JoinPath(StripBackslash(DirectoryOf(id)), name) +
                           "\r\nist als Leer in das ZEB integriert. Trotzdem umbenennen ?");
  EXPECT_TRUE(files->FolderExists(id));
}

TEST_F(RenameFileTest, APageOfAMailArchiveTakesItsPartsAlong) {
  panes->SetActiveView(PaneView::LZEBView);
  const auto request = CopyMoveDialog(*Run(Action::Copy, At("Rechnungen")).Export).Ok(front.Set().prompts);
  (void)RunCopyMove(*commands, *request);
  ASSERT_TRUE(panes->Files().ShowDirectory(directory.Path("target\\Rechnungen")));
  ActivateFiles();
  (void)Rename("Angebot.htm", "Zusage.htm");
  EXPECT_TRUE(Exists("Rechnungen/Zusage.htm"));
  EXPECT_TRUE(Exists("Rechnungen/Zusage.add"));
  EXPECT_TRUE(Exists("Rechnungen/Eml/Zusage.eml"));
  EXPECT_FALSE(Exists("Rechnungen/Angebot.add"));
  // A taken name leaves everything as it was: a page without its descriptor would be lost to the index.
  (void)Rename("Zusage.htm", "Bestellung.htm");
  EXPECT_EQ(front.Boxes.back().Title, "Fehler");
  EXPECT_TRUE(Exists("Rechnungen/Zusage.htm"));
}

}  // namespace
}  // namespace velmora::panes
