#include "base/date_time.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>

namespace velmora {
namespace {

using std::chrono::day;
using std::chrono::days;
using std::chrono::month;
using std::chrono::sys_days;
using std::chrono::year;
using std::chrono::year_month_day;

constexpr int FirstYear = 1, LastYear = 9999;  // what four digits can show

constexpr std::int64_t DayNumber(int y, unsigned m, unsigned d) {
  constexpr sys_days nullDay = year(1899) / 12 / 30;
  return (sys_days(year(y) / month(m) / day(d)) - nullDay).count();
}

constexpr std::int64_t FirstSecond = DayNumber(FirstYear, 1, 1) * SecondsPerDay;
constexpr std::int64_t LastSecond = DayNumber(LastYear, 12, 31) * SecondsPerDay + SecondsPerDay - 1;

// The number that `count` digits at the start of `text` make; cuts them off. Below 0: they are no digits.
int TakeDigits(std::string_view& text, std::size_t count) {
  if (text.size() < count) return -1;
  int value = 0;
  for (const char digit : text.substr(0, count)) {
    if (digit < '0' || digit > '9') return -1;
    value = value * 10 + (digit - '0');
  }
  text.remove_prefix(count);
  return value;
}

bool TakeSeparator(std::string_view& text, char separator) {
  if (text.empty() || text.front() != separator) return false;
  text.remove_prefix(1);
  return true;
}

}  // namespace

std::optional<DateTime> DateTime::FromCivil(const CivilTime& civil) {
  const bool timeValid = civil.Hour >= 0 && civil.Hour < 24 && civil.Minute >= 0 && civil.Minute < 60 &&
                         civil.Second >= 0 && civil.Second < 60;
  const bool partsInRange = civil.Year >= FirstYear && civil.Year <= LastYear && civil.Month >= 1 &&
                            civil.Month <= 12 && civil.Day >= 1 && civil.Day <= 31;
  if (!timeValid || !partsInRange) return std::nullopt;
  const auto monthNumber = static_cast<unsigned>(civil.Month);
  const auto dayNumber = static_cast<unsigned>(civil.Day);
  if (!year_month_day(year(civil.Year), month(monthNumber), day(dayNumber)).ok()) return std::nullopt;
  return DateTime(DayNumber(civil.Year, monthNumber, dayNumber) * SecondsPerDay +
                  std::int64_t{civil.Hour} * 3600 + std::int64_t{civil.Minute} * 60 + civil.Second);
}

CivilTime DateTime::Civil() const {
  const std::int64_t shifted = std::clamp(seconds_, FirstSecond, LastSecond) - FirstSecond;
  const auto secondOfDay = static_cast<int>(shifted % SecondsPerDay);
  constexpr sys_days firstDay = year(FirstYear) / 1 / 1;
  const year_month_day date(firstDay + days(shifted / SecondsPerDay));
  return {static_cast<int>(date.year()),
          static_cast<int>(static_cast<unsigned>(date.month())),
          static_cast<int>(static_cast<unsigned>(date.day())),
          secondOfDay / 3600,
          secondOfDay / 60 % 60,
          secondOfDay % 60};
}

std::string FormatDateTime(DateTime date) {
  const CivilTime civil = date.Civil();
  return fmt::format("{:02}.{:02}.{:04} {:02}:{:02}:{:02}", civil.Day, civil.Month, civil.Year, civil.Hour,
                     civil.Minute, civil.Second);
}

std::string FormatDate(DateTime date) {
  const CivilTime civil = date.Civil();
  return fmt::format("{:02}.{:02}.{:04}", civil.Day, civil.Month, civil.Year);
}

std::string FormatTime(DateTime date) {
  const CivilTime civil = date.Civil();
  return fmt::format("{:02}:{:02}:{:02}", civil.Hour, civil.Minute, civil.Second);
}

std::string FormatDuration(std::int64_t seconds) {
  const bool negative = seconds < 0;
  const std::uint64_t magnitude =
      negative ? std::uint64_t{0} - static_cast<std::uint64_t>(seconds) : static_cast<std::uint64_t>(seconds);
  return fmt::format("{}{:02}:{:02}:{:02}", negative ? "-" : "", magnitude / 3600, magnitude / 60 % 60,
                     magnitude % 60);
}

std::optional<DateTime> ParseDateTime(std::string_view text) {
  CivilTime civil;
  civil.Day = TakeDigits(text, 2);
  if (!TakeSeparator(text, '.')) return std::nullopt;
  civil.Month = TakeDigits(text, 2);
  if (!TakeSeparator(text, '.')) return std::nullopt;
  civil.Year = TakeDigits(text, 4);
  if (!text.empty()) {
    if (!TakeSeparator(text, ' ')) return std::nullopt;
    civil.Hour = TakeDigits(text, 2);
    if (!TakeSeparator(text, ':')) return std::nullopt;
    civil.Minute = TakeDigits(text, 2);
    if (!text.empty()) {
      if (!TakeSeparator(text, ':')) return std::nullopt;
      civil.Second = TakeDigits(text, 2);
      if (!text.empty()) return std::nullopt;
    }
  }
  return DateTime::FromCivil(civil);
}

}  // namespace velmora
