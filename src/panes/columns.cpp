#include "panes/columns.h"

#include <algorithm>

namespace velmora::panes {

int EffectiveSortMode(std::span<const Column> columns, int mode) {
  const bool isKnown =
      mode != sort_mode::None && std::ranges::find(columns, mode, &Column::SortMode) != columns.end();
  return isKnown ? mode : sort_mode::Name;
}

SortMarker MarkerOf(std::span<const Column> columns, std::size_t column, int mode, bool ascending) {
  if (column >= columns.size() || columns[column].SortMode == sort_mode::None) return SortMarker::ArrowNo;
  if (columns[column].SortMode != EffectiveSortMode(columns, mode)) return SortMarker::ArrowNo;
  return ascending ? SortMarker::ArrowUp : SortMarker::ArrowDown;
}

SortState ClickedHeader(std::span<const Column> columns, std::size_t column, const SortState& state) {
  if (column >= columns.size() || columns[column].SortMode == sort_mode::None) return state;
  const int mode = columns[column].SortMode;
  const bool isSame = mode == EffectiveSortMode(columns, state.Mode);
  return {mode, isSame ? !state.Ascending : true};
}

}  // namespace velmora::panes
