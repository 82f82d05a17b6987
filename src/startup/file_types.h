// The file types of the program: .smtp, .add, .vla and .vlw.
#pragma once

#include "startup/process.h"

namespace velmora::startup {

// Unattended runs register nothing. A desktop that does not take the entries is no reason to stop.
void RegisterFileTypes(Context& context);
void UnregisterFileTypes(Context& context);

}  // namespace velmora::startup
