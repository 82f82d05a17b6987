#include "panes/archive_nodes.h"

#include <algorithm>

#include "base/paths.h"
#include "base/sort_rows.h"
#include "base/text.h"

namespace velmora::panes {
namespace {

bool StandsOnItsOwnWay(const ArchiveNode& node) {
  const auto* above = node.Parent;
  while (above != nullptr && !EqualsFold(NormalizePath(above->ID), NormalizePath(node.ID)))
    above = above->Parent;
  return above != nullptr;
}

Result<std::unique_ptr<ArchiveNode>> MakeNode(store::DvArchive& archive, ArchiveNode& parent) {
  auto name = archive.DisplayName();
  if (!name) return Fail(name.error());
  auto node = std::make_unique<ArchiveNode>();
  node->DisplayName = *std::move(name);
  node->FullPath = archive.FullPath();
  node->ID = archive.ID();
  node->IsShortCut = archive.IsShortCut();
  node->Parent = &parent;
  node->MayHaveChildren = !StandsOnItsOwnWay(*node) && archive.SubArchiveCount().value_or(0) > 0;
  return node;
}

}  // namespace

std::string_view ArchiveNode::IconKey(bool isExpanded) const {
  if (Parent == nullptr) return "AArchive";
  return isExpanded ? "FolderOpen" : "FolderClosed";
}

ArchiveNodes::ArchiveNodes(store::Session& session) : session_(session) {
  if (session.DefaultArchive == nullptr) return;
  root_.FullPath = session.DefaultArchive->FullPath();
  root_.ID = session.DefaultArchive->ID();
  root_.DisplayName = session.DefaultArchive->DisplayName().value_or(root_.FullPath);
}

Status ArchiveNodes::Expand(ArchiveNode& node) {
  if (node.IsLoaded || !node.MayHaveChildren || session_.Account == nullptr) return {};
  const auto archive = session_.Account->GetArchive(node.ID);
  if (!archive) return Fail(archive.error());
  const auto subArchives = (*archive)->SubArchives();
  if (!subArchives) return Fail(subArchives.error());
  std::vector<std::unique_ptr<ArchiveNode>> children;
  std::vector<std::string> keys;
  for (const auto& sub : *subArchives) {
    auto child = MakeNode(*sub, node);
    if (!child) return Fail(child.error());
    keys.push_back(FoldCase((*child)->DisplayName));
    children.push_back(*std::move(child));
  }
  for (const auto row : SortRows(keys, true)) node.Children.push_back(std::move(children[row]));
  node.IsLoaded = true;
  node.MayHaveChildren = !node.Children.empty();
  return {};
}

ArchiveNode* ArchiveNodes::Find(const store::DvArchive& archive) {
  return FindBelow(root_, archive.FullPath(), archive.ID());
}

// Several archives may have one path: each of them is tried.
ArchiveNode* ArchiveNodes::FindBelow(ArchiveNode& node, const std::string& path, std::string_view id) {
  if (EqualsFold(NormalizePath(node.ID), NormalizePath(id))) return &node;
  if (!Expand(node)) return nullptr;
  for (const auto& child : node.Children) {
    const bool leadsThere =
        EqualsFold(child->FullPath, path) || StartsWithFold(path, AddSlash(child->FullPath));
    if (child->IsShortCut || !leadsThere) continue;
    if (auto* const found = FindBelow(*child, path, id)) return found;
  }
  return nullptr;
}

}  // namespace velmora::panes
