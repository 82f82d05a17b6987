// The sub-archives of a copy's target by their display names, for merging into what is there already.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "store/archive.h"

namespace velmora::operations {

// Read once per target, kept true by Add: a target is asked for each sub-archive of its source.
class SameNames {
 public:
  explicit SameNames(store::DvArchive& target);

  // The first sub-archive of this display name, with case; null without one. Links that lead back are passed
  // over. A sub-archive without a display name goes under a single blank. The archive itself, not its path:
  // another archive may bear the same path.
  std::shared_ptr<store::DvArchive> FindSameNameArchive(std::string_view name) const;
  void Add(std::string name, std::shared_ptr<store::DvArchive> archive);

 private:
  std::unordered_map<std::string, std::shared_ptr<store::DvArchive>> byName_;
};

}  // namespace velmora::operations
