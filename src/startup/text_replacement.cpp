#include "startup/text_replacement.h"

#include <algorithm>

#include "startup/control_file.h"

namespace velmora::startup {

Replacements MomentReplacements(const MomentTexts& moment) {
  return {{"%1", moment.Date}, {"%2", moment.Time}, {"%3", moment.Computer}};
}

std::string ReplacePlaceholders(std::string_view text, const Replacements& replacements) {
  std::string result;
  while (!text.empty()) {
    const auto found = std::find_if(replacements.begin(), replacements.end(),
                                    [&](const auto& pair) { return text.starts_with(pair.first); });
    if (found == replacements.end()) {
      result.push_back(text.front());
      text.remove_prefix(1);
    } else {
      result += found->second;
      text.remove_prefix(found->first.size());
    }
  }
  return result;
}

}  // namespace velmora::startup
