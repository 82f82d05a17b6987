// The commands on the row under the cursor and on the selection.
#pragma once

#include "panes/commands/command_context.h"
#include "panes/commands/outcome.h"

namespace velmora::panes {

// Enter and the double click: another place, a message for the viewer, a file for the desktop.
Outcome OpenRow(CommandContext& context, const ViewMarks& marks);
Outcome ShowMessage(CommandContext& context, const ViewMarks& marks);  // on a message only
Outcome OpenFile(CommandContext& context, const ViewMarks& marks);     // on a file only
Outcome ShowRowSize(CommandContext& context, const ViewMarks& marks);

// The file of a message or the directory of an archive, in the file view.
Outcome ShowPhysical(CommandContext& context, const ViewMarks& marks);
// The archive that lies in the directory under the cursor; the entry of the file under it.
Outcome ShowArchiveOfDirectory(CommandContext& context, const ViewMarks& marks);
Outcome ShowEntryOfFile(CommandContext& context, const ViewMarks& marks);
// The archives of a user, chosen from a list.
Outcome ShowUserArchives(CommandContext& context);

Outcome FlipSelection(CommandContext& context, const ViewMarks& marks);
Outcome SetSelection(CommandContext& context, bool on);
Outcome NegateSelection(CommandContext& context, const ViewMarks& marks);
Outcome AskForPattern(CommandContext& context, bool extend);

// The external program, with the paths of the panes as they are on this host.
Outcome StartExternalProgram(CommandContext& context);

}  // namespace velmora::panes
