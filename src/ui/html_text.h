// What of an HTML body is left without its format. No toolkit in it: it is for what no toolkit can lay out.
#pragma once

#include <string>
#include <string_view>

namespace velmora::ui {

// The text between the tags, a line for each paragraph or row; nothing of comments, scripts and styles.
std::string TextOfHtml(std::string_view html);

}  // namespace velmora::ui
