// UTF-16 as workbooks count and keep their texts.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace velmora::tables {

// What is no valid UTF-8 becomes U+FFFD.
std::u16string ToUtf16(std::string_view utf8);
// A half of a surrogate pair that stands alone becomes U+FFFD.
std::string FromUtf16(std::u16string_view units);
std::size_t CountUtf16(std::string_view utf8);
// The start of the text that has at most `limit` units; a pair is never split.
std::string_view LeftUtf16(std::string_view utf8, std::size_t limit);

}  // namespace velmora::tables
