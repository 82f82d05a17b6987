// The command `archivecopymove`: archives into a mail archive.
#pragma once

#include "startup/batch_run.h"
#include "startup/run_control_file.h"

namespace velmora::startup {

BatchOutcome RunArchiveCopyMove(BatchRun& batch);

}  // namespace velmora::startup
