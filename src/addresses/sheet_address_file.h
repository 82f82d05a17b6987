// Address files that are workbooks: the sheet "Adressen", whose first row names the columns.
#pragma once

#include <string_view>

#include "addresses/address_file.h"

namespace velmora::addresses {

inline constexpr std::string_view AddressSheet = "Adressen";

Result<OpenedAddressFile> OpenSheetAddressFile(platform::FileSystem& fileSystem, std::string_view path,
                                               bool overwrite, std::string_view workbookTemplate);

}  // namespace velmora::addresses
