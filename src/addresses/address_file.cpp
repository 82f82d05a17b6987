#include "addresses/address_file.h"

#include <utility>

#include "addresses/delimited_text.h"
#include "addresses/groupwise.h"
#include "addresses/sheet_address_file.h"
#include "addresses/text_address_file.h"

namespace velmora::addresses {
namespace {

constexpr TextFormat DelimitedFormat = {DelimitedHeader, DelimitedLine};
constexpr TextFormat GroupWiseFormat = {GroupWiseTagMap, GroupWiseLine};

Result<OpenedAddressFile> OpenText(platform::FileSystem& fileSystem, const TextFormat& format,
                                   std::string_view path, bool overwrite, std::string_view separator) {
  auto file = OpenTextAddressFile(fileSystem, format, path, overwrite, separator);
  if (!file) return Fail(file.error());
  return OpenedAddressFile{std::move(*file), {}};
}

}  // namespace

Result<OpenedAddressFile> OpenAddressFile(platform::FileSystem& fileSystem, AddressFormat format,
                                          std::string_view path, bool overwrite,
                                          const AddressFileOptions& options) {
  switch (format) {
    case AddressFormat::Delimited:
      return OpenText(fileSystem, DelimitedFormat, path, overwrite, options.CsvSeparator);
    case AddressFormat::GroupWise:
      return OpenText(fileSystem, GroupWiseFormat, path, overwrite, options.NabSeparator);
    case AddressFormat::Excel:
      return OpenSheetAddressFile(fileSystem, path, overwrite, options.WorkbookTemplate);
    case AddressFormat::VCard:
      break;
  }
  return Fail(platform::file_error::BadName, "VCards sind Dateien für sich");
}

}  // namespace velmora::addresses
