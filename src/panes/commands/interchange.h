// The tick of the InterchangeTimer: the line that a second instance of the program has handed over.
#pragma once

#include "panes/commands/command_context.h"
#include "panes/commands/outcome.h"

namespace velmora::panes {

inline constexpr int InterchangeInterval = 1000;  // milliseconds

// Does nothing while the program is busy, and is busy itself: a nested pump cannot enter it twice. What the
// line names is shown: an archive in both panes, a directory on the right, a message selected on the left
// and, where the settings say so, in the viewer.
Outcome TickInterchange(CommandContext& context);
// The end of the opening of the main window, for a start with "-e": likewise shows and selects the message.
// StartMode is none afterwards.
Outcome ShowStartMessage(CommandContext& context);

}  // namespace velmora::panes
