#include "base/sort_rows.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace velmora {
namespace {

using Order = std::vector<std::uint32_t>;

TEST(SortRowsTest, AscendingAndDescending) {
  const std::vector<std::string> keys = {"b", "c", "a"};
  EXPECT_EQ(SortRows(keys, true), (Order{2, 0, 1}));
  EXPECT_EQ(SortRows(keys, false), (Order{1, 0, 2}));
}

TEST(SortRowsTest, EqualKeysKeepTheirOrderInBothDirections) {
  const std::vector<int> keys = {1, 0, 1, 0, 1};
  EXPECT_EQ(SortRows(keys, true), (Order{1, 3, 0, 2, 4}));
  EXPECT_EQ(SortRows(keys, false), (Order{0, 2, 4, 1, 3}));
}

TEST(SortRowsTest, NumbersInTextsCompareAsText) {
  EXPECT_EQ(SortRows(std::vector<std::string>{"10", "9"}, true), (Order{0, 1}));
}

TEST(SortRowsTest, NothingAndOneRow) {
  EXPECT_EQ(SortRows(std::vector<int>{}, true), Order{});
  EXPECT_EQ(SortRows(std::vector<int>{7}, false), Order{0});
}

}  // namespace
}  // namespace velmora
