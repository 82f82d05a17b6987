// What the operating system knows of the volume that a drive leads to.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/result.h"
#include "platform/file_system.h"

namespace velmora::platform {

enum class DriveType { Removeable, Harddisk, Network, CdRom };

struct DriveInformation {
  std::string VolumeName;      // what is mounted: a device, a share
  std::string FileSystemName;  // "ext4", "btrfs", "cifs"
  DriveType Type = DriveType::Harddisk;
  std::int64_t Size = 0, Used = 0, Free = 0;  // bytes
  std::int64_t Available = 0;                 // of what is free, for this user
};

// `drive`: "Z:". Fails with a file error for a drive that is not ready.
Result<DriveInformation> DriveInformationOf(FileSystem& fileSystem, std::string_view drive);
// The type that the name of a file system tells.
DriveType DriveTypeOf(std::string_view fileSystemName, bool isRemovable);

}  // namespace velmora::platform
