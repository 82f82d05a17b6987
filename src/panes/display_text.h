// Names and texts as a list shows them. Mail comes from anyone: a name must not break a row, nor show an
// extension that it does not have.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace velmora::panes {

// No text is shown longer than this, in characters; what is cut ends in "…".
inline constexpr std::size_t LongestShownText = 1000;

// Control characters and line separators as blanks, characters that turn the direction of writing as
// "[U+202E]", bytes that are no UTF-8 as U+FFFD. What is stored stays as it is.
std::string DisplayText(std::string_view text, std::size_t longest = LongestShownText);

}  // namespace velmora::panes
