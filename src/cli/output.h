// Texts on the console: results on standard output, failures on standard error.
#pragma once

#include <string_view>

#include "base/result.h"

namespace velmora::cli {

// The text and a line end. A reader that has gone away ends nothing: the work goes on.
void PrintLine(std::string_view text);
void PrintError(std::string_view text);
void PrintError(std::string_view subject, const Error& error);  // "subject: text"

}  // namespace velmora::cli
