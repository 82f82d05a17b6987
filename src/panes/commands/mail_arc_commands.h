// The commands on a mail archive in the file view.
#pragma once

#include "panes/commands/command_context.h"
#include "panes/commands/outcome.h"

namespace velmora::panes {

// The content index of the whole tree, in a root archive only; after a question.
Outcome CmdIndexTree(CommandContext& context);
// The content index of the current directory, in a sub archive only; after a question.
Outcome CmdIndexCurrent(CommandContext& context);
// Opens the index of the current directory.
Outcome ShowIndex(CommandContext& context);
// The marker of the current directory, and the descriptor of the page under the cursor, in the text viewer.
Outcome ShowArcDescriptorCommand(CommandContext& context);
Outcome ShowEntryDescriptorCommand(CommandContext& context, const ViewMarks& marks);

}  // namespace velmora::panes
