#include "tables/utf16.h"

#include "base/text.h"

namespace velmora::tables {
namespace {

constexpr char32_t FirstPaired = 0x10000, Replacement = 0xFFFD;
constexpr char16_t FirstHigh = 0xD800, FirstLow = 0xDC00, BehindLow = 0xE000;
constexpr unsigned HalfBits = 10;

constexpr std::size_t UnitsOf(char32_t character) { return character < FirstPaired ? 1 : 2; }

}  // namespace

std::u16string ToUtf16(std::string_view utf8) {
  const std::size_t ascii = AsciiPrefix(utf8);
  std::u16string units(utf8.begin(), utf8.begin() + static_cast<std::ptrdiff_t>(ascii));
  for (std::size_t at = ascii; at < utf8.size();) {
    const char32_t character = NextCharacter(utf8, at);
    if (character < FirstPaired) {
      units += static_cast<char16_t>(character);
    } else {
      const char32_t rest = character - FirstPaired;
      units += static_cast<char16_t>(FirstHigh + (rest >> HalfBits));
      units += static_cast<char16_t>(FirstLow + (rest & ((1U << HalfBits) - 1)));
    }
  }
  return units;
}

std::string FromUtf16(std::u16string_view units) {
  std::string text;
  text.reserve(units.size());
  for (std::size_t at = 0; at < units.size(); ++at) {
    char32_t character = units[at];
    if (character >= FirstHigh && character < BehindLow) {
      const bool isPair = character < FirstLow && at + 1 < units.size() && units[at + 1] >= FirstLow &&
                          units[at + 1] < BehindLow;
      character = isPair ? FirstPaired + ((character - FirstHigh) << HalfBits) + (units[++at] - FirstLow)
                         : Replacement;
    }
    AppendCharacter(text, character);
  }
  return text;
}

std::size_t CountUtf16(std::string_view utf8) {
  std::size_t count = AsciiPrefix(utf8);
  for (std::size_t at = count; at < utf8.size();) count += UnitsOf(NextCharacter(utf8, at));
  return count;
}

std::string_view LeftUtf16(std::string_view utf8, std::size_t limit) {
  if (utf8.size() <= limit) return utf8;  // a unit takes at least one byte
  std::size_t count = 0;
  for (std::size_t at = 0; at < utf8.size();) {
    const std::size_t start = at;
    count += UnitsOf(NextCharacter(utf8, at));
    if (count > limit) return utf8.substr(0, start);
  }
  return utf8;
}

}  // namespace velmora::tables
