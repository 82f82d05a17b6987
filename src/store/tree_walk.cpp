#include "store/tree_walk.h"

#include <algorithm>

#include "base/paths.h"
#include "store/archive_key.h"

namespace velmora::store {

bool IsCircularReference(std::string_view subId, std::string_view parentId, bool isLink) {
  if (!isLink) return false;
  const std::string sub = StripBackslash(NormalizePath(subId));
  const std::string parent = StripBackslash(NormalizePath(parentId));
  const std::string holder = StripBackslash(DirectoryOf(sub));
  return IsSameOrBelow(parent, sub) || (!holder.empty() && IsSameOrBelow(parent, holder));
}

bool WalkPath::Contains(std::string_view id) const {
  return std::ranges::find(ids_, ArchiveKey(id)) != ids_.end();
}

bool WalkPath::Enter(std::string_view id) {
  if (ids_.size() >= MaxDepth || Contains(id)) return false;
  ids_.push_back(ArchiveKey(id));
  return true;
}

void WalkPath::Leave() { ids_.pop_back(); }

}  // namespace velmora::store
