// Attributes and times of single files: hidden and read-only, last write.
#pragma once

#include <sys/stat.h>

#include <string>

#include "base/date_time.h"
#include "base/result.h"

namespace velmora::platform {

// Hidden is bit 2 of the DOS attributes in the extended attribute "user.DOSATTRIB", where file servers for
// Windows clients keep it too: as text ("0x22"), or in a record of version 3 to 5, whose other fields are
// left alone.
bool IsHidden(const std::string& hostPath);
// Done silently where the file system keeps no extended attributes: a file that cannot be hidden stays
// visible, which harms nobody.
Status StoreHidden(const std::string& hostPath, bool hidden);
// The DOS attributes of one open file given to another, if there are any.
void CopyDosAttributes(int fromDescriptor, int toDescriptor);

inline constexpr mode_t PermissionBits = 07777;
// Read-only is the missing write permission of the owner, for every user, the root user included.
inline bool IsReadOnly(const struct stat& status) { return (status.st_mode & S_IWUSR) == 0; }

// All times of an open file. The null date sets nothing.
int StoreTime(int descriptor, DateTime time);  // 0 or an errno
struct timespec ToTimespec(DateTime time);

}  // namespace velmora::platform
