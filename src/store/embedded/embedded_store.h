// The built-in store as a backend of the object layer.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "base/result.h"
#include "platform/clock.h"
#include "platform/file_system.h"
#include "store/account.h"
#include "store/embedded/store_location.h"

namespace velmora::store::embedded {

// The root object over the stores of this machine. `fileSystem` maps the share of each (see MappingsOf).
// `stores`: at least one; the first is the default server. `loginName`: the operating system's name of the
// user who signs on; a store knows its users by it.
//
// Logon fails with LogonFailed when no store bears the name, the store cannot be read or the user is not one
// of its users. A user without any rights gets an account whose Trustees are 0.
std::shared_ptr<DvISEAPI> OpenEmbeddedApi(platform::FileSystem& fileSystem, platform::Clock& clock,
                                          std::vector<StoreLocation> stores, std::string loginName);

}  // namespace velmora::store::embedded
