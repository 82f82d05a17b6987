// The part of text.h that knows upper from lower case.
#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

#include "base/case_table.h"
#include "base/text.h"

namespace velmora {
namespace {

using case_table::Run;
using case_table::Runs;

enum class Case { Lower, Upper };

// Latin, Greek, Cyrillic and Armenian are looked up directly; the rest by search.
constexpr std::size_t DirectSize = 0x600;

constexpr char32_t Shift(char32_t character, std::int32_t delta) {
  return static_cast<char32_t>(static_cast<std::int32_t>(character) + delta);
}

template <typename Visit>
constexpr void ForEachPair(Visit visit) {
  for (const Run& run : Runs)
    for (char32_t capital = run.First; capital <= run.Last; capital += run.Step)
      visit(capital, Shift(capital, run.Delta));
}

constexpr std::array<char16_t, DirectSize> MakeDirectTable(Case target) {
  std::array<char16_t, DirectSize> table{};
  for (std::size_t i = 0; i < table.size(); ++i) table[i] = static_cast<char16_t>(i);
  for (std::size_t i = 0; i < 26; ++i) {
    if (target == Case::Lower) table['A' + i] = static_cast<char16_t>('a' + i);
    if (target == Case::Upper) table['a' + i] = static_cast<char16_t>('A' + i);
  }
  ForEachPair([&](char32_t capital, char32_t small) {
    const char32_t from = target == Case::Lower ? capital : small;
    const char32_t to = target == Case::Lower ? small : capital;
    if (from < DirectSize) table[from] = static_cast<char16_t>(to);
  });
  return table;
}

constexpr std::array<char16_t, DirectSize> DirectLower = MakeDirectTable(Case::Lower);
constexpr std::array<char16_t, DirectSize> DirectUpper = MakeDirectTable(Case::Upper);

constexpr bool IsInRun(char32_t character, char32_t first, char32_t last, std::uint8_t step) {
  return character >= first && character <= last && (character - first) % step == 0;
}

char32_t LowerBeyondTable(char32_t character) {
  const auto run = std::upper_bound(Runs.begin(), Runs.end(), character,
                                    [](char32_t value, const Run& entry) { return value < entry.First; });
  if (run == Runs.begin()) return character;
  const Run& found = *std::prev(run);
  return IsInRun(character, found.First, found.Last, found.Step) ? Shift(character, found.Delta) : character;
}

// The runs are not sorted by their small letters; upper case of rare scripts may take a walk.
char32_t UpperBeyondTable(char32_t character) {
  for (const Run& run : Runs)
    if (IsInRun(character, Shift(run.First, run.Delta), Shift(run.Last, run.Delta), run.Step))
      return Shift(character, -run.Delta);
  return character;
}

template <Case Target>
char32_t MapCharacter(char32_t character) {
  if constexpr (Target == Case::Lower) {
    return character < DirectSize ? DirectLower[character] : LowerBeyondTable(character);
  } else {
    return character < DirectSize ? DirectUpper[character] : UpperBeyondTable(character);
  }
}

constexpr bool IsAscii(char byte) { return static_cast<unsigned char>(byte) < 0x80; }

// Plain arithmetic, so that the compiler can take many bytes at a time.
template <Case Target>
void AppendAscii(std::string& mapped, std::string_view ascii) {
  constexpr unsigned char first = Target == Case::Lower ? 'A' : 'a';
  const std::size_t start = mapped.size();
  mapped.append(ascii);
  for (char& byte : std::span(mapped).subspan(start)) {
    const auto code = static_cast<unsigned char>(byte);
    const bool isLetter = static_cast<unsigned char>(code - first) < 26;
    byte = static_cast<char>(code ^ (isLetter ? 0x20 : 0));
  }
}

// Invalid bytes come through as they are: names from a disk must stay distinguishable.
template <Case Target>
std::string MapText(std::string_view text) {
  std::string mapped;
  mapped.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) {
    if (IsAscii(text[position])) {
      const std::size_t ascii = AsciiPrefix(text.substr(position));
      AppendAscii<Target>(mapped, text.substr(position, ascii));
      position += ascii;
      continue;
    }
    const std::size_t start = position;
    const char32_t character = NextCharacter(text, position);
    const char32_t other = MapCharacter<Target>(character);
    if (other == character) {
      mapped.append(text, start, position - start);
    } else {
      AppendCharacter(mapped, other);
    }
  }
  return mapped;
}

// Compares both texts as far as `prefix` goes; `end` is the position in `text` behind it.
bool MatchesFold(std::string_view text, std::string_view prefix, std::size_t& end) {
  end = 0;
  std::size_t position = 0;
  while (position < prefix.size()) {
    if (end == text.size()) return false;
    if (IsAscii(text[end]) && IsAscii(prefix[position])) {
      if (DirectLower[static_cast<unsigned char>(text[end++])] !=
          DirectLower[static_cast<unsigned char>(prefix[position++])])
        return false;
      continue;
    }
    const std::size_t textStart = end;
    const std::size_t prefixStart = position;
    const char32_t a = MapCharacter<Case::Lower>(NextCharacter(text, end));
    const char32_t b = MapCharacter<Case::Lower>(NextCharacter(prefix, position));
    if (a != b) return false;
    // Different invalid bytes read as one replacement character, but are not equal.
    if (a == 0xFFFD &&
        text.substr(textStart, end - textStart) != prefix.substr(prefixStart, position - prefixStart))
      return false;
  }
  return true;
}

}  // namespace

std::string ToLower(std::string_view text) { return MapText<Case::Lower>(text); }
std::string ToUpper(std::string_view text) { return MapText<Case::Upper>(text); }
std::string FoldCase(std::string_view text) { return MapText<Case::Lower>(text); }

bool EqualsFold(std::string_view a, std::string_view b) {
  std::size_t end = 0;
  return MatchesFold(a, b, end) && end == a.size();
}

bool StartsWithFold(std::string_view text, std::string_view prefix) {
  std::size_t end = 0;
  return MatchesFold(text, prefix, end);
}

bool ContainsFold(std::string_view text, std::string_view part) {
  return FoldCase(text).find(FoldCase(part)) != std::string::npos;
}

}  // namespace velmora
