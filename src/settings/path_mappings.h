// The table of drives and shares: section PathMappings, each name a drive ("Z:") or a share
// (`\\SERVER\SHARE`), each value its host directory. What the user maps goes before what the machine maps.
#pragma once

#include <vector>

#include "platform/host_file_system.h"
#include "settings/values.h"

namespace velmora::settings {

// Rows whose name is neither a drive nor a share, or whose directory is not absolute, are left out.
std::vector<platform::PathMapping> LoadPathMappings(const Values& user, const Values& machine);

}  // namespace velmora::settings
