#include "run/progress_text.h"

#include <gtest/gtest.h>

#include <limits>

namespace velmora::run {
namespace {

constexpr std::int64_t Huge = std::numeric_limits<std::int64_t>::max();

TEST(ProgressText, CountAndPercent) {
  EXPECT_EQ(ProgressText(0, 8), "0  (0%)");
  EXPECT_EQ(ProgressText(1, 8), "1  (12%)");
  EXPECT_EQ(ProgressText(8, 8), "8  (100%)");
}

TEST(ProgressText, NoTotalIsNoPercent) { EXPECT_EQ(ProgressText(5, 0), "5  (0%)"); }

TEST(ProgressText, PercentStaysWithinItsBounds) {
  EXPECT_EQ(Percent(9, 8), 100);
  EXPECT_EQ(Percent(-1, 8), 0);
  EXPECT_EQ(Percent(Huge, Huge), 100);
}

TEST(RemainingTime, ScalesTheElapsedTimeByWhatIsLeft) {
  EXPECT_EQ(RemainingTimeText(60, 1, 4), "00:03:00");
  EXPECT_EQ(RemainingTimeText(3600, 2, 4), "01:00:00");
  EXPECT_EQ(RemainingTimeText(60, 4, 4), "00:00:00");
}

TEST(RemainingTime, IsUnknownAtTheStart) {
  EXPECT_EQ(RemainingTimeText(60, 0, 4), "");
  EXPECT_EQ(RemainingTimeText(60, 4, 0), "");
}

}  // namespace
}  // namespace velmora::run
