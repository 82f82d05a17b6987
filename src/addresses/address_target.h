// Where addresses go: the place of each format in the settings, and what a person typed instead.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "addresses/address_file.h"
#include "platform/file_system.h"
#include "settings/options.h"

namespace velmora::addresses {

// A format's file extension and its settings.
struct FormatPlace {
  AddressFormat Format;
  std::string_view Extension;
  std::string settings::Options::*Directory;
  std::string settings::Options::*FileName = nullptr;  // null: each address is a file of its own
};

// In the order of AddressFormat.
inline constexpr auto FormatPlaces = std::to_array<FormatPlace>({
    {AddressFormat::Delimited, ".csv", &settings::Options::CSVAddressPath,
     &settings::Options::CSVAddressForm},
    {AddressFormat::Excel, ".xls", &settings::Options::ExcelAddressPath,
     &settings::Options::ExcelAddressForm},
    {AddressFormat::GroupWise, ".nab", &settings::Options::GWAddressPath, &settings::Options::GWAddressForm},
    {AddressFormat::VCard, ".vcf", &settings::Options::VCFAddressPath},
});

const FormatPlace& PlaceOf(AddressFormat format);
// The format of the setting AddressExportFormat; a number that names none is the default, Excel.
AddressFormat FormatOfSetting(std::int32_t number);

struct AddressTarget {
  std::string Directory;  // with "\" at its end
  std::string FileName;   // "" where each address is a file of its own

  bool operator==(const AddressTarget&) const = default;
};

// As the settings have it.
AddressTarget TargetOfSettings(const settings::Options& options, AddressFormat format);
// What a typed Windows path means: an existing directory, or a text with "\" at its end, is the directory;
// with `isDirectory` every text is. Else it names the file, whose extension may be left out. What is not said
// comes from the settings.
AddressTarget ParseTarget(platform::FileSystem& fileSystem, const settings::Options& options,
                          AddressFormat format, std::string_view text, bool isDirectory);

}  // namespace velmora::addresses
