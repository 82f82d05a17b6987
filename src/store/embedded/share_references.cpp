#include "store/embedded/share_references.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>
#include <vector>

#include "base/text.h"

namespace velmora::store::embedded {
namespace {

// A character as a browser sees it, and where it is written.
struct Sign {
  char Character = 0;  // "x" for whatever is no ASCII
  std::size_t Begin = 0, End = 0;
};

constexpr std::array<std::pair<std::string_view, char>, 9> NamedReferences{{{"sol;", '/'},
                                                                            {"bsol;", '\\'},
                                                                            {"colon;", ':'},
                                                                            {"Tab;", '\t'},
                                                                            {"NewLine;", '\n'},
                                                                            {"lpar;", '('},
                                                                            {"comma;", ','},
                                                                            {"quot;", '"'},
                                                                            {"apos;", '\''}}};

constexpr int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

constexpr char AsciiOf(std::uint32_t code) { return code > 0 && code < 0x80 ? static_cast<char>(code) : 'x'; }

// What URL parsers leave out wherever it stands.
constexpr bool IsLeftOut(char c) { return c == '\t' || c == '\r' || c == '\n'; }
constexpr bool IsSlash(char c) { return c == '/' || c == '\\'; }

// The character reference behind the "&" at `begin` (the HTML standard; its ";" may be missing).
Sign ReadReference(std::string_view text, std::size_t begin) {
  const std::string_view rest = text.substr(begin + 1);
  for (const auto& [name, character] : NamedReferences) {
    if (rest.starts_with(name)) return {character, begin, begin + 1 + name.size()};
  }
  if (!rest.starts_with('#')) return {'&', begin, begin + 1};
  const bool isHex = rest.size() > 1 && (rest[1] == 'x' || rest[1] == 'X');
  const std::size_t digits = isHex ? 2 : 1;
  std::size_t end = digits;
  std::uint32_t code = 0;
  for (; end < rest.size(); ++end) {
    const int digit = HexDigit(rest[end]);
    if (digit < 0 || (!isHex && digit > 9)) break;
    code = std::min<std::uint32_t>(code * (isHex ? 16 : 10) + static_cast<std::uint32_t>(digit), 0x110000);
  }
  if (end == digits) return {'&', begin, begin + 1};
  if (end < rest.size() && rest[end] == ';') ++end;
  return {AsciiOf(code), begin, begin + 1 + end};
}

std::vector<Sign> ReadSigns(std::string_view text) {
  std::vector<Sign> signs;
  signs.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); i = signs.back().End) {
    signs.push_back(text[i] == '&' ? ReadReference(text, i) : Sign{text[i], i, i + 1});
  }
  return signs;
}

// The escapes of CSS: "\" and up to six hexadecimal digits with a blank behind them, or any other character.
std::vector<Sign> ReadEscapes(const std::vector<Sign>& written) {
  constexpr std::size_t MostDigits = 6;
  std::vector<Sign> signs;
  signs.reserve(written.size());
  for (std::size_t i = 0; i < written.size();) {
    Sign sign = written[i++];
    if (sign.Character == '\\' && i < written.size()) {
      std::uint32_t code = 0;
      const std::size_t digits = i;
      for (; i < written.size() && i - digits < MostDigits && HexDigit(written[i].Character) >= 0; ++i) {
        code = code * 16 + static_cast<std::uint32_t>(HexDigit(written[i].Character));
      }
      sign.Character = i > digits ? AsciiOf(code) : written[i++].Character;
      sign.End = written[i - 1].End;
      const bool hasBlank = digits + 1 <= i && HexDigit(written[digits].Character) >= 0 &&
                            i < written.size() &&
                            (written[i].Character == ' ' || IsLeftOut(written[i].Character));
      if (hasBlank) sign.End = written[i++].End;
    }
    signs.push_back(sign);
  }
  return signs;
}

bool EndsWithWord(const std::vector<Sign>& signs, std::size_t end, std::string_view lowerWord) {
  for (std::size_t left = lowerWord.size(); left > 0; --end) {
    if (end == 0) return false;
    const char c = signs[end - 1].Character;
    if (IsLeftOut(c)) continue;
    if ((c | 0x20) != lowerWord[--left]) return false;
  }
  return true;
}

// Whether a URL may begin at `begin`, or have begun with a scheme that reaches shares.
bool MayBeginReference(const std::vector<Sign>& signs, std::size_t begin) {
  while (begin > 0 && IsLeftOut(signs[begin - 1].Character)) --begin;
  if (begin == 0) return true;
  const char before = signs[begin - 1].Character;
  if (before == ':')
    return !EndsWithWord(signs, begin - 1, "http") && !EndsWithWord(signs, begin - 1, "https");
  return (before >= 0 && before <= ' ') || before == '(' || before == '"' || before == '\'' || before == ',';
}

// The places to be written over.
void FindShareReferences(const std::vector<Sign>& signs, std::vector<Sign>& found) {
  for (std::size_t i = 0; i < signs.size();) {
    if (!IsSlash(signs[i].Character)) {
      ++i;
      continue;
    }
    const std::size_t first = i++;
    const bool isDangerous = MayBeginReference(signs, first);
    for (; i < signs.size() && (IsSlash(signs[i].Character) || IsLeftOut(signs[i].Character)); ++i) {
      if (isDangerous && IsSlash(signs[i].Character)) found.push_back(signs[i]);
    }
  }
}

}  // namespace

std::optional<std::string> BreakShareReferences(std::string_view value) {
  if (value.find_first_of("/\\&") == std::string_view::npos) return std::nullopt;
  const std::vector<Sign> signs = ReadSigns(value);
  std::vector<Sign> found;
  FindShareReferences(signs, found);
  // An attribute tells nobody whether it holds CSS.
  if (value.find('\\') != std::string_view::npos || value.find('&') != std::string_view::npos) {
    FindShareReferences(ReadEscapes(signs), found);
  }
  if (found.empty()) return std::nullopt;
  std::ranges::sort(found, {}, &Sign::Begin);
  std::string broken;
  std::size_t copied = 0;
  for (const Sign& sign : found) {
    if (sign.End <= copied) continue;  // both readings have found it
    const std::size_t begin = std::max(sign.Begin, copied);
    broken.append(value.substr(copied, begin - copied)) += '_';
    copied = sign.End;
  }
  return broken.append(value.substr(copied));
}

}  // namespace velmora::store::embedded
