#include "tables/record_writing.h"

#include <algorithm>

#include "tables/utf16.h"

namespace velmora::tables {

EncodedText::EncodedText(std::string_view utf8)
    : units_(ToUtf16(utf8)),
      isWide_(std::ranges::any_of(units_, [](char16_t unit) { return unit > 0xFF; })) {}

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
