// Local civil time and points in time.

#include "platform/clock.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>

namespace velmora::platform {
namespace {

DateTime Local(int year, int month, int day, int hour, int minute = 0) {
  return DateTime::FromCivil({year, month, day, hour, minute, 0}).value();
}

class ClockTest : public testing::Test {
 protected:
  // Central European time by rule, so that no time zone files are needed.
  void SetUp() override {
    setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1);
    tzset();
  }
};

TEST_F(ClockTest, WinterAndSummerTimeAreKnown) {
  EXPECT_EQ(FromUnixTime(1'704'067'200), Local(2024, 1, 1, 1));
  EXPECT_EQ(ToUnixTime(Local(2024, 1, 1, 1)), 1'704'067'200);
  EXPECT_EQ(FromUnixTime(1'719'792'000), Local(2024, 7, 1, 2));
  EXPECT_EQ(ToUnixTime(Local(2024, 7, 1, 2)), 1'719'792'000);
}

TEST_F(ClockTest, ATimeThatSpringSkipsIsOneHourLater) {
  EXPECT_EQ(FromUnixTime(ToUnixTime(Local(2024, 3, 31, 2, 30))), Local(2024, 3, 31, 3, 30));
  EXPECT_EQ(ToUnixTime(Local(2024, 3, 31, 3)) - ToUnixTime(Local(2024, 3, 31, 1, 59)), 60);
}

TEST_F(ClockTest, ATimeThatAutumnHasTwiceIsTheFirst) {
  // 27.10.2024 02:30 CEST is 00:30 UTC; the second one would be 01:30 UTC.
  EXPECT_EQ(ToUnixTime(Local(2024, 10, 27, 2, 30)), 1'729'989'000);
  EXPECT_EQ(FromUnixTime(1'729'989'000), Local(2024, 10, 27, 2, 30));
  EXPECT_EQ(FromUnixTime(1'729'992'600), Local(2024, 10, 27, 2, 30));
}

TEST_F(ClockTest, EveryMomentOfAYearComesBack) {
  for (std::int64_t moment = 1'704'067'200; moment < 1'704'067'200 + 366 * 86'400; moment += 1'800) {
    const DateTime local = FromUnixTime(moment);
    const std::int64_t back = ToUnixTime(local);
    EXPECT_TRUE(back == moment || back == moment - 3'600) << moment;
    EXPECT_EQ(FromUnixTime(back), local);
  }
}

TEST_F(ClockTest, TimesBeyondAllYearsAreTheFirstOrLastMomentOfThem) {
  constexpr auto last = std::numeric_limits<std::int64_t>::max(),
                 first = std::numeric_limits<std::int64_t>::min();
  EXPECT_EQ(FormatDateTime(FromUnixTime(last)), "31.12.9999 23:59:59");
  EXPECT_EQ(FormatDateTime(FromUnixTime(first)), "01.01.0001 00:00:00");
  EXPECT_GT(ToUnixTime(DateTime::FromSeconds(last)), ToUnixTime(*ParseDateTime("31.12.9999")));
  EXPECT_LT(ToUnixTime(DateTime::FromSeconds(first)), ToUnixTime(*ParseDateTime("01.01.0001")));
}

TEST_F(ClockTest, TheSteadyClockNeverGoesBack) {
  const std::int64_t before = SystemClock().SteadyMilliseconds();
  EXPECT_GE(SystemClock().SteadyMilliseconds(), before);
  EXPECT_GT(SystemClock().Now(), Local(2024, 1, 1, 0));
}

}  // namespace
}  // namespace velmora::platform
