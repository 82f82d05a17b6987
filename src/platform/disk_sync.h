// Bringing what was written to the disk on which it lies.
#pragma once

#include <sys/types.h>

#include <string>

#include "platform/descriptor.h"

namespace velmora::platform {

// The folder, opened, or the nearest one around it on that disk: the folder itself may be gone by now. A
// closed descriptor when the disk is not found on the way up.
Descriptor OpenOnDisk(std::string hostFolder, dev_t disk);
// All that was written to the disk, by anybody. 0 or an errno.
int SyncDisk(const std::string& hostFolder, dev_t disk);

}  // namespace velmora::platform
