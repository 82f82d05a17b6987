// Deleting: archives and messages, files, rules.
#include "dialogs_fixture.h"
#include "mailarchive/format/marker.h"
#include "panes/dialogs/del_fs_dialog.h"
#include "panes/dialogs/del_rout_dialog.h"
#include "panes/dialogs/del_zeb_dialog.h"

namespace velmora::panes {
namespace {

constexpr std::string_view NothingText =
    "Es sind keine Objekte zum Löschen markiert oder \r\nder Benutzer hat keine Berechtigung zum Löschen.";

class DeletionDialogsTest : public DialogsTest {
 protected:
  DelZEBDialog Dialog() { return DelZEBDialog({options, mayDelete, selection}); }
  DelFSDialog FileDialog() { return DelFSDialog({*files, options, marked, hideHelperFiles}); }

  operations::FileSelection marked{directory.Path(), {{"a.txt", false}, {"b", true}, {"c.txt", false}}};
  bool hideHelperFiles = true;
};

// --- Archives and messages. ---

TEST_F(DeletionDialogsTest, SourceCountsWhatIsMarked) {
  selection.Objects = {{Archive, 0, "a", false}, {Message, 1, "", false}, {Message, 2, "", false}};
  EXPECT_EQ(Dialog().SourceText(), "1 Archiv(e), 2 Message(s) löschen aus\r\n" + inbox.FullPath);
}

TEST_F(DeletionDialogsTest, WithNothingToDeleteTheMessageSaysSo) {
  EXPECT_EQ(Dialog().NothingMarked(), "");
  selection.Objects.clear();
  auto dialog = Dialog();
  EXPECT_FALSE(dialog.Ok(prompts()));
  ASSERT_EQ(front.Boxes.size(), 1u);
  EXPECT_EQ(front.Boxes[0].Title, "Fehler");
  EXPECT_EQ(front.Boxes[0].Text, NothingText);
}

TEST_F(DeletionDialogsTest, ArchivesNeedTheRightMessagesDoNot) {
  mayDelete = false;
  EXPECT_TRUE(Dialog().Ok(prompts()));
  selection.Objects = {{Archive, 0, "a", false}};
  EXPECT_EQ(Dialog().NothingMarked(), NothingText);
  EXPECT_FALSE(Dialog().Ok(prompts()));
}

TEST_F(DeletionDialogsTest, TheStructureNeedsTheRightAndTheSettingIsItsDefault) {
  EXPECT_TRUE(Dialog().IsChecked(DelZEBBox::EnDelArchives));
  options.DeleteArchive = false;
  EXPECT_FALSE(Dialog().IsChecked(DelZEBBox::EnDelArchives));
  EXPECT_TRUE(Dialog().IsEnabled(DelZEBBox::EnDelArchives));
  options.DeleteArchive = true;
  mayDelete = false;
  auto dialog = Dialog();
  EXPECT_FALSE(dialog.IsEnabled(DelZEBBox::EnDelArchives));
  dialog.SetBox(DelZEBBox::EnDelArchives, true);
  EXPECT_FALSE(dialog.Ok(prompts())->Options.EnDelArchives);
}

TEST_F(DeletionDialogsTest, FilesAreErasedOnlyWithTheStructureAndWithoutAFilter) {
  auto dialog = Dialog();
  EXPECT_TRUE(dialog.IsEnabled(DelZEBBox::EnPhysErase));
  EXPECT_FALSE(dialog.IsChecked(DelZEBBox::EnPhysErase));
  dialog.SetBox(DelZEBBox::EnPhysErase, true);
  EXPECT_TRUE(dialog.Ok(prompts())->Options.EnPhysErase);
  dialog.SetBox(DelZEBBox::EnDelArchives, false);
  EXPECT_FALSE(dialog.IsEnabled(DelZEBBox::EnPhysErase));
  EXPECT_FALSE(dialog.Ok(prompts())->Options.EnPhysErase);
  options.DvItemFilter = 0x301FF;
  EXPECT_FALSE(Dialog().IsEnabled(DelZEBBox::EnPhysErase));
  options.DvItemFilter = settings::NoItemFilter;
  options.DvInhibitItems = false;
  EXPECT_FALSE(Dialog().IsEnabled(DelZEBBox::EnPhysErase));
}

TEST_F(DeletionDialogsTest, LinkedArchivesAreAskedFor) {
  const auto answer = [&](run::Answer given) {
    auto dialog = Dialog();
    dialog.SetBox(DelZEBBox::EnLinkedArcs, true);
    front.Answers = {given};
    return dialog.Ok(prompts());
  };
  EXPECT_TRUE(answer(run::Answer::Yes)->Options.EnLinkedArcs);
  EXPECT_FALSE(answer(run::Answer::No)->Options.EnLinkedArcs);
  EXPECT_FALSE(answer(run::Answer::Cancel));
}

TEST_F(DeletionDialogsTest, LinkedArchivesStayWhenNobodyAnswers) {
  auto dialog = Dialog();
  EXPECT_FALSE(dialog.IsChecked(DelZEBBox::EnLinkedArcs));
  ASSERT_TRUE(dialog.Ok(prompts()));
  EXPECT_TRUE(front.Boxes.empty());
  dialog.SetBox(DelZEBBox::EnLinkedArcs, true);
  EXPECT_FALSE(dialog.Ok(prompts())->Options.EnLinkedArcs);
}

TEST_F(DeletionDialogsTest, TheQuestionKeepsItsClosingBracketWithoutAnOpeningOne) {
  auto dialog = Dialog();
  dialog.SetBox(DelZEBBox::EnLinkedArcs, true);
  (void)dialog.Ok(prompts());  // only its question matters
  ASSERT_EQ(front.Boxes.size(), 1u);
  EXPECT_EQ(front.Boxes[0].Title, "Warnung");
  EXPECT_TRUE(front.Boxes[0].IsQuestion);
  EXPECT_EQ(front.Boxes[0].Text,
            "Die Option \"Verknüpfte Archive einbeziehen\" ist aktiviert.\r\n"
            "Sollen die verknüpften Archive wirklich mit gelöscht werden?\r\n"
            "Ja=Löschen inklusive verknüpfter Archive\r\n"
            "Nein=Löschen ohne verknüpfte Archive\r\n"
            "Abbrechen=Abbruch)");
}

// --- Files. ---

TEST_F(DeletionDialogsTest, FilesAndFoldersAreCounted) {
  EXPECT_EQ(FileDialog().SourceText(), "1 Verzeichniss(e), 2 Datei(en) löschen aus\r\n" + directory.Path());
  EXPECT_EQ(FileDialog().NothingMarked(), "");
  marked.Items.clear();
  EXPECT_FALSE(FileDialog().Ok(prompts()));
  EXPECT_EQ(front.Boxes.size(), 1u);
}

TEST_F(DeletionDialogsTest, FoldersGoAsTheSettingSays) {
  EXPECT_TRUE(FileDialog().Ok(prompts())->Options.EnDelDirs);
  options.DeleteFolder = false;
  auto dialog = FileDialog();
  EXPECT_FALSE(dialog.Ok(prompts())->Options.EnDelDirs);
  dialog.SetBox(DelFSBox::EnDelDirs, true);
  EXPECT_TRUE(dialog.Ok(prompts())->Options.EnDelDirs);
}

TEST_F(DeletionDialogsTest, AnIndexIsOfferedOnlyInAMailArchive) {
  auto plain = FileDialog();
  EXPECT_FALSE(plain.IsEnabled(DelFSBox::EnMakeIdx));
  plain.SetBox(DelFSBox::EnMakeIdx, true);
  EXPECT_FALSE(plain.Ok(prompts())->Options.EnMakeIdx);
  ASSERT_TRUE(
      mailarchive::WriteArchiveMarker(*files, directory.Path(), mailarchive::MailArcKind::Sub, {}, true));
  EXPECT_TRUE(FileDialog().Ok(prompts())->Options.EnMakeIdx);
  options.MakeIndex = false;
  EXPECT_TRUE(FileDialog().IsEnabled(DelFSBox::EnMakeIdx));
  EXPECT_FALSE(FileDialog().Ok(prompts())->Options.EnMakeIdx);
}

TEST_F(DeletionDialogsTest, TheRunGetsThePanesViewAndTheSettings) {
  hideHelperFiles = options.DateIndexSortedUp = options.ClearErrorLog = false;
  const auto request = FileDialog().Ok(prompts());
  EXPECT_FALSE(request->Options.HideMailArcHelperFiles);
  EXPECT_FALSE(request->Options.DateIndexSortedUp);
  EXPECT_FALSE(request->Options.ClearErrorLog);
  EXPECT_EQ(request->Selection.Items.size(), 3u);
}

// --- Rules. ---

TEST_F(DeletionDialogsTest, TheMarkedRulesAreListed) {
  const DelRoutDialog dialog(rules, true);
  EXPECT_EQ(dialog.SourceText(),
            "2 Regel(n) löschen aus\r\n" + inbox.FullPath + "\r\nAngebote\r\nRechnungen");
  ASSERT_TRUE(dialog.Ok(prompts()));
  EXPECT_EQ(dialog.Ok(prompts())->Rules.size(), 2u);
}

TEST_F(DeletionDialogsTest, RulesNeedTheRight) {
  EXPECT_FALSE(DelRoutDialog(rules, false).Ok(prompts()));
  EXPECT_EQ(front.Boxes.back().Text, NothingText);
  rules.Rules.clear();
  EXPECT_FALSE(DelRoutDialog(rules, true).Ok(prompts()));
}

}  // namespace
}  // namespace velmora::panes
