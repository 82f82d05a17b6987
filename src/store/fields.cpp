#include "store/fields.h"

#include <fmt/format.h>

#include <cmath>
#include <type_traits>

#include "base/numbers.h"
#include "base/text.h"

namespace velmora::store {
namespace {

// Beyond these a double has no 64-bit counterpart.
constexpr double LargestNumber = 9223372036854774784.0;

std::int64_t ToNumber(double value) {
  return std::fabs(value) <= LargestNumber ? static_cast<std::int64_t>(value) : 0;
}

}  // namespace

std::string FieldText(const FieldValue& value) {
  return std::visit(
      [](const auto& held) -> std::string {
        using Held = std::decay_t<decltype(held)>;
        if constexpr (std::is_same_v<Held, std::monostate>) {
          return "";
        } else if constexpr (std::is_same_v<Held, bool>) {
          return held ? "1" : "0";
        } else if constexpr (std::is_same_v<Held, std::string>) {
          return held;
        } else if constexpr (std::is_same_v<Held, DateTime>) {
          return FormatDateTime(held);
        } else if constexpr (std::is_same_v<Held, std::vector<std::string>>) {
          return Join(held, "; ");
        } else {
          return fmt::format("{}", held);
        }
      },
      value);
}

std::int64_t FieldNumber(const FieldValue& value) {
  if (const auto* number = std::get_if<std::int64_t>(&value)) return *number;
  if (const auto* flag = std::get_if<bool>(&value)) return *flag ? 1 : 0;
  if (const auto* real = std::get_if<double>(&value)) return ToNumber(*real);
  if (const auto* text = std::get_if<std::string>(&value)) return ParseInteger(*text).value_or(0);
  return 0;
}

DateTime FieldDate(const FieldValue& value) {
  const auto* date = std::get_if<DateTime>(&value);
  return date != nullptr ? *date : DateTime();
}

bool FieldBool(const FieldValue& value) {
  if (const auto* text = std::get_if<std::string>(&value); text != nullptr && EqualsFold(*text, "true"))
    return true;
  if (const auto* real = std::get_if<double>(&value)) return *real != 0;
  return FieldNumber(value) != 0;
}

}  // namespace velmora::store
