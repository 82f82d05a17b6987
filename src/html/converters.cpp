#include "html/converters.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "base/code_page.h"
#include "base/text.h"

namespace velmora::html {
namespace {

struct Pair {
  std::string_view Plain;
  std::string_view Html;
};

// In the order in which the pairs apply.
constexpr std::array<Pair, 14> Pairs = {{{"&", "&amp;"},
                                         {"Ä", "&Auml;"},
                                         {"ä", "&auml;"},
                                         {"Ö", "&Ouml;"},
                                         {"ö", "&ouml;"},
                                         {"Ü", "&Uuml;"},
                                         {"ü", "&uuml;"},
                                         {"ß", "&szlig;"},
                                         {"<", "&lt;"},
                                         {">", "&gt;"},
                                         {"\"", "&quot;"},
                                         {" ", "&nbsp;"},
                                         {"©", "&copy;"},
                                         {"\r\n", "<BR>"}}};
constexpr std::array<Pair, 2> Brackets = {{{">", "&gt;"}, {"<", "&lt;"}}};

// Replaces plain texts by their entities in one pass. That gives what pair after pair would give: "&" comes
// first, and no later pair's plain text occurs in what an earlier one has written.
class Replacer {
 public:
  explicit constexpr Replacer(std::span<const Pair> pairs) : pairs_(pairs) {
    for (std::size_t i = pairs.size(); i > 0; --i)
      firstPair_[Lead(pairs[i - 1].Plain)] = static_cast<std::uint8_t>(i);
  }

  void Append(std::string& html, std::string_view text) const {
    std::size_t taken = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
      const std::size_t first = firstPair_[Lead(text.substr(i, 1))];
      if (first == 0) continue;
      const auto pair = std::find_if(pairs_.begin() + static_cast<std::ptrdiff_t>(first) - 1, pairs_.end(),
                                     [&](const Pair& candidate) { return Starts(text, i, candidate.Plain); });
      if (pair == pairs_.end()) continue;
      html.append(text, taken, i - taken).append(pair->Html);
      taken = i + pair->Plain.size();
      i = taken - 1;
    }
    html.append(text, taken);
  }

 private:
  static constexpr std::uint8_t Lead(std::string_view text) {
    return static_cast<std::uint8_t>(text.front());
  }
  static constexpr bool Starts(std::string_view text, std::size_t position, std::string_view part) {
    return text[position] == part.front() && (part.size() == 1 || text.substr(position, part.size()) == part);
  }

  std::span<const Pair> pairs_;
  std::array<std::uint8_t, 256> firstPair_{};  // by first byte, counted from 1; 0 without a pair
};

constexpr std::span<const Pair> AllPairs(Pairs);
constexpr Replacer ToHtmlWithLineBreaks(AllPairs);
constexpr Replacer ToHtml(AllPairs.first(13));
constexpr Replacer UmlautsOnly(AllPairs.subspan(1, 7));
constexpr Replacer BracketsOnly(Brackets);

}  // namespace

std::string TextToHtml(std::string_view text, bool withLineBreaks) {
  std::string html;
  html.reserve(text.size() + text.size() / 2);
  (withLineBreaks ? ToHtmlWithLineBreaks : ToHtml).Append(html, text);
  return html;
}

std::string HtmlToText(std::string_view text) {
  std::string plain(text);
  for (const Pair& pair : Pairs)
    if (plain.find(pair.Html) != std::string::npos) plain = ReplaceAll(plain, pair.Html, pair.Plain);
  return plain;
}

void AppendUmlautsToHtml(std::string& html, std::string_view text) { UmlautsOnly.Append(html, text); }

std::string UmlautsToHtml(std::string_view text) {
  std::string html;
  html.reserve(text.size() + text.size() / 8);
  AppendUmlautsToHtml(html, text);
  return html;
}

std::string EscapeAngleBrackets(std::string_view text) {
  std::string html;
  html.reserve(text.size() + text.size() / 8);
  BracketsOnly.Append(html, text);
  return html;
}

std::string ToNumericEntities(std::string_view text) {
  const std::string coded = ToCodePage(UmlautsToHtml(text), Unmappable::Reference);
  std::string html;
  html.reserve(coded.size() + coded.size() / 8);
  const std::string_view rest = coded;
  for (std::size_t position = 0; position < rest.size();) {
    const std::size_t ascii = AsciiPrefix(rest.substr(position));
    html.append(rest, position, ascii);
    position += ascii;
    if (position == rest.size()) break;
    const auto code = static_cast<std::uint8_t>(rest[position++]);
    html.append("&#").append(fmt::format_int(code).c_str()) += ';';
  }
  return html;
}

}  // namespace velmora::html
