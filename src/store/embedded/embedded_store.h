// The built-in store as a backend of the object layer.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "platform/clock.h"
#include "platform/file_system.h"
#include "store/account.h"
#include "store/embedded/message_store.h"
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

// For tools that fill a store: the bytes of one message as a new entry of an archive of this account.
// WrongKind for an account of another backend.
Result<EntryKey> DeliverMessage(DvAccount& account, DvArchive& target, std::string_view message,
                                const DeliverOptions& options);

}  // namespace velmora::store::embedded
