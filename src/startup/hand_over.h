// The hand-over of a command line from a second instance to the running one: VelmoraDisplayParms.zeb in the
// temporary directory, one line. A later one replaces an earlier one that was not fetched yet.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "startup/process.h"

namespace velmora::startup {

bool HandOverFileExists(Context& context);
// The line in such a file's bytes: the first one, trimmed; "" for one that no instance writes.
std::string HandOverLine(std::string_view bytes);
// That of the file; "" when it cannot be read.
std::string ReadHandOverFile(Context& context);
// A file that cannot be written does not arise.
void WriteHandOverFile(Context& context);
void DeleteHandOverFile(Context& context);
// A hand-over that was written before this process started was meant for another one.
void DeleteStaleHandOver(Context& context);

// What a tick of the InterchangeTimer (1000 ms) leaves to the window.
struct HandOverTick {
  bool HandedOver = false;        // refresh the panes and the active view
  bool ShowMessage = false;       // a message was named: select it in the pane
  std::optional<int> ExitStatus;  // the line ends the process
};
// Disable the timer before and enable it after.
HandOverTick PollHandOver(Context& context);

}  // namespace velmora::startup
