// The tree of archives, for a tree control: nodes are loaded as they are expanded.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "store/session.h"

namespace velmora::panes {

struct ArchiveNode {
  std::string DisplayName;  // as it is stored
  std::string FullPath;
  std::string ID;
  bool IsShortCut = false;
  bool MayHaveChildren = true;  // whether an expander stands before it, as far as is known
  bool IsLoaded = false;
  ArchiveNode* Parent = nullptr;
  std::vector<std::unique_ptr<ArchiveNode>> Children;  // by name, without regard to case

  // "AArchive" of the root, else "FolderOpen" or "FolderClosed".
  std::string_view IconKey(bool isExpanded) const;
};

class ArchiveNodes {
 public:
  static constexpr std::string_view Caption = "David Archive System";
  static constexpr std::string_view SyncCaption = "Archivansicht aktualisieren";

  // From the root of the session down.
  explicit ArchiveNodes(store::Session& session);

  ArchiveNode& Root() { return root_; }
  // Loads the children, once. A node that stands on its own way down (a link that leads back) has none.
  Status Expand(ArchiveNode& node);
  // Expands what is needed and gives the node of an archive; null when it is not below the root.
  ArchiveNode* Find(const store::DvArchive& archive);

 private:
  ArchiveNode* FindBelow(ArchiveNode& node, const std::string& path, std::string_view id);

  store::Session& session_;
  ArchiveNode root_;
};

}  // namespace velmora::panes
