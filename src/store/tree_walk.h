// What keeps walks through the archive tree from running in circles: links may lead anywhere, and a record
// may name a directory that lies above it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::store {

// Whether following a link from the archive `parentId` to the archive `subId` would lead back: the parent
// lies at or below the link's target, or at or below the directory that holds the target. Physical IDs in any
// form, without regard to case; what is not a link is always safe.
bool IsCircularReference(std::string_view subId, std::string_view parentId, bool isLink);

// The archives on the path of a recursive walk, from its start down to where it is.
class WalkPath {
 public:
  // No tree of archives goes deeper; a walk that does is running through a damaged one.
  static constexpr std::size_t MaxDepth = 256;

  bool Contains(std::string_view id) const;
  // False when the archive is on the path already, or the path too deep: it must not be entered.
  bool Enter(std::string_view id);
  void Leave();  // the archive entered last

 private:
  std::vector<std::string> ids_;  // normalised and folded
};

}  // namespace velmora::store
