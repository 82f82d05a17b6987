// The values of the settings store: sections of named values, each a text or a 32-bit number.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace velmora::settings {

using Value = std::variant<std::string, std::int32_t>;
using SectionValues = std::map<std::string, Value, std::less<>>;
using Values = std::map<std::string, SectionValues, std::less<>>;

// Null when the value is missing.
const Value* FindValue(const Values& values, std::string_view section, std::string_view name);

// A switch is on when its value is the text "1" or the number 1.
bool ToSwitch(const Value& value);
// A number, also where it is written as text; nothing for any other text.
std::optional<std::int32_t> ToNumber(const Value& value);
// A text, also of a number.
std::string ToText(const Value& value);
inline Value FromSwitch(bool on) { return std::string(on ? "1" : "0"); }

}  // namespace velmora::settings
