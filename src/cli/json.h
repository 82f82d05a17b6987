// Writing JSON (RFC 8259), as far as lists need it.
#pragma once

#include <string>
#include <string_view>

namespace velmora::cli {

// The text in quotes, escaped; bytes that are no UTF-8 become U+FFFD.
std::string JsonText(std::string_view text);

}  // namespace velmora::cli
