// Every key of the table, pressed in a list of the window.

#include <QComboBox>
#include <QLineEdit>
#include <set>

#include "panes/commands/key_table.h"
#include "ui_fixture.h"

namespace velmora::ui {
namespace {

using panes::PaneView;

class KeyTest : public WindowTest {
 protected:
  // The left archive "Viele" with its mails, a directory on the right, the cursor in the left list.
  MainWindow& OpenOnMails(int mails = 2) {
    OnSession = [this, mails] {
      archive = MakeArchiveWithMails("Viele", mails);
      context().session.LeftArchive = archive;
      context().process.CurrentPath = directory.Path("target") + "\\";
      context().options.LastActiveView = 0;
    };
    MainWindow& main = OpenWindow();
    Left().setFocus();
    return main;
  }
  // A key as the table writes it.
  void PressNamed(PaneList& list, const std::string& key) {
    const QKeySequence sequence = QKeySequence::fromString(ToQt(key), QKeySequence::PortableText);
    ASSERT_EQ(sequence.count(), 1) << key;
    PressKey(list, sequence[0].key(), sequence[0].keyboardModifiers());
  }
  // The dialog that a key opens, closed by its button for a cancel.
  bool OpensDialog(const std::string& key, const QString& name, const QString& title = {}) {
    DialogDriver driver(name, [&](QWidget& dialog) {
      if (!title.isEmpty()) {
        EXPECT_EQ(dialog.windowTitle(), title) << key;
      }
      Press(dialog, "CancelButton");
    });
    PressNamed(Left(), key);
    return driver.Done();
  }
  QString PathOf(PaneView view) { return window->Widget(view).Path().text(); }

