#include "panes/file_list.h"

#include <algorithm>
#include <span>
#include <utility>

#include "base/paths.h"
#include "base/text.h"
#include "mailarchive/format/file_names.h"
#include "panes/sort_by.h"

namespace velmora::panes {
namespace {

constexpr std::string_view UncPrefix = "\\\\";

void Append(FileList& list, int type, std::string name, std::string path, const platform::FileEntry& entry) {
  list.Rows.push_back({.UnsortedIndex = static_cast<std::uint32_t>(list.Rows.size()),
                       .EntryType = type,
                       .Name = std::move(name),
                       .FullPath = std::move(path),
                       .Modified = entry.Modified,
                       .Size = entry.Size});
}

}  // namespace

std::string DriveRootOf(std::string_view path) {
  if (!path.starts_with(UncPrefix)) return AddBackslash(LeftCharacters(path, 2));
  const auto server = path.find('\\', UncPrefix.size());
  if (server == std::string_view::npos) return AddBackslash(path);
  return AddBackslash(path.substr(0, path.find('\\', server + 1)));
}

bool IsDriveRoot(std::string_view path) { return AddBackslash(path) == DriveRootOf(path); }

Status ListDirectories(FileList& list, platform::FileSystem& fileSystem, std::string_view directory) {
  auto folders = fileSystem.List(directory, "*.*", platform::ListWhat::Folders);
  if (!folders) return Fail(folders.error());
  if (!IsDriveRoot(directory)) Append(list, entry_type::DirBackEntry, std::string(DirBackText), "", {});
  for (auto& folder : *folders) {
    auto path = JoinPath(directory, folder.Name);
    Append(list, entry_type::DirEntry, std::move(folder.Name), std::move(path), folder);
    ++list.Directories;
  }
  return {};
}

Status ListFiles(FileList& list, platform::FileSystem& fileSystem, std::string_view directory,
                 bool hideHelperFiles) {
  auto files = fileSystem.List(directory, "*.*", platform::ListWhat::Files);
  if (!files) return Fail(files.error());
  list.Rows.reserve(list.Rows.size() + files->size());
  for (auto& file : *files) {
    if (hideHelperFiles && mailarchive::IsMailArcHelperFile(file.Name)) continue;
    auto path = JoinPath(directory, file.Name);
    Append(list, entry_type::FileEntry, std::move(file.Name), std::move(path), file);
    ++list.Files;
  }
  return {};
}

void SortFSList(FileList& list, const SortState& sorting) {
  std::span rows(list.Rows);
  if (!rows.empty() && rows.front().EntryType == entry_type::DirBackEntry) rows = rows.subspan(1);
  const int mode = EffectiveSortMode(FileColumns, sorting.Mode);
  if (mode == sort_mode::FileDate) {
    return SortBy(rows, sorting.Ascending, [](const FileRow& row) { return row.Modified; });
  }
  // The slot of a size holds a text, and by it the rows have always been sorted: "1.234" before "99", and
  // the path of a directory among the numbers.
  const int slot = mode == sort_mode::FileSize ? 2 : 0;
  SortBy(rows, sorting.Ascending,
         [slot](const FileRow& row) { return FoldCase(std::get<std::string>(SlotOf(row, slot))); });
}

}  // namespace velmora::panes
