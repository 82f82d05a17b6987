// The window as main sees it, so that main is the same with and without one.
#pragma once

#include <memory>

#include "run/front_ends.h"
#include "startup/window_factory.h"

namespace velmora {

class WindowProgram {
 public:
  virtual ~WindowProgram() = default;
  virtual run::FrontEnd Set() = 0;
  virtual startup::WindowFactory& Factory() = 0;
};

// Null in a build without the window, and where there is no display to show it on. Both arguments must
// outlive the object. The toolkit is touched when the first box or window is shown, not before.
std::unique_ptr<WindowProgram> MakeWindowProgram(int& argumentCount, char** arguments);

}  // namespace velmora
