#include "panes/pane.h"

#include <utility>

namespace velmora::panes {

std::string MarksText(const RowMarks& marks) {
  if (marks.IsHidden && marks.IsCircular) return "versteckt, zirkulare Referenz";
  if (marks.IsHidden) return "versteckt";
  return marks.IsCircular ? "zirkulare Referenz" : "";
}

SortMarker Pane::Marker(std::size_t column) const {
  const auto sorting = Sorting();
  return MarkerOf(Columns(), column, sorting.Mode, sorting.Ascending);
}

void Pane::ClickHeader(std::size_t column) {
  const auto sorting = Sorting();
  const auto clicked = ClickedHeader(Columns(), column, sorting);
  if (clicked != sorting) SetSorting(clicked);
}

bool Pane::Step(bool back) {
  const auto place = back ? history_.Back() : history_.Forward();
  if (!place) return false;
  if (ShowPlace(*place)) return true;
  history_.Undo(back);
  return false;
}

void Pane::SwapBase(Pane& other) {
  std::swap(history_, other.history_);
  std::swap(cursorRow_, other.cursorRow_);
  Changed();
  other.Changed();
}

}  // namespace velmora::panes
