// The placeholders "%1" to "%9" in the texts of a control file.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora::startup {

struct MomentTexts;

// What is looked for and what takes its place.
using Replacements = std::vector<std::pair<std::string_view, std::string>>;

// "%1" the date, "%2" the time, "%3" the computer.
Replacements MomentReplacements(const MomentTexts& moment);
// All in one pass from left to right: what a value holds is never replaced in its turn, so that a path such
// as `Z:\neu` in a value stays whole though "\n" stands for a line break.
std::string ReplacePlaceholders(std::string_view text, const Replacements& replacements);

}  // namespace velmora::startup
