#include "ui/html_text.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "html/converters.h"

namespace velmora::ui {
namespace {

constexpr auto LineTags =
    std::to_array<std::string_view>({"br", "p", "div", "tr", "li", "h1", "h2", "h3", "table", "blockquote"});
constexpr auto HiddenTags = std::to_array<std::string_view>({"script", "style", "title"});

template <std::size_t Count>
bool IsOneOf(const std::array<std::string_view, Count>& names, std::string_view name) {
  return std::ranges::find(names, name) != names.end();
}

// Of the inside of a tag: "BR/" and "/br" are "br".
std::string NameOfTag(std::string_view tag) {
  constexpr std::size_t longestName = 12;
  if (tag.starts_with('/')) tag.remove_prefix(1);
  return ToLower(tag.substr(0, std::min(tag.find_first_of(" \t\r\n/>"), longestName)));
}

bool IsBlank(char character) { return std::string_view(" \t\r\n").find(character) != std::string_view::npos; }

// Blanks and line ends of the source count as one blank.
void AppendText(std::string& text, std::string_view source) {
  for (const char character : source) {
    if (!IsBlank(character)) {
      text.push_back(character);
    } else if (!text.empty() && !IsBlank(text.back())) {
      text.push_back(' ');
    }
  }
}

}  // namespace

std::string TextOfHtml(std::string_view html) {
  std::string text, hiddenBy;
  for (std::size_t at = 0; at < html.size();) {
    const std::size_t open = std::min(html.find('<', at), html.size());
    if (hiddenBy.empty()) AppendText(text, html.substr(at, open - at));
    if (open == html.size()) break;
    const std::string_view rest = html.substr(open + 1);
    const bool isComment = rest.starts_with("!--");
    const std::size_t close = isComment ? html.find("-->", open) : html.find('>', open);
    if (close == std::string_view::npos) break;
    at = close + (isComment ? 3 : 1);
    if (isComment) continue;
    const std::string name = NameOfTag(rest.substr(0, close - open - 1));
    if (hiddenBy.empty() && IsOneOf(HiddenTags, name)) {
      hiddenBy = rest.starts_with('/') ? "" : name;
    } else if (rest.starts_with('/') && name == hiddenBy) {
      hiddenBy.clear();
    }
    if (hiddenBy.empty() && IsOneOf(LineTags, name) && !text.empty() && text.back() != '\n')
      text.push_back('\n');
  }
  return html::HtmlToText(text);
}

}  // namespace velmora::ui
