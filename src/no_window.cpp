// A build without the window.

#include "window_program.h"

namespace velmora {

std::unique_ptr<WindowProgram> MakeWindowProgram(int&, char**) { return nullptr; }

}  // namespace velmora
