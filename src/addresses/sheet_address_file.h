// Address files that are workbooks: the sheet "Adressen", whose first row names the columns.
#pragma once

#include <string_view>

#include "addresses/address_file.h"
#include "tables/sheet_table.h"

namespace velmora::addresses {

inline constexpr std::string_view AddressSheet = "Adressen";

// A workbook with the empty sheet of the addresses; it stands at the path once it is saved.
tables::SheetTable CreateAddressWorkbook(platform::FileSystem& fileSystem, std::string_view path);

Result<OpenedAddressFile> OpenSheetAddressFile(platform::FileSystem& fileSystem, std::string_view path,
                                               bool overwrite, std::string_view workbookTemplate);

}  // namespace velmora::addresses
