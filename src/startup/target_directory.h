// The target directory of an unattended export: whether it takes files, and emptying it before the run.
#pragma once

#include <string>
#include <string_view>

#include "base/result.h"
#include "startup/process.h"

namespace velmora::startup {

// Why a directory must never be emptied by a run: it is the root of a share, it is or holds the root of a
// drive, it holds, or lies in, the archive store, or it holds directories that this program or its user lives
// in, or the control file of the run ("" for none). "" when it may be.
std::string ReasonNotToEmpty(Context& context, std::string_view directory, std::string_view controlFile);
// Makes a file in the directory and takes it away again. An export into a directory that takes none would
// fail at each of its entries.
Status RequireWritable(Context& context, std::string_view directory);
// Deletes all files and folders in the directory and keeps the directory. Every failure is logged; the rest
// is deleted all the same.
void EmptyTarget(Context& context, std::string_view directory);

}  // namespace velmora::startup
