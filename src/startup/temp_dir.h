// The temporary directory.
#pragma once

#include <string_view>

#include "startup/process.h"

namespace velmora::startup {

// `value`: the setting TempDirPath. With "" the default one: "$$Velmora" below the user's temporary folder,
// for its owner only; an unattended run has one of its own beside it, so that a window that ends does not
// take it away. Makes the directory if it is missing; TempDir ends with a backslash.
void MakeTempDir(Context& context, std::string_view value);
// A directory that this program made goes as a whole; from one that the user named go the program's own
// files.
void RemoveTempDir(Context& context);

}  // namespace velmora::startup
