#include "tables/record_writing.h"

#include <algorithm>

#include "tables/utf16.h"

namespace velmora::tables {

EncodedText::EncodedText(std::string_view utf8)
    : units_(ToUtf16(utf8)),
      isWide_(std::ranges::any_of(units_, [](char16_t unit) { return unit > 0xFF; })) {}

std::size_t EncodedText::WholeUnits(std::size_t first, std::size_t limit) const {
  constexpr char16_t firstHigh = 0xD800, firstLow = 0xDC00;
  const std::size_t left = units_.size() - first;
  if (limit >= left) return left;
  const bool endsInPair =
      limit > 0 && units_[first + limit - 1] >= firstHigh && units_[first + limit - 1] < firstLow;
  return endsInPair ? limit - 1 : limit;
}

void EncodedText::AppendUnits(std::string& stream, std::size_t first, std::size_t count) const {
  for (const char16_t unit : std::u16string_view(units_).substr(first, count)) {
    if (isWide_) {
      AppendLittle(stream, static_cast<std::uint16_t>(unit));
    } else {
      AppendLittle(stream, static_cast<std::uint8_t>(unit));
    }
  }
}

}  // namespace velmora::tables
