// From the operating system's error numbers to the program's.
#pragma once

#include "base/result.h"
#include "platform/file_system.h"

namespace velmora::platform {

// The failing side of a Result for one of the numbers of file_error.
tl::unexpected<Error> FailWith(int fileError);
// The same for an errno. `missing`: what a missing name means here (FileNotFound or PathNotFound).
tl::unexpected<Error> FailWithErrno(int errorNumber, int missing = file_error::FileNotFound);

}  // namespace velmora::platform
