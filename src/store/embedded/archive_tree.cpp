#include "store/embedded/archive_tree.h"

#include <fmt/format.h>

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "base/paths.h"
#include "base/text.h"
#include "store/embedded/archive_tree_state.h"
#include "store/embedded/record_properties.h"
#include "store/errors.h"

namespace velmora::store::embedded {
namespace {

// Deeper than any tree that people make; a chain of stray records beyond it leads nowhere.
constexpr std::size_t DeepestChain = 1000;

Error NoArchive(std::string_view directory) {
  return {store_error::NotFound, fmt::format("{} ist kein Archiv", directory)};
}

// Where the record's directory lies, without "\" at the end.
std::string ParentOf(std::string_view directory) {
  return StripBackslash(DirectoryOf(StripBackslash(NormalizePath(directory))));
}

}  // namespace

// --- The way through the lists. ---

ArchiveTree::State::State(platform::FileSystem& fileSystem, std::string rootDirectory)
    : FileSystem(fileSystem),
      RootDirectory(StripBackslash(NormalizePath(rootDirectory))),
      RootKey(DirectoryKey(rootDirectory)),
      Lists(fileSystem) {}

ArchiveRecord ArchiveTree::State::Describe(const ListedRecord& record, std::string_view listDirectory) {
  return {record.Directory,
          record.Name,
          StripBackslash(NormalizePath(listDirectory)),
          record.Number,
          IsLink(record, listDirectory),
          record.Head.Properties};
}

// A record that was made as a link is one. Any other is the archive's own where it stands in the list of the
// directory around it, and also where it points back up: that is a circular entry, which must show as such.
// What stands elsewhere leads to an archive whose own record is in its place.
bool ArchiveTree::State::IsLink(const ListedRecord& record, std::string_view listDirectory) {
  if (record.Head.IsLink) return true;
  const std::string listKey = DirectoryKey(listDirectory);
  if (IsSameOrBelow(listKey, record.Key)) return false;
  if (StripBackslash(DirectoryOf(record.Key)) == listKey) return false;
  return IsNamedWhereItLies(record);
}

bool ArchiveTree::State::IsNamedWhereItLies(const ListedRecord& record) {
  const auto list = Lists.Get(ParentOf(record.Directory));
  if (!list) return false;
  return std::ranges::any_of((*list)->NamingDirectory(record.Key),
                             [&](std::size_t position) { return !(*list)->Records()[position].Head.IsLink; });
}

// The usual place first, then the lists known to hold records of directories that lie elsewhere.
std::vector<ArchiveRecord> ArchiveTree::State::OwnRecords(const std::string& directory) {
  const std::string key = DirectoryKey(directory);
  std::vector<std::string> places{ParentOf(directory)};
  std::ranges::move(Lists.ListsNaming(key), std::back_inserter(places));
  std::vector<ArchiveRecord> found;
  for (const std::string& place : places) {
    const auto list = Lists.Get(place);
    if (!list) continue;
    for (const std::size_t position : (*list)->NamingDirectory(key)) {
      ArchiveRecord record = Describe((*list)->Records()[position], place);
      if (!record.IsLink) found.push_back(std::move(record));
    }
  }
  return found;
}

// `path` holds the directories that were met so far: none is looked at twice, and so a circle ends.
bool ArchiveTree::State::FindChain(const std::string& directory, std::vector<std::string>& path,
                                   std::vector<ArchiveRecord>& chain) {
  const std::string key = DirectoryKey(directory);
  if (key == RootKey) return true;
  if (path.size() >= DeepestChain || std::ranges::find(path, key) != path.end()) return false;
  path.push_back(key);
  for (ArchiveRecord& record : OwnRecords(directory)) {
    if (!FindChain(record.ParentDirectory, path, chain)) continue;
    chain.push_back(std::move(record));
    return true;
  }
  return false;
}

Result<std::vector<ArchiveRecord>> ArchiveTree::State::ChainTo(std::string_view directory) {
  std::vector<ArchiveRecord> chain;
  std::vector<std::string> path;
  if (FindChain(std::string(directory), path, chain)) return chain;
  // Reading every list finds the records of archives that lie outside their parent's directory.
  VisitLists([](const std::string&, const Result<std::shared_ptr<const ArchiveList>>&) {});
  path.clear();
  if (FindChain(std::string(directory), path, chain)) return chain;
  return Fail(NoArchive(directory));
}

bool ArchiveTree::State::LiesBelow(std::string_view directory, const ArchiveRecord& record) {
  const auto chain = ChainTo(directory);
  const std::string key = DirectoryKey(record.Directory);
  return chain && std::ranges::any_of(*chain, [&](const ArchiveRecord& above) {
           return DirectoryKey(above.Directory) == key;
         });
}

void ArchiveTree::State::VisitLists(
    const std::function<void(const std::string&, const Result<std::shared_ptr<const ArchiveList>>&)>& visit) {
  std::vector<std::string> waiting{RootDirectory};
  std::unordered_set<std::string> seen{RootKey};
  while (!waiting.empty()) {
    const std::string directory = std::move(waiting.back());
    waiting.pop_back();
    const auto list = Lists.Get(directory);
    visit(directory, list);
    if (!list) continue;
    const std::vector<ListedRecord>& records = (*list)->Records();
    for (auto record = records.rbegin(); record != records.rend(); ++record)
      if (!record->Head.IsLink && seen.insert(record->Key).second) waiting.push_back(record->Directory);
  }
}

std::size_t& ArchiveTree::State::NextNumber(std::string_view parentDirectory, std::string_view stem,
                                            std::size_t digits) {
  const std::string family = fmt::format("{}\\{}:{}", DirectoryKey(parentDirectory), FoldCase(stem), digits);
  return nextNumbers_[family];
}

// --- Reading. ---

ArchiveTree::ArchiveTree(platform::FileSystem& fileSystem, std::string rootDirectory)
    : state_(std::make_unique<State>(fileSystem, std::move(rootDirectory))) {}

ArchiveTree::~ArchiveTree() = default;

void ArchiveTree::SetPatience(Patience patience) { state_->Lists.SetPatience(patience); }

ArchiveRecord ArchiveTree::Root() {
  ArchiveRecord root;
  root.Directory = state_->RootDirectory;
  root.Name = RootName;
  root.RecordNumber = 1;
  const auto content =
      state_->FileSystem.ReadFile(JoinPath(state_->RootDirectory, archive_file::Self)).value_or("");
  if (const std::optional<DirRecord> record = RecordAt(content, 1))
    root.Properties = ReadHead(*record).Properties;
  return root;
}

Result<std::vector<ArchiveRecord>> ArchiveTree::Children(std::string_view directory) {
  const auto list = state_->Lists.Get(directory);
  if (!list) return Fail(list.error());
  std::vector<ArchiveRecord> children;
  children.reserve((*list)->Records().size());
  for (const ListedRecord& record : (*list)->Records())
    children.push_back(state_->Describe(record, directory));
  return children;
}

Result<int> ArchiveTree::ChildCount(std::string_view directory) {
  const auto list = state_->Lists.Get(directory);
  if (!list) return Fail(list.error());
  return static_cast<int>((*list)->Records().size());
}

Result<ArchiveRecord> ArchiveTree::Refresh(const ArchiveRecord& record) {
  if (record.ParentDirectory.empty()) return Root();
  const auto list = state_->Lists.Get(record.ParentDirectory);
  if (!list) return Fail(list.error());
  for (const std::size_t position : (*list)->NamingDirectory(DirectoryKey(record.Directory))) {
    const ListedRecord& listed = (*list)->Records()[position];
    if (listed.Name != record.Name) continue;
    ArchiveRecord found = state_->Describe(listed, record.ParentDirectory);
    if (found.IsLink == record.IsLink) return found;
  }
  return Fail(NoArchive(record.Directory));
}

Result<ArchiveRecord> ArchiveTree::FindByDirectory(std::string_view directory) {
  if (state_->IsRoot(directory)) return Root();
  auto chain = state_->ChainTo(directory);
  if (!chain) return Fail(chain.error());
  return std::move(chain->back());
}

Result<std::vector<std::string>> ArchiveTree::NamesDownTo(std::string_view directory) {
  const auto chain = state_->ChainTo(directory);
  if (!chain) return Fail(chain.error());
  std::vector<std::string> names{std::string(RootName)};
  for (const ArchiveRecord& record : *chain) names.push_back(ShownName(record.Name, record.Directory));
  return names;
}

namespace {

// The first record of that very name, else the first that differs in case only.
const ListedRecord* FindName(const ArchiveList& list, std::string_view name) {
  const std::vector<std::size_t>& positions = list.WithName(FoldCase(name));
  if (positions.empty()) return nullptr;
  const auto exact = std::ranges::find_if(positions, [&](std::size_t position) {
    const ListedRecord& record = list.Records()[position];
    return ShownName(record.Name, record.Directory) == name;
  });
  return &list.Records()[exact == positions.end() ? positions.front() : *exact];
}

}  // namespace

Result<ArchiveRecord> ArchiveTree::FindByNames(std::string_view from, const std::vector<std::string>& names) {
  if (names.empty()) return FindByDirectory(from);
  std::string directory(from);
  for (std::size_t i = 0;; ++i) {
    const auto list = state_->Lists.Get(directory);
    if (!list) return Fail(list.error());
    const ListedRecord* record = FindName(**list, names[i]);
    // Whoever asks by the name that he gave finds the archive although its record could not hold every
    // character.
    if (record == nullptr) record = FindName(**list, CleanArchiveName(names[i]));
    if (record == nullptr)
      return Fail(store_error::NotFound,
                  fmt::format("In {} gibt es kein Archiv \"{}\"", directory, names[i]));
    if (i + 1 == names.size()) return state_->Describe(*record, directory);
    directory = record->Directory;
  }
}

}  // namespace velmora::store::embedded
