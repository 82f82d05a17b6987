// Deleting what is marked in the active view: archives and messages, rules, files and directories.
#pragma once

#include "panes/commands/command_context.h"
#include "panes/commands/outcome.h"

namespace velmora::panes {

// Asks for the dialog, or tells why there is nothing to do.
Outcome StartDeletion(CommandContext& context, const ViewMarks& marks);

}  // namespace velmora::panes
