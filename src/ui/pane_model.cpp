#include "ui/pane_model.h"

#include <QApplication>
#include <QFont>
#include <QPalette>

#include "panes/rows.h"
#include "ui/text.h"

namespace velmora::ui {
namespace {

// The way up is the first type of both kinds of list.
bool IsWayUp(int entryType) { return entryType == panes::entry_type::ControlEntry; }
static_assert(panes::entry_type::ControlEntry == panes::entry_type::DirBackEntry);

constexpr std::string_view SizeCaption = "Größe";

// A hidden archive is written in italics and fainter than the others.
constexpr float FaintOpacity = 0.6F;
QFont ItalicFont() {
  QFont font;
  font.setItalic(true);
  return font;
}
QColor FaintText() {
  QColor colour = QApplication::palette().color(QPalette::Text);
  colour.setAlphaF(FaintOpacity);
  return colour;
}

}  // namespace

PaneModel::PaneModel(panes::Pane& pane, RowIcons& icons, QObject* parent)
    : QAbstractTableModel(parent), pane_(pane), icons_(icons) {
  generation_ = pane_.Generation() - 1;  // the first Sync shows what there is
}

bool PaneModel::Sync() {
  if (!IsStale()) return false;
  beginResetModel();
  generation_ = pane_.Generation();
  editable_.reset();
  rows_ = static_cast<int>(pane_.RowCount());
  columns_ = static_cast<int>(pane_.Columns().size());
  endResetModel();
  return true;
}

int PaneModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : rows_; }
int PaneModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : columns_; }

QVariant PaneModel::data(const QModelIndex& index, int role) const {
  // A paint while the pane is filled anew: the views learn of it when it is done.
  if (!index.isValid() || generation_ != pane_.Generation()) return {};
  const auto row = static_cast<std::size_t>(index.row());
  const auto column = static_cast<std::size_t>(index.column());
  switch (role) {
    case Qt::DisplayRole:
      return ToQt(pane_.Text(row, column));
    case Qt::ToolTipRole:
      return PlainTip(WithMarks(row, column));
    case Qt::AccessibleTextRole:
      return WithMarks(row, column);
    case Qt::FontRole:
      return pane_.MarksOf(row).IsHidden ? QVariant(ItalicFont()) : QVariant();
    case Qt::ForegroundRole:
      return pane_.MarksOf(row).IsHidden ? QVariant(FaintText()) : QVariant();
    case Qt::EditRole:
      return ToQt(pane_.Name(row));
    case Qt::DecorationRole: {
      if (column == 0) {
        return pane_.MarksOf(row).IsCircular ? icons_.Warning(pane_.Icon(row)) : icons_.Of(pane_.Icon(row));
      }
      const std::string_view key = pane_.ColumnIcon(row, column);
      return key.empty() ? QVariant() : QVariant(icons_.OfKey(key));
    }
    case Qt::TextAlignmentRole:
      if (pane_.Columns()[column].Caption == SizeCaption && pane_.View() == panes::PaneView::RFSView) {
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
      }
      return {};
    default:
      return {};
  }
}

QString PaneModel::WithMarks(std::size_t row, std::size_t column) const {
  const QString text = ToQt(pane_.Text(row, column));
  const std::string marks = column == 0 ? panes::MarksText(pane_.MarksOf(row)) : "";
  return marks.empty() ? text : text + " (" + ToQt(marks) + ")";
}

bool PaneModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::EditRole || !index.isValid()) return false;
  const auto row = static_cast<std::size_t>(index.row());
  editable_.reset();
  const std::string name = FromQt(value.toString());
  if (Rename && name != pane_.Name(row)) Rename(row, name);
  return false;  // the pane is listed anew by what follows
}

QVariant PaneModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columns_) return {};
  const panes::Column& column = pane_.Columns()[static_cast<std::size_t>(section)];
  if (role == Qt::DisplayRole) return ToQt(column.Caption);
  if (role == Qt::TextAlignmentRole) return QVariant(Qt::AlignLeft | Qt::AlignVCenter);
  return {};
}

Qt::ItemFlags PaneModel::flags(const QModelIndex& index) const {
  if (!index.isValid() || generation_ != pane_.Generation()) return Qt::NoItemFlags;
  const auto row = static_cast<std::size_t>(index.row());
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
  if (!IsWayUp(pane_.EntryType(row))) flags |= Qt::ItemIsSelectable;
  if (editable_ == row && index.column() == 0) flags |= Qt::ItemIsEditable;
  return flags;
}

}  // namespace velmora::ui
