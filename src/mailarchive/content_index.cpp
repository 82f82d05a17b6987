#include "mailarchive/content_index.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "base/paths.h"
#include "base/sort_rows.h"
#include "base/text.h"
#include "mailarchive/format/descriptor.h"
#include "mailarchive/format/file_names.h"
#include "mailarchive/format/marker.h"
#include "mailarchive/index_page.h"

namespace velmora::mailarchive {

namespace {

constexpr std::array IndexNames = {directory_file::SubjectIndex, directory_file::AddressIndex,
                                   directory_file::DateIndex};

Error Unreadable(std::string_view path) {
  constexpr int number = platform::file_error::DeviceError;
  return {number, fmt::format("{}: {}", platform::FileErrorText(number), path)};
}

bool IsIndexName(std::string_view name) {
  return std::ranges::any_of(IndexNames, [&](std::string_view index) { return EqualsFold(name, index); });
}

// Page and descriptor make an entry; a page without one stays out. A descriptor that is there and cannot be
// read makes the directory unreadable: an index without its entry would tell that it is gone.
Result<std::vector<IndexRow>> CollectIndexEntries(platform::FileSystem& fileSystem,
                                                  const std::string& directory) {
  std::vector<IndexRow> rows;
  auto pages = fileSystem.List(directory, "*.htm", platform::ListWhat::Files);
  if (!pages) return Fail(std::move(pages.error()));
  for (platform::FileEntry& page : *pages) {
    if (IsIndexName(page.Name)) continue;
    auto fields = ReadIndexFields(fileSystem, directory, page.Name);
    if (!fields) {
      const std::string descriptor = JoinPath(directory, DescriptorName(page.Name));
      if (fileSystem.FileExists(descriptor)) return Fail(Unreadable(descriptor));
      continue;
    }
    rows.push_back(
        {std::move(fields->Subject), std::move(page.Name), std::move(fields->Sortaddr), fields->Date});
  }
  return rows;
}

// Every folder whose marker can be read, by its directory name; component folders have nothing to read. A
// marker that is there and cannot be read is no reason to lose the way to its archive.
Result<std::vector<IndexFolder>> CollectIndexFolders(platform::FileSystem& fileSystem,
                                                     const std::string& directory) {
  auto entries = fileSystem.List(directory, "*.*", platform::ListWhat::Folders);
  if (!entries) return Fail(std::move(entries.error()));
  std::vector<IndexFolder> found;
  std::vector<std::string> keys;
  for (const platform::FileEntry& entry : *entries) {
    const std::string folder = JoinPath(directory, entry.Name);
    const auto marker = ReadArcDescriptor(fileSystem, folder);
    if (!marker) {
      const MarkerProbe probe = ProbeMailArc(fileSystem, folder);
      if (probe.CanHoldContent) return Fail(Unreadable(JoinPath(folder, probe.MarkerFile)));
      continue;
    }
    // A link without a text could not be clicked.
    std::string text = marker->ArchiveDisplayName.empty() ? entry.Name : marker->ArchiveDisplayName;
    found.push_back({entry.Name, std::move(text)});
    keys.push_back(ToLower(entry.Name));
  }
  std::vector<IndexFolder> folders;
  for (const std::uint32_t row : SortRows(keys, true)) folders.push_back(std::move(found[row]));
  return folders;
}

template <typename KeyOf>
auto KeysOf(const std::vector<IndexRow>& rows, KeyOf keyOf) {
  std::vector<decltype(keyOf(rows.front()))> keys;
  keys.reserve(rows.size());
  for (const IndexRow& row : rows) keys.push_back(keyOf(row));
  return keys;
}

// An emptied directory stops being a mail archive.
void RemoveIndexes(platform::FileSystem& fileSystem, const std::string& directory) {
  for (const std::string_view name : IndexNames) {
    (void)fileSystem.DeleteFile(JoinPath(directory, name), false);  // it may never have been there
  }
  ClearArchiveMarkers(fileSystem, directory);
}

void WriteIndexes(IndexContext& context, const IndexContent& content, bool showProgress, bool dateSortedUp) {
  const bool hasEntries = !content.Rows.empty();
  const bool isTree = content.IsRoot && !hasEntries;
  const auto byDate =
      SortRows(KeysOf(content.Rows, [](const IndexRow& row) { return row.Date; }), dateSortedUp);
  WriteIndexFile(context, isTree ? Form::TreeIndex : Form::IndexByDate, directory_file::DateIndex, content,
                 byDate, showProgress);
  if (isTree) return;
  // The subject index stands in the order of file names, so that fax pages come together.
  const auto byFile =
      SortRows(KeysOf(content.Rows, [](const IndexRow& row) { return ToLower(row.PageFile); }), true);
  WriteIndexFile(context, Form::IndexBySubject, directory_file::SubjectIndex, content, byFile, showProgress);
  const auto byAddress =
      SortRows(KeysOf(content.Rows, [](const IndexRow& row) { return ToLower(row.Sortaddr); }), true);
  WriteIndexFile(context, Form::IndexByAddress, directory_file::AddressIndex, content, byAddress,
                 showProgress);
}

void IndexDirectory(IndexContext& context, const std::string& directory, bool showProgress,
                    bool dateSortedUp) {
  platform::FileSystem& fileSystem = context.run.fileSystem();
  const MailArcKind kind = GetMailArcKind(fileSystem, directory);
  if (kind != MailArcKind::Root && kind != MailArcKind::Sub) return;
  auto rows = CollectIndexEntries(fileSystem, directory);
  auto folders = CollectIndexFolders(fileSystem, directory);
  if (!rows || !folders) {
    // A directory that cannot be read is not an emptied one: what stands there stays.
    return context.run.LogError(directory, rows ? folders.error() : rows.error());
  }
  IndexContent content;
  content.Directory = directory;
  content.IsRoot = kind == MailArcKind::Root;
  content.Rows = *std::move(rows);
  content.Folders = *std::move(folders);
  if (content.Rows.empty() && content.Folders.empty()) {
    RemoveIndexes(fileSystem, directory);
  } else {
    WriteIndexes(context, content, showProgress, dateSortedUp);
  }
}

// Deeper than any path that the program writes; links between directories could go on for ever.
constexpr int MaxDepth = 256;

// The folders of a directory that are archives of their own.
std::vector<std::string> SubArchiveFolders(platform::FileSystem& fileSystem, const std::string& directory) {
  std::vector<std::string> paths;
  const auto folders = fileSystem.List(directory, "*.*", platform::ListWhat::Folders);
  for (const platform::FileEntry& folder : folders.value_or(std::vector<platform::FileEntry>{})) {
    std::string path = JoinPath(directory, folder.Name);
    if (!folder.IsLink && GetMailArcKind(fileSystem, path) == MailArcKind::Sub) {
      paths.push_back(std::move(path));
    }
  }
  return paths;
}

std::int64_t CountTree(platform::FileSystem& fileSystem, const std::string& directory, int depth) {
  std::int64_t count = 1;
  if (depth >= MaxDepth) return count;
  for (const std::string& path : SubArchiveFolders(fileSystem, directory)) {
    count += CountTree(fileSystem, path, depth + 1);
  }
  return count;
}

// Children before their parent: one that turns out empty is no mail archive any more when the parent links to
// its sub archives.
void IndexTree(IndexContext& context, const std::string& directory, bool recursive, bool showProgress,
               bool dateSortedUp, int depth) {
  if (recursive && depth < MaxDepth) {
    for (const std::string& path : SubArchiveFolders(context.run.fileSystem(), directory)) {
      if (context.run.CancelRequested()) return;
      IndexTree(context, path, true, showProgress, dateSortedUp, depth + 1);
    }
  }
  if (recursive && context.run.CheckCancel()) return;
  if (showProgress) {
    ++context.run.counters.Directories;
    run::Progress& progress = context.run.frontEnd().progress;
    progress.SetArchiveText(directory);
    progress.SetBar(context.run.counters.Directories, context.TotalDirectories);
  }
  IndexDirectory(context, directory, showProgress, dateSortedUp);
}

}  // namespace

std::int64_t CountIndexDirectories(platform::FileSystem& fileSystem, std::string_view directory) {
  return CountTree(fileSystem, StripBackslash(directory), 0);
}

void BuildContentIndex(IndexContext& context, std::string_view directory, bool recursive, bool showProgress,
                       bool dateSortedUp) {
  context.designs.ForgetTexts();
  IndexTree(context, StripBackslash(directory), recursive, showProgress, dateSortedUp, 0);
  if (context.run.fileSystem().FileExists(JoinPath(directory, directory_file::DateIndex))) {
    WriteAutorunInf(context, directory);
  }
}

}  // namespace velmora::mailarchive
