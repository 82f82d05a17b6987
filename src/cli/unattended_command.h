// What the commands share that run as the program does unattended: with its settings, its log and its
// progress, but in a terminal.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "base/result.h"
#include "operations/operation.h"
#include "startup/main_sequence.h"

namespace velmora::cli {

// Signs on to the store (`storeOption` as in SignOn), loads the settings and does the work. Its summary goes
// to standard output, and a line on standard error says where the log is when there were errors. The exit
// status: the work's, or NoSignOn.
int RunUnattendedCommand(const std::string& storeOption,
                         const std::function<startup::BatchOutcome(startup::Context&)>& work);

// --- For the work. ---
// Tells a failure on standard error and in the log.
void Report(startup::Context& context, const std::string& subject, const Error& error);
// What work comes to that was not begun, once it has been told why, and work that counted so many errors.
startup::BatchOutcome NotBegun();
startup::BatchOutcome OutcomeOf(std::int64_t errors, std::string summary);
// What operations inside the store work with. The log is the whole run's, which has cleared it if it should
// be.
operations::Operation OperationIn(startup::Context& context);

}  // namespace velmora::cli
