// The order of the start and of the end of the process.
#pragma once

#include <functional>
#include <string>

#include "startup/process.h"
#include "startup/run_control_file.h"

namespace velmora::startup {

struct StartOutcome {
  bool CanGoOn = false;
  int ExitStatus = exit_status::NothingRan;  // while CanGoOn is false
};

// The whole program; the exit status.
int Main(Context& context);
// From signing on to the settings. An unattended run is done when it returns, so that it never goes on.
StartOutcome StartAfterLogin(Context& context);
// What follows the signing on and the command line: the settings, wiped before if they are of another
// version.
void LoadSession(Context& context);
// An unattended run in a session that stands: clears the log if the settings say so, warns of settings that
// were lost, runs, signs off. No settings are saved; of the temporary files only what this run made goes.
BatchOutcome RunUnattended(Context& context, const std::function<BatchOutcome()>& work);
// Removes the temporary directory, saves the settings (not while the server changes), signs off.
void Shutdown(Context& context);
// Asks, if so wanted; on yes unloads all windows. True when the process is to end.
bool ConfirmExit(Context& context, bool ask);
// After a change of server: unloads all windows and starts late again.
StartOutcome RestartSession(Context& context);
// The caption of the main window, by which a second instance finds the first.
std::string BuildMainCaption(Context& context);

}  // namespace velmora::startup
