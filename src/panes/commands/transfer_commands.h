// Copying and moving what is marked in an archive pane: into the directory on the right as a mail archive, or
// into the archive of the other pane; in the rule view the rules.
#pragma once

#include "operations/archive_copy.h"
#include "panes/commands/command_context.h"
#include "panes/commands/outcome.h"

namespace velmora::panes {

// Asks for the dialog, or tells why there is nothing to do.
Outcome StartTransfer(CommandContext& context, const ViewMarks& marks, operations::CopyMode mode);

}  // namespace velmora::panes
