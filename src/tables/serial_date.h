// Dates as Excel counts them: days since 31.12.1899 with the time as fraction, and a day too many, the
// 29.2.1900, which never was ([MS-XLS] 2.5.8 and the 1900 date system of [ECMA-376] 18.17.4.1).
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "base/date_time.h"

namespace velmora::tables {

// The serial number; nothing for a day before 1900 that is not the null day, whose times are times alone.
std::optional<double> ToSerial(DateTime date);

// Days from the start of the 1900 system to that of 1904.
inline constexpr int Days1904 = 1462;
// Rounded to the second. Nothing for what names no day: negative ones, the 29.2.1900, those behind 9999.
std::optional<DateTime> FromSerial(double serial);

enum class DateKind { None, Date, Time };  // Date: with a day, and perhaps a time
// What the number formats that every workbook has show (2.4.126, built-in identifiers below 164).
DateKind KindOfBuiltInFormat(std::uint16_t format);
// What a format code shows by its first section. Times that count beyond 24 hours ("[h]:mm") are numbers.
DateKind KindOfFormatCode(std::string_view code);

}  // namespace velmora::tables
