// Text helpers. Text is UTF-8 in std::string; "character" means a code point.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

// --- Case: one simple one-to-one mapping serves every comparison without regard to case. ---

std::string ToLower(std::string_view text);
// Of ASCII letters only: case as the formats of the field see it (HTML, MIME).
constexpr char ToLowerAscii(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}
std::string ToUpper(std::string_view text);
// The form under which two texts that differ in case only are equal, and the order of listings ("folded
// ordinal order").
std::string FoldCase(std::string_view text);
bool EqualsFold(std::string_view a, std::string_view b);
bool StartsWithFold(std::string_view text, std::string_view prefix);
bool ContainsFold(std::string_view text, std::string_view part);

// --- Cutting and joining. ---

// Without blanks and tabs, CR and LF at both ends.
std::string_view Trim(std::string_view text);
// Split at every separator; an empty text gives one empty piece. With `limit` above 0 at most that many
// pieces, the last one holding the rest.
std::vector<std::string> Split(std::string_view text, std::string_view separator, std::size_t limit = 0);
std::string Join(const std::vector<std::string>& pieces, std::string_view separator);
// Every occurrence replaced from left to right; an empty `from` changes nothing.
std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to);

// --- Characters. ---

inline constexpr char32_t LastCharacter = 0x10FFFF;

// The bytes at the start that are ASCII: what conversions may take over as a whole.
std::size_t AsciiPrefix(std::string_view text);
// Number of code points; a byte that is no part of valid UTF-8 counts as one.
std::size_t CountCharacters(std::string_view text);
// The first `count` code points, or all.
std::string_view LeftCharacters(std::string_view text, std::size_t count);
// The code point that starts at `position`, which moves behind it. An invalid byte gives U+FFFD and moves by
// one.
char32_t NextCharacter(std::string_view text, std::size_t& position);
void AppendCharacter(std::string& text, char32_t character);
bool IsValidUtf8(std::string_view text);
// Invalid bytes replaced by U+FFFD.
std::string MakeValidUtf8(std::string_view text);
// Control characters (below U+0020, U+007F, U+0080..U+009F) replaced by one blank each.
std::string BlankControlCharacters(std::string_view text);

}  // namespace velmora
