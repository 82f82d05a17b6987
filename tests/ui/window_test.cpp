// The main window as a person meets it.

#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QSplitter>
#include <QToolButton>

#include "panes/commands/key_table.h"
#include "ui/key_text.h"
#include "ui_fixture.h"

namespace velmora::ui {
namespace {

using panes::PaneView;

TEST_F(WindowTest, StartsOnTheStoreAndSaysSo) {
  MainWindow& main = OpenWindow();
  EXPECT_EQ(main.objectName(), "FrmMain");
  EXPECT_TRUE(main.windowTitle().startsWith("Velmora 1.0 - Anna Admin"));
  EXPECT_EQ(main.Status().Text(StatusPanel::State), "Bereit");
  EXPECT_EQ(main.Status().Text(StatusPanel::Left), "0 Items");
  EXPECT_EQ(main.Status().Text(StatusPanel::Mode), "Admin");
  EXPECT_GE(RowOf(Left(), "System"), 0);
}

TEST_F(WindowTest, EveryControlHasItsNameAndAnAccessibleOne) {
  MainWindow& main = OpenWindow();
  for (const char* name : {"LZEBView", "RZEBView", "RFSView", "FullPathLZEB", "FullPathRZEB", "FullPathFS",
                           "DrvBox", "DriveBar", "FilterWarning", "KeyRow"}) {
    EXPECT_FALSE(Find<QWidget>(main, name).accessibleName().isEmpty()) << name;
  }
  for (const panes::Command& command : panes::Commands()) {
    EXPECT_NE(main.findChild<QAction*>(ToQt(command.Id)), nullptr) << command.Id;
  }
  for (const QAbstractButton* button : main.findChildren<QAbstractButton*>()) {
    if (button->objectName().startsWith("qt_") || button->objectName().isEmpty()) continue;
    EXPECT_FALSE(button->accessibleName().isEmpty()) << button->objectName().toStdString();
  }
}

TEST_F(WindowTest, MenusOpenByTheirMnemonics) {
  OpenWindow();
  Left().setFocus();
  QTest::keyClick(&Left(), Qt::Key_B, Qt::AltModifier);
  Settle();
  ASSERT_NE(QApplication::activePopupWidget(), nullptr);
  EXPECT_EQ(QApplication::activePopupWidget()->objectName(), "MnCommands");
  QApplication::activePopupWidget()->close();
}

TEST_F(WindowTest, NoTwoVisibleMenusShareAMnemonic) {
  MainWindow& main = OpenWindow();
  QSet<QChar> seen;
  for (const QAction* menu : main.menuBar()->actions()) {
    const qsizetype mark = menu->text().indexOf('&');
    ASSERT_GE(mark, 0) << menu->text().toStdString();
    const QChar letter = menu->text().at(mark + 1).toLower();
    EXPECT_FALSE(seen.contains(letter)) << menu->text().toStdString();
    seen.insert(letter);
  }
}

// What the table of keys says is what the toolkit says of the same key, so that every one of them works.
TEST_F(WindowTest, EveryKeyOfTheTableIsReadAsItIsWritten) {
  for (const panes::KeyBinding& binding : panes::Keys()) {
    const QKeySequence sequence = QKeySequence::fromString(ToQt(binding.Key), QKeySequence::PortableText);
    ASSERT_EQ(sequence.count(), 1) << binding.Key;
    const QKeyEvent event(QEvent::KeyPress, sequence[0].key(), sequence[0].keyboardModifiers());
    EXPECT_EQ(KeyText(event), binding.Key);
  }
}

TEST_F(WindowTest, ACharacterThatNeedsShiftOnThisKeyboardIsStillItsKey) {
  const QKeyEvent slash(QEvent::KeyPress, Qt::Key_Slash, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(KeyText(slash), "Ctrl+/");
  const QKeyEvent enter(QEvent::KeyPress, Qt::Key_Enter, Qt::KeypadModifier);
  EXPECT_EQ(KeyText(enter), "Enter");
  const QKeyEvent letter(QEvent::KeyPress, Qt::Key_A, Qt::ShiftModifier);
  EXPECT_EQ(KeyText(letter), "Shift+A");
}

TEST_F(WindowTest, EnterGoesDownAndBackspaceComesBackToTheRow) {
  OpenWindow();
  PutCursor(Left(), "System");
  PressKey(Left(), Qt::Key_Return);
  EXPECT_TRUE(window->Widget(PaneView::LZEBView).Path().text().endsWith("/System"));
  EXPECT_EQ(Cell(Left(), 0), "[..]");
  PressKey(Left(), Qt::Key_Backspace);
  EXPECT_EQ(Left().currentIndex().data().toString(), "System");
}

TEST_F(WindowTest, TheHistoryGoesBackAndForward) {
  OpenWindow();
  PutCursor(Left(), "System");
  PressKey(Left(), Qt::Key_Return);
  PathField& path = window->Widget(PaneView::LZEBView).Path();
  const QString below = path.text();
  PressKey(Left(), Qt::Key_Left, Qt::AltModifier);
  EXPECT_NE(path.text(), below);
  PressKey(Left(), Qt::Key_Right, Qt::AltModifier);
  EXPECT_EQ(path.text(), below);
}

TEST_F(WindowTest, TabGoesToTheOtherPaneAndItsPathStandsOut) {
  MainWindow& main = OpenWindow();
  Left().setFocus();
  main.SetActiveView(PaneView::LZEBView);
  EXPECT_TRUE(main.Widget(PaneView::LZEBView).Path().IsActive());
  PressKey(Left(), Qt::Key_Tab);
  EXPECT_FALSE(main.Widget(PaneView::LZEBView).Path().IsActive());
  EXPECT_TRUE(main.Widget(PaneView::RFSView).Path().IsActive());
  PressKey(Files(), Qt::Key_Tab);
  EXPECT_TRUE(main.Widget(PaneView::LZEBView).Path().IsActive());
}

TEST_F(WindowTest, InsertFlipsAndGoesOnAndNeverSelectsTheWayUp) {
  OnSession = [this] { context().session.LeftArchive = MakeArchiveWithMails("Viele", 3); };
  OpenWindow();
  Left().setFocus();
  Left().SetCursor(0);
  ASSERT_EQ(Cell(Left(), 0), "[..]");
  PressKey(Left(), Qt::Key_Insert);
  PressKey(Left(), Qt::Key_Insert);
  EXPECT_EQ(Left().SelectedRows(), 1U);
  EXPECT_EQ(Left().currentIndex().row(), 2);
  PressKey(Left(), Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(Left().SelectedRows(), 3U);
  EXPECT_EQ(window->Status().Text(StatusPanel::Left), "3/3");
  PressKey(Left(), Qt::Key_A, Qt::ShiftModifier);
  EXPECT_EQ(Left().SelectedRows(), 0U);
  PressKey(Left(), Qt::Key_Asterisk, Qt::KeypadModifier);
  EXPECT_EQ(Left().SelectedRows(), 3U);
}

TEST_F(WindowTest, RowsAreSelectedByAPattern) {
  OnSession = [this] { context().session.LeftArchive = MakeArchiveWithMails("Viele", 12); };
  OpenWindow();
  Left().setFocus();
  Left().SetCursor(0);
  DialogDriver driver("ItemSelection", [](QWidget& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Message Auswahl erweitern");
    Find<QLineEdit>(dialog, "InpPattern").setText("betreff 1?");
    Press(dialog, "OkButton");
  });
  PressKey(Left(), Qt::Key_Plus, Qt::KeypadModifier);
  EXPECT_TRUE(driver.Done());
  EXPECT_EQ(Left().SelectedRows(), 3U);
}

TEST_F(WindowTest, EveryColumnSortsAndAnotherClickTurnsIt) {
  OnSession = [this] { context().session.LeftArchive = MakeArchiveWithMails("Viele", 3); };
  OpenWindow();
  for (int column = 0; column < Left().model()->columnCount(); ++column) {
    const auto index = static_cast<std::size_t>(column);
    Left().ClickedHeader(index);
    const panes::SortMarker first = window->Commands().Panes.Left().Marker(index);
    Left().ClickedHeader(index);
    const panes::SortMarker second = window->Commands().Panes.Left().Marker(index);
    EXPECT_NE(first, panes::SortMarker::ArrowNo) << column;
    EXPECT_NE(second, panes::SortMarker::ArrowNo) << column;
    EXPECT_NE(first, second) << column;
    EXPECT_EQ(Left().header()->sortIndicatorSection(), column);
  }
  Left().ClickedHeader(0);
  EXPECT_EQ(Cell(Left(), 1), "Betreff 1");
  Left().ClickedHeader(0);
  EXPECT_EQ(Cell(Left(), 1), "Betreff 3");
}

TEST_F(WindowTest, TypingGoesToTheRowThatBeginsSo) {
  OpenWindow();
  Left().setFocus();
  Left().SetCursor(0);
  QTest::keyClicks(&Left(), "syst");
  EXPECT_EQ(Left().currentIndex().data().toString(), "System");
}

TEST_F(WindowTest, ATypedPathIsCompletedAndShown) {
  MainWindow& main = OpenWindow();
  PathField& path = main.Widget(PaneView::LZEBView).Path();
  EXPECT_TRUE(path.Complete("/Archive/Sys").contains("/Archive/System"));
  EXPECT_TRUE(path.Complete("ohne Trenner").isEmpty());
  path.setFocus();
  path.setText("/archive/system");
  QTest::keyClick(&path, Qt::Key_Return);
  Settle();
  EXPECT_EQ(path.text(), "/Archive/System");
}

TEST_F(WindowTest, AHostPathIsTakenInTheFileView) {
  std::filesystem::create_directories(directory.HostPath("target/Ordner & Co"));
  MainWindow& main = OpenWindow();
  PathField& path = main.Widget(PaneView::RFSView).Path();
  path.setFocus();
  path.setText(ToQt(directory.HostPath("target")));
  QTest::keyClick(&path, Qt::Key_Return);
  Settle();
  EXPECT_TRUE(path.text().endsWith("\\target\\"));
  EXPECT_GE(RowOf(Files(), "Ordner & Co"), 0);
}

TEST_F(WindowTest, TheRightSideShowsASecondArchiveOrFiles) {
  MainWindow& main = OpenWindow();
  EXPECT_TRUE(Files().isVisibleTo(&main));
  main.findChild<QAction*>("ZEBFSView")->trigger();
  Settle();
  EXPECT_FALSE(Files().isVisibleTo(&main));
  EXPECT_TRUE(List(PaneView::RZEBView).isVisibleTo(&main));
  EXPECT_GE(RowOf(List(PaneView::RZEBView), "System"), 0);
}

TEST_F(WindowTest, AnOrdinaryUserSeesNoAdministratorsCommands) {
  login = "otto";
  MainWindow& main = OpenWindow();
  Settle();
  for (const char* id : {"MnChangeServer", "MnSiteInformation", "ArcDirSync", "MnUserList"}) {
    EXPECT_FALSE(main.findChild<QAction*>(id)->isVisible()) << id;
  }
  EXPECT_NE(main.Status().Text(StatusPanel::Mode), "Admin");
}

TEST_F(WindowTest, NothingRunsWhileAnotherCommandDoes) {
  MainWindow& main = OpenWindow();
  PutCursor(Left(), "System");
  const QString before = main.Widget(PaneView::LZEBView).Path().text();
  main.Commands().Busy.SetBusy();
  EXPECT_EQ(main.Status().Text(StatusPanel::State), "Bitte warten");
  PressKey(Left(), Qt::Key_Return);
  EXPECT_EQ(main.Widget(PaneView::LZEBView).Path().text(), before);
  EXPECT_FALSE(main.findChild<QMenu*>("MnCommands")->menuAction()->isEnabled());
  main.Commands().Busy.ClearBusy();
  Settle();
  EXPECT_TRUE(main.findChild<QMenu*>("MnCommands")->menuAction()->isEnabled());
  EXPECT_EQ(main.Status().Text(StatusPanel::State), "Bereit");
}

TEST_F(WindowTest, TheFilterWarningBlinksWhileAFilterIsInForce) {
  OnSession = [this] { context().options.DvItemFilter = 0x37DFF; };
  MainWindow& main = OpenWindow();
  auto& warning = Find<QToolButton>(main, "FilterWarning");
  EXPECT_TRUE(warning.isVisibleTo(&main));
  QTest::mouseDClick(&warning, Qt::LeftButton);
  Settle();
  EXPECT_EQ(context().options.DvItemFilter, settings::NoItemFilter);
  EXPECT_FALSE(warning.isVisibleTo(&main));
}

TEST_F(WindowTest, TheWindowIsClosedOnlyAfterTheQuestion) {
  MainWindow& main = OpenWindow();
  front.Answers = {run::Answer::No};
  main.close();
  EXPECT_FALSE(finished.has_value());
  EXPECT_TRUE(main.isVisible());
  main.close();  // beyond the script the default answer: yes
  ASSERT_TRUE(finished.has_value());
  EXPECT_EQ(front.Boxes.back().Title, "Ende");
  EXPECT_TRUE(finished->ExitStatus.has_value());
}

TEST_F(WindowTest, WidthsOfColumnsAreKeptForEachView) {
  OpenWindow();
  Left().header()->resizeSection(0, 123);
  PressKey(Left(), Qt::Key_R, Qt::ControlModifier);
  EXPECT_EQ(Left().header()->sectionSize(0), 123);
}

TEST_F(WindowTest, WidthsOfColumnsAreKeptOverTheEnd) {
  OpenWindow();
  Left().header()->resizeSection(0, 123);
  Files().header()->resizeSection(1, 77);
  startup::SaveSettings(context(), true);
  window.reset();
  OpenWindow();
  EXPECT_EQ(Left().header()->sectionSize(0), 123);
  EXPECT_EQ(Files().header()->sectionSize(1), 77);
  EXPECT_NE(List(PaneView::RZEBView).header()->sectionSize(0), 123);
}

TEST_F(WindowTest, WhatTheSettingsHoldOfTheWindowIsKeptOverTheEnd) {
  MainWindow& main = OpenWindow();
  main.resize(700, 560);
  Find<QSplitter>(main, "Splitter").setSizes({300, 390});
  main.findChild<QAction*>("ZEBFSView")->trigger();
  Left().ClickedHeader(1);
  main.SetActiveView(PaneView::RZEBView);
  Settle();
  PressKey(List(PaneView::RZEBView), Qt::Key_R, Qt::ControlModifier);
  const QList<int> panes = Find<QSplitter>(main, "Splitter").sizes();
  startup::SaveSettings(context(), true);
  window.reset();
  MainWindow& again = OpenWindow();
  EXPECT_EQ(again.size(), QSize(700, 560));
  EXPECT_NEAR(Find<QSplitter>(again, "Splitter").sizes()[0], panes[0], 1);
  EXPECT_FALSE(Files().isVisibleTo(&again));
  EXPECT_EQ(&again.ActiveWidget(), &again.Widget(PaneView::RZEBView));
  EXPECT_EQ(Left().header()->sortIndicatorSection(), 1);
}

// Whoever edits the file, or a disk that loses bytes: the window comes up all the same.
TEST_F(WindowTest, SettingsThatMakeNoSenseFallBack) {
  std::filesystem::create_directories(directory.HostPath("config"));
  directory.WriteHostFile("config/settings.toml",
                          "[Information]\nMajorVersion = 1\nMinorVersion = 0\n[GlobalSettings]\n"
                          "ViewMode = \"quer\"\nFrmWidth = -1\nFrmHeight = 2147483647\nFrmTop = 9000000\n"
                          "WindowsState = 17\nVwWidth = -400\nDnWidth = 3.5\nLastActiveView = 99\n"
                          "LZEBColumnWidths = \"x,-7,99999999999,,\"\nFSColumnWidths = 12\n"
                          "[Options]\nLZEBSortingMode = 4711\nFSSortingMode = -1\nSizeCheck = -5\n"
                          "LZEBViewMode = 99\nDesignPath = 7\nLastUserRights = [1, 2]\n");
  MainWindow& main = OpenWindow();
  EXPECT_TRUE(main.isVisible());
  const QRect screen = main.screen()->availableGeometry();
  EXPECT_TRUE(screen.contains(main.geometry().topLeft()));
  EXPECT_LE(main.width(), screen.width());
  EXPECT_LE(main.height(), screen.height());
  EXPECT_GE(RowOf(Left(), "System"), 0);
  for (int column = 0; column + 1 < Left().model()->columnCount(); ++column) {
    EXPECT_GT(Left().header()->sectionSize(column), 20) << column;
    EXPECT_LT(Left().header()->sectionSize(column), 500) << column;
  }
  PutCursor(Left(), "System");
  PressKey(Left(), Qt::Key_Return);
  EXPECT_EQ(Cell(Left(), 0), "[..]");
}

TEST_F(WindowTest, ABoxStandsBeforeTheListsAsTheyAre) {
  MainWindow& main = OpenWindow();
  ASSERT_TRUE(main.Commands().Panes.Left().ShowArchive("/Archive/System"));
  EXPECT_TRUE(main.Widget(PaneView::LZEBView).IsStale());
  QDialog box(&main);
  box.open();
  Settle();
  EXPECT_FALSE(main.Widget(PaneView::LZEBView).IsStale());
  EXPECT_EQ(Cell(Left(), 0), "[..]");
}

TEST_F(WindowTest, TheGeometryGoesIntoTheSettings) {
  MainWindow& main = OpenWindow();
  main.resize(1000, 700);
  Settle();
  PressKey(Left(), Qt::Key_R, Qt::ControlModifier);
  EXPECT_EQ(context().options.FrmWidth, 15000);
  EXPECT_EQ(context().options.FrmHeight, 10500);
}

TEST_F(WindowTest, AMessageOpensInTheViewer) {
  OnSession = [this] { context().session.LeftArchive = MakeArchiveWithMails("Viele", 1); };
  OpenWindow();
  PutCursor(Left(), "Betreff 1");
  DialogDriver driver("MessageViewer", [](QWidget& viewer) {
    EXPECT_EQ(viewer.windowTitle(), "Betreff 1");
    viewer.close();
  });
  PressKey(Left(), Qt::Key_F3);
  EXPECT_TRUE(driver.Done());
}

TEST_F(WindowTest, F3OnAnArchiveDoesNothing) {
  OpenWindow();
  PutCursor(Left(), "System");
  PressKey(Left(), Qt::Key_F3);
  EXPECT_TRUE(front.Boxes.empty());
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(WindowTest, ToolTipsOfRowsAreNoMarkup) {
  OnSession = [this] {
    const auto archive = MakeArchive("Bunt");
    AddMail(*archive, "<img src=http://example.org/x.png>");
    context().session.LeftArchive = archive;
  };
  OpenWindow();
  const QString tip = Left().model()->index(1, 0).data(Qt::ToolTipRole).toString();
  EXPECT_FALSE(tip.contains("<img"));
  EXPECT_TRUE(tip.contains("&lt;img"));
}

TEST_F(WindowTest, AHandedOverLineIsShown) {
  MainWindow& main = OpenWindow();
  directory.WriteHostFile("hand.txt", "-c /Archive/System\r\n");
  const std::string target = context().process.TempDir + "VelmoraDisplayParms.zeb";
  ASSERT_TRUE(files->CopyFile(directory.Path("hand.txt"), target).has_value());
  QElapsedTimer waited;
  waited.start();
  while (!main.Widget(PaneView::LZEBView).Path().text().endsWith("/System") && waited.elapsed() < 5000) {
    QTest::qWait(20);
  }
  EXPECT_TRUE(main.Widget(PaneView::LZEBView).Path().text().endsWith("/System"));
  EXPECT_FALSE(files->FileExists(target));
}

}  // namespace
}  // namespace velmora::ui
