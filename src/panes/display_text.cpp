#include "panes/display_text.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <cstdint>

#include "base/text.h"

namespace velmora::panes {
namespace {

struct CharacterRange {
  char32_t First, Last;
};

// The marks, embeddings, overrides and isolates of the Unicode bidirectional algorithm (UAX #9, 2).
constexpr auto DirectionCharacters =
    std::to_array<CharacterRange>({{0x061C, 0x061C}, {0x200E, 0x200F}, {0x202A, 0x202E}, {0x2066, 0x2069}});
constexpr CharacterRange LineSeparators = {0x2028, 0x2029};

bool IsIn(char32_t character, const CharacterRange& range) {
  return character >= range.First && character <= range.Last;
}

}  // namespace

std::string DisplayText(std::string_view text, std::size_t longest) {
  const auto head = LeftCharacters(text, longest);
  std::string shown = BlankControlCharacters(MakeValidUtf8(head));
  if (head.size() < text.size()) shown += "…";
  if (AsciiPrefix(shown) == shown.size()) return shown;
  std::string safe;
  safe.reserve(shown.size());
  for (std::size_t position = 0; position < shown.size();) {
    const auto character = NextCharacter(shown, position);
    const auto turnsDirection = [&](const CharacterRange& range) { return IsIn(character, range); };
    if (std::ranges::any_of(DirectionCharacters, turnsDirection)) {
      safe += fmt::format("[U+{:04X}]", static_cast<std::uint32_t>(character));
    } else {
      AppendCharacter(safe, IsIn(character, LineSeparators) ? U' ' : character);
    }
  }
  return safe;
}

}  // namespace velmora::panes
