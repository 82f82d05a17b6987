// What the start needs of the window. A build without a window has none.
#pragma once

#include <string_view>

namespace velmora::startup {

struct Context;

class WindowFactory {
 public:
  virtual ~WindowFactory() = default;
  // Shows the main window and runs its message loop; the exit status.
  virtual int RunMainWindow(Context& context) = 0;
  // The migration dialog, until it closes.
  virtual void ShowMigrationDialog(Context& context) = 0;
  // Brings the window of another process to the front, which is known by its caption.
  virtual void ActivateWindow(std::string_view caption) = 0;
  // Unloads all windows in the order of the window list; the unloading of the main window runs Shutdown.
  virtual void UnloadWindows() = 0;
};

}  // namespace velmora::startup
