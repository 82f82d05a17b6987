// Folders by what they are on the host, for who is about to delete one: two paths to one folder must not look
// like two folders.
#pragma once

#include <filesystem>
#include <string_view>

#include "platform/file_system.h"

namespace velmora::platform {

// Whether a path in any form names the root of a drive or share: "Z:", "Z:\", `\\SERVER\SHARE`.
bool IsRootPath(std::string_view path);
// The host path of a folder or file without symbolic links; "" when the host does not have it.
std::filesystem::path CanonicalPath(FileSystem& fileSystem, std::string_view path);
// Of canonical paths.
bool IsSameOrAbove(const std::filesystem::path& upper, const std::filesystem::path& lower);

}  // namespace velmora::platform
