// Sorts the rows of a list in place by one key per row.
#pragma once

#include <algorithm>
#include <iterator>
#include <span>
#include <type_traits>
#include <utility>
#include <vector>

#include "base/sort_rows.h"

namespace velmora::panes {

// `makeKey` is asked once per row. Rows with equal keys keep their order, also when falling.
template <typename Row, typename MakeKey>
void SortBy(std::span<Row> rows, bool ascending, MakeKey makeKey) {
  std::vector<std::invoke_result_t<MakeKey, const Row&>> keys;
  keys.reserve(rows.size());
  std::ranges::transform(rows, std::back_inserter(keys), makeKey);
  std::vector<Row> sorted;
  sorted.reserve(rows.size());
  for (const auto row : SortRows(keys, ascending)) sorted.push_back(std::move(rows[row]));
  std::ranges::move(sorted, rows.begin());
}

}  // namespace velmora::panes
