#include "platform/name_mask.h"

#include <algorithm>

#include "base/text.h"

namespace velmora::platform {

bool HasWildcard(std::string_view name) { return name.find_first_of("*?") != std::string_view::npos; }

NameMask::NameMask(std::string_view mask)
    : mask_(mask.empty() || mask == "*.*" ? "*" : FoldCase(mask)),
      prefix_(mask_.substr(0, std::min(mask_.find_first_of("*?"), mask_.size()))) {}

bool NameMask::Matches(std::string_view foldedName) const {
  // On a mismatch only the last "*" can help, by taking one character more: no recursion, no exponential
  // masks.
  std::size_t inMask = 0;
  std::size_t inName = 0;
  std::size_t afterStar = std::string::npos;
  std::size_t starTook = 0;
  while (inName < foldedName.size()) {
    if (inMask < mask_.size() && mask_[inMask] == '*') {
      afterStar = ++inMask;
      starTook = inName;
    } else if (inMask < mask_.size() && mask_[inMask] == '?') {
      ++inMask;
      (void)NextCharacter(foldedName, inName);  // only the step counts
    } else if (inMask < mask_.size() && mask_[inMask] == foldedName[inName]) {
      ++inMask;
      ++inName;
    } else if (afterStar != std::string::npos) {
      inMask = afterStar;
      (void)NextCharacter(foldedName, starTook);  // only the step counts
      inName = starTook;
    } else {
      return false;
    }
  }
  return mask_.find_first_not_of('*', inMask) == std::string::npos;
}

}  // namespace velmora::platform
