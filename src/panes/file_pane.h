// The pane that shows a directory of the file system.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "mailarchive/format/marker.h"
#include "panes/file_list.h"
#include "panes/pane.h"
#include "panes/pane_context.h"
#include "panes/size_count.h"

namespace velmora::panes {

class FilePane final : public Pane {
 public:
  explicit FilePane(PaneContext& context);

  PaneView View() const override { return PaneView::RFSView; }
  const FileList& List() const { return list_; }
  const FileRow& Row(std::size_t row) const { return list_.Rows[row]; }

  std::size_t RowCount() const override { return list_.Rows.size(); }
  int EntryType(std::size_t row) const override;
  std::uint32_t UnsortedIndex(std::size_t row) const override;
  std::string Key(std::size_t row) const override;
  std::string Tag(std::size_t row) const override;
  std::string Name(std::size_t row) const override;
  std::string Text(std::size_t row, std::size_t column) const override;
  RowIcon Icon(std::size_t row) const override;
  std::string_view ColumnIcon(std::size_t, std::size_t) const override { return {}; }

  std::span<const Column> Columns() const override { return FileColumns; }
  SortState Sorting() const override;

  // --- The place. ---
  const std::string& CurrentPath() const { return context_.CurrentPath; }
  // A path as a person types it, a host path too.
  bool ShowDirectory(std::string_view path);
  bool Refresh() override;
  EnterResult Enter(std::size_t row) override;
  bool GoUp() override;      // DirBack
  bool GoToRoot() override;  // GoToDirRoot: the root of the drive or share
  std::string PathText() const override;

  // --- Mail archives. ---
  const mailarchive::MarkerProbe& MailArc() const { return mailArc_; }
  bool IsMailArc() const { return mailArc_.Kind != mailarchive::MailArcKind::None; }
  bool ToggleHelperFiles();  // false, and nothing happens, outside of a mail archive

  std::string StatusText(std::size_t selectedRows) const override;
  bool ShowSize(std::size_t row) override;
  std::unique_ptr<SizeCounter> CountSize(std::size_t row) override;
  void PutSize(std::uint32_t unsortedIndex, const SizeCount& count) override;

 protected:
  bool ShowPlace(const std::string& place) override { return Show(place); }
  void SetSorting(const SortState& state) override;

 private:
  bool Show(std::string_view directory);

  PaneContext& context_;
  FileList list_;
  mailarchive::MarkerProbe mailArc_;
  std::map<std::uint32_t, SizeTexts> sizes_;  // by unsorted index
};

}  // namespace velmora::panes
