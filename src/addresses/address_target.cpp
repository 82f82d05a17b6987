#include "addresses/address_target.h"

#include <algorithm>

#include "base/paths.h"
#include "base/text.h"

namespace velmora::addresses {

const FormatPlace& PlaceOf(AddressFormat format) {
  return *std::ranges::find(FormatPlaces, format, &FormatPlace::Format);
}

AddressFormat FormatOfSetting(std::int32_t number) {
  const auto format = static_cast<AddressFormat>(number);
  const bool isKnown = std::ranges::find(FormatPlaces, format, &FormatPlace::Format) != FormatPlaces.end();
  return isKnown ? format : AddressFormat::Excel;
}

AddressTarget TargetOfSettings(const settings::Options& options, AddressFormat format) {
  const FormatPlace& place = PlaceOf(format);
  return {AddBackslash(options.*place.Directory), place.FileName == nullptr ? "" : options.*place.FileName};
}

AddressTarget ParseTarget(platform::FileSystem& fileSystem, const settings::Options& options,
                          AddressFormat format, std::string_view text, bool isDirectory) {
  AddressTarget target = TargetOfSettings(options, format);
  const std::string_view path = Trim(text);
  if (path.empty()) return target;
  if (isDirectory || format == AddressFormat::VCard || path.ends_with('\\') ||
      fileSystem.FolderExists(path)) {
    target.Directory = AddBackslash(path);
    return target;
  }
  if (const std::string_view directory = DirectoryOf(path); !directory.empty()) target.Directory = directory;
  target.FileName = FileNameOf(path);
  if (target.FileName.find('.') == std::string::npos) target.FileName += PlaceOf(format).Extension;
  return target;
}

}  // namespace velmora::addresses
