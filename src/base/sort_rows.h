// The one sort of all lists.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <vector>

namespace velmora {

// The order in which rows stand by their keys, precomputed one per row (for text without regard to case the
// folded form): result[0] is the row that comes first. Rows with equal keys keep their order, also when
// falling.
template <typename Key>
std::vector<std::uint32_t> SortRows(const std::vector<Key>& keys, bool ascending) {
  std::vector<std::uint32_t> order(keys.size());
  std::iota(order.begin(), order.end(), std::uint32_t{0});
  if (ascending) {
    std::stable_sort(order.begin(), order.end(),
                     [&](std::uint32_t a, std::uint32_t b) { return keys[a] < keys[b]; });
  } else {
    std::stable_sort(order.begin(), order.end(),
                     [&](std::uint32_t a, std::uint32_t b) { return keys[b] < keys[a]; });
  }
  return order;
}

}  // namespace velmora
