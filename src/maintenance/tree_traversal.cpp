#include "maintenance/tree_traversal.h"

#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "store/archive_key.h"

namespace velmora::maintenance {
namespace {

using ArchivePointer = std::shared_ptr<store::DvArchive>;

class Walk {
 public:
  Walk(run::Run& run, const Traversal& traversal) : run_(run), traversal_(traversal) {}

  void From(const ArchivePointer& start) {
    Enter(start, store::ArchiveKey(start->ID()));
    while (!way_.empty() && !run_.CheckCancel()) {
      Level& level = way_.back();
      if (level.Next == level.Subs.size()) {
        onWay_.erase(level.Key);
        way_.pop_back();
        continue;
      }
      // Entering one moves the levels.
      const ArchivePointer parent = level.Archive;
      Meet(parent, level.Subs[level.Next++]);
    }
  }

 private:
  struct Level {
    ArchivePointer Archive;
    std::string Key;
    std::vector<ArchivePointer> Subs;
    std::size_t Next = 0;
  };

  void Meet(const ArchivePointer& parent, const ArchivePointer& sub) {
    if (traversal_.IsVisible && !traversal_.IsVisible(*sub)) return;
    std::string key = store::ArchiveKey(sub->ID());
    const bool isNew = !sub->IsShortCut() && !met_.contains(key);
    const Encounter encounter = sub->IsShortCut()      ? Encounter::ShortCut
                                : onWay_.contains(key) ? Encounter::OnPath
                                : isNew                ? Encounter::New
                                                       : Encounter::Again;
    const bool enters = traversal_.Visit(parent, sub, encounter);
    if (!isNew) return;
    met_.insert(key);
    if (enters) Enter(sub, std::move(key));
  }

  void Enter(const ArchivePointer& archive, std::string key) {
    auto subs = archive->SubArchives();
    if (!subs) return Tell(*archive, subs.error());
    met_.insert(key);
    onWay_.insert(key);
    way_.push_back({archive, std::move(key), std::move(*subs), 0});
  }

  void Tell(store::DvArchive& archive, const Error& error) {
    if (traversal_.Unreadable) return traversal_.Unreadable(archive, error);
    run_.LogError(archive.FullPath(), error);
  }

  run::Run& run_;
  const Traversal& traversal_;
  std::vector<Level> way_;
  std::unordered_set<std::string> onWay_, met_;
};

}  // namespace

void TraverseTree(run::Run& run, const ArchivePointer& start, const Traversal& traversal) {
  Walk(run, traversal).From(start);
}

}  // namespace velmora::maintenance
