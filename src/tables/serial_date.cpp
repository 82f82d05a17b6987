#include "tables/serial_date.h"

#include <cmath>
#include <cstddef>

#include "base/text.h"

namespace velmora::tables {
namespace {

// Days since the null date, 30.12.1899: from this one on serial numbers and days are the same.
constexpr std::int64_t FirstOfMarch1900 = 61, FirstOfJanuary1900 = 2;
constexpr std::int64_t LeapDay1900 = 60;        // the serial number of the day that never was
constexpr double BehindLastSerial = 2958466.0;  // 1.1.10000

struct FormatRange {
  std::uint16_t First, Last;
  DateKind Kind;
};
constexpr FormatRange BuiltInDates[] = {
    {14, 17, DateKind::Date}, {18, 21, DateKind::Time}, {22, 22, DateKind::Date}, {27, 36, DateKind::Date},
    {45, 45, DateKind::Time}, {47, 47, DateKind::Time}, {50, 58, DateKind::Date},
};

}  // namespace

std::optional<double> ToSerial(DateTime date) {
  const std::int64_t seconds = date.Seconds();
  if (seconds < 0) return std::nullopt;
  const std::int64_t day = seconds / SecondsPerDay;
  if (day != 0 && day < FirstOfJanuary1900) return std::nullopt;
  const std::int64_t serialDay = day != 0 && day < FirstOfMarch1900 ? day - 1 : day;
  const double fraction = static_cast<double>(seconds % SecondsPerDay) / static_cast<double>(SecondsPerDay);
  return static_cast<double>(serialDay) + fraction;
}

std::optional<DateTime> FromSerial(double serial) {
  if (!(serial >= 0 && serial < BehindLastSerial)) return std::nullopt;  // NaN, too
  const std::int64_t seconds = std::llround(serial * static_cast<double>(SecondsPerDay));
  const std::int64_t serialDay = seconds / SecondsPerDay;
  if (serialDay == LeapDay1900 || static_cast<double>(serialDay) >= BehindLastSerial) return std::nullopt;
  const bool isBeforeLeapDay = serialDay > 0 && serialDay < LeapDay1900;
  return DateTime::FromSeconds(seconds + (isBeforeLeapDay ? SecondsPerDay : 0));
}

DateKind KindOfBuiltInFormat(std::uint16_t format) {
  for (const FormatRange& range : BuiltInDates) {
    if (format >= range.First && format <= range.Last) return range.Kind;
  }
  return DateKind::None;
}

DateKind KindOfFormatCode(std::string_view code) {
  bool hasDay = false, hasTime = false, hasMonth = false;
  for (std::size_t at = 0; at < code.size() && code[at] != ';'; ++at) {
    const char letter = ToLowerAscii(code[at]);
    switch (letter) {
      case '\\':
      case '_':
      case '*':  // the character behind is shown, left blank or repeated
        ++at;
        break;
      case '"':
        at = code.find('"', at + 1);
        break;
      case '[': {  // a colour, a condition, a language; or a time that counts on
        const char inside = at + 1 < code.size() ? ToLowerAscii(code[at + 1]) : ' ';
        const std::size_t end = code.find(']', at);
        const bool isElapsed = (inside == 'h' || inside == 'm' || inside == 's') && end <= at + 3;
        if (isElapsed) return DateKind::None;
        at = end;
        break;
      }
      case 'd':
      case 'y':
        hasDay = true;
        break;
      case 'm':  // minutes beside hours or seconds
        hasMonth = true;
        break;
      case 'h':
      case 's':
        hasTime = true;
        break;
      default:
        break;
    }
    if (at == std::string_view::npos) break;
  }
  if (hasDay || (hasMonth && !hasTime)) return DateKind::Date;
  return hasTime ? DateKind::Time : DateKind::None;
}

}  // namespace velmora::tables
