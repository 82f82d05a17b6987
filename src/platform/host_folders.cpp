#include "platform/host_folders.h"

#include <string>
#include <system_error>

#include "base/paths.h"
#include "base/text.h"

namespace velmora::platform {

bool IsRootPath(std::string_view path) {
  const std::string folder = StripBackslash(NormalizePath(path));
  return folder.starts_with("\\\\") ? Split(folder.substr(2), "\\").size() <= 2 : folder.size() <= 2;
}

std::filesystem::path CanonicalPath(FileSystem& fileSystem, std::string_view path) {
  const auto hostPath = fileSystem.HostPath(StripBackslash(path));
  std::error_code error;
  const auto canonical = hostPath ? std::filesystem::canonical(*hostPath, error) : std::filesystem::path();
  return error ? std::filesystem::path() : canonical;
}

bool IsSameOrAbove(const std::filesystem::path& upper, const std::filesystem::path& lower) {
  const auto relative = lower.lexically_relative(upper);
  return !relative.empty() && *relative.begin() != "..";
}

}  // namespace velmora::platform
