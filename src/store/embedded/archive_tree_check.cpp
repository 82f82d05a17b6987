#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "base/paths.h"
#include "base/text.h"
#include "store/embedded/archive_tree.h"
#include "store/embedded/archive_tree_state.h"

namespace velmora::store::embedded {
namespace {

using Findings = std::vector<ArchiveTree::Finding>;
using ListResult = Result<std::shared_ptr<const ArchiveList>>;

// A list as the check has read it, once.
struct CheckedList {
  std::string Directory;
  std::shared_ptr<const ArchiveList> List;  // null when it cannot be read
  std::vector<const ListedRecord*> Own;     // its records that are no links
};

// What a list says by itself: its length and the tags of its records.
void CheckList(const std::string& directory, const ArchiveList& list, Findings& findings) {
  const std::string& content = list.Content();
  if (content.size() % DirRecord::Size != 0)
    findings.push_back({directory, fmt::format("archive.dir: die Länge {} ist kein Vielfaches von {}",
                                               content.size(), DirRecord::Size)});
  for (std::size_t number = 1; number <= CountRecords(content); ++number) {
    const DirRecord record = *RecordAt(content, number);
    if (list.WithNumber(static_cast<int>(number)) == nullptr)
      findings.push_back(
          {directory, fmt::format("archive.dir: Eintrag {} hat keinen brauchbaren Pfad", number)});
    if (!record.Name())
      findings.push_back({directory, fmt::format("archive.dir: Eintrag {} hat keinen Namen", number)});
  }
}

// A list that is missing beside its backup: a rewrite was broken off, or somebody has taken the list away.
void CheckMissingList(platform::FileSystem& fileSystem, const std::string& directory, Findings& findings) {
  const std::string place = NormalizePath(directory);
  if (IsListInterrupted(fileSystem, place))
    findings.push_back(
        {directory,
         "archive.dir fehlt nach einem abgebrochenen Schreibvorgang; bis zur nächsten Änderung "
         "gilt archivedir.bak"});
  else if (!fileSystem.FileExists(JoinPath(place, archive_file::List)) &&
           fileSystem.FileExists(JoinPath(place, archive_file::ListBackup)))
    findings.push_back({directory, "archive.dir fehlt; archivedir.bak ist vorhanden und gilt nicht", true});
}

void CheckSelf(platform::FileSystem& fileSystem, const std::string& directory, Findings& findings) {
  const auto self = fileSystem.GetEntry(JoinPath(NormalizePath(directory), archive_file::Self));
  if (self && self->Size != static_cast<std::int64_t>(DirRecord::Size))
    findings.push_back(
        {directory, fmt::format("archive.add: die Länge {} ist nicht {}", self->Size, DirRecord::Size)});
}

// The copy in the archive's directory. A process that was killed while it changed a record leaves an old one.
void CompareSelf(platform::FileSystem& fileSystem, const ListedRecord& record, const CheckedList& list,
                 Findings& findings) {
  const auto own = RecordAt(list.List->Content(), static_cast<std::size_t>(record.Number));
  const std::string file = JoinPath(NormalizePath(record.Directory), archive_file::Self);
  const auto copy = fileSystem.FileExists(file) ? fileSystem.ReadFile(file) : Result<std::string>();
  if (own && copy && copy->size() == DirRecord::Size && *copy != own->Bytes())
    findings.push_back({record.Directory,
                        fmt::format("archive.add: der Inhalt weicht von Eintrag {} der Liste von {} ab",
                                    record.Number, StripBackslash(NormalizePath(list.Directory))),
                        true});
}

// Whether a file is more than the configuration of an archive: messages, entries of the tree, what is not the
// store's.
bool IsContent(platform::FileSystem& fileSystem, const std::string& path) {
  const std::string name = FoldCase(FileNameOf(path));
  if (name == archive_file::List) return CountRecords(fileSystem.ReadFile(path).value_or("")) > 0;
  if (name.starts_with(archive_file::Messages) || name == "archivedat.bak") return true;
  return !name.ends_with(".ini") && !name.starts_with("archive");
}

// Whether such a file lies in the folder or below it. What cannot be looked into counts as one.
bool HoldsContent(platform::FileSystem& fileSystem, const std::string& folder) {
  const auto entries = fileSystem.List(folder, "*", platform::ListWhat::All);
  return !entries || std::ranges::any_of(*entries, [&](const platform::FileEntry& entry) {
    const std::string path = JoinPath(folder, entry.Name);
    return entry.IsFolder && !entry.IsLink ? HoldsContent(fileSystem, path) : IsContent(fileSystem, path);
  });
}

// Whether a list names the directory at this moment: what was read of it may be some seconds old, and others
// work in the store meanwhile.
bool IsListedNow(ListCache& cache, const std::string& listDirectory, const std::string& key) {
  const auto list = cache.Get(listDirectory);
  return list && !(*list)->NamingDirectory(key).empty();
}

// Directories on the disk that no record names, neither them nor anything in them. One without content
// is what a process leaves that is killed while it makes or deletes an archive, or stood for the sake of an
// archive that lay in it.
void CheckFolders(platform::FileSystem& fileSystem, ListCache& cache, const std::string& directory,
                  const std::set<std::string>& named, Findings& findings) {
  const std::string place = NormalizePath(directory);
  const auto folders = fileSystem.List(place, "*", platform::ListWhat::Folders);
  if (!folders) return;
  for (const platform::FileEntry& folder : *folders) {
    const std::string path = JoinPath(place, folder.Name);
    const std::string key = DirectoryKey(path);
    const std::string inside = key + "\\";
    const auto next = named.lower_bound(inside);
    const bool holdsNamed = next != named.end() && next->starts_with(inside);
    if (!named.contains(key) && !holdsNamed && !IsListedNow(cache, directory, key))
      findings.push_back(
          {path, "Kein Archiveintrag nennt dieses Verzeichnis", !HoldsContent(fileSystem, path)});
  }
}

// Follows the records that are no links, remembering the way down, and reports those that lead back up it.
class CircleSearch {
 public:
  CircleSearch(const std::vector<CheckedList>& lists, Findings& findings) : findings_(findings) {
    for (const CheckedList& list : lists) lists_.emplace(DirectoryKey(list.Directory), &list);
  }

