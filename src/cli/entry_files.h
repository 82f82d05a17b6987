// The files of faxes and voice messages, as far as they are looked into before they are stored.
#pragma once

#include <string_view>

#include "base/result.h"
#include "platform/file_system.h"

namespace velmora::cli {

// The pages of a TIFF file (TIFF 6.0, section 2), 0 when not even the first is there. Fails for a file that
// is no TIFF.
Result<int> CountFaxPages(platform::FileSystem& fileSystem, std::string_view path);

// Fails for a file that is no wave file (RIFF).
Status CheckWaveFile(platform::FileSystem& fileSystem, std::string_view path);

}  // namespace velmora::cli
