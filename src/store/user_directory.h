// The name of a user's directory below the root of the user archives: the one place that makes it.
#pragma once

#include <fmt/core.h>

#include <string>

namespace velmora::store {

// The user's id as eight hexadecimal digits: "0000000A" for 10.
inline std::string UserDirName(int userId) { return fmt::format("{:08X}", static_cast<unsigned>(userId)); }

}  // namespace velmora::store
