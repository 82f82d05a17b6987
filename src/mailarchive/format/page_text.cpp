#include "mailarchive/format/page_text.h"

#include <algorithm>

namespace velmora::mailarchive {
namespace {

constexpr std::string_view HeadTags[] = {"meta", "link", "base", "iframe", "frame"};

// Case as an HTML parser sees it: of ASCII letters only.
constexpr char Lower(char letter) {
  return 'A' <= letter && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool StartsWithHeadTag(std::string_view text) {
  return std::ranges::any_of(HeadTags, [&](std::string_view tag) {
    return std::ranges::equal(text.substr(0, tag.size()), tag, {}, Lower);
  });
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
