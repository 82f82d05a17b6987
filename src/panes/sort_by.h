// Sorts the rows of a list in place by one key per row.
#pragma once

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <span>
#include <type_traits>
#include <utility>
#include <vector>

#include "base/sort_rows.h"

namespace velmora::panes {

// Puts rows into an order as SortRows gives it, moving each once: a list may be most of the memory in use.
template <typename Row>
void PutInOrder(std::span<Row> rows, std::vector<std::uint32_t> order) {
  for (std::uint32_t start = 0; start < order.size(); ++start) {
    if (order[start] == start) continue;
    Row first = std::move(rows[start]);
    std::uint32_t place = start;
    while (order[place] != start) {
      rows[place] = std::move(rows[order[place]]);
      place = std::exchange(order[place], place);
    }
    rows[place] = std::move(first);
    order[place] = place;
  }
}

// `makeKey` is asked once per row. Rows with equal keys keep their order, also when falling.
template <typename Row, typename MakeKey>
void SortBy(std::span<Row> rows, bool ascending, MakeKey makeKey) {
  std::vector<std::invoke_result_t<MakeKey, const Row&>> keys;
  keys.reserve(rows.size());
  std::ranges::transform(rows, std::back_inserter(keys), makeKey);
  PutInOrder(rows, SortRows(keys, ascending));
}

}  // namespace velmora::panes
