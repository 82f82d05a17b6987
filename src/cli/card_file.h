// Files of vCards that the command line names.
#pragma once

#include <string>
#include <string_view>

#include "base/result.h"
#include "platform/file_system.h"
#include "store/address_item.h"

namespace velmora::cli {

// The bytes of the file, unless it is too large to be one of addresses.
Result<std::string> ReadCardFile(platform::FileSystem& fileSystem, std::string_view path);
// What a file without any card fails with.
Error NoCard();
// The first card of the file; fails when there is none or it is empty.
Result<store::AddressValues> ReadFirstCard(platform::FileSystem& fileSystem, std::string_view path);

}  // namespace velmora::cli
