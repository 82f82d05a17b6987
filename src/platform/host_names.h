// Names of single files as Windows and as the host spell them. A host name may hold bytes that no Windows
// name can have; each of them stands in the Windows name as one character of the private range U+F001 to
// U+F0FF, so that every host name has a Windows name and comes back from it byte for byte.
#pragma once

#include <string>
#include <string_view>

#include "base/result.h"

namespace velmora::platform {

// The Windows name of a host name. Never fails.
std::string ToWindowsName(std::string_view hostName);
// The host name of one component of a Windows path. BadName: empty, ".", "..", a character that Windows
// forbids in names (among them ":" of drives and streams), no UTF-8, longer than 255 bytes.
Result<std::string> ToHostName(std::string_view windowsName);
// The host path of a name in a directory, which may be "/".
std::string JoinHostPath(std::string_view directory, std::string_view hostName);

}  // namespace velmora::platform
