// Viewing and deleting the error log: what stands behind the tool bar's log button.
#pragma once

#include "run/run.h"

namespace velmora::run {

// Whether `tbrErrLog` is enabled: if and only if the log exists. Asked at start and whenever the log has been
// viewed or deleted.
bool ErrLogButtonEnabled(Run& run);
// Shows the log in the text viewer, where it can be saved and deleted, or a box when there is none.
void ViewErrorLog(Run& run);

}  // namespace velmora::run
