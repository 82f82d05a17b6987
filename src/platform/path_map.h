// The mapping table: which drive or share is which host directory, and paths turned one way and the other.
// Text only; nothing here touches a disk.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "platform/host_file_system.h"

namespace velmora::platform {

// A Windows path taken apart: the host directory of its drive or share, and the host names below it.
struct MappedPath {
  std::string HostRoot;  // without "/" at the end, "" for the host's root
  std::vector<std::string> Names;

  std::string HostPath() const;  // joined, absolute; the case as given
};

class PathMap {
 public:
  // Rows that name neither a drive ("Z:") nor a share (`\\SERVER\SHARE`) or no absolute host directory are
  // left out. "Z:" is "/" unless a row says otherwise.
  explicit PathMap(const std::vector<PathMapping>& mappings);

  // PathNotFound without a mapping; BadName for components that are no names, "." and ".." among them. Both
  // separators count, several in a row as one.
  Result<MappedPath> Parse(std::string_view windowsPath) const;
  // The Windows form of an absolute host path by the mapping with the longest host directory, a share before
  // a drive; nothing when no mapping covers it. "." and ".." are resolved as text.
  std::optional<std::string> ToWindows(std::string_view hostPath) const;

  const std::vector<PathMapping>& Rows() const { return rows_; }
  // `\\SERVER\SHARE` that lies in the same host directory as the drive; "" without one.
  std::string ShareOfDrive(std::string_view drive) const;

 private:
  std::vector<PathMapping> rows_;  // longest host directory first, shares before drives
};

bool IsDriveName(std::string_view prefix);  // "Z:"

}  // namespace velmora::platform
