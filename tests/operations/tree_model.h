// A tree of archives in memory, that does what the operations on a store are to do, in the simplest words: to
// hold a store against.
#pragma once

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "operations/archive_copy.h"
#include "operations/archive_deletion.h"

namespace velmora::operations {

struct ModelArchive {
  std::string Name;
  std::string Id;  // physical directory, folded; of a link the target's
  bool IsLink = false;
  bool IsHidden = false;
  std::vector<std::string> Entries, Rules;
  std::vector<std::shared_ptr<ModelArchive>> Subs;
};
using Node = std::shared_ptr<ModelArchive>;

class TreeModel {
 public:
  explicit TreeModel(Node root) : root_(std::move(root)) {}

  const Node& Root() const { return root_; }
  // All archives and links with the archive in whose list they stand, parents first; without the root.
  struct Place {
    Node Parent, Archive;
  };
  std::vector<Place> Places() const;
  Node FindById(const std::string& id) const;  // the archive itself, never a link; null
  // A line for each archive, link, entry and rule.
  std::string Dump(bool withIds = false) const;
  static void DumpLine(std::string& text, int depth, const ModelArchive& archive);

  void Copy(const Place& source, const Node& target, const StoreCopyOptions& options);
  void Delete(const Place& doomed, const StoreDeleteOptions& options);
  void RemoveDanglingLinks();

 private:
  void CopyContent(const Node& source, const Node& parent, const Node& target,
                   const StoreCopyOptions& options);
  void CopyLink(const Node& link, const Node& parent, const Node& target, const StoreCopyOptions& options);
  Node FindSameName(const Node& target, const std::string& name) const;
  void DeleteContent(const Node& archive, const Node& parent, const StoreDeleteOptions& options);
  bool HoldsForeign(const Node& archive) const;
  bool LeadsBack(const Node& sub, const Node& parent) const;
  Node Resolve(const Node& archive) const { return archive->IsLink ? FindById(archive->Id) : archive; }

  Node root_;
  std::set<std::string> targets_;
  std::vector<std::string> path_;
  int made_ = 0;
};

}  // namespace velmora::operations
