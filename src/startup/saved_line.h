// The saved command line, VelmoraLine.txt in the program directory: when it is written, and when it takes the
// place of an empty one.
#pragma once

#include <string>

#include "startup/process.h"

namespace velmora::startup {

// Values of SaveCmdLineMode.
namespace save_mode {
inline constexpr int Never = 0;
inline constexpr int Once = 1;
inline constexpr int Always = 2;
}  // namespace save_mode

std::string SavedLinePath(const Context& context);

struct SavedLineResult {
  std::string Line;   // the line to be decoded
  bool Ends = false;  // the option was -w0, -w1, -w2 or -w?, and the process ends
};
SavedLineResult ApplySavedLine(Context& context, std::string line);

}  // namespace velmora::startup
