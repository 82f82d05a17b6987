#include "platform/disk_sync.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace velmora::platform {

Descriptor OpenOnDisk(std::string hostFolder, dev_t disk) {
  while (!hostFolder.empty()) {
    Descriptor folder(open(hostFolder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    struct stat status {};
    if (folder && fstat(folder.Get(), &status) == 0 && status.st_dev == disk) return folder;
    const auto separator = hostFolder.rfind('/');
    const bool isTop = hostFolder == "/" || separator == std::string::npos;
    hostFolder.resize(isTop ? 0 : separator == 0 ? 1 : separator);
  }
  return Descriptor();
}

int SyncDisk(const std::string& hostFolder, dev_t disk) {
  const Descriptor folder = OpenOnDisk(hostFolder, disk);
  if (folder) return syncfs(folder.Get()) == 0 ? 0 : errno;
  sync();  // every disk of the machine, which takes as long as the busiest of them needs
  return 0;
}

}  // namespace velmora::platform
