// Checking a whole store without changing anything: the tree's records, the message databases and content
// files of every archive, the rules, the site data and the server logs.
#pragma once

#include <functional>
#include <string>

#include "platform/clock.h"
#include "platform/file_system.h"
#include "store/embedded/store_location.h"

namespace velmora::store::embedded {

struct StoreFinding {
  std::string Subject;  // the directory, file or entry concerned
  std::string Text;     // German
  bool IsNote = false;  // worth knowing, no damage
};

// Calls `report` for each finding. The number of archives looked at.
int CheckStore(platform::FileSystem& fileSystem, platform::Clock& clock, const StoreLocation& store,
               const std::function<void(const StoreFinding&)>& report);

}  // namespace velmora::store::embedded
