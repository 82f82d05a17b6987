// Taking out entries as the commands do, with the dialogs in front.
#include "maintenance/entry_removal.h"

#include "damaged_tree_fixture.h"
#include "panes/dialogs/del_circ_arc_entries_dialog.h"
#include "panes/dialogs/del_dbl_arc_entries_dialog.h"

namespace velmora::maintenance {
namespace {

using panes::DelCircArcEntriesDialog;
using panes::DelDblArcEntriesDialog;
using Box = velmora::test::ScriptedFrontEnd::Box;

class EntryRemovalTest : public DamagedTreeTest {
 protected:
  static panes::ArchiveRow Row(const ArchivePointer& archive, bool isShortCut = false) {
    panes::ArchiveRow row;
    row.ID = archive->ID();
    row.DisplayName = archive->DisplayName().value();
    row.IsShortCut = isShortCut;
    return row;
  }
  auto OpenDoubled(const ArchivePointer& archive, bool isShortCut = false) {
    return DelDblArcEntriesDialog::Open(*run_, *account_, Row(archive, isShortCut));
  }
  auto OpenCircular(const ArchivePointer& archive, bool isShortCut = false) {
    return DelCircArcEntriesDialog::Open(*run_, *account_, Row(archive, isShortCut));
  }
};

// --- One entry. ---

TEST_F(EntryRemovalTest, AnEntryGoesAfterTheQuestionAndItsDirectoryStays) {
  frontEnd_.Answers = {run::Answer::No, run::Answer::Yes};
  const ChosenEntry entry{b_->ID(), "B", false};
  EXPECT_FALSE(DeleteArchiveEntry(*run_, *account_, *common_, entry));
  EXPECT_EQ(Names(common_).back(), "B");
  EXPECT_TRUE(DeleteArchiveEntry(*run_, *account_, *common_, entry));
  EXPECT_EQ(Names(common_).back(), "A");
  EXPECT_TRUE(std::filesystem::exists(HostPath(b_)));
  EXPECT_EQ(frontEnd_.Boxes[1], (Box{"Eintrag löschen",
                                     "Archiveintrag \"B\" wirklich löschen?\r\n"
                                     "(Der Inhalt des Archivverzeichnisses wird nicht verändert)",
                                     true}));
}

TEST_F(EntryRemovalTest, WithoutAnAnswerNothingGoes) {
  EXPECT_FALSE(DeleteArchiveEntry(*run_, *account_, *common_, {b_->ID(), "B", false}));
  EXPECT_EQ(Names(common_).back(), "B");
}

TEST_F(EntryRemovalTest, ShortCutsAreNotForThisFunction) {
  EXPECT_FALSE(DeleteArchiveEntry(*run_, *account_, *common_, {b_->ID(), "B", true}));
  EXPECT_EQ(frontEnd_.Boxes[0],
            (Box{"Hinweis", "Archivverknüpfungen werden von dieser Funktion nicht berücksichtigt.", false}));
}

TEST_F(EntryRemovalTest, AnEntryThatCannotBeFetchedIsToldAndLogged) {
  const std::string id = common_->ID() + "\\NIE";
  EXPECT_FALSE(DeleteArchiveEntry(*run_, *account_, *common_, {id, "Nie", false}));
  EXPECT_EQ(frontEnd_.Boxes[0], (Box{"Fehler", "Fehler beim Zugriff auf den Archiveintrag " + id, false}));
  EXPECT_NE(Log().find("Fehler beim Zugriff auf den Archiveintrag " + id), std::string::npos);
}

TEST_F(EntryRemovalTest, ARecordIsRemovedOnce) {
  const auto record = store::FindArchiveRecord(*files_, common_->ID(), {.Path = b_->ID()}).value();
  EXPECT_TRUE(RemoveArchiveRecord(*run_, common_->ID(), record));
  EXPECT_FALSE(RemoveArchiveRecord(*run_, common_->ID(), record));
  EXPECT_NE(Log().find("Record f\xFCr " + b_->ID() + " in archive.dir nicht gefunden"), std::string::npos);
}

// --- Doubled entries. ---

TEST_F(EntryRemovalTest, AnArchiveWithOneRecordOpensNoDialog) {
  AddLink(common_, "Verweis", a_);
  EXPECT_FALSE(OpenDoubled(a_));
  EXPECT_EQ(
      frontEnd_.Boxes[0],
      (Box{"Kein doppelter Eintrag vorhanden",
           "Das ausgewählte Archiv ist korrekt mit nur einem Eintrag im ZEB-Tree (\"Archive.dir\") notiert.",
           false}));
  EXPECT_FALSE(OpenDoubled(Archive("/Archive")));
}

TEST_F(EntryRemovalTest, OfThreeRecordsTheFirstStays) {
  AddRecord(common_, a_->ID(), "A zwei");
  AddRecord(common_, a_->ID(), "A drei");
  auto dialog = OpenDoubled(a_);
  ASSERT_TRUE(dialog);
  EXPECT_EQ(dialog->SrcArc(), "/Archive/Gemeinsam/A");
  EXPECT_EQ(dialog->DblCnt(), "3");
  EXPECT_TRUE(dialog->Ok());
  // No blank before "aus": the text is the one that administrators know from the manuals.
  EXPECT_EQ(frontEnd_.Boxes[0],
            (Box{"Fertig", "Es wurden 2 Mehrfacheinträgeaus \"Archive.dir\" entfernt.", false}));
  const Texts names = Names(common_);
  EXPECT_EQ(Texts(names.end() - 2, names.end()), (Texts{"A", "B"}));
}

TEST_F(EntryRemovalTest, OneRemovedRecordIsTold) {
  AddRecord(common_, a_->ID(), "A zwei");
  AddLink(common_, "Verweis", a_);
  auto dialog = OpenDoubled(a_);
  ASSERT_TRUE(dialog);
  EXPECT_EQ(dialog->DblCnt(), "2");
  EXPECT_TRUE(dialog->Ok());
  EXPECT_EQ(frontEnd_.Boxes[0].Text, "Es wurden 1 Mehrfacheintragaus \"Archive.dir\" entfernt.");
  EXPECT_EQ(Names(common_).back(), ">Verweis") << "short-cuts are never duplicates";
}

TEST_F(EntryRemovalTest, AShortCutIsTheWrongChoice) {
  AddRecord(common_, a_->ID(), "A zwei");
  AddRecord(a_, common_->ID(), "Kreis");
  EXPECT_FALSE(OpenDoubled(a_, true));
  EXPECT_FALSE(OpenCircular(a_, true));
  ASSERT_EQ(frontEnd_.Boxes.size(), 2u);
  for (const Box& box : frontEnd_.Boxes)
    EXPECT_EQ(box, (Box{"Falsche Auswahl",
                        "Das ausgewählte Archiv ist eine Vernüpfung. Verknüpfungen werden nicht bearbeitet.",
                        false}));
}

TEST_F(EntryRemovalTest, AnArchiveThatIsGoneAtOkEndsWithoutEffect) {
  AddRecord(common_, b_->ID(), "B zwei");
  auto dialog = OpenDoubled(b_);
  ASSERT_TRUE(dialog);
  ASSERT_TRUE(store::ChangeArchiveList(*files_, common_->ID(), [](std::string& records) -> Status {
    records.clear();
    return {};
  }));
  EXPECT_FALSE(dialog->Ok());
  EXPECT_TRUE(frontEnd_.Boxes.empty());
}

// --- Circular entries. ---

TEST_F(EntryRemovalTest, ATreeWithoutCirclesOpensNoDialog) {
  EXPECT_FALSE(OpenCircular(common_));
  EXPECT_EQ(frontEnd_.Waits, (Texts{"Zirkulare Referenzen suchen", "Reportprofil wird generiert"}));
  EXPECT_EQ(frontEnd_.WaitsEnded, 2) << "each has its end";
  EXPECT_EQ(
      frontEnd_.Boxes[0],
      (Box{"Keine zirkularen Referenzen",
           "Das ausgewählte Archiv und alle Unterarchive enthalten keine zirkularen Referenzen.", false}));
}

TEST_F(EntryRemovalTest, CircularEntriesAreReportedAndRemovedAfterTheQuestion) {
  AddRecord(inner_, a_->ID(), "Kreis");
  AddRecord(b_, common_->ID(), "Kreis");
  auto dialog = OpenCircular(common_);
  ASSERT_TRUE(dialog);
  EXPECT_EQ(dialog->SrcArc(), "/Archive/Gemeinsam");
  EXPECT_EQ(dialog->DblCnt(), "2");
  EXPECT_EQ(dialog->ListCircRef(), "+Parent:" + inner_->ID() + "\r\n  ---Child: " + a_->ID() +
                                       "\r\n+Parent:" + b_->ID() + "\r\n  ---Child: " + common_->ID() +
                                       "\r\n");
  EXPECT_EQ(dialog->Ok(), DelCircArcEntriesDialog::End::Stays) << "the default answer is no";
  frontEnd_.Answers = {run::Answer::Yes};
  EXPECT_EQ(dialog->Ok(), DelCircArcEntriesDialog::End::ClosesChanged);
  EXPECT_EQ(
      frontEnd_.Boxes[1],
      (Box{"Löschen", "Alle zirkularen Referenzen im Archiv \r\n/Archive/Gemeinsam\r\nlöschen?", true}));
  EXPECT_EQ(
      frontEnd_.Boxes[2],
      (Box{"Fertig", "Es wurden 2 zirkulare Einträge aus \"Archive.dir\" von\r\n/Archive/Gemeinsam entfernt.",
           false}));
  EXPECT_EQ(Names(inner_), Texts{});
  EXPECT_EQ(Names(b_), Texts{});
}

TEST_F(EntryRemovalTest, AnArchiveThatCannotBeReadAtOkIsTold) {
  AddRecord(b_, b_->ID(), "Kreis");
  auto dialog = OpenCircular(b_);
  ASSERT_TRUE(dialog);
  ASSERT_TRUE(store::ChangeArchiveList(*files_, common_->ID(), [](std::string& records) -> Status {
    records.clear();
    return {};
  }));
  EXPECT_EQ(dialog->Ok(), DelCircArcEntriesDialog::End::Closes);
  EXPECT_EQ(frontEnd_.Boxes[0],
            (Box{"Abbruch",
                 "Das Archiv \r\n/Archive/Gemeinsam/B\r\n ist ein Link oder es liegt ein Zugriffsfehler vor.",
                 false}));
}

}  // namespace
}  // namespace velmora::maintenance
