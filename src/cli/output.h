// Texts on the console: results on standard output, failures on standard error.
#pragma once

#include <string_view>

#include "base/result.h"

namespace velmora::cli {

// The text and a line end. A reader that has gone away ends nothing: the work goes on.
void PrintLine(std::string_view text);
// The text as it stands.
void PrintText(std::string_view text);
// Whether something that was printed did not arrive: the disk is full, the reader has gone away.
bool IsOutputLost();
// Hands over what is still held back; false when anything was lost, now or before.
bool FlushOutput();
void PrintError(std::string_view text);
void PrintError(std::string_view subject, const Error& error);  // "subject: text"

}  // namespace velmora::cli
