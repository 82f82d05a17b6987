// Copying, moving, deleting and repairing in the store, as a person does it: the keys, the dialogs, the
// lists.

#include <QCheckBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>

#include "startup/store_objects.h"
#include "ui/message_viewer.h"
#include "ui_fixture.h"
#include "usable_by_all.h"

namespace velmora::ui {
namespace {

using panes::Action;
using panes::PaneView;

// "Quelle" (three mails and "Unter") and "Ziel" at the root on the left, "Ziel" on the right.
class StoreDialogsTest : public WindowTest {
 protected:
  void OpenPanes() {
    OnSession = [this] {
      source = MakeArchiveWithMails("Quelle", 3);
      target = MakeArchive("Ziel");
      EXPECT_TRUE(source->CreateSubArchive("Unter").has_value());
      if (Prepare) Prepare();
      context().session.RightArchive = target;
      context().process.CurrentPath = directory.Path("target") + "\\";
      context().options.ViewMode = panes::view_mode::Archive;
      context().options.LastActiveView = 0;
    };
    OpenWindow();
    PutCursor(Left(), cursor);
  }
  PaneList& Right() { return List(PaneView::RZEBView); }
  std::shared_ptr<store::DvArchive> Archive(std::string_view path) {
    const auto archive = context().session.Account->GetArchive(path);
    return archive ? *archive : nullptr;
  }
  static QPushButton& Ok(QWidget& dialog) { return Find<QPushButton>(dialog, "OkButton"); }
  static QCheckBox& Box(QWidget& dialog, const char* name) { return Find<QCheckBox>(dialog, name); }