  std::shared_ptr<store::DvArchive> archive;
};

TEST_F(KeyTest, TabGoesToTheOtherSideAndBack) {
  MainWindow& main = OpenOnMails();
  PressNamed(Left(), "Tab");
  EXPECT_EQ(main.Commands().Panes.ActiveView(), PaneView::RFSView);
  PressNamed(Files(), "Tab");
  EXPECT_EQ(main.Commands().Panes.ActiveView(), PaneView::LZEBView);
}

TEST_F(KeyTest, ReturnAndEnterOpenTheRow) {
  OpenOnMails();
  for (const char* key : {"Return", "Enter"}) {
    PutCursor(Left(), "[..]");
    PressNamed(Left(), key);
    EXPECT_EQ(PathOf(PaneView::LZEBView), "/Archive") << key;
    PutCursor(Left(), "Viele");
    PressNamed(Left(), key);
    EXPECT_EQ(PathOf(PaneView::LZEBView), "/Archive/Viele") << key;
  }
}

TEST_F(KeyTest, SpaceCountsTheRowAndLeavesTheSelection) {
  OpenOnMails();
  PressNamed(Left(), "Backspace");
  PressNamed(Left(), "Ctrl+A");
  const std::size_t selected = Left().SelectedRows();
  ASSERT_GT(selected, 1U);
  PutCursor(Left(), "Viele");
  PressNamed(Left(), "Space");
  EXPECT_EQ(Cell(Left(), RowOf(Left(), "Viele"), 1), "0 Arc(s)/ 2 Msg(s)");
  EXPECT_EQ(Left().SelectedRows(), selected);
  EXPECT_EQ(Left().currentIndex().data().toString(), "Viele");
}

TEST_F(KeyTest, TheNumericKeysSelect) {
  OpenOnMails();
  PutCursor(Left(), "[..]");
  PressNamed(Left(), "Num+*");
  EXPECT_EQ(Left().SelectedRows(), 2U);
  EXPECT_TRUE(OpensDialog("Num+-", "ItemSelection", "Message Auswahl reduzieren"));
  EXPECT_TRUE(OpensDialog("Num++", "ItemSelection", "Message Auswahl erweitern"));
  EXPECT_EQ(Left().SelectedRows(), 2U) << "a cancel leaves the selection";
  PressNamed(Left(), "Shift+A");
  EXPECT_EQ(Left().SelectedRows(), 0U);
  PressNamed(Left(), "Ctrl+A");
  EXPECT_EQ(Left().SelectedRows(), 2U);
  PressNamed(Left(), "Ins");
  EXPECT_EQ(Left().SelectedRows(), 2U) << "the way up stays out";
}

TEST_F(KeyTest, HelpOpensTheManual) {
  std::filesystem::create_directories(directory.HostPath("program/Handbuch"));
  directory.WriteHostFile("program/Handbuch/index.html", "<p>");
  OpenOnMails();
  PressNamed(Left(), "F1");
  ASSERT_EQ(front.Documents.size(), 1U);
  EXPECT_TRUE(front.Documents[0].ends_with("Handbuch\\index.html"));
}

TEST_F(KeyTest, F2EditsTheLabel) {
  OpenOnMails();
  PutCursor(Left(), "Betreff 1");
  PressNamed(Left(), "F2");
  EXPECT_TRUE(Left().IsEditing());
  EXPECT_NE(Left().findChild<QLineEdit*>(), nullptr);
}

TEST_F(KeyTest, F3ShowsTheMessageOrTheFile) {
  directory.WriteHostFile("target/brief.txt", "x");
  OpenOnMails();
  PutCursor(Left(), "Betreff 2");
  DialogDriver driver("MessageViewer", [](QWidget& viewer) { viewer.close(); });
  PressNamed(Left(), "F3");
  EXPECT_TRUE(driver.Done());
  PutCursor(Files(), "brief.txt");
  PressNamed(Files(), "F3");
  EXPECT_EQ(front.Documents, std::vector<std::string>{directory.Path("target\\brief.txt")});
}

TEST_F(KeyTest, F4AndShiftF4ShowDirectoriesOfTheStore) {
  OpenOnMails();
  PressNamed(Left(), "F4");
  EXPECT_TRUE(PathOf(PaneView::RFSView).contains("VIELE", Qt::CaseInsensitive));
  PutCursor(Left(), "Betreff 1");
  PressNamed(Left(), "Shift+F4");
  EXPECT_TRUE(Files().currentIndex().data().toString().endsWith(".001"));
  EXPECT_EQ(window->Commands().Panes.ActiveView(), PaneView::RFSView);
}

TEST_F(KeyTest, TheFunctionKeysOpenTheirDialogs) {
  OpenOnMails();
  PutCursor(Left(), "Betreff 1");
  EXPECT_TRUE(OpensDialog("F5", "CopyMoveDialogBox", "Kopieren"));
  EXPECT_TRUE(OpensDialog("F6", "CopyMoveDialogBox", "Verschieben"));
  EXPECT_TRUE(OpensDialog("F7", "NewArchiveDialog"));
}

TEST_F(KeyTest, F7MakesADirectoryInTheFileView) {
  OpenOnMails();
  window->SetActiveView(PaneView::RFSView);
  Files().setFocus();
  front.Inputs = {"Neu"};
  PressNamed(Files(), "F7");
  EXPECT_EQ(Files().currentIndex().data().toString(), "Neu");
}

TEST_F(KeyTest, F9OpensTheIndexOfTheDirectory) {
  OpenOnMails();
  PressNamed(Left(), "F9");
  ASSERT_EQ(front.Boxes.size(), 1U);
  EXPECT_EQ(front.Boxes[0].Text, "Das aktuelle Verzeichnis hat kein Inhaltsverzeichnis.");
  directory.WriteHostFile("target/index.html", "<p>");
  PressNamed(Left(), "F9");
  EXPECT_EQ(front.Documents.size(), 1U);
}

TEST_F(KeyTest, F12GoesToTheArchivesOfAUser) {
  OpenOnMails();
  front.Inputs = {"Otto Ohne"};
  PressNamed(Left(), "F12");
  EXPECT_TRUE(PathOf(PaneView::LZEBView).endsWith("Otto Ohne")) << PathOf(PaneView::LZEBView).toStdString();
}

TEST_F(KeyTest, PathAndDriveAreReachedWithoutAMouse) {
  MainWindow& main = OpenOnMails();
  PressNamed(Left(), "Ctrl+L");
  PathField& path = main.Widget(PaneView::LZEBView).Path();
  EXPECT_EQ(main.focusWidget(), &path);
  EXPECT_EQ(path.selectedText(), path.text()) << "the first key replaces the path";
  QTest::keyClick(&path, Qt::Key_Escape);
  EXPECT_EQ(main.focusWidget(), &Left());
  PressNamed(Left(), "Ctrl+D");
  auto& box = Find<QComboBox>(main, "DrvBox");
  EXPECT_EQ(main.focusWidget(), &box);
  const QString drive = box.currentText();
  QTest::keyClick(&box, Qt::Key_Down);
  QTest::keyClick(&box, Qt::Key_Escape);
  EXPECT_EQ(main.focusWidget(), &Left());
  EXPECT_EQ(box.currentText(), drive) << "looking at a drive does not choose it";
}

TEST_F(KeyTest, CtrlRListsAnew) {
  OpenOnMails(1);
  AddMail(*archive, "spät");
  EXPECT_LT(RowOf(Left(), "spät"), 0);
  PressNamed(Left(), "Ctrl+R");
  EXPECT_GE(RowOf(Left(), "spät"), 0);
}

TEST_F(KeyTest, ArchivesChangeSidesOnlyWhereBothShowOne) {
  MainWindow& main = OpenOnMails();
  const QString left = PathOf(PaneView::LZEBView);
  for (const char* key : {"Ctrl+U", "Alt+F1", "Alt+F2"}) {
    PressNamed(Left(), key);
    EXPECT_EQ(PathOf(PaneView::LZEBView), left) << key;
  }
  main.findChild<QAction*>("ZEBFSView")->trigger();
  Settle();
  Left().setFocus();
  main.SetActiveView(PaneView::LZEBView);
  const QString right = PathOf(PaneView::RZEBView);
  ASSERT_NE(left, right);
  PressNamed(Left(), "Ctrl+U");
  EXPECT_EQ(PathOf(PaneView::LZEBView), right);
  EXPECT_EQ(PathOf(PaneView::RZEBView), left);
  PressNamed(Left(), "Alt+F1");
  EXPECT_EQ(PathOf(PaneView::LZEBView), left);
  PressNamed(Left(), "Ctrl+\\");
  PressNamed(Left(), "Alt+F2");
  EXPECT_EQ(PathOf(PaneView::RZEBView), PathOf(PaneView::LZEBView));
}

TEST_F(KeyTest, TheRootsAndTheHistoryAreOneKeyAway) {
  OpenOnMails();
  PressNamed(Left(), "Ctrl+\\");
  EXPECT_EQ(PathOf(PaneView::LZEBView), "/Archive");
  PressNamed(Left(), "Alt+\\");
  const QString own = PathOf(PaneView::LZEBView);
  EXPECT_TRUE(own.endsWith("Anna Admin")) << own.toStdString();
  PressNamed(Left(), "Alt+Left");
  EXPECT_EQ(PathOf(PaneView::LZEBView), "/Archive");
  PressNamed(Left(), "Alt+Right");
  EXPECT_EQ(PathOf(PaneView::LZEBView), own);
  PressNamed(Left(), "Backspace");
  EXPECT_TRUE(own.startsWith(PathOf(PaneView::LZEBView)));
}

TEST_F(KeyTest, TheSizeOfTheWindowIsResetAfterAQuestion) {
  OpenOnMails();
  front.Answers = {run::Answer::No};
  PressNamed(Left(), "Ctrl+/");
  ASSERT_EQ(front.Boxes.size(), 1U);
  EXPECT_EQ(front.Boxes[0].Title, "Fenstergröße");
}

TEST_F(KeyTest, AltF4EndsWithoutAQuestion) {
  OpenOnMails();
  PressNamed(Left(), "Alt+F4");
  EXPECT_TRUE(finished.has_value());
  EXPECT_TRUE(front.Boxes.empty());
}

TEST_F(KeyTest, AKeyWhoseCommandIsNotBuiltDoesNothing) {
  OpenOnMails();
  PutCursor(Left(), "Betreff 1");
  const QString place = PathOf(PaneView::LZEBView);
  for (const panes::KeyBinding& binding : panes::Keys()) {
    if (panes::IsBuilt(binding.Runs)) continue;
    PressNamed(Left(), std::string(binding.Key));
    EXPECT_TRUE(front.Boxes.empty()) << binding.Key;
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << binding.Key;
    EXPECT_EQ(PathOf(PaneView::LZEBView), place) << binding.Key;
    EXPECT_EQ(Left().model()->rowCount(), 3) << binding.Key;
  }
}

// In the file view what has nothing to do there does nothing, and says nothing.
TEST_F(KeyTest, CopyAndMoveAreForTheLeftSide) {
  directory.WriteHostFile("target/brief.txt", "x");
  OpenOnMails();
  PutCursor(Files(), "brief.txt");
  window->SetActiveView(PaneView::RFSView);
  for (const char* key : {"F5", "F6"}) {
    PressNamed(Files(), key);
    EXPECT_TRUE(front.Boxes.empty()) << key;
    EXPECT_FALSE(Find<QAbstractButton>(*window, (std::string("Key") + key).c_str()).isEnabled()) << key;
  }
  EXPECT_EQ(window->findChild<QAction*>("tbrCopy")->toolTip(), "Noch nicht verfügbar");
}

}  // namespace
}  // namespace velmora::ui
