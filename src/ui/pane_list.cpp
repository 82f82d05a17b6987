#include "ui/pane_list.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMimeData>
#include <QUrl>
#include <algorithm>

#include "panes/selection.h"
#include "ui/text.h"

namespace velmora::ui {
namespace {

// Widths of columns before a person has changed them, in average characters.
constexpr int MostNameCharacters = 40, FewestNameCharacters = 18, OtherCharacters = 20;
constexpr int ColumnPadding = 22;  // the picture, and what the sort marker takes of the caption
constexpr const char* LongestDate = "31.12.2026 23:59:00";
constexpr double FaintShare = 0.35;

QColor Mix(const QColor& a, const QColor& b, double share) {
  return QColor::fromRgbF(static_cast<float>(a.redF() * share + b.redF() * (1 - share)),
                          static_cast<float>(a.greenF() * share + b.greenF() * (1 - share)),
                          static_cast<float>(a.blueF() * share + b.blueF() * (1 - share)));
}

// The rows of files in a drag, as host paths; empty for anything else.
QStringList LocalFiles(const QMimeData* data) {
  QStringList paths;
  for (const QUrl& url : data->urls()) {
    if (url.isLocalFile()) paths << url.toLocalFile();
  }
  return paths;
}

}  // namespace

PaneList::PaneList(PaneModel& model, ColumnWidths widths, const QString& name, const QString& accessibleName,
                   QWidget* parent)
    : QTreeView(parent), model_(model), widths_(widths) {
  setObjectName(name);
  setAccessibleName(accessibleName);
  setModel(&model);
  setRootIsDecorated(false);
  setItemsExpandable(false);
  setUniformRowHeights(true);
  setAllColumnsShowFocus(true);
  setAlternatingRowColors(true);
  setSelectionMode(QAbstractItemView::ExtendedSelection);
  setSelectionBehavior(QAbstractItemView::SelectRows);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setTextElideMode(Qt::ElideRight);
  setAcceptDrops(true);
  // The header would look whether all of a column is selected, at each paint, and show nothing for it.
  header()->setSelectionModel(new QItemSelectionModel(&model, header()));
  header()->setSectionsClickable(true);
  header()->setSectionsMovable(false);
  header()->setStretchLastSection(true);
  header()->setSortIndicatorShown(true);
  header()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  connect(header(), &QHeaderView::sectionClicked, this,
          [this](int column) { ClickedHeader(static_cast<std::size_t>(column)); });
  connect(header(), &QHeaderView::sectionResized, this, [this](int column, int, int width) {
    // The last one takes what is left.
    if (settingWidths_ || syncing_ || column + 1 >= header()->count()) return;
    widths_.Set(model_.Pane().Columns(), static_cast<std::size_t>(column), width);
  });
}

void PaneList::Sync() {
  syncing_ = true;
  if (!model_.Sync()) ShowTexts();  // a marker may have changed without a change of the rows
  hasSynced_ = true;
  TakeWidths();
  ShowSortMarker();
  syncing_ = false;
  Notify();
}

void PaneList::TakeWidths() {
  settingWidths_ = true;
  for (int column = 0; column < model_.columnCount(); ++column) {
    const auto kept = widths_.Get(model_.Pane().Columns(), static_cast<std::size_t>(column));
    header()->resizeSection(column, kept.value_or(DefaultWidth(column)));
  }
  settingWidths_ = false;
}

void PaneList::resizeEvent(QResizeEvent* event) {
  QTreeView::resizeEvent(event);
  if (hasSynced_) TakeWidths();
}

// The name gets what the date leaves, so that both are seen without scrolling; in the file view the size too.
int PaneList::DefaultWidth(int column) const {
  const QFontMetrics metrics = fontMetrics();
  const int character = metrics.averageCharWidth();
  const int date = metrics.horizontalAdvance(LongestDate) + ColumnPadding;
  const int other = character * OtherCharacters;
  if (column == 1) return date;
  if (column > 1) return other;
  const bool isFiles = model_.Pane().View() == panes::PaneView::RFSView;
  return std::clamp(viewport()->width() - date - (isFiles ? other : 0), character * FewestNameCharacters,
                    character * MostNameCharacters);
}

void PaneList::SetActive(bool active) {
  active_ = active;
  Colour();
}

void PaneList::Colour() {
  QPalette palette = QApplication::palette(this);
  if (!active_) {
    palette.setColor(QPalette::Highlight,
                     Mix(palette.color(QPalette::Highlight), palette.color(QPalette::Base), FaintShare));
    palette.setColor(QPalette::HighlightedText, palette.color(QPalette::Text));
  }
  setPalette(palette);
}

void PaneList::changeEvent(QEvent* event) {
  QTreeView::changeEvent(event);
  if (event->type() == QEvent::ThemeChange || event->type() == QEvent::StyleChange) Colour();
}

void PaneList::ShowSortMarker() {
  for (int column = 0; column < model_.columnCount(); ++column) {
    const panes::SortMarker marker = model_.Pane().Marker(static_cast<std::size_t>(column));
    if (marker == panes::SortMarker::ArrowNo) continue;
    header()->setSortIndicator(
        column, marker == panes::SortMarker::ArrowUp ? Qt::AscendingOrder : Qt::DescendingOrder);
    return;
  }
  header()->setSortIndicator(-1, Qt::AscendingOrder);
}

panes::ViewMarks PaneList::Marks() const {
  panes::ViewMarks marks;
  if (currentIndex().isValid()) marks.CurrentRow = static_cast<std::size_t>(currentIndex().row());
  if (model_.IsStale()) return marks;
  const bool hasWayUp =
      model_.rowCount() > 0 && !model_.flags(model_.index(0, 0)).testFlag(Qt::ItemIsSelectable);
  for (const QItemSelectionRange& range : selectionModel()->selection()) {
    const int first = std::max(range.top(), hasWayUp ? 1 : 0);
    if (first > range.bottom()) continue;
    if (marks.Selection.empty()) marks.Selection.resize(static_cast<std::size_t>(model_.rowCount()));
    std::fill(marks.Selection.begin() + first, marks.Selection.begin() + range.bottom() + 1, true);
  }
  return marks;
}

std::size_t PaneList::SelectedRows() const { return panes::CountSelected(Marks().Selection); }

void PaneList::SetCursor(std::size_t row, bool scroll) {
  if (row >= static_cast<std::size_t>(model_.rowCount())) return;
  const QModelIndex index = model_.index(static_cast<int>(row), 0);
  selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
  if (scroll) scrollTo(index);
}

void PaneList::SetSelection(const panes::SelectionSet& selection) {
  QItemSelection ranges;
  const int last = model_.columnCount() - 1;
  for (std::size_t row = 0; row < selection.size(); ++row) {
    if (!selection[row]) continue;
    std::size_t end = row;
    while (end + 1 < selection.size() && selection[end + 1]) ++end;
    ranges.append(QItemSelectionRange(model_.index(static_cast<int>(row), 0),
                                      model_.index(static_cast<int>(end), last)));
    row = end;
  }
  selectionModel()->select(ranges, QItemSelectionModel::ClearAndSelect);
}

void PaneList::FlipSelection() {
  const QModelIndex current = currentIndex();
  if (!current.isValid()) return;
  if (model_.flags(current).testFlag(Qt::ItemIsSelectable)) {
    selectionModel()->select(current, QItemSelectionModel::Toggle | QItemSelectionModel::Rows);
  }
  if (current.row() + 1 < model_.rowCount()) SetCursor(static_cast<std::size_t>(current.row()) + 1);
}

void PaneList::EditLabel() {
  const QModelIndex current = currentIndex();
  if (!current.isValid()) return;
  model_.AllowEdit(static_cast<std::size_t>(current.row()));
  edit(model_.index(current.row(), 0));
}

// --- Events. ---

bool PaneList::event(QEvent* event) {
  // The toolkit keeps Tab to itself before any key handler.
  if (event->type() == QEvent::KeyPress && !IsEditing()) {
    auto* const key = static_cast<QKeyEvent*>(event);
    if ((key->key() == Qt::Key_Tab || key->key() == Qt::Key_Backtab) && HandleKey && HandleKey(*key)) {
      return true;
    }
  }
  return QTreeView::event(event);
}

void PaneList::keyPressEvent(QKeyEvent* event) {
  // What the editor of a label does not want is not meant for the row.
  if (!IsEditing() && HandleKey && HandleKey(*event)) return;
  QTreeView::keyPressEvent(event);
}

void PaneList::focusInEvent(QFocusEvent* event) {
  QTreeView::focusInEvent(event);
  if (Activated) Activated();
}

void PaneList::mousePressEvent(QMouseEvent* event) {
  if (Activated) Activated();
  QTreeView::mousePressEvent(event);
}

void PaneList::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && indexAt(event->pos()).isValid()) Opened();
}

