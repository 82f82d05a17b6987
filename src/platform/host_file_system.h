// FileSystem on the operating system's files.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/file_system.h"

namespace velmora::platform {

// One row of the mapping table: a drive ("Z:") or a share (`\\SERVER\SHARE`) and its host directory.
struct PathMapping {
  std::string WindowsPrefix;
  std::string HostDirectory;

  bool operator==(const PathMapping&) const = default;
};

// `mappings`: drives and shares; "Z:" is "/" unless the table says otherwise. Conversions take the most
// specific mapping, shares before drives. A later row replaces an earlier one of the same drive or share; a
// row without an absolute host directory counts for nothing. A path without a mapping gives PathNotFound.
// The object is for one thread.
std::unique_ptr<FileSystem> MakeHostFileSystem(std::vector<PathMapping> mappings);

}  // namespace velmora::platform
