#include "platform/free_numbers.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

#include "base/text.h"

namespace velmora::platform {
namespace {

// "\" is in no name, so it keeps head and rest apart.
std::string KeyOf(std::string_view foldedHead, std::string_view foldedRest) {
  return std::string(foldedHead) + "\\" + std::string(foldedRest);
}

}  // namespace

std::string FreeNumbers::FirstFree(std::string_view fileName,
                                   const std::function<bool(const std::string& name)>& isFree) {
  if (std::string name(fileName); isFree(name)) return name;
  const std::size_t point = std::min(fileName.find('.'), fileName.size());
  const std::string_view head = fileName.substr(0, point);
  const std::string_view rest = fileName.substr(point);
  std::uint64_t& number = next_.try_emplace(KeyOf(FoldCase(head), FoldCase(rest)), 1).first->second;
  for (;; ++number) {
    if (std::string name = fmt::format("{}{}{}", head, number, rest); isFree(name)) return name;
  }
}

void FreeNumbers::Release(std::string_view foldedName) {
  if (next_.empty()) return;
  const std::size_t point = std::min(foldedName.find('.'), foldedName.size());
  const std::string_view rest = foldedName.substr(point);
  // "x12" may be number 12 of "x" or number 2 of "x1".
  for (std::size_t start = point;
       start > 0 && foldedName[start - 1] >= '0' && foldedName[start - 1] <= '9';) {
    --start;
    const auto known = next_.find(KeyOf(foldedName.substr(0, start), rest));
    std::uint64_t number = 0;
    const auto parsed = std::from_chars(foldedName.data() + start, foldedName.data() + point, number);
    if (known != next_.end() && parsed.ec == std::errc()) {
      known->second = std::max<std::uint64_t>(1, std::min(known->second, number));
    }
  }
}

}  // namespace velmora::platform
