#include "base/date_time.h"

#include <gtest/gtest.h>

#include <limits>

namespace velmora {
namespace {

constexpr std::int64_t SecondsPerDay = 86400;

bool IsLeapYear(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

int DaysOfMonth(int year, int month) {
  constexpr int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return month == 2 && IsLeapYear(year) ? 29 : days[month - 1];
}

DateTime At(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
  return DateTime::FromCivil({year, month, day, hour, minute, second}).value();
}

TEST(DateTimeTest, NullDateIsTheSecondToLastOf1899) {
  EXPECT_TRUE(DateTime().IsNull());
  EXPECT_EQ(FormatDateTime(DateTime()), "30.12.1899 00:00:00");
  EXPECT_TRUE(At(1899, 12, 30).IsNull());
  EXPECT_FALSE(At(1899, 12, 30, 0, 0, 1).IsNull());
}

TEST(DateTimeTest, KnownDistances) {
  EXPECT_EQ(At(1970, 1, 1).Seconds(), 25569 * SecondsPerDay);
  EXPECT_EQ(At(2000, 1, 1).Seconds(), 36526 * SecondsPerDay);
  EXPECT_EQ(At(1899, 12, 29).Seconds(), -SecondsPerDay);
}

TEST(DateTimeTest, EveryDayOf400YearsFollowsTheOneBefore) {
  std::int64_t expected = At(1700, 1, 1).Seconds();
  for (int year = 1700; year < 2100; ++year) {
    for (int month = 1; month <= 12; ++month) {
      for (int day = 1; day <= DaysOfMonth(year, month); ++day, expected += SecondsPerDay) {
        const DateTime date = At(year, month, day, 23, 59, 59);
        ASSERT_EQ(date.Seconds(), expected + SecondsPerDay - 1);
        ASSERT_EQ(date.Civil(), (CivilTime{year, month, day, 23, 59, 59}));
        ASSERT_EQ(ParseDateTime(FormatDateTime(date)), date);
      }
      ASSERT_FALSE(DateTime::FromCivil({year, month, DaysOfMonth(year, month) + 1, 0, 0, 0}));
    }
  }
}

TEST(DateTimeTest, RefusesWhatNamesNoMoment) {
  for (const CivilTime& impossible :
       {CivilTime{2026, 2, 31, 0, 0, 0}, CivilTime{2026, 1, 1, 24, 0, 0}, CivilTime{2026, 1, 1, 0, 60, 0},
        CivilTime{2026, 1, 1, 0, 0, 60}, CivilTime{2026, 13, 1, 0, 0, 0}, CivilTime{2026, 0, 1, 0, 0, 0},
        CivilTime{2026, 1, 0, 0, 0, 0}, CivilTime{2026, 1, 1, -1, 0, 0}, CivilTime{0, 1, 1, 0, 0, 0},
        CivilTime{10000, 1, 1, 0, 0, 0}, CivilTime{2026, 257, 1, 0, 0, 0}})
    EXPECT_FALSE(DateTime::FromCivil(impossible));
}

TEST(DateTimeTest, FarAwaySecondsStopAtTheLastYears) {
  EXPECT_EQ(FormatDateTime(DateTime::FromSeconds(std::numeric_limits<std::int64_t>::max())),
            "31.12.9999 23:59:59");
  EXPECT_EQ(FormatDateTime(DateTime::FromSeconds(std::numeric_limits<std::int64_t>::min())),
            "01.01.0001 00:00:00");
}

TEST(DateTimeTest, Orders) { EXPECT_LT(At(1899, 1, 1), At(2026, 1, 1)); }

TEST(FormatTest, GermanForm) {
  const DateTime date = At(2026, 3, 5, 7, 8, 9);
  EXPECT_EQ(FormatDateTime(date), "05.03.2026 07:08:09");
  EXPECT_EQ(FormatDate(date), "05.03.2026");
  EXPECT_EQ(FormatTime(date), "07:08:09");
}

TEST(FormatTest, DurationGoesOnBeyondADay) {
  EXPECT_EQ(FormatDuration(0), "00:00:00");
  EXPECT_EQ(FormatDuration(3661), "01:01:01");
  EXPECT_EQ(FormatDuration(100 * 3600 + 59), "100:00:59");
  EXPECT_EQ(FormatDuration(-61), "-00:01:01");
  EXPECT_EQ(FormatDuration(std::numeric_limits<std::int64_t>::min()), "-2562047788015215:30:08");
}

TEST(ParseTest, TakesTheThreeForms) {
  EXPECT_EQ(ParseDateTime("31.12.2026"), At(2026, 12, 31));
  EXPECT_EQ(ParseDateTime("31.12.2026 23:59"), At(2026, 12, 31, 23, 59));
  EXPECT_EQ(ParseDateTime("31.12.2026 23:59:58"), At(2026, 12, 31, 23, 59, 58));
}

TEST(ParseTest, TakesNothingElse) {
  for (const std::string_view bad : {"",
                                     "1.1.2026",
                                     "31.12.26",
                                     "31.12.2026 ",
                                     " 31.12.2026",
                                     "31.12.2026 23",
                                     "31.12.2026 23:5",
                                     "31.12.2026 23:59:5",
                                     "31.12.2026 23:59:58x",
                                     "31.12.2026T23:59",
                                     "31/12/2026",
                                     "2026-12-31",
                                     "30.02.2026",
                                     "29.02.2025",
                                     "31.12.2026 24:00",
                                     "31.12.20266",
                                     "+1.12.2026",
                                     "-1.12.2026",
                                     "31.12.-026",
                                     "31.12.2026  23:59",
                                     "aa.bb.cccc",
                                     "31.12",
                                     "31.12.2026 23:59:"})
    EXPECT_FALSE(ParseDateTime(bad)) << bad;
}

}  // namespace
}  // namespace velmora
