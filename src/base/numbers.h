// Numbers as text, in German form whatever the host's locale.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace velmora {

// Numbers are rounded half away from zero; what is no number or infinite shows as 0.

// `value` with `decimals` decimal places, "." between thousands: FormatNumber(1234.5, 3) is "1.234,500".
std::string FormatNumber(double value, int decimals);
// A number by one of the format texts that the program uses: "0", "###0", "#,#0", "#,#0.000", "###,###".
// "0" stands for a digit that is always shown: a zero by "###,###" is an empty text.
std::string FormatNumber(double value, std::string_view format);
// A size in bytes: below 1024 the plain number, else in " KB", " MB" or " GB" by `format`.
std::string FormatSize(std::int64_t bytes, std::string_view format = "#,#0.000");
// Upper-case hexadecimal without prefix.
std::string FormatHex(std::uint64_t value);
// A whole decimal number with an optional sign, blanks around it ignored; nothing for any other text or what
// does not fit.
std::optional<std::int64_t> ParseInteger(std::string_view text);

}  // namespace velmora
