#include "operations/same_names.h"

#include <utility>

#include "store/tree_walk.h"

namespace velmora::operations {

SameNames::SameNames(store::DvArchive& target) {
  // What cannot be read offers nothing to merge into; making a new archive there will tell.
  const auto subArchives = target.SubArchives();
  if (!subArchives) return;
  for (const auto& sub : *subArchives) {
    if (store::IsCircularReference(sub->ID(), target.ID(), sub->IsShortCut())) continue;
    if (auto name = sub->DisplayName()) Add(std::move(*name), sub);
  }
}

std::shared_ptr<store::DvArchive> SameNames::FindSameNameArchive(std::string_view name) const {
  const auto found = byName_.find(std::string(name));
  return found == byName_.end() ? nullptr : found->second;
}

void SameNames::Add(std::string name, std::shared_ptr<store::DvArchive> archive) {
  if (name.empty()) name = " ";
  byName_.emplace(std::move(name), std::move(archive));
}

}  // namespace velmora::operations
