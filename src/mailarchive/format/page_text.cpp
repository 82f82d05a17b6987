#include "mailarchive/format/page_text.h"

#include <algorithm>

#include "base/text.h"

namespace velmora::mailarchive {
namespace {

constexpr std::string_view HeadTags[] = {"meta", "link", "base", "iframe", "frame", "form"};

// Whether a variable may stand here, as it is or once another one within it is filled in.
bool MayBeginVariable(std::string_view text) {
  constexpr std::string_view Beginning = "%VELMORA_";
  const auto [inText, inBeginning] = std::ranges::mismatch(text, Beginning);
  return inText != text.begin() && (inBeginning == Beginning.end() || inText == text.end() || *inText == '%');
}

// Whether the text begins with the tag's name, or with a part of it that something put in behind could make
// whole: a variable of the form within the text, or the text that follows it in the page.
bool MayBecome(std::string_view text, std::string_view tag) {
  const auto [inText, inTag] = std::ranges::mismatch(text, tag, {}, ToLowerAscii);
  return inTag == tag.end() || inText == text.end() ||
         MayBeginVariable(text.substr(static_cast<std::size_t>(inText - text.begin())));
}

bool StartsWithHeadTag(std::string_view text) {
  return std::ranges::any_of(HeadTags, [&](std::string_view tag) { return MayBecome(text, tag); });
}

}  // namespace

std::string NeutralizeHeadTags(std::string_view text) {
  std::string neutral;
  std::size_t copied = 0;
  for (auto open = text.find('<'); open != std::string_view::npos; open = text.find('<', open + 1)) {
    if (!StartsWithHeadTag(text.substr(open + 1))) continue;
    neutral += text.substr(copied, open - copied);
    neutral += "&lt;";
    copied = open + 1;
  }
  neutral += text.substr(copied);
  return neutral;
}

}  // namespace velmora::mailarchive
