// What a list shows beside its texts: marks, sizes, the picture of a list that hides entries, the picture of
// the external program.

#include <QHeaderView>
#include <QLabel>
#include <QToolButton>

#include "store/embedded/archive_tree.h"
#include "store/embedded/store_layout.h"
#include "ui/program_icon.h"
#include "ui_fixture.h"

namespace velmora::ui {
namespace {

using panes::PaneView;

class RowDisplayTest : public WindowTest {
 protected:
  static QVariant Data(PaneList& list, const QString& text, int role) {
    return list.model()->index(RowOf(list, text), 0).data(role);
  }
  // Waits for what happens by itself; false when it does not.
  static bool Happens(const std::function<bool()>& what) { return QTest::qWaitFor(what, 5000); }
};

TEST_F(RowDisplayTest, AHiddenArchiveLooksAndSoundsHidden) {
  OnSession = [this] {
    const auto archive = MakeArchive("Geheim");
    ASSERT_TRUE(archive->SetHidden(true).has_value());
    ASSERT_TRUE(archive->Update().has_value());
    (void)MakeArchive("Offen");
  };
  OpenWindow();
  EXPECT_TRUE(Data(Left(), "Geheim", Qt::FontRole).value<QFont>().italic());
  EXPECT_LT(Data(Left(), "Geheim", Qt::ForegroundRole).value<QColor>().alpha(), 255);
  EXPECT_EQ(Data(Left(), "Geheim", Qt::AccessibleTextRole).toString(), "Geheim (versteckt)");
  EXPECT_TRUE(Data(Left(), "Geheim", Qt::ToolTipRole).toString().contains("versteckt"));
  EXPECT_EQ(Data(Left(), "Geheim", Qt::EditRole).toString(), "Geheim") << "the mark is no part of the name";
  EXPECT_FALSE(Data(Left(), "Offen", Qt::FontRole).isValid());
  EXPECT_EQ(Data(Left(), "Offen", Qt::AccessibleTextRole).toString(), "Offen");
  context().options.DisplayHiddenChar = false;
  PressKey(Left(), Qt::Key_R, Qt::ControlModifier);
  EXPECT_FALSE(Data(Left(), "Geheim", Qt::FontRole).isValid());
}

TEST_F(RowDisplayTest, ALinkThatLeadsBackBearsAWarning) {
  OnSession = [this] {
    const auto archive = MakeArchive("Kreis");
    store::embedded::ArchiveTree tree(*files, store::embedded::StoreLayout(Server).ArchiveRoot());
    ASSERT_TRUE(tree.AddLink(archive->ID(), "hinauf", context().session.DefaultArchive->ID()).has_value());
    const auto other = MakeArchive("Ziel");
    ASSERT_TRUE(tree.AddLink(archive->ID(), "hinüber", other->ID()).has_value());
    context().session.LeftArchive = archive;
  };
  OpenWindow();
  EXPECT_EQ(Data(Left(), "hinauf", Qt::AccessibleTextRole).toString(), "hinauf (zirkulare Referenz)");
  EXPECT_EQ(Data(Left(), "hinüber", Qt::AccessibleTextRole).toString(), "hinüber");
  const auto picture = [this](const QString& row) {
    return Data(Left(), row, Qt::DecorationRole).value<QIcon>().pixmap(16).toImage();
  };
  EXPECT_NE(picture("hinauf"), picture("hinüber"));
}

TEST_F(RowDisplayTest, TheSizeComesByItselfAndLeavesTheSelection) {
  OnSession = [this] { (void)MakeArchiveWithMails("Viele", 2); };
  OpenWindow();
  window->SetActiveView(PaneView::LZEBView);
  Left().selectAll();
  const std::size_t selected = Left().SelectedRows();
  PutCursor(Left(), "Viele");
  const int row = RowOf(Left(), "Viele");
  EXPECT_EQ(Cell(Left(), row, 1), "") << "not while the cursor may go on";
  EXPECT_TRUE(Happens([&] { return Cell(Left(), row, 1) == "0 Arc(s)/ 2 Msg(s)"; }));
  EXPECT_EQ(Left().SelectedRows(), selected);
  EXPECT_EQ(Left().currentIndex().row(), row);
  EXPECT_FALSE(window->Commands().Busy.IsBusy());
}

TEST_F(RowDisplayTest, NoSizeComesWhereNobodyWantsIt) {
  OnSession = [this] {
    (void)MakeArchiveWithMails("Viele", 2);
    context().options.DisplayArcSize = false;
  };
  OpenWindow();
  window->SetActiveView(PaneView::LZEBView);
  PutCursor(Left(), "Viele");
  QTest::qWait(2 * static_cast<int>(panes::SizeDisplay::RestMilliseconds));
  EXPECT_EQ(Cell(Left(), RowOf(Left(), "Viele"), 1), "");
}

TEST_F(RowDisplayTest, ACommandEndsACountThatHasNotBegun) {
  OnSession = [this] { (void)MakeArchiveWithMails("Viele", 2); };
  OpenWindow();
  window->SetActiveView(PaneView::LZEBView);
  PutCursor(Left(), "Viele");
  QTest::keyClick(&Left(), Qt::Key_Escape);
  QTest::qWait(2 * static_cast<int>(panes::SizeDisplay::RestMilliseconds));
  EXPECT_EQ(Cell(Left(), RowOf(Left(), "Viele"), 1), "");
}

TEST_F(RowDisplayTest, WhatIsSelectedStaysSoThroughASort) {
  OnSession = [this] { context().session.LeftArchive = MakeArchiveWithMails("Viele", 5); };
  OpenWindow();
  PutCursor(Left(), "Betreff 2");
  PressKey(Left(), Qt::Key_Insert);
  ASSERT_EQ(Left().SelectedRows(), 1U);
  Left().ClickedHeader(0);
  Left().ClickedHeader(0);
  Left().ClickedHeader(1);
  EXPECT_EQ(Left().SelectedRows(), 1U);
  EXPECT_TRUE(Left().selectionModel()->isRowSelected(RowOf(Left(), "Betreff 2")));
}

TEST_F(RowDisplayTest, EveryColumnOfTheFileViewSorts) {
  directory.WriteHostFile("target/b.txt", "22");
  directory.WriteHostFile("target/a.txt", "333");
  OnSession = [this] { context().process.CurrentPath = directory.Path("target") + "\\"; };
  OpenWindow();
  for (int column = 0; column < Files().model()->columnCount(); ++column) {
    Files().ClickedHeader(static_cast<std::size_t>(column));
    EXPECT_EQ(Files().header()->sortIndicatorSection(), column);
    EXPECT_EQ(Files().model()->rowCount(), 3);
  }
  EXPECT_EQ(Cell(Files(), 1), "b.txt") << "by size";
  Files().ClickedHeader(0);
  EXPECT_EQ(Cell(Files(), 1), "a.txt");
  Files().ClickedHeader(0);
  EXPECT_EQ(Cell(Files(), 1), "b.txt");
  EXPECT_EQ(Cell(Files(), 0), " [..]") << "the way up stays";
}

TEST_F(RowDisplayTest, AListThatHidesEntriesSaysSoInPictureAndTip) {
  OnSession = [this] {
    context().options.SizeCheck = 2;
    context().session.LeftArchive = MakeArchiveWithMails("Viele", 2);
  };
  MainWindow& main = OpenWindow();
  auto& picture = Find<QLabel>(main, "HidingLeft");
  EXPECT_TRUE(picture.isVisibleTo(&main));
  EXPECT_FALSE(Find<QLabel>(main, "HidingRight").isVisibleTo(&main)) << "there are files";
  EXPECT_EQ(main.Status().Text(StatusPanel::Left), "(2) Items");
  EXPECT_EQ(picture.toolTip(), "Nachrichtenausblendung aktiv");
  QTest::mouseDClick(&picture, Qt::LeftButton);
  Settle();
  EXPECT_EQ(main.Status().Text(StatusPanel::Left), "2 Items");
  EXPECT_EQ(picture.toolTip(), "Nachrichtenausblendung deaktiviert");
  EXPECT_TRUE(picture.isVisibleTo(&main)) << "as long as there are so many";
  PressKey(Left(), Qt::Key_Backspace);
  EXPECT_FALSE(picture.isVisibleTo(&main));
}

TEST_F(RowDisplayTest, TogglesTellInTheWindowWhatAClickBrings) {
  MainWindow& main = OpenWindow();
  QAction* const rules = main.findChild<QAction*>("LZEBMsgRoutView");
  EXPECT_EQ(rules->toolTip(), "Regelansicht");
  rules->trigger();
  Settle();
  EXPECT_EQ(rules->toolTip(), "Nachrichtenansicht");
  EXPECT_TRUE(rules->isChecked());
  EXPECT_EQ(Left().model()->headerData(0, Qt::Horizontal).toString(), "Regel");
}

// --- The external program. ---

class ProgramIconTest : public testing::Test {
 protected:
  ProgramIconTest() {
    QImage red(16, 16, QImage::Format_ARGB32);
    red.fill(Qt::red);
    EXPECT_TRUE(red.save(ToQt(directory.HostPath("rot.png"))));
    std::filesystem::create_directories(directory.HostPath("daten/applications"));
    setenv("XDG_DATA_HOME", directory.HostPath("daten").c_str(), 1);
  }
  ~ProgramIconTest() override { unsetenv("XDG_DATA_HOME"); }
  void WriteEntry(const std::string& exec) {
    directory.WriteHostFile("daten/applications/org.example.editor.desktop",
                            "[Desktop Entry]\nType=Application\nExec=" + exec + "\nIcon=" +
                                directory.HostPath("rot.png") + "\n[Desktop Action neu]\nIcon=fehlt\n");
  }
  static bool IsRed(const QIcon& icon) {
    return !icon.isNull() && icon.pixmap(16).toImage().pixelColor(8, 8) == QColor(Qt::red);
  }
  test::TempDir directory;
};

TEST_F(ProgramIconTest, IsThatOfTheEntryWhichStartsIt) {
  WriteEntry("muster-editor %F");
  EXPECT_TRUE(IsRed(IconOfProgram("muster-editor")));
  EXPECT_TRUE(IsRed(IconOfProgram("/usr/bin/muster-editor")));
  EXPECT_TRUE(IconOfProgram("muster").isNull());
  EXPECT_TRUE(IconOfProgram("").isNull());
}

TEST_F(ProgramIconTest, TellsTwoProgramsOfOneNameApart) {
  WriteEntry("\"/opt/mit leer/muster-editor\" %F");
  EXPECT_TRUE(IsRed(IconOfProgram("/opt/mit leer/muster-editor")));
  EXPECT_TRUE(IconOfProgram("/anderswo/muster-editor").isNull());
}

class ExternalButtonTest : public WindowTest {};

TEST_F(ExternalButtonTest, HasTheCommandLineAsTipAndAPictureInAnyCase) {
  OnSession = [this] { context().options.ExternalApplication = "gibt-es-nicht %l <b>"; };
  MainWindow& main = OpenWindow();
  const QAction* const button = main.findChild<QAction*>("ExtAppButton");
  EXPECT_TRUE(button->toolTip().contains("gibt-es-nicht %l &lt;b&gt;"));
  EXPECT_FALSE(button->icon().isNull());
  context().options.ExternalApplication = "anderes";
  panes::Outcome changed;
  changed.OptionsChanged = true;
  main.Apply(std::move(changed));
  Settle();
  EXPECT_TRUE(button->toolTip().contains("anderes"));
}

}  // namespace
}  // namespace velmora::ui
