#include "ui/pane_widget.h"

#include <QHBoxLayout>
#include <QToolBar>
#include <QVBoxLayout>
#include <algorithm>

#include "panes/selection.h"
#include "ui/text.h"

namespace velmora::ui {
namespace {

constexpr int BarIconSize = 16;
constexpr int Spacing = 3;

}  // namespace

PaneWidget::PaneWidget(const Names& names, panes::Pane& pane, ColumnWidths widths,
                       std::function<std::string()> place, RowIcons& icons, CommandBars& commands,
                       QWidget* parent)
    : QWidget(parent),
      pane_(pane),
      place_(std::move(place)),
      model_(new PaneModel(pane, icons, this)),
      view_(new PaneList(*model_, widths, names.View, names.AccessibleView)),
      path_(new PathField(names.Path, names.AccessiblePath)),
      bar_(new QToolBar),
      pathRow_(new QWidget) {
  bar_->setIconSize(QSize(BarIconSize, BarIconSize));
  bar_->setAccessibleName(names.AccessibleView);
  commands.FillToolBar(*bar_, names.Bar);
  auto* const row = new QHBoxLayout(pathRow_);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(Spacing);
  row->addWidget(path_, 1);
  row->addWidget(bar_);
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(Spacing);
  layout->addWidget(pathRow_);
  layout->addWidget(view_, 1);
  setFocusProxy(view_);
  path_->Left = [this] { view_->setFocus(); };
}

void PaneWidget::AddBeforePath(QWidget* control) {
  static_cast<QHBoxLayout*>(pathRow_->layout())->insertWidget(0, control);
}

void PaneWidget::AddBar(CommandBars& commands, panes::Place place) { commands.FillToolBar(*bar_, place); }

void PaneWidget::NoteCursor() {
  const QModelIndex current = view_->currentIndex();
  if (!current.isValid()) return;
  cursorRow_ = static_cast<std::size_t>(current.row());
  cursorTag_ = pane_.Tag(cursorRow_);
}

void PaneWidget::Sync() {
  const std::string place = place_();
  const bool isSamePlace = place == shownPlace_;
  shownPlace_ = place;
  view_->Sync();
  path_->ShowPath(ToQt(pane_.PathText()));
  if (view_->currentIndex().isValid() || pane_.RowCount() == 0) return;
  std::size_t row = pane_.CursorRow();
  if (isSamePlace) {
    const int found = panes::FindByTag(pane_, cursorTag_);
    row = found >= 0 ? static_cast<std::size_t>(found) : cursorRow_;
  }
  view_->SetCursor(std::min(row, pane_.RowCount() - 1));
}

void PaneWidget::SetActive(bool active) {
  path_->SetActive(active);
  view_->SetActive(active);
}

}  // namespace velmora::ui
