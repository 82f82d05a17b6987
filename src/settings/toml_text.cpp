#include "settings/toml_text.h"

#include <toml++/toml.h>
#include <algorithm>
#include <limits>
#include <sstream>

#include "base/text.h"

namespace velmora::settings {
namespace {

constexpr std::size_t MaximumBytes = std::size_t{1} << 20;
// The parser makes a table per dotted key part and takes them down recursively: a long enough chain would
// exhaust the stack.
constexpr std::size_t MaximumDotsPerLine = 32;
// Two levels are the program's; a few more may be somebody else's.
constexpr int MaximumLevels = 8;

// Position behind the string that opens at `start`; a string that is never closed ends with the text. The
// parser says what is wrong with it, here it only must not hide what follows.
std::size_t SkipString(std::string_view bytes, std::size_t start) {
  const char quote = bytes[start];
  const std::string_view triple = quote == '"' ? "\"\"\"" : "'''";
  const bool isLong = bytes.substr(start, triple.size()) == triple;
  std::size_t position = start + (isLong ? triple.size() : 1);
  while (position < bytes.size()) {
    const char character = bytes[position];
    if (quote == '"' && character == '\\') {
      position += 2;
    } else if (isLong && bytes.substr(position, triple.size()) == triple) {
      // Up to two quotes of the text may stand before the closing three.
      const std::size_t end = bytes.find_first_not_of(quote, position);
      return std::min(end, bytes.size());
    } else if (!isLong && (character == quote || character == '\n')) {
      return position + 1;
    } else {
      ++position;
    }
  }
  return bytes.size();
}

bool NestsTooDeep(std::string_view bytes) {
  std::size_t dots = 0;
  for (std::size_t position = 0; position < bytes.size();) {
    const char character = bytes[position];
    if (character == '"' || character == '\'') {
      position = SkipString(bytes, position);
      continue;
    }
    if (character == '#') {
      position = std::min(bytes.find('\n', position), bytes.size());
      continue;
    }
    dots = character == '\n' ? 0 : dots + (character == '.' ? 1 : 0);
    if (dots > MaximumDotsPerLine) {
      return true;
    }
    ++position;
  }
  return false;
}

// Whether tables or arrays lie within more than `levels` others.
bool IsDeeperThan(const toml::node& node, int levels) {
  if (levels == 0) {
    return node.is_table() || node.is_array();
  }
  if (const toml::table* table = node.as_table()) {
    return std::any_of(table->begin(), table->end(),
                       [&](const auto& pair) { return IsDeeperThan(pair.second, levels - 1); });
  }
  if (const toml::array* array = node.as_array()) {
    return std::any_of(array->begin(), array->end(),
                       [&](const toml::node& element) { return IsDeeperThan(element, levels - 1); });
  }
  return false;
}

std::optional<toml::table> ParseTable(std::string_view bytes) {
  if (bytes.size() > MaximumBytes || NestsTooDeep(bytes)) {
    return std::nullopt;
  }
  try {
    toml::table table = toml::parse(bytes);
    return IsDeeperThan(table, MaximumLevels) ? std::nullopt : std::optional(std::move(table));
  } catch (const toml::parse_error&) {
    return std::nullopt;
  }
}

std::optional<Value> ToValue(const toml::node& node) {
  if (const auto* text = node.as_string()) {
    return Value(text->get());
  }
  if (const auto* number = node.as_integer()) {
    const std::int64_t wide = number->get();
    if (wide >= std::numeric_limits<std::int32_t>::min() &&
        wide <= std::numeric_limits<std::int32_t>::max()) {
      return Value(static_cast<std::int32_t>(wide));
    }
  }
  return std::nullopt;
}

void Apply(toml::table& table, const Change& change) {
  const std::string section = MakeValidUtf8(change.Section);
  const std::string name = MakeValidUtf8(change.Name);
  toml::table* values = table[section].as_table();
  if (!change.NewValue) {
    if (values != nullptr) {
      values->erase(name);
    }
    return;
  }
  if (values == nullptr) {
    table.insert_or_assign(section, toml::table{});
    values = table[section].as_table();
  }
  if (const auto* text = std::get_if<std::string>(&*change.NewValue)) {
    values->insert_or_assign(name, MakeValidUtf8(*text));
  } else {
    values->insert_or_assign(name, std::int64_t{std::get<std::int32_t>(*change.NewValue)});
  }
}

std::string Format(const toml::table& table) {
  // One value, one line: whatever is in a text stands escaped.
  const toml::format_flags flags = toml::toml_formatter::default_flags &
                                   ~toml::format_flags::allow_literal_strings &
                                   ~toml::format_flags::allow_multi_line_strings;
  std::ostringstream text;
  text << toml::toml_formatter(table, flags) << '\n';
  return std::move(text).str();
}

bool IsReadable(std::string_view key, const toml::node& value) {
  toml::table alone;
  alone.insert(key, value);
  return ParseTable(Format(alone)).has_value();
}

// The library writes some keys that only a person can have typed, quotes in quotes, so that nobody can read
// the file any more: such a key is given up rather than the file.
void RemoveUnwritable(toml::table& table);
void RemoveUnwritable(toml::array& array) {
  for (toml::node& element : array) {
    if (toml::table* const inner = element.as_table()) RemoveUnwritable(*inner);
    if (toml::array* const inner = element.as_array()) RemoveUnwritable(*inner);
  }
}
void RemoveUnwritable(toml::table& table) {
  for (auto entry = table.begin(); entry != table.end();) {
    if (IsReadable(entry->first.str(), entry->second)) {
      ++entry;
      continue;
    }
    if (toml::table* const inner = entry->second.as_table()) RemoveUnwritable(*inner);
    if (toml::array* const inner = entry->second.as_array()) RemoveUnwritable(*inner);
    entry = IsReadable(entry->first.str(), entry->second) ? std::next(entry) : table.erase(entry);
  }
}

}  // namespace

std::optional<Values> ParseSettings(std::string_view bytes) {
  const std::optional<toml::table> table = ParseTable(bytes);
  if (!table) {
    return std::nullopt;
  }
  Values values;
  for (const auto& [section, node] : *table) {
    const toml::table* entries = node.as_table();
    if (entries == nullptr) {
      continue;
    }
    SectionValues& target = values[std::string(section.str())];
    for (const auto& [name, entry] : *entries) {
      if (std::optional<Value> value = ToValue(entry)) {
        target.emplace(std::string(name.str()), *std::move(value));
      }
    }
  }
  return values;
}

std::string ChangeSettings(std::string_view bytes, const std::vector<Change>& changes) {
  toml::table table = ParseTable(bytes).value_or(toml::table{});
  for (const Change& change : changes) {
    Apply(table, change);
  }
  std::string text = Format(table);
  if (!ParseTable(text)) {
    RemoveUnwritable(table);
    text = Format(table);
  }
  return text;
}

}  // namespace velmora::settings
