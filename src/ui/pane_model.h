// The rows of a pane for a list view: nothing is copied, texts and pictures are asked for as they are drawn.
#pragma once

#include <QAbstractTableModel>
#include <functional>
#include <optional>

#include "panes/pane.h"
#include "ui/file_icons.h"

namespace velmora::ui {

class PaneModel final : public QAbstractTableModel {
 public:
  // Both must outlive the model.
  PaneModel(panes::Pane& pane, RowIcons& icons, QObject* parent = nullptr);

  panes::Pane& Pane() { return pane_; }
  // Takes the new text of a row's label.
  std::function<void(std::size_t row, const std::string& name)> Rename;

  // Shows the pane anew if it has changed since the last time. Whether it had: if not, some of its texts may
  // be others, and the view is to be painted.
  bool Sync();
  bool IsStale() const { return generation_ != pane_.Generation(); }
  // The label of this row can be edited until the edit ends.
  void AllowEdit(std::optional<std::size_t> row) { editable_ = row; }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  // The text of a cell and how its row is marked.
  QString WithMarks(std::size_t row, std::size_t column) const;

  panes::Pane& pane_;
  RowIcons& icons_;
  std::uint64_t generation_ = 0;
  int rows_ = 0, columns_ = 0;  // as the views know them
  std::optional<std::size_t> editable_;
};

}  // namespace velmora::ui
