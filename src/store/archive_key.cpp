#include "store/archive_key.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "base/paths.h"
#include "base/text.h"

namespace velmora::store {
namespace {

// What follows the folder or share "david" of a key, which stands directly on a drive, a server or a volume;
// "" without one. Deeper down it is the name of some archive.
std::string BehindDavid(const std::string& key) {
  std::vector<std::string> parts = Split(key, "\\");
  std::size_t first = 1, last = 1;  // Z:\david
  if (key.starts_with("\\\\")) {
    parts.erase(parts.begin(), parts.begin() + 2);
    last = 2;  // \\server\david, \\server\volume\david
  }
  for (std::size_t i = first; i <= last && i < parts.size(); ++i) {
    if (parts[i] != "david") continue;
    parts.erase(parts.begin(), parts.begin() + static_cast<std::ptrdiff_t>(i));
    return Join(parts, "\\");
  }
  return "";
}

}  // namespace

std::string ArchiveKey(std::string_view directory) {
  return FoldCase(StripBackslash(NormalizePath(directory)));
}

bool IsSameArchive(std::string_view a, std::string_view b) {
  const std::string first = ArchiveKey(a), second = ArchiveKey(b);
  if (first == second) return true;
  const std::string behind = BehindDavid(first);
  return !behind.empty() && behind == BehindDavid(second);
}

}  // namespace velmora::store
