// Encoded words of header fields (RFC 2047). Words that a sender cut within a character, or of a stateful
// character set, are read as one.
#pragma once

#include <string>
#include <string_view>

namespace velmora::store::embedded {

// An unfolded header value with its encoded words decoded.
std::string DecodeEncodedWords(std::string_view line);
// The same with every run of encoded words as one word in UTF-8: what a parser of addresses and parameters
// reads without knowing other character sets.
std::string UnifyEncodedWords(std::string_view line);

}  // namespace velmora::store::embedded
