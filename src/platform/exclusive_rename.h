// A rename that never replaces what stands under the new name.
#pragma once

#include <string>

namespace velmora::platform {

// 0 or an errno; EEXIST when the new name is taken.
int RenameExclusively(int fromDirectory, const std::string& from, int toDirectory, const std::string& to);

}  // namespace velmora::platform
