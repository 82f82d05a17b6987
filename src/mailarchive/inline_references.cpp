#include "mailarchive/inline_references.h"

#include "base/text.h"
#include "mailarchive/links.h"

namespace velmora::mailarchive {

namespace {

constexpr bool IsDigit(char character) { return character >= '0' && character <= '9'; }

}  // namespace

std::string ReplaceInlineReferences(std::string_view html, std::string_view location,
                                    const std::vector<std::string>& attachmentPaths) {
  if (location.empty() || attachmentPaths.empty()) return std::string(html);
  const std::string head = std::string(location) + ".$";
  std::string result;
  std::size_t copied = 0;
  for (std::size_t at = html.find(head); at != std::string_view::npos; at = html.find(head, at)) {
    const std::size_t digits = at + head.size();
    at = digits;
    if (digits + 2 > html.size() || !IsDigit(html[digits]) || !IsDigit(html[digits + 1])) continue;
    const auto number = static_cast<std::size_t>((html[digits] - '0') * 10 + (html[digits + 1] - '0'));
    if (number == 0 || number > attachmentPaths.size() || attachmentPaths[number - 1].empty()) continue;
    result += html.substr(copied, digits - head.size() - copied);
    // The reference may stand in single quotes, and an apostrophe may stand in a file name.
    result += "../" + ReplaceAll(HrefPath(attachmentPaths[number - 1]), "'", "%27");
    copied = digits + 2;
    at = copied;
  }
  result += html.substr(copied);
  return result;
}

}  // namespace velmora::mailarchive
