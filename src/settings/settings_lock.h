#pragma once

#include <memory>
#include <string>

#include "base/result.h"
#include "platform/host.h"

namespace velmora::settings {

// The lock of a configuration directory (a host path, which must exist), held while one of its files is read,
// changed and written, so that no process loses what another one writes meanwhile. Waits five seconds for it
// at most; then AccessDenied.
Result<std::unique_ptr<platform::InstanceLock>> LockSettings(const std::string& hostDirectory);

}  // namespace velmora::settings
