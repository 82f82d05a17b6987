// Archives by the path that a user types.
#pragma once

#include <memory>
#include <string_view>

#include "base/result.h"
#include "store/account.h"

namespace velmora::cli {

// The archive; what is missing on the way to it is made.
Result<std::shared_ptr<store::DvArchive>> GetOrCreateArchive(store::DvAccount& account,
                                                             std::string_view path);

}  // namespace velmora::cli
