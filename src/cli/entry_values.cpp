#include "cli/entry_values.h"

#include <fmt/core.h>

#include <string>

#include "base/line_ends.h"
#include "base/numbers.h"
#include "base/text.h"
#include "store/errors.h"

namespace velmora::cli {
namespace {

using store::PropertyKind;

// "2026-12-31T..." as "31.12.2026 ...", any other text as it is.
std::string FromIso(std::string_view text) {
  constexpr std::size_t length = 10, month = 5, day = 8;
  const bool isIso = text.size() >= length && text[month - 1] == '-' && text[day - 1] == '-';
  if (!isIso || (text.size() > length && text[length] != 'T' && text[length] != ' '))
    return std::string(text);
  auto german = fmt::format("{}.{}.{}", text.substr(day, 2), text.substr(month, 2), text.substr(0, 4));
  if (text.size() > length) german += fmt::format(" {}", text.substr(length + 1));
  return german;
}

tl::unexpected<Error> IsNot(std::string_view text, std::string_view what) {
  return Fail(store::store_error::WrongKind, fmt::format("\"{}\" ist {}", text, what));
}

}  // namespace

std::optional<DateTime> ParseDateOption(std::string_view text) { return ParseDateTime(FromIso(Trim(text))); }

Result<store::FieldValue> ParseValue(std::string_view text, PropertyKind kind) {
  if (kind == PropertyKind::Number) {
    const auto number = ParseInteger(text);
    return number ? Result<store::FieldValue>(*number) : IsNot(text, "keine Zahl");
  }
  if (kind == PropertyKind::Date) {
    const auto date = ParseDateOption(text);
    return date ? Result<store::FieldValue>(*date) : IsNot(text, "kein Datum");
  }
  return CleanLines(MakeValidUtf8(text));
}

}  // namespace velmora::cli
