// Copying and moving: what is marked on the left into the directory on the right, as a mail archive.
#pragma once

#include "mailarchive/export_options.h"
#include "panes/commands/command_context.h"
#include "panes/commands/outcome.h"

namespace velmora::panes {

// Asks for the dialog, or tells why there is nothing to do.
Outcome StartTransfer(CommandContext& context, const ViewMarks& marks, mailarchive::CopyMode mode);

}  // namespace velmora::panes
