// The list of a pane: keys go to the program first, "[..]" is never selected, widths of columns are kept.
#pragma once

#include <QElapsedTimer>
#include <QTreeView>
#include <functional>

#include "panes/commands/command_context.h"
#include "ui/column_widths.h"
#include "ui/pane_model.h"

namespace velmora::ui {

class PaneList final : public QTreeView {
 public:
  PaneList(PaneModel& model, ColumnWidths widths, const QString& name, const QString& accessibleName,
           QWidget* parent = nullptr);

  // What the window does; each must be set.
  std::function<bool(QKeyEvent&)> HandleKey;    // true: the key is done with
  std::function<void(const QPoint&)> ShowMenu;  // a context menu, at a place of the screen
  std::function<void()> Activated;              // got the focus or a click
  std::function<void()> Opened;                 // a double click on a row
  std::function<void()> RowChanged;             // cursor or selection
  std::function<void(std::size_t)> ClickedHeader;
  std::function<bool(const QStringList& hostPaths)> Drop;  // null: nothing can be dropped

  // --- What the view shows of the pane. ---
  // After the pane has changed. The cursor and the selection stay where the caller puts them.
  void Sync();
  // The same rows, with other texts in them. Qt would look at each row that is said to have changed.
  void ShowTexts() { viewport()->update(); }
  panes::ViewMarks Marks() const;
  std::size_t SelectedRows() const;
  void SetCursor(std::size_t row, bool scroll = true);
  void SetSelection(const panes::SelectionSet& selection);
  // Flips the row under the cursor and goes to the next one.
  void FlipSelection();
  void EditLabel();
  bool IsEditing() const { return state() == EditingState; }
  // The selection of the other pane is fainter.
  void SetActive(bool active);

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void keyboardSearch(const QString& search) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

 private:
  void ShowSortMarker();
  int DefaultWidth(int column) const;
  void Colour();
  void TakeWidths();
  void Notify();

  PaneModel& model_;
  ColumnWidths widths_;
  QString typed_;
  QElapsedTimer sinceTyped_;
  bool syncing_ = false, settingWidths_ = false, hasSynced_ = false;
  bool active_ = true;
};

}  // namespace velmora::ui