  std::shared_ptr<store::DvArchive> source, target;
  std::function<void()> Prepare;
  QString cursor = "Quelle";  // on the left
};

TEST_F(StoreDialogsTest, F5CopiesAnArchiveIntoTheOtherPane) {
  OpenPanes();
  DialogDriver driver("ZEBCopyMoveDialogBox", [](QWidget& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Kopieren");
    EXPECT_EQ(Ok(dialog).text(), "Kopieren");
    EXPECT_TRUE(Ok(dialog).isDefault());
    EXPECT_TRUE(Find<QLineEdit>(dialog, "CMDst").text().endsWith("/Ziel"));
    EXPECT_TRUE(Find<QLabel>(dialog, "CMSrc").text().startsWith("1 Archiv(e) kopieren von"));
    EXPECT_FALSE(Box(dialog, "EnDelArchives").isEnabled()) << "that is for moves";
    ExpectUsableByAll(dialog);
    QTest::keyClick(&Find<QLineEdit>(dialog, "CMDst"), Qt::Key_Return);
  });
  PressKey(Left(), Qt::Key_F5);
  EXPECT_TRUE(driver.Done());
  EXPECT_GE(RowOf(Right(), "Quelle"), 0);
  EXPECT_EQ(Left().currentIndex().data().toString(), "Quelle") << "the cursor stays";
  EXPECT_EQ(front.Boxes.back().Title, "Beendet");
  EXPECT_FALSE(window->Commands().Busy.IsBusy());
  EXPECT_EQ(window->Status().Text(StatusPanel::State), "Bereit");
}

TEST_F(StoreDialogsTest, F6MovesFromTheRightToTheLeft) {
  cursor = "[..]";
  Prepare = [this] {
    context().session.LeftArchive = target;
    target = source;
  };
  OpenPanes();
  PutCursor(Right(), "Betreff 2");
  Right().SetSelection({false, false, true, true, false});  // the first two mails
  DialogDriver driver("ZEBCopyMoveDialogBox", [](QWidget& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Verschieben");
    EXPECT_TRUE(Box(dialog, "EnDelArchives").isEnabled());
    Press(dialog, "OkButton");
  });
  PressKey(Right(), Qt::Key_F6);
  EXPECT_TRUE(driver.Done());
  EXPECT_EQ(Right().model()->rowCount(), 3);
  EXPECT_EQ(Right().SelectedRows(), 0U);
  EXPECT_TRUE(Right().currentIndex().isValid());
  EXPECT_EQ(window->Commands().Panes.ActiveView(), PaneView::RZEBView);
  EXPECT_EQ(*Archive("Ziel")->MessageCount(), 2);
}

TEST_F(StoreDialogsTest, EscAndAWrongTargetCopyNothing) {
  OpenPanes();
  DialogDriver driver("ZEBCopyMoveDialogBox", [this](QWidget& dialog) {
    auto& path = Find<QLineEdit>(dialog, "CMDst");
    path.clear();
    QTest::keyClicks(&path, "/Nirgends");
    Press(dialog, "OkButton");
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(front.Boxes.back().Title, "Falsches Zielarchiv");
    front.Inputs = {std::string(source->FullPath())};  // the archive that the chooser gives
    Press(dialog, "SrcArc");
    EXPECT_EQ(FromQt(path.text()), source->FullPath());
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  PressKey(Left(), Qt::Key_F5);
  EXPECT_TRUE(driver.Done());
  EXPECT_EQ(Right().model()->rowCount(), 1);
  EXPECT_EQ(front.ProgressTitles.size(), 0U);
}

TEST_F(StoreDialogsTest, ACancelInTheMiddleKeepsWhatIsDone) {
  Prepare = [this] {
    for (int i = 0; i < 30; ++i) AddMail(*source, "Weitere " + std::to_string(i));
  };
  OpenPanes();
  front.CancelAtPump = front.Pumps + 12;
  DialogDriver driver("ZEBCopyMoveDialogBox", [](QWidget& dialog) { Press(dialog, "OkButton"); });
  PressKey(Left(), Qt::Key_F5);
  EXPECT_TRUE(driver.Done());
  const auto copied = Archive("Ziel/Quelle");
  ASSERT_NE(copied, nullptr);
  EXPECT_GT(*copied->MessageCount(), 0);
  EXPECT_LT(*copied->MessageCount(), 33);
  EXPECT_EQ(*Archive("Quelle")->MessageCount(), 33);
  EXPECT_NE(Log().find("Abbruch durch Benutzer"), std::string::npos);
  EXPECT_TRUE(window->findChild<QAction*>("tbrErrLog") != nullptr);
  Settle();
  EXPECT_TRUE(window->findChild<QAction*>("tbrErrLog")->isEnabled());
}

TEST_F(StoreDialogsTest, TheBoxesOfADeletionFollowEachOther) {
  OpenPanes();
  DialogDriver driver("DelZEBDialogBox", [](QWidget& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Löschen");
    EXPECT_EQ(Ok(dialog).text(), "Löschen");
    ExpectUsableByAll(dialog);
    QCheckBox& structure = Box(dialog, "EnDelArchives");
    if (!structure.isChecked()) structure.click();
    EXPECT_TRUE(Box(dialog, "EnPhysErase").isEnabled());
    structure.click();
    EXPECT_FALSE(Box(dialog, "EnPhysErase").isEnabled());
    Press(dialog, "CancelButton");
  });
  PressKey(Left(), Qt::Key_F8);
  EXPECT_TRUE(driver.Done());
  EXPECT_GE(RowOf(Left(), "Quelle"), 0);
}

TEST_F(StoreDialogsTest, WithAFilterNothingIsErasedByFiles) {
  OpenPanes();
  context().options.DvItemFilter = 0x37DFF;
  DialogDriver driver("DelZEBDialogBox", [](QWidget& dialog) {
    EXPECT_FALSE(Box(dialog, "EnPhysErase").isEnabled());
    Press(dialog, "CancelButton");
  });
  PressKey(Left(), Qt::Key_Delete);
  EXPECT_TRUE(driver.Done());
}

TEST_F(StoreDialogsTest, LinkedArchivesAreAskedForAndNoKeepsThem) {
  Prepare = [this] { test::AddLink(*files, Server, *source, "Kurz", *target); };
  OpenPanes();
  AddMail(*target, "Bleibt");
  front.Answers = {run::Answer::Cancel, run::Answer::No};
  DialogDriver driver("DelZEBDialogBox", [this](QWidget& dialog) {
    if (!Box(dialog, "EnDelArchives").isChecked()) Press(dialog, "EnDelArchives");
    Press(dialog, "EnLinkedArcs");
    Press(dialog, "OkButton");
    EXPECT_TRUE(dialog.isVisible()) << "a cancel leads back to the dialog";
    EXPECT_EQ(front.Boxes.back().Title, "Warnung");
    EXPECT_TRUE(front.ProgressTitles.empty());
    Press(dialog, "OkButton");
  });
  PressKey(Left(), Qt::Key_F8);
  EXPECT_TRUE(driver.Done());
  EXPECT_LT(RowOf(Left(), "Quelle"), 0);
  EXPECT_EQ(*Archive("Ziel")->MessageCount(), 1);
  EXPECT_TRUE(Left().currentIndex().isValid()) << "the cursor stands on the next row";
}

TEST_F(StoreDialogsTest, APaneOnADeletedArchiveGoesUp) {
  Prepare = [this] { target = Archive("Quelle/Unter"); };
  OpenPanes();
  EXPECT_TRUE(window->Widget(PaneView::RZEBView).Path().text().endsWith("Unter"));
  DialogDriver driver("DelZEBDialogBox", [](QWidget& dialog) {
    if (!Box(dialog, "EnDelArchives").isChecked()) Press(dialog, "EnDelArchives");
    Press(dialog, "OkButton");
  });
  PressKey(Left(), Qt::Key_F8);
  EXPECT_TRUE(driver.Done());
  EXPECT_EQ(window->Commands().Panes.Right().CurrentArchive()->FullPath(),
            context().session.DefaultArchive->FullPath());
  EXPECT_GE(RowOf(Right(), "Ziel"), 0);
  EXPECT_TRUE(front.Boxes.empty());
}

TEST_F(StoreDialogsTest, RulesAreCopiedAndDeleted) {
  cursor = "Mahnungen";
  Prepare = [this] {
    test::AddRule(*source, "Angebote");
    test::AddRule(*source, "Mahnungen");
    context().session.LeftArchive = source;
    context().options.LZEBViewModeRouting = 1;
  };
  OpenPanes();
  DialogDriver copy("RoutCopyMoveDialogBox", [](QWidget& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Kopieren");
    EXPECT_TRUE(Find<QLabel>(dialog, "CMSrc").text().startsWith("1 Regel(n) kopieren von"));
    EXPECT_FALSE(Box(dialog, "EnCreateArcs").isEnabled());
    Press(dialog, "EnUpdRouteArcs");
    EXPECT_TRUE(Box(dialog, "EnCreateArcs").isEnabled());
    ExpectUsableByAll(dialog);
    Press(dialog, "OkButton");
  });
  PressKey(Left(), Qt::Key_F5);
  EXPECT_TRUE(copy.Done());
  EXPECT_EQ(test::RuleNames(*Archive("Ziel")), std::vector<std::string>{"Mahnungen"});
  PutCursor(Left(), "Mahnungen");
  DialogDriver gone("DelRoutDialogBox", [](QWidget& dialog) {
    EXPECT_TRUE(Find<QPlainTextEdit>(dialog, "CMSrc").toPlainText().endsWith("\nMahnungen"));
    ExpectUsableByAll(dialog);
    Press(dialog, "OkButton");
  });
  PressKey(Left(), Qt::Key_F8);
  EXPECT_TRUE(gone.Done());
  EXPECT_LT(RowOf(Left(), "Mahnungen"), 0);
  EXPECT_GE(RowOf(Left(), "Angebote"), 0);
}

TEST_F(StoreDialogsTest, F8DeletesFiles) {
  directory.WriteHostFile("target/a.txt", "x");
  directory.WriteHostFile("target/b.txt", "x");
  OpenPanes();
  window->RunAction(Action::ToggleViewMode);
  PutCursor(Files(), "a.txt");
  DialogDriver driver("DelFSDialogBox", [](QWidget& dialog) {
    EXPECT_FALSE(Box(dialog, "EnMakeIdx").isEnabled()) << "that is for mail archives";
    ExpectUsableByAll(dialog);
    Press(dialog, "OkButton");
  });
  PressKey(Files(), Qt::Key_F8);
  EXPECT_TRUE(driver.Done());
  EXPECT_LT(RowOf(Files(), "a.txt"), 0);
  EXPECT_EQ(Files().currentIndex().data().toString(), "b.txt");
  EXPECT_FALSE(std::filesystem::exists(directory.HostPath("target/a.txt")));
}

TEST_F(StoreDialogsTest, DoubledEntriesAreShownAndRemoved) {
  Prepare = [this] { test::AddRecord(*files, *context().session.DefaultArchive, *source, "Quelle"); };
  OpenPanes();
  DialogDriver driver("DelDblArcEntries", [this](QWidget& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Doppelte Archiveinträge löschen");
    EXPECT_EQ(FromQt(Find<QLabel>(dialog, "SrcArc").text()), source->FullPath());
    EXPECT_EQ(Find<QLabel>(dialog, "DblCnt").text(), "2");
    ExpectUsableByAll(dialog);
    Press(dialog, "OkButton");
  });
  window->RunAction(Action::RemoveDoubleEntries);
  EXPECT_TRUE(driver.Done());
  const int first = RowOf(Left(), "Quelle");
  ASSERT_GE(first, 0);
  EXPECT_NE(Cell(Left(), first + 1), "Quelle");
}

TEST_F(StoreDialogsTest, CircularEntriesAreRemovedAfterAYes) {
  Prepare = [this] { test::AddRecord(*files, *Archive("Quelle/Unter"), *source, "Zurück"); };
  OpenPanes();
  front.Answers = {run::Answer::No, run::Answer::Yes};
  DialogDriver driver("DelCircArcEntries", [](QWidget& dialog) {
    EXPECT_TRUE(Find<QPlainTextEdit>(dialog, "ListCircRef").toPlainText().startsWith("+Parent:"));
    EXPECT_EQ(Find<QLabel>(dialog, "DblCnt").text(), "1");
    ExpectUsableByAll(dialog);
    Press(dialog, "OkButton");
    EXPECT_TRUE(dialog.isVisible()) << "a no leads back to the dialog";
    Press(dialog, "OkButton");
    EXPECT_FALSE(dialog.isVisible());
  });
  window->RunAction(Action::RemoveCircularEntries);
  EXPECT_TRUE(driver.Done());
  EXPECT_EQ(Archive("Quelle/Unter")->SubArchives()->size(), 0U);
  EXPECT_FALSE(window->Commands().Busy.IsBusy());
}

// Another program may delete what is just being read.
TEST_F(StoreDialogsTest, AViewerOfADeletedMessageLives) {
  OpenPanes();
  directory.WriteHostFile("anhang.eml",
                          "From: max@example.org\r\nTo: anna@example.org\r\nSubject: Anhang\r\nMIME-Version: "
                          "1.0\r\nContent-Type: multipart/mixed; boundary=\"b\"\r\n\r\n--b\r\nContent-Type: "
                          "text/plain\r\n\r\nText\r\n--b\r\nContent-Type: text/plain\r\nContent-Disposition: "
                          "attachment; filename=\"a.txt\"\r\n\r\nInhalt\r\n--b--\r\n");
  const auto mail = context().session.Account->DVMailItemFromEml(directory.Path("anhang.eml"), *target);
  ASSERT_TRUE(mail.has_value());
  const MessageViewer::Parts parts = {*files, front.Set(), context().process.TempDir};
  const auto viewer = MessageViewer::Open(parts, {target, (*mail)->Key()}, nullptr);
  ASSERT_NE(viewer, nullptr);
  viewer->show();
  operations::StoreDeleteOptions structure;
  structure.EnDelArchives = true;
  (void)panes::RunStoreDeletion(
      window->Commands(), {structure,
                           {context().session.DefaultArchive,
                            {{store::Selection::Object::Kind::Archive, 0, target->ID(), false, "Ziel"}}}});
  EXPECT_EQ(Archive("Ziel"), nullptr);
  auto& attachments = Find<QListWidget>(*viewer, "AttachmentList");
  ASSERT_EQ(attachments.count(), 1);
  attachments.setCurrentRow(0);
  front.Inputs = {directory.Path("target\\gerettet.txt")};
  Press(*viewer, "OpenAttachment");
  Press(*viewer, "SaveAttachment");
  EXPECT_TRUE(viewer->isVisible());
  EXPECT_TRUE(front.Documents.empty()) << "there is nothing to open";
  EXPECT_EQ(front.Boxes.size(), 2U) << "each is told";
}

}  // namespace
}  // namespace velmora::ui
