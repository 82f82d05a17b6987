// Unattended runs: a control file says what to do.
#pragma once

#include <string>
#include <string_view>

#include "startup/process.h"

namespace velmora::startup {

struct BatchOutcome {
  int ExitStatus = exit_status::NothingRan;
  std::string Summary;  // what was copied or moved per source archive, lines ended by CR LF
};

// Reads and runs a control file. `path`: a Windows or host path; without a backslash the file lies in the
// program directory. Every failure is written to the error log, no box is shown.
BatchOutcome RunControlFile(Context& context, std::string_view path);
// Runs the lines of a control file. `name` stands for the file in the result mail.
BatchOutcome RunControlLines(Context& context, std::string_view bytes, std::string_view name);

}  // namespace velmora::startup
