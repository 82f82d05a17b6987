// The two logs of a server: `code\david.rec` of what was received, `code\david.log` of what was sent. Each is
// a message database like an archive's archive.dat, so that a copy of it in an archive's directory makes an
// archive.
#pragma once

#include <string_view>

#include "base/result.h"
#include "platform/clock.h"
#include "platform/file_system.h"
#include "store/embedded/store_layout.h"

namespace velmora::store::embedded {

inline constexpr std::string_view ReceiveLogName = "david.rec";
inline constexpr std::string_view SendLogName = "david.log";

// Makes the logs that are missing, without entries.
Status MakeServerLogs(platform::FileSystem& fileSystem, platform::Clock& clock, const StoreLayout& layout);

}  // namespace velmora::store::embedded
