// One pane as the window shows it: its buttons, its path, its list.
#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <string>

#include "ui/command_bars.h"
#include "ui/pane_list.h"
#include "ui/pane_model.h"
#include "ui/path_field.h"

class QToolBar;

namespace velmora::ui {

class PaneWidget final : public QWidget {
 public:
  struct Names {
    QString View, Path;  // of the controls
    QString AccessibleView, AccessiblePath;
    panes::Place Bar;
  };
  // `place` tells where the pane is, so that the cursor stays while it stays there.
  PaneWidget(const Names& names, panes::Pane& pane, ColumnWidths widths, std::function<std::string()> place,
             RowIcons& icons, CommandBars& commands, QWidget* parent = nullptr);

  PaneList& View() { return *view_; }
  PathField& Path() { return *path_; }
  PaneModel& Model() { return *model_; }
  panes::Pane& Pane() { return pane_; }
  // A control that stands before the path, such as the list of drives.
  void AddBeforePath(QWidget* control);
  // Buttons behind those of the pane.
  void AddBar(CommandBars& commands, panes::Place place);

  // Shows the pane as it is now. The cursor stays on its row where the pane is still at the same place.
  void Sync();
  // Whether the list has changed since it was shown.
  bool IsStale() const { return model_->IsStale(); }
  void SetActive(bool active);
  // The cursor has moved.
  void NoteCursor();

 private:
  panes::Pane& pane_;
  std::function<std::string()> place_;
  PaneModel* model_;
  PaneList* view_;
  PathField* path_;
  QToolBar* bar_;
  QWidget* pathRow_;
  std::string shownPlace_, cursorTag_;
  std::size_t cursorRow_ = 0;
};

}  // namespace velmora::ui
