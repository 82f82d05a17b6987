#include "platform/exclusive_rename.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>

#include <cerrno>

namespace velmora::platform {

int RenameExclusively(int fromDirectory, const std::string& from, int toDirectory, const std::string& to) {
  if (renameat2(fromDirectory, from.c_str(), toDirectory, to.c_str(), RENAME_NOREPLACE) == 0) return 0;
  if (errno != EINVAL && errno != ENOSYS) return errno;
  // A file system without that call: look first.
  struct stat status {};
  if (fstatat(toDirectory, to.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0) return EEXIST;
  return renameat(fromDirectory, from.c_str(), toDirectory, to.c_str()) == 0 ? 0 : errno;
}

}  // namespace velmora::platform
