// What the commands share that run as the program does unattended: with its settings, its log and its
// progress, but in a terminal.
#pragma once

#include <functional>
#include <string>

#include "startup/main_sequence.h"

namespace velmora::cli {

// Signs on to the store (`storeOption` as in SignOn), loads the settings and does the work. Its summary goes
// to standard output, and a line on standard error says where the log is when there were errors. The exit
// status: the work's, or NoSignOn.
int RunUnattendedCommand(const std::string& storeOption,
                         const std::function<startup::BatchOutcome(startup::Context&)>& work);

}  // namespace velmora::cli
