// Entries of an archive as JSON.
#pragma once

#include <string>

#include "base/result.h"
#include "platform/file_system.h"
#include "store/item.h"

namespace velmora::cli {

// One object with what all entries have, what their kind has, and for a fax or voice message its file.
// `fileSystem`: where that file is looked for.
Result<std::string> EntryJson(store::DvItemView& view, platform::FileSystem& fileSystem);

}  // namespace velmora::cli
