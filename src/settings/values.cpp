#include "settings/values.h"

#include <fmt/format.h>

#include <limits>

#include "base/numbers.h"

namespace velmora::settings {

const Value* FindValue(const Values& values, std::string_view section, std::string_view name) {
  const auto inSection = values.find(section);
  if (inSection == values.end()) {
    return nullptr;
  }
  const auto value = inSection->second.find(name);
  return value == inSection->second.end() ? nullptr : &value->second;
}

bool ToSwitch(const Value& value) { return ToText(value) == "1"; }

std::optional<std::int32_t> ToNumber(const Value& value) {
  if (const auto* number = std::get_if<std::int32_t>(&value)) {
    return *number;
  }
  const std::optional<std::int64_t> wide = ParseInteger(std::get<std::string>(value));
  const bool fits = wide && *wide >= std::numeric_limits<std::int32_t>::min() &&
                    *wide <= std::numeric_limits<std::int32_t>::max();
  return fits ? std::optional(static_cast<std::int32_t>(*wide)) : std::nullopt;
}

std::string ToText(const Value& value) {
  const auto* text = std::get_if<std::string>(&value);
  return text != nullptr ? *text : fmt::format("{}", std::get<std::int32_t>(value));
}

}  // namespace velmora::settings
