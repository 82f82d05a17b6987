// The server's logs as archives.
#pragma once

#include "base/result.h"
#include "platform/file_system.h"
#include "store/session.h"

namespace velmora::startup {

enum class DavidLog { Receive = 0, Send = 1 };

// Makes a copy of one of the server's logs readable as a sub-archive of `parent`: the logs have the format of
// an archive's data file. The archive is made when it is missing, else its files are replaced; its list of
// sub-archives stays. Nothing is touched when the log does not exist.
Status CopyDavidLog(platform::FileSystem& fileSystem, store::Session& session, store::DvArchive& parent,
                    DavidLog kind);

}  // namespace velmora::startup
