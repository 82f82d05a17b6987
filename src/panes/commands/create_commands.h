// New archives and directories.
#pragma once

#include "panes/commands/command_context.h"
#include "panes/commands/outcome.h"

namespace velmora::panes {

// In the current directory of the file view; asks for the name.
Outcome CreateNewDirectory(CommandContext& context);

}  // namespace velmora::panes