void PaneList::contextMenuEvent(QContextMenuEvent* event) {
  QPoint place = event->globalPos();
  if (event->reason() == QContextMenuEvent::Keyboard && currentIndex().isValid()) {
    place = viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft());
  }
  ShowMenu(place);
}

void PaneList::dragEnterEvent(QDragEnterEvent* event) {
  if (Drop && !LocalFiles(event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void PaneList::dragMoveEvent(QDragMoveEvent* event) {
  if (Drop && !LocalFiles(event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void PaneList::dropEvent(QDropEvent* event) {
  if (Drop && Drop(LocalFiles(event->mimeData()))) event->acceptProposedAction();
}

void PaneList::keyboardSearch(const QString& search) {
  if (!sinceTyped_.isValid() || sinceTyped_.elapsed() > QApplication::keyboardInputInterval()) typed_.clear();
  sinceTyped_.start();
  typed_ += search;
  const int current = std::max(currentIndex().row(), 0);
  // The first character goes on to the next row, further ones may stay where they are.
  const int from = typed_.size() == 1 && model_.rowCount() > 0 ? (current + 1) % model_.rowCount() : current;
  const int found = panes::FindStartingWith(model_.Pane(), FromQt(typed_), static_cast<std::size_t>(from));
  if (found >= 0) SetCursor(static_cast<std::size_t>(found));
}

void PaneList::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTreeView::currentChanged(current, previous);
  Notify();
}

void PaneList::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
  QTreeView::selectionChanged(selected, deselected);
  Notify();
}

void PaneList::Notify() {
  if (!syncing_ && RowChanged) RowChanged();
}

}  // namespace velmora::ui
