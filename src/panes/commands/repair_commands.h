// Repairs of the tree, on the archive under the cursor.
#pragma once

#include "panes/commands/command_context.h"
#include "panes/commands/outcome.h"

namespace velmora::panes {

// Each asks for its dialog, or tells why there is nothing to repair.
Outcome RemoveDoubleEntries(CommandContext& context, const ViewMarks& marks);
Outcome RemoveCircularEntries(CommandContext& context, const ViewMarks& marks);
// After a question the entry is gone from the list; what is in its archive stays.
Outcome RemoveArchiveEntry(CommandContext& context, const ViewMarks& marks);

}  // namespace velmora::panes
