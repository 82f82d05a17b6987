// The drive bar and the drive box of the file view: one button per drive, with what is known of the drive.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/drive_information.h"
#include "platform/file_system.h"

namespace velmora::panes {

struct DriveButton {
  std::string Key;           // letter and colon
  std::string Caption;       // the key and, where there is one, the share
  std::string_view IconKey;  // of store::ToolbarImageKeys
  std::string ToolTip;       // the drive information
};

// Read once at the start, and when the drive bar is refreshed.
std::vector<DriveButton> DriveButtons(platform::FileSystem& fileSystem);
// The button of the drive that a directory lies on: the longest share or letter that begins it; "" for none.
std::string DriveOf(platform::FileSystem& fileSystem, std::string_view directory);
// The tool tip: a line for each thing known of the drive.
std::string DriveInformationText(const platform::Drive& drive, const platform::DriveInformation& information);

}  // namespace velmora::panes