  void Run(const std::string& rootKey) {
    Enter(rootKey);
    while (!way_.empty()) {
      Level& level = way_.back();
      if (level.Next == level.List->Own.size()) {
        onWay_.erase(level.Key);
        way_.pop_back();
        continue;
      }
      const CheckedList& list = *level.List;
      const ListedRecord& child = *list.Own[level.Next++];
      if (onWay_.contains(child.Key))
        findings_.push_back({StripBackslash(NormalizePath(list.Directory)),
                             fmt::format("Eintrag {} \"{}\" führt zurück auf {}", child.Number, child.Name,
                                         child.Directory)});
      else if (!entered_.contains(child.Key))
        Enter(child.Key);
    }
  }

 private:
  struct Level {
    std::string_view Key;
    const CheckedList* List;
    std::size_t Next = 0;
  };

  void Enter(const std::string& key) {
    const auto found = lists_.find(key);
    if (found == lists_.end()) return;
    entered_.insert(found->first);
    onWay_.insert(found->first);
    way_.push_back({found->first, found->second, 0});
  }

  Findings& findings_;
  std::unordered_map<std::string, const CheckedList*> lists_;
  std::vector<Level> way_;
  std::unordered_set<std::string_view> onWay_, entered_;
};

// What the records of a list say of the archives that they name. `owners`: in whose list each archive's own
// record was met first, by the archive's key.
void CheckRecords(platform::FileSystem& fileSystem, ListCache& cache, const CheckedList& list,
                  std::unordered_map<std::string_view, std::string_view>& owners, Findings& findings) {
  const std::string listKey = DirectoryKey(list.Directory);
  auto own = list.Own.begin();
  for (const ListedRecord& record : list.List->Records()) {
    if (!fileSystem.FolderExists(NormalizePath(record.Directory)) &&
        IsListedNow(cache, list.Directory, record.Key))
      findings.push_back({list.Directory, fmt::format("Eintrag {} \"{}\" nennt das fehlende Verzeichnis {}",
                                                      record.Number, record.Name, record.Directory)});
    if (own == list.Own.end() || *own != &record) continue;
    ++own;
    if (IsSameOrBelow(listKey, record.Key)) continue;  // a circle
    const auto [owner, isFirst] = owners.try_emplace(record.Key, list.Directory);
    if (isFirst)
      CompareSelf(fileSystem, record, list, findings);
    else
      findings.push_back(
          {list.Directory, fmt::format("Eintrag {} \"{}\" ist doppelt: {} steht schon in der Liste von {}",
                                       record.Number, record.Name, record.Directory, owner->second)});
  }
}

}  // namespace

ArchiveTree::CheckResult ArchiveTree::Check() {
  Findings findings;
  std::vector<CheckedList> lists;
  std::set<std::string> named{state_->RootKey};
  state_->VisitLists([&](const std::string& directory, const ListResult& list) {
    lists.push_back({directory, list.value_or(nullptr), {}});
    if (!list) {
      findings.push_back({directory, list.error().Text});
      return;
    }
    CheckList(directory, **list, findings);
    for (const ListedRecord& record : (*list)->Records()) named.insert(record.Key);
  });

  std::unordered_map<std::string_view, std::string_view> owners;
  for (CheckedList& list : lists) {
    CheckMissingList(state_->FileSystem, list.Directory, findings);
    CheckSelf(state_->FileSystem, list.Directory, findings);
    if (!list.List) continue;  // nobody knows what it names
    CheckFolders(state_->FileSystem, state_->Lists, list.Directory, named, findings);
    for (const ListedRecord& record : list.List->Records())
      if (!state_->IsLink(record, list.Directory)) list.Own.push_back(&record);
    CheckRecords(state_->FileSystem, state_->Lists, list, owners, findings);
  }
  CircleSearch(lists, findings).Run(state_->RootKey);
  CheckResult result{std::move(findings), {}};
  for (CheckedList& list : lists) result.Archives.push_back(std::move(list.Directory));
  return result;
}

}  // namespace velmora::store::embedded
