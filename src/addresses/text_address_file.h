// Address files that are text: Windows-1252 with CR LF, a header line, then a record per address.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "addresses/address_file.h"

namespace velmora::addresses {

// A format of such files: its header and a record, both as UTF-8 without the line end.
struct TextFormat {
  std::string (*Header)(std::string_view separator);
  std::string (*Line)(const AddressRecord& address, std::string_view separator);
};

Result<std::unique_ptr<AddressFile>> OpenTextAddressFile(platform::FileSystem& fileSystem,
                                                         const TextFormat& format, std::string_view path,
                                                         bool overwrite, std::string_view separator);

}  // namespace velmora::addresses
