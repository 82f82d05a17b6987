// The command `copydavidlogs`: the server's logs as archives.
#pragma once

#include "startup/batch_run.h"
#include "startup/run_control_file.h"

namespace velmora::startup {

BatchOutcome RunCopyDavidLogs(BatchRun& batch);

}  // namespace velmora::startup
