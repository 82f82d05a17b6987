#include "tables/serial_date.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <limits>

#include "workbook_helpers.h"

namespace velmora::tables {
namespace {

TEST(SerialDate, CountsTheDayOfTheYear1900ThatNeverWas) {
  EXPECT_EQ(ToSerial(At(1900, 1, 1)), 1);
  EXPECT_EQ(ToSerial(At(1900, 2, 28)), 59);
  EXPECT_EQ(ToSerial(At(1900, 3, 1)), 61);
  EXPECT_EQ(ToSerial(At(2026, 12, 31)), 46387);
  EXPECT_EQ(ToSerial(At(9999, 12, 31)), 2958465);
  EXPECT_EQ(FromSerial(1), At(1900, 1, 1));
  EXPECT_EQ(FromSerial(59), At(1900, 2, 28));
  EXPECT_EQ(FromSerial(60), std::nullopt);
  EXPECT_EQ(FromSerial(60.75), std::nullopt);
  EXPECT_EQ(FromSerial(61), At(1900, 3, 1));
}

TEST(SerialDate, ATimeWithoutADayIsAFraction) {
  EXPECT_EQ(ToSerial(DateTime()), 0);
  EXPECT_EQ(ToSerial(DateTime::FromSeconds(6 * 3600)), 0.25);
  EXPECT_EQ(FromSerial(0.25), DateTime::FromSeconds(6 * 3600));
}

TEST(SerialDate, DaysBefore1900HaveNoNumber) {
  EXPECT_EQ(ToSerial(At(1899, 12, 31)), std::nullopt);
  EXPECT_EQ(ToSerial(At(1899, 12, 29)), std::nullopt);
  EXPECT_EQ(ToSerial(At(1, 1, 1)), std::nullopt);
}

TEST(SerialDate, NumbersBeyondTheCalendarAreNoDays) {
  for (const double serial :
       {-0.5, -1.0, 2958466.0, 2958465.9999999, 1e300, std::numeric_limits<double>::quiet_NaN(),
        std::numeric_limits<double>::infinity()}) {
    EXPECT_EQ(FromSerial(serial), std::nullopt) << serial;
  }
}

TEST(SerialDate, EverySecondOfADayComesBack) {
  const std::int64_t day = At(2026, 2, 28).Seconds();
  for (std::int64_t second = 0; second < 86400; ++second) {
    const DateTime date = DateTime::FromSeconds(day + second);
    ASSERT_EQ(FromSerial(*ToSerial(date)), date) << second;
  }
}

TEST(SerialDate, EveryDayComesBack) {
  for (std::int64_t day = At(1900, 1, 1).Seconds(); day <= At(9999, 12, 31).Seconds(); day += 86400) {
    const DateTime date = DateTime::FromSeconds(day + 3661);
    ASSERT_EQ(FromSerial(*ToSerial(date)), date);
  }
}

TEST(FormatCode, TellsDatesAndTimesFromNumbers) {
  struct Expectation {
    std::string_view Code;
    DateKind Kind;
  };
  const Expectation expectations[] = {
      {"General", DateKind::None},
      {"0.00", DateKind::None},
      {"#,##0.00\\ \"EUR\"", DateKind::None},
      {"0.00E+00", DateKind::None},
      {"@", DateKind::None},
      {"0\\d", DateKind::None},
      {"0\" days\"", DateKind::None},
      {"[Red]0.00", DateKind::None},
      {"[h]:mm:ss", DateKind::None},
      {"[mm]:ss", DateKind::None},
      {"0;dd.mm.yyyy", DateKind::None},
      {"\"unclosed dd", DateKind::None},
      {"[unclosed dd", DateKind::None},
      {"", DateKind::None},
      {"dd\\.mm\\.yyyy", DateKind::Date},
      {"dd\\.mm\\.yyyy\\ hh:mm:ss", DateKind::Date},
      {"[$-407]d\\. mmmm yyyy", DateKind::Date},
      {"[Magenta]d/m/yy", DateKind::Date},
      {"MMM", DateKind::Date},
      {"YYYY-MM-DD", DateKind::Date},
      {"hh:mm", DateKind::Time},
      {"h:mm AM/PM", DateKind::Time},
      {"mm:ss.0", DateKind::Time},
  };
  for (const Expectation& expected : expectations) {
    EXPECT_EQ(KindOfFormatCode(expected.Code), expected.Kind) << expected.Code;
  }
}

TEST(FormatCode, KnowsTheBuiltInFormats) {
  for (const std::uint16_t format :
       std::initializer_list<std::uint16_t>{14, 15, 16, 17, 22, 27, 36, 50, 58}) {
    EXPECT_EQ(KindOfBuiltInFormat(format), DateKind::Date) << format;
  }
  for (const std::uint16_t format : std::initializer_list<std::uint16_t>{18, 19, 20, 21, 45, 47}) {
    EXPECT_EQ(KindOfBuiltInFormat(format), DateKind::Time) << format;
  }
  for (const std::uint16_t format :
       std::initializer_list<std::uint16_t>{0, 1, 4, 11, 13, 23, 37, 44, 46, 49, 59, 164}) {
    EXPECT_EQ(KindOfBuiltInFormat(format), DateKind::None) << format;
  }
}

}  // namespace
}  // namespace velmora::tables
