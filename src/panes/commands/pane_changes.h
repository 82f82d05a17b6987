// Helpers of the commands: what a pane's change means for the window.
#pragma once

#include "panes/commands/command_context.h"
#include "panes/commands/outcome.h"

namespace velmora::panes {

// The view of that pane is to be shown anew.
void NoteChange(Outcome& outcome, PaneView view);
// The active pane has gone to another place: its cursor stands where the pane says.
Outcome WentTo(const CommandContext& context);
// The panes that the window shows are listed anew; one whose place is gone shows the nearest above it.
Outcome ListVisiblePanes(CommandContext& context);
// An archive pane likewise.
void ListAnew(ArchivePane& pane);

}  // namespace velmora::panes
