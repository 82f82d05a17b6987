#include "platform/drive_information.h"

#include <mntent.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/sysmacros.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>

#include "platform/file_errors.h"
#include "platform/host.h"

namespace velmora::platform {
namespace {

constexpr auto NetworkFileSystems =
    std::to_array<std::string_view>({"cifs", "smb3", "smbfs", "nfs", "nfs4", "ncpfs", "fuse.sshfs", "9p"});
constexpr auto DiscFileSystems = std::to_array<std::string_view>({"iso9660", "udf"});

struct Mount {
  std::string Device, FileSystemName;
};

// The mount that holds a host path: the one with the longest directory; of several at one place the last.
Mount FindMount(const std::string& hostPath) {
  Mount found;
  std::size_t longest = 0;
  const std::unique_ptr<FILE, int (*)(FILE*)> table(setmntent("/proc/self/mounts", "re"), endmntent);
  if (table == nullptr) return found;
  std::array<char, 4096> buffer;
  mntent row{};
  while (getmntent_r(table.get(), &row, buffer.data(), static_cast<int>(buffer.size())) != nullptr) {
    const std::string_view directory = row.mnt_dir;
    const bool holds =
        hostPath.starts_with(directory) &&
        (directory == "/" || hostPath.size() == directory.size() || hostPath[directory.size()] == '/');
    if (holds && directory.size() >= longest) {
      longest = directory.size();
      found = {row.mnt_fsname, row.mnt_type};
    }
  }
  return found;
}

bool IsRemovable(const std::string& hostPath) {
  struct stat status {};
  if (stat(hostPath.c_str(), &status) != 0) return false;
  const std::string device =
      "/sys/dev/block/" + std::to_string(major(status.st_dev)) + ":" + std::to_string(minor(status.st_dev));
  // The mark stands with the disk; a partition lies below it.
  for (const std::string_view place : {"/removable", "/../removable"}) {
    const std::unique_ptr<FILE, int (*)(FILE*)> file(std::fopen((device + std::string(place)).c_str(), "re"),
                                                     [](FILE* open) { return open ? std::fclose(open) : 0; });
    if (file != nullptr) return std::fgetc(file.get()) == '1';
  }
  return false;
}

}  // namespace

DriveType DriveTypeOf(std::string_view fileSystemName, bool isRemovable) {
  if (std::ranges::find(NetworkFileSystems, fileSystemName) != NetworkFileSystems.end()) {
    return DriveType::Network;
  }
  if (std::ranges::find(DiscFileSystems, fileSystemName) != DiscFileSystems.end()) return DriveType::CdRom;
  return isRemovable ? DriveType::Removeable : DriveType::Harddisk;
}

Result<DriveInformation> DriveInformationOf(FileSystem& fileSystem, std::string_view drive) {
  const Result<std::string> hostPath = fileSystem.HostPath(std::string(drive) + "\\");
  if (!hostPath) return Fail(hostPath.error());
  struct statvfs space {};
  if (statvfs(hostPath->c_str(), &space) != 0) return FailWithErrno(errno, file_error::PathNotFound);

  const Mount mount = FindMount(*hostPath);
  DriveInformation information;
  information.VolumeName = mount.Device;
  information.FileSystemName = mount.FileSystemName;
  information.Type = DriveTypeOf(mount.FileSystemName, IsRemovable(*hostPath));
  const auto bytes = [&](fsblkcnt_t blocks) {
    return static_cast<std::int64_t>(blocks) * static_cast<std::int64_t>(space.f_frsize);
  };
  information.Size = bytes(space.f_blocks);
  information.Free = bytes(space.f_bfree);
  information.Used = information.Size - information.Free;
  information.Available = bytes(space.f_bavail);
  return information;
}

}  // namespace velmora::platform
