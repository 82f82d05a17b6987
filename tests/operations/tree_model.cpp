#include "tree_model.h"

#include <algorithm>
#include <functional>

#include "base/paths.h"
#include "store/tree_walk.h"

namespace velmora::operations {
namespace {

void Visit(const Node& archive, const std::function<void(const Node& parent, const Node& sub)>& visit) {
  for (const Node& sub : archive->Subs) {
    visit(archive, sub);
    Visit(sub, visit);
  }
}

void Remove(const Node& parent, const Node& sub) { std::erase(parent->Subs, sub); }

bool IsEmpty(const Node& archive) { return archive->Entries.empty() && archive->Subs.empty(); }

}  // namespace

std::vector<TreeModel::Place> TreeModel::Places() const {
  std::vector<Place> places;
  Visit(root_, [&](const Node& parent, const Node& sub) { places.push_back({parent, sub}); });
  return places;
}

Node TreeModel::FindById(const std::string& id) const {
  if (root_->Id == id) return root_;
  Node found;
  Visit(root_, [&](const Node&, const Node& sub) {
    if (!sub->IsLink && sub->Id == id) found = sub;
  });
  return found;
}

void TreeModel::DumpLine(std::string& text, int depth, const ModelArchive& archive) {
  text += std::string(static_cast<std::size_t>(depth), ' ') + archive.Name;
  if (archive.IsLink) text += " -> " + archive.Id;
  if (archive.IsHidden && !archive.IsLink) text += " (hidden)";
  for (const auto& entry : archive.Entries) text += " " + entry;
  for (const auto& rule : archive.Rules) text += " [" + rule + "]";
  text += "\n";
}

std::string TreeModel::Dump(bool withIds) const {
  std::string text;
  const std::function<void(const Node&, int)> dump = [&](const Node& archive, int depth) {
    DumpLine(text, depth, *archive);
    if (withIds) text.insert(text.size() - 1, "   = " + archive->Id);
    for (const Node& sub : archive->Subs) dump(sub, depth + 1);
  };
  dump(root_, 0);
  return text;
}

bool TreeModel::LeadsBack(const Node& sub, const Node& parent) const {
  return store::IsCircularReference(sub->Id, parent->Id, sub->IsLink) ||
         std::ranges::find(path_, sub->Id) != path_.end();
}

// --- Copying. ---

void TreeModel::Copy(const Place& source, const Node& target, const StoreCopyOptions& options) {
  if (IsSameOrBelow(target->Id, source.Archive->Id)) return;
  if (source.Archive->IsLink && !options.EnLinkedArcs) {
    return CopyLink(source.Archive, source.Parent, target, options);
  }
  targets_ = {target->Id};
  CopyContent(source.Archive, source.Parent, target, options);
}

void TreeModel::CopyContent(const Node& source, const Node& parent, const Node& target,
                            const StoreCopyOptions& options) {
  const Node from = Resolve(source);
  if (!from || targets_.contains(from->Id)) return;
  const bool isMove = options.Mode == CopyMode::Move;
  path_.push_back(from->Id);
  Node made = options.EnDblArcNames ? FindSameName(target, source->Name) : nullptr;
  if (!made) {
    made = std::make_shared<ModelArchive>();
    made->Name = source->Name;
    made->Id = "made " + std::to_string(++made_);  // the store gives it a directory
    if (options.EnCpyProp) made->IsHidden = from->IsHidden;
    if (options.EnRoutings) made->Rules = from->Rules;
    target->Subs.push_back(made);
  }
  if (made == from) {
    path_.pop_back();
    return;
  }
  targets_.insert(made->Id);
  if (!options.EnCopyOnlyArcs) {
    const auto entries = from->Entries;
    if (isMove) from->Entries.clear();
    made->Entries.insert(made->Entries.end(), entries.begin(), entries.end());
  }
  for (const Node& sub : std::vector(from->Subs)) {
    if (sub->IsLink && !options.EnLinkedArcs) {
      CopyLink(sub, from, made, options);
    } else if (!LeadsBack(sub, from)) {
      CopyContent(sub, from, made, options);
    }
  }
  if (isMove && options.EnDelArchives && (source->IsLink || IsEmpty(source))) Remove(parent, source);
  path_.pop_back();
}

void TreeModel::CopyLink(const Node& link, const Node& parent, const Node& target,
                         const StoreCopyOptions& options) {
  target->Subs.push_back(std::make_shared<ModelArchive>(*link));
  if (options.Mode == CopyMode::Move && options.EnDelArchives) Remove(parent, link);
}

Node TreeModel::FindSameName(const Node& target, const std::string& name) const {
  for (const Node& sub : target->Subs) {
    if (sub->Name == name && !store::IsCircularReference(sub->Id, target->Id, sub->IsLink))
      return Resolve(sub);
  }
  return nullptr;
}

// --- Deleting. ---

void TreeModel::Delete(const Place& doomed, const StoreDeleteOptions& options) {
  const Node& archive = doomed.Archive;
  if (archive->IsLink && !options.EnLinkedArcs) return Remove(doomed.Parent, archive);
  if (options.EnPhysErase && options.EnDelArchives && !archive->IsLink) {
    if (!HoldsForeign(archive)) Remove(doomed.Parent, archive);
    return;
  }
  DeleteContent(archive, doomed.Parent, options);
}

void TreeModel::DeleteContent(const Node& archive, const Node& parent, const StoreDeleteOptions& options) {
  const Node real = Resolve(archive);
  if (!real) {  // what the link led to went earlier in this run
    if (options.EnDelArchives) Remove(parent, archive);
    return;
  }
  path_.push_back(real->Id);
  real->Entries.clear();
  const auto subs = real->Subs;
  for (auto sub = subs.rbegin(); sub != subs.rend(); ++sub) {
    if ((*sub)->IsLink && !options.EnLinkedArcs) {
      if (options.EnDelArchives) Remove(real, *sub);
    } else if (!LeadsBack(*sub, real)) {
      DeleteContent(*sub, real, options);
    }
  }
  path_.pop_back();
  if (options.EnDelArchives && (archive->IsLink || IsEmpty(archive))) Remove(parent, archive);
}

// Whether a directory below belongs to an archive that stands elsewhere in the tree.
bool TreeModel::HoldsForeign(const Node& archive) const {
  std::set<std::string> doomed{archive->Id};
  Visit(archive, [&](const Node&, const Node& sub) {
    if (!sub->IsLink) doomed.insert(sub->Id);
  });
  bool holds = false;
  Visit(root_, [&](const Node&, const Node& sub) {
    const auto isWithin = [&](const std::string& directory) { return IsSameOrBelow(sub->Id, directory); };
    if (!sub->IsLink && !doomed.contains(sub->Id) && std::ranges::any_of(doomed, isWithin)) holds = true;
  });
  return holds;
}

void TreeModel::RemoveDanglingLinks() {
  for (const Place& place : Places()) {
    if (place.Archive->IsLink && !FindById(place.Archive->Id)) Remove(place.Parent, place.Archive);
  }
}

}  // namespace velmora::operations
