// Dates as the program means them: local civil time with a resolution of one second. The null date, "no
// date", is 30.12.1899 00:00:00.
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace velmora {

inline constexpr std::int64_t SecondsPerDay = 86'400;

struct CivilTime {
  int Year = 1899, Month = 12, Day = 30, Hour = 0, Minute = 0, Second = 0;
  bool operator==(const CivilTime&) const = default;
};

class DateTime {
 public:
  constexpr DateTime() = default;  // the null date
  static constexpr DateTime FromSeconds(std::int64_t seconds) { return DateTime(seconds); }
  // Nothing when the parts name no day or time (31.2., 24:00); years go from 1 to 9999.
  static std::optional<DateTime> FromCivil(const CivilTime& civil);

  // Seconds since the null date, without leap seconds.
  constexpr std::int64_t Seconds() const { return seconds_; }
  constexpr bool IsNull() const { return seconds_ == 0; }
  // Seconds beyond the years 1 to 9999 give the first or last moment of them.
  CivilTime Civil() const;
  auto operator<=>(const DateTime&) const = default;

 private:
  explicit constexpr DateTime(std::int64_t seconds) : seconds_(seconds) {}
  std::int64_t seconds_ = 0;
};

std::string FormatDateTime(DateTime date);  // "31.12.2026 23:59:00"; the null date the same way
std::string FormatDate(DateTime date);      // "31.12.2026"
std::string FormatTime(DateTime date);      // "23:59:00"
// A duration as a clock time "hh:mm:ss"; hours go on beyond 24.
std::string FormatDuration(std::int64_t seconds);
// "DD.MM.YYYY", with an optional " HH:MM" or " HH:MM:SS". Nothing for any other text.
std::optional<DateTime> ParseDateTime(std::string_view text);

}  // namespace velmora
