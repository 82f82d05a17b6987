#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <set>
#include <string>
#include <unordered_map>
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
void CompareSelf(platform::FileSystem& fileSystem, const ArchiveRecord& record, const ArchiveList& list,
                 Findings& findings) {
  const auto own = RecordAt(list.Content(), static_cast<std::size_t>(record.RecordNumber));
  const std::string file = JoinPath(NormalizePath(record.Directory), archive_file::Self);
  const auto copy = fileSystem.FileExists(file) ? fileSystem.ReadFile(file) : Result<std::string>();
  if (own && copy && copy->size() == DirRecord::Size && *copy != own->Bytes())
    findings.push_back({record.Directory,
                        fmt::format("archive.add: der Inhalt weicht von Eintrag {} der Liste von {} ab",
                                    record.RecordNumber, record.ParentDirectory),
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

// Directories on the disk that no record names, neither them nor anything in them. One without content
// is what a process leaves that is killed while it makes or deletes an archive, or stood for the sake of an
// archive that lay in it.
void CheckFolders(platform::FileSystem& fileSystem, const std::string& directory,
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
    if (!named.contains(key) && !holdsNamed)
      findings.push_back(
          {path, "Kein Archiveintrag nennt dieses Verzeichnis", !HoldsContent(fileSystem, path)});
  }
}

// Walks the records that are no links, remembering the way down, and reports those that lead back up it.
class CircleSearch {
 public:
  CircleSearch(ArchiveTree& tree, Findings& findings) : tree_(tree), findings_(findings) {}

  void Run(const std::string& rootDirectory) {
    Enter(rootDirectory);
    while (!way_.empty()) {
      Level& level = way_.back();
      if (level.Next == level.Children.size()) {
        onWay_.erase(level.Key);
        way_.pop_back();
        continue;
      }
      const ArchiveRecord child = level.Children[level.Next++];
      const std::string key = DirectoryKey(child.Directory);
      if (child.IsLink) continue;
      if (onWay_.contains(key))
        findings_.push_back(
            {child.ParentDirectory, fmt::format("Eintrag {} \"{}\" führt zurück auf {}", child.RecordNumber,
                                                child.Name, child.Directory)});
      else if (!entered_.contains(key))
        Enter(child.Directory);
    }
  }

 private:
  struct Level {
    std::string Key;
    std::vector<ArchiveRecord> Children;
    std::size_t Next = 0;
  };

  void Enter(const std::string& directory) {
    std::string key = DirectoryKey(directory);
    entered_.insert(key);
    onWay_.insert(key);
    way_.push_back({std::move(key), tree_.Children(directory).value_or(std::vector<ArchiveRecord>()), 0});
  }

  ArchiveTree& tree_;
  Findings& findings_;
  std::vector<Level> way_;
  std::set<std::string> onWay_, entered_;
};

}  // namespace

std::vector<ArchiveTree::Finding> ArchiveTree::Check() {
  Findings findings;
  std::vector<std::string> directories;
  std::set<std::string> named{state_->RootKey};
  std::set<std::string> unread;  // nobody knows what these lists name
  state_->VisitLists([&](const std::string& directory, const ListResult& list) {
    directories.push_back(directory);
    if (!list) {
      findings.push_back({directory, list.error().Text});
      unread.insert(directory);
      return;
    }
    CheckList(directory, **list, findings);
    for (const ListedRecord& record : (*list)->Records()) named.insert(record.Key);
  });

  // Where an archive's own record was met first.
  std::unordered_map<std::string, std::string> owners;
  for (const std::string& directory : directories) {
    CheckMissingList(state_->FileSystem, directory, findings);
    CheckSelf(state_->FileSystem, directory, findings);
    if (!unread.contains(directory)) CheckFolders(state_->FileSystem, directory, named, findings);
    for (const ArchiveRecord& record : Children(directory).value_or(std::vector<ArchiveRecord>())) {
      if (!state_->FileSystem.FolderExists(NormalizePath(record.Directory)))
        findings.push_back({directory, fmt::format("Eintrag {} \"{}\" nennt das fehlende Verzeichnis {}",
                                                   record.RecordNumber, record.Name, record.Directory)});
      if (record.IsLink) continue;
      const auto [owner, isFirst] = owners.try_emplace(DirectoryKey(record.Directory), directory);
      const bool isCircle = IsSameOrBelow(DirectoryKey(directory), owner->first);
      if (isFirst && !isCircle) {
        if (const auto list = state_->Lists.Get(directory))
          CompareSelf(state_->FileSystem, record, **list, findings);
      }
      if (!isFirst && !isCircle)
        findings.push_back(
            {directory, fmt::format("Eintrag {} \"{}\" ist doppelt: {} steht schon in der Liste von {}",
                                    record.RecordNumber, record.Name, record.Directory, owner->second)});
    }
  }
  CircleSearch(*this, findings).Run(state_->RootDirectory);
  return findings;
}

}  // namespace velmora::store::embedded
