// Line ends of texts that come from outside.
#pragma once

#include <string>
#include <string_view>

namespace velmora {

inline constexpr std::string_view CrLf = "\r\n";

// Every line end (CR LF, CR, LF) as CR LF.
std::string WithCrLf(std::string_view text);
// The same, and every other control character as one blank (see BlankControlCharacters).
std::string CleanLines(std::string_view text);

}  // namespace velmora
