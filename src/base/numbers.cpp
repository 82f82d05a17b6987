#include "base/numbers.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <system_error>

#include "base/text.h"

namespace velmora {
namespace {

// How a number is to look.
struct NumberLayout {
  bool Grouped = false;
  std::size_t WholeDigits = 1;  // at least so many digits before the decimal comma
  std::size_t Decimals = 0;
};

// The digits of a number without sign: Whole has no leading zeros, Fraction has exactly the decimals.
struct DecimalDigits {
  std::string Whole;
  std::string Fraction;
};

void RoundUp(std::string& digits) {
  for (std::size_t i = digits.size(); i > 0; --i) {
    if (digits[i - 1] != '9') {
      ++digits[i - 1];
      return;
    }
    digits[i - 1] = '0';
  }
  digits.insert(digits.begin(), '1');
}

// Rounds half away from zero, on the shortest decimal form of the number: 2.675 with two decimals is what a
// person reads it as, 2,68, and not the binary number a hair below.
DecimalDigits ToDigits(double magnitude, std::size_t decimals) {
  std::array<char, 32> buffer{};
  const auto written =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude, std::chars_format::scientific);
  const std::string_view scientific(buffer.data(), static_cast<std::size_t>(written.ptr - buffer.data()));
  const std::size_t exponentMark = scientific.find('e');
  const int exponent = static_cast<int>(ParseInteger(scientific.substr(exponentMark + 1)).value_or(0));
  std::string digits;
  for (const char digit : scientific.substr(0, exponentMark))
    if (digit != '.') digits += digit;
  // digits[0] stands at 10^exponent; `kept` digits of them are shown.
  if (exponent < 0) digits.insert(0, static_cast<std::size_t>(-exponent), '0');
  const std::size_t wholeCount = static_cast<std::size_t>(std::max(exponent, 0)) + 1;
  const std::size_t kept = wholeCount + decimals;
  const bool roundUp = digits.size() > kept && digits[kept] >= '5';
  digits.resize(kept, '0');
  if (roundUp) RoundUp(digits);
  const std::size_t point = digits.size() - decimals;
  const std::size_t firstDigit = std::min(digits.find_first_not_of('0'), point);
  return {digits.substr(firstDigit, point - firstDigit), digits.substr(point)};
}

std::string LayOut(double value, const NumberLayout& layout) {
  if (!std::isfinite(value)) value = 0;
  DecimalDigits digits = ToDigits(std::fabs(value), layout.Decimals);
  const bool isZero = digits.Whole.empty() && digits.Fraction.find_first_not_of('0') == std::string::npos;
  if (digits.Whole.size() < layout.WholeDigits)
    digits.Whole.insert(0, layout.WholeDigits - digits.Whole.size(), '0');
  std::string text = value < 0 && !isZero ? "-" : "";
  for (std::size_t i = 0; i < digits.Whole.size(); ++i) {
    if (layout.Grouped && i > 0 && (digits.Whole.size() - i) % 3 == 0) text += '.';
    text += digits.Whole[i];
  }
  if (layout.Decimals > 0) text.append(",").append(digits.Fraction);
  return text;
}

struct SizeUnit {
  std::int64_t Bytes;
  std::string_view Name;
};
constexpr std::array<SizeUnit, 3> SizeUnits = {
    {{std::int64_t{1} << 30, " GB"}, {std::int64_t{1} << 20, " MB"}, {std::int64_t{1} << 10, " KB"}}};

}  // namespace

std::string FormatNumber(double value, int decimals) {
  return LayOut(
      value,
      {.Grouped = true, .WholeDigits = 1, .Decimals = static_cast<std::size_t>(std::max(decimals, 0))});
}

std::string FormatNumber(double value, std::string_view format) {
  const std::string_view whole = format.substr(0, format.find('.'));
  NumberLayout layout;
  layout.Grouped = whole.find(',') != std::string_view::npos;
  layout.WholeDigits = static_cast<std::size_t>(std::count(whole.begin(), whole.end(), '0'));
  if (whole.size() < format.size()) layout.Decimals = format.size() - whole.size() - 1;
  return LayOut(value, layout);
}

std::string FormatSize(std::int64_t bytes, std::string_view format) {
  for (const SizeUnit& unit : SizeUnits)
    if (bytes >= unit.Bytes)
      return FormatNumber(static_cast<double>(bytes) / static_cast<double>(unit.Bytes), format)
          .append(unit.Name);
  return FormatNumber(static_cast<double>(bytes), "0");
}

std::string FormatHex(std::uint64_t value) { return fmt::format("{:X}", value); }

std::optional<std::int64_t> ParseInteger(std::string_view text) {
  text = Trim(text);
  if (text.starts_with('+')) {
    text.remove_prefix(1);
    if (text.starts_with('-')) return std::nullopt;
  }
  std::int64_t value = 0;
  const auto parsed = std::from_chars(text.data(), text.data() + text.size(), value);
  if (parsed.ec != std::errc{} || parsed.ptr != text.data() + text.size()) return std::nullopt;
  return value;
}

}  // namespace velmora
