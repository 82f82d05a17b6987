#include "panes/file_pane.h"

#include <utility>

#include "base/paths.h"
#include "base/text.h"
#include "panes/display_text.h"
#include "panes/row_icons.h"
#include "panes/selection.h"

namespace velmora::panes {

FilePane::FilePane(PaneContext& context) : context_(context) {}

// --- Rows. ---

int FilePane::EntryType(std::size_t row) const {
  return row < RowCount() ? list_.Rows[row].EntryType : entry_type::None;
}

std::uint32_t FilePane::UnsortedIndex(std::size_t row) const { return list_.Rows[row].UnsortedIndex; }

std::string FilePane::Key(std::size_t row) const { return KeyOf(list_.Rows[row]); }

std::string FilePane::Tag(std::size_t row) const { return DescriptorOf(list_.Rows[row]); }

std::string FilePane::Name(std::size_t row) const { return list_.Rows[row].Name; }

std::string FilePane::Text(std::size_t row, std::size_t column) const {
  const auto& shown = list_.Rows[row];
  if (column == 0) return DisplayText(shown.Name);
  if (shown.EntryType == entry_type::DirBackEntry || column > 2) return {};
  const auto size = sizes_.find(shown.UnsortedIndex);
  if (size != sizes_.end()) return column == 1 ? size->second.Counts : size->second.Bytes;
  // The path of a directory stands in its slot, not in the column of the sizes.
  if (column == 2 && shown.EntryType == entry_type::DirEntry) return {};
  return std::get<std::string>(SlotOf(shown, static_cast<int>(column)));
}

RowIcon FilePane::Icon(std::size_t row) const {
  return FileIcon(list_.Rows[row], context_.options.DisplayFileIcons);
}

SortState FilePane::Sorting() const {
  return {context_.options.FSSortingMode, context_.options.FSSortingDirection};
}

void FilePane::SetSorting(const SortState& state) {
  context_.options.FSSortingMode = state.Mode;
  context_.options.FSSortingDirection = state.Ascending;
  SortFSList(list_, state);
  Changed();
}

// --- The place. ---

bool FilePane::Show(std::string_view directory) {
  auto& fileSystem = context_.run.fileSystem();
  const auto path = AddBackslash(directory);
  const auto mailArc = mailarchive::ProbeMailArc(fileSystem, path);
  const bool hidesHelpers =
      mailArc.Kind != mailarchive::MailArcKind::None && context_.options.HideMailArcHelperFiles;
  FileList list;
  auto listed = ListDirectories(list, fileSystem, path);
  if (!listed) {
    ReportFileFailure(context_.run, path, listed.error());
    return false;
  }
  listed = ListFiles(list, fileSystem, path, hidesHelpers);
  SortFSList(list, Sorting());

  const auto previous = std::exchange(context_.CurrentPath, path);
  list_ = std::move(list);
  mailArc_ = mailArc;
  sizes_.clear();
  if (!EqualsFold(previous, path)) {
    const int row = FindByTag(*this, StripBackslash(previous));
    SetCursorRow(row < 0 ? 0 : static_cast<std::size_t>(row));
  }
  History().Visit(path);
  Changed();
  if (!listed) ReportFileFailure(context_.run, path, listed.error());
  return true;
}

bool FilePane::ShowDirectory(std::string_view path) {
  return !path.empty() && Show(context_.run.fileSystem().FromUserPath(path));
}

bool FilePane::Refresh() { return Show(std::string(CurrentPath())); }

EnterResult FilePane::Enter(std::size_t row) {
  switch (EntryType(row)) {
    case entry_type::DirBackEntry:
      return GoUp() ? EnterResult::Entered : EnterResult::Failed;
    case entry_type::DirEntry:
      return Show(std::string(list_.Rows[row].FullPath)) ? EnterResult::Entered : EnterResult::Failed;
    case entry_type::FileEntry:
      return EnterResult::File;
    default:
      return EnterResult::Nothing;
  }
}

bool FilePane::GoUp() {
  return !IsDriveRoot(CurrentPath()) && Show(std::string(DirectoryOf(StripBackslash(CurrentPath()))));
}

bool FilePane::GoToRoot() { return !IsDriveRoot(CurrentPath()) && Show(DriveRootOf(CurrentPath())); }

std::string FilePane::PathText() const {
  const auto& path = CurrentPath();
  const bool hasDrive = path.size() >= 2 && path[1] == ':';
  if (!context_.options.DisplayFolderShareName || !hasDrive) return DisplayText(path);
  const auto share = context_.run.fileSystem().ShareOfDrive(path.substr(0, 2));
  return DisplayText(share.empty() ? path : StripBackslash(share) + path.substr(2));
}

bool FilePane::ToggleHelperFiles() {
  if (!IsMailArc()) return false;
  context_.options.HideMailArcHelperFiles = !context_.options.HideMailArcHelperFiles;
  return Refresh();
}

// --- Status bar. ---

std::string FilePane::StatusText(std::size_t) const {
  return std::to_string(list_.Files) + (list_.Files == 1 ? " File" : " Files");
}

bool FilePane::ShowSize(std::size_t row) {
  if (EntryType(row) != entry_type::DirEntry) return false;
  Breather breather(context_.watcher, context_.run.clock());
  const auto& path = list_.Rows[row].FullPath;
  const auto count = CountAll(*CountDirectory(path, context_.run.fileSystem()), breather);
  if (count.FirstError) context_.run.LogError(path, *count.FirstError);
  if (count.IsStopped) return false;
  PutSize(UnsortedIndex(row), count);
  return true;
}

std::unique_ptr<SizeCounter> FilePane::CountSize(std::size_t row) {
  if (EntryType(row) != entry_type::DirEntry || sizes_.contains(UnsortedIndex(row))) return nullptr;
  return CountDirectory(list_.Rows[row].FullPath, context_.run.fileSystem());
}

void FilePane::PutSize(std::uint32_t unsortedIndex, const SizeCount& count) {
  sizes_[unsortedIndex] = DirectorySizeTexts(count);
}

}  // namespace velmora::panes
