// The list of a pane with very many rows, and its selection.

#include <QElapsedTimer>
#include <QScrollBar>

#include "panes/rows.h"
#include "ui/pane_list.h"
#include "ui_fixture.h"

namespace velmora::ui {
namespace {

class ManyRows final : public panes::Pane {
 public:
  explicit ManyRows(std::size_t rows) : rows_(rows) { Changed(); }

  mutable std::size_t TextsAsked = 0;

  panes::PaneView View() const override { return panes::PaneView::LZEBView; }
  std::size_t RowCount() const override { return rows_; }
  int EntryType(std::size_t row) const override {
    return row == 0 ? panes::entry_type::ControlEntry : panes::entry_type::MessageEntry;
  }
  std::uint32_t UnsortedIndex(std::size_t row) const override { return static_cast<std::uint32_t>(row); }
  std::string Key(std::size_t row) const override { return "T3I" + std::to_string(row); }
  std::string Tag(std::size_t row) const override { return "R" + std::to_string(row); }
  std::string Name(std::size_t row) const override { return "Zeile " + std::to_string(row); }
  std::string Text(std::size_t row, std::size_t) const override {
    ++TextsAsked;
    return Name(row);
  }
  panes::RowIcon Icon(std::size_t) const override { return {"IMail"}; }
  std::string_view ColumnIcon(std::size_t, std::size_t) const override { return {}; }
  std::span<const panes::Column> Columns() const override { return panes::MessageColumns; }
  panes::SortState Sorting() const override { return {}; }
  bool Refresh() override { return true; }
  panes::EnterResult Enter(std::size_t) override { return panes::EnterResult::Nothing; }
  bool GoUp() override { return false; }
  bool GoToRoot() override { return false; }
  std::string PathText() const override { return "/Archive"; }
  std::string StatusText(std::size_t) const override { return ""; }
  bool ShowSize(std::size_t) override { return false; }

 protected:
  bool ShowPlace(const std::string&) override { return false; }
  void SetSorting(const panes::SortState&) override {}

 private:
  std::size_t rows_;
};

class ListTest : public testing::Test {
 protected:
  static constexpr std::size_t Rows = 100'001;
  ListTest() {
    list.ClickedHeader = [](std::size_t) {};
    list.resize(600, 400);
    list.Sync();
    list.show();
    QCoreApplication::processEvents();
  }
  test::TempDir directory;
  std::unique_ptr<platform::FileSystem> files = platform::MakeHostFileSystem({});
  RowIcons icons{*files};
  ManyRows pane{Rows};
  PaneModel model{pane, icons};
  settings::Options options;
  PaneList list{model, ColumnWidths(options, panes::PaneView::LZEBView), "LZEBView", "Liste"};
};

TEST_F(ListTest, OnlyRowsThatAreSeenAreRead) {
  EXPECT_EQ(model.rowCount(), static_cast<int>(Rows));
  pane.TextsAsked = 0;
  list.verticalScrollBar()->setValue(list.verticalScrollBar()->maximum());
  list.viewport()->repaint();
  EXPECT_GT(pane.TextsAsked, 0U);
  EXPECT_LT(pane.TextsAsked, 1000U);
}

TEST_F(ListTest, AHundredThousandRowsAreScrolledWithoutAPause) {
  QElapsedTimer elapsed;
  elapsed.start();
  constexpr int steps = 50;
  for (int i = 0; i < steps; ++i) {
    list.verticalScrollBar()->setValue(list.verticalScrollBar()->maximum() / steps * i);
    list.viewport()->repaint();
  }
  EXPECT_LT(elapsed.elapsed(), 100 * steps);
}

TEST_F(ListTest, AllRowsAreSelectedButTheWayUp) {
  list.selectAll();
  EXPECT_EQ(list.SelectedRows(), Rows - 1);
  EXPECT_FALSE(list.Marks().Selection[0]);
  list.SetSelection(panes::SelectionSet(Rows, false));
  EXPECT_EQ(list.SelectedRows(), 0U);
}

TEST_F(ListTest, ASelectionWithGapsComesBackAsItWasSet) {
  panes::SelectionSet selection(Rows, false);
  for (std::size_t row = 3; row < Rows; row += 1000)
    selection[row] = selection[row + 1 < Rows ? row + 1 : row] = true;
  list.SetSelection(selection);
  EXPECT_EQ(list.Marks().Selection, selection);
}

TEST_F(ListTest, AListThatHasChangedIsNotReadBeforeItIsShownAnew) {
  pane.ClickHeader(0);
  ManyRows empty(0);
  PaneModel small(empty, icons);
  EXPECT_TRUE(small.IsStale());
  EXPECT_EQ(small.rowCount(), 0);
  EXPECT_TRUE(small.Sync());
  EXPECT_FALSE(small.IsStale());
}

}  // namespace
}  // namespace velmora::ui
