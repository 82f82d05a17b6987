// From a path of the file system to the archive that lies there.
#pragma once

#include <string_view>

#include "panes/commands/command_context.h"
#include "panes/commands/outcome.h"

namespace velmora::panes {

// A physical path of the store: its directory becomes the archive of the left pane; with `withItem` a file
// behind the last "\" (it holds a ".") is looked for among the entries, and selected. Each thing that cannot
// be found has its box.
Outcome OpenPathInPane(CommandContext& context, std::string_view path, bool withItem);

}  // namespace velmora::panes
