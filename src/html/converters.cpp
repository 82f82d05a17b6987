#include "html/converters.h"

#include <fmt/format.h>

#include <array>
#include <cstdint>
#include <iterator>
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
constexpr std::span<const Pair> AllPairs(Pairs);
constexpr std::span<const Pair> PairsWithoutLineBreak = AllPairs.first(13);
constexpr std::span<const Pair> UmlautPairs = AllPairs.subspan(1, 7);

// All umlauts and "ß" are two bytes of UTF-8 that begin with this one.
constexpr char UmlautLead = '\xC3';

// One pass gives what pair after pair would give: the first pair is "&", and no later pair's left side
// occurs in what an earlier one has written.
void AppendReplaced(std::string& html, std::string_view text, std::span<const Pair> pairs,
                    std::string_view leads) {
  std::size_t start = 0;
  for (std::size_t hit = text.find_first_of(leads); hit != std::string_view::npos;
       hit = text.find_first_of(leads, hit)) {
    std::size_t length = 1;
    for (const Pair& pair : pairs) {
      if (!text.substr(hit).starts_with(pair.Plain)) continue;
      html.append(text, start, hit - start).append(pair.Html);
      length = pair.Plain.size();
      start = hit + length;
      break;
    }
    hit += length;
  }
  html.append(text, start);
}

}  // namespace

std::string TextToHtml(std::string_view text, bool withLineBreaks) {
  std::string html;
  html.reserve(text.size() + text.size() / 2);
  AppendReplaced(html, text, withLineBreaks ? AllPairs : PairsWithoutLineBreak, "&\xC3<>\" \xC2\r");
  return html;
}

std::string HtmlToText(std::string_view text) {
  std::string plain(text);
  for (const Pair& pair : Pairs)
    if (plain.find(pair.Html) != std::string::npos) plain = ReplaceAll(plain, pair.Html, pair.Plain);
  return plain;
}

void AppendUmlautsToHtml(std::string& html, std::string_view text) {
  AppendReplaced(html, text, UmlautPairs, std::string_view(&UmlautLead, 1));
}

std::string UmlautsToHtml(std::string_view text) {
  std::string html;
  html.reserve(text.size() + text.size() / 8);
  AppendUmlautsToHtml(html, text);
  return html;
}

std::string EscapeAngleBrackets(std::string_view text) {
  static constexpr std::array<Pair, 2> brackets = {{{">", "&gt;"}, {"<", "&lt;"}}};
  std::string html;
  html.reserve(text.size() + text.size() / 8);
  AppendReplaced(html, text, brackets, "<>");
  return html;
}

std::string ToNumericEntities(std::string_view text) {
  const std::string coded = ToCodePage(UmlautsToHtml(text), Unmappable::Reference);
  std::string html;
  html.reserve(coded.size() + coded.size() / 8);
  for (const char byte : coded) {
    const auto code = static_cast<std::uint8_t>(byte);
    if (code < 0x80) {
      html += byte;
    } else {
      fmt::format_to(std::back_inserter(html), "&#{};", code);
    }
  }
  return html;
}

}  // namespace velmora::html
