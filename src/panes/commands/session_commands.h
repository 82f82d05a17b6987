// The commands on the session and the process: settings, sign-on, filter, end.
#pragma once

#include "panes/commands/command_context.h"
#include "panes/commands/outcome.h"

namespace velmora::panes {

Outcome SaveAllSettings(CommandContext& context);  // after a question
Outcome ExitProgram(CommandContext& context, bool ask);
// A new sign-on with the same server, after a question; the panes show what they showed.
Outcome RefreshAccount(CommandContext& context);
// A double click on the filter warning. The flag of hidden entries stays: with it off the warning goes on.
Outcome ResetFilter(CommandContext& context);

}  // namespace velmora::panes
