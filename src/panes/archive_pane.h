// A pane that shows an archive of the store. Left and right are two of these.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "panes/archive_list.h"
#include "panes/pane.h"
#include "panes/pane_context.h"
#include "panes/size_count.h"

namespace velmora::panes {

class ArchivePane final : public Pane {
 public:
  // `view`: LZEBView or RZEBView. The context and the icons must outlive the pane.
  ArchivePane(PaneView view, PaneContext& context, const ArchiveIcons& icons);

  PaneView View() const override { return view_; }
  const ArchiveList& List() const { return list_; }
  const ListRow& Row(std::size_t row) const { return list_.Rows[row]; }
  // The archive, message or rule of a row, null for another row.
  const ArchiveRow* Archive(std::size_t row) const;
  const MessageRow* Message(std::size_t row) const;
  const RoutingRow* Rule(std::size_t row) const;

  std::size_t RowCount() const override { return list_.Rows.size(); }
  int EntryType(std::size_t row) const override;
  std::uint32_t UnsortedIndex(std::size_t row) const override;
  std::string Key(std::size_t row) const override;
  std::string Tag(std::size_t row) const override;
  std::string Name(std::size_t row) const override;
  std::string Text(std::size_t row, std::size_t column) const override;
  RowIcon Icon(std::size_t row) const override;
  std::string_view ColumnIcon(std::size_t row, std::size_t column) const override;
  RowMarks MarksOf(std::size_t row) const override;

  std::span<const Column> Columns() const override;
  SortState Sorting() const override;

  // --- The place. ---
  // The current archive; null before the sign-on.
  std::shared_ptr<store::DvArchive> CurrentArchive() const;
  bool ShowArchive(std::shared_ptr<store::DvArchive> archive);
  bool ShowArchive(std::string_view path);  // in any form that DvAccount::GetArchive takes
  // Puts the cursor on the message with that key; false when it is not listed.
  bool ShowMessage(store::EntryKey key);
  bool Refresh() override;
  // As Refresh; where the archive is gone, the nearest one above it that is there, without a word.
  bool RefreshNearest();
  EnterResult Enter(std::size_t row) override;
  bool GoUp() override;      // ArcBack
  bool GoToRoot() override;  // GoToArcRoot: the root of the session
  bool GoToUserRoot();
  std::string PathText() const override;

  // --- View modes. ---
  bool IsRuleView() const;
  bool SetRuleView(bool on);  // rebuilds the list
  bool IsPropertyView() const;

  // --- Hiding of large archives. ---
  bool IsHiding() const { return isHiding_; }
  bool ToggleHiding();  // a double click on the status panel; false, and nothing happens, without a SizeCheck
  bool HidingStruck() const { return list_.HiddenTotal > 0; }
  std::string_view HidingToolTip() const;  // "" when the panel has neither tool tip nor picture

  std::string StatusText(std::size_t selectedRows) const override;
  bool ShowSize(std::size_t row) override;
  std::unique_ptr<SizeCounter> CountSize(std::size_t row) override;
  void PutSize(std::uint32_t unsortedIndex, const SizeCount& count) override;

  // Exchanges all that the two panes show and how.
  void Swap(ArchivePane& other);

 protected:
  bool ShowPlace(const std::string& place) override;
  void SetSorting(const SortState& state) override;

 private:
  struct OptionMembers;  // where the pane's state stands in the settings
  const OptionMembers& Members() const;
  std::shared_ptr<store::DvArchive>& Current() const;
  SortState SortingOf(bool ofRules) const;
  ListingOptions Listing() const;
  // Fills a new list and shows it; the old one stays when the archive cannot be listed at all.
  bool Show(std::shared_ptr<store::DvArchive> archive);
  // The archive that is there now, which may not be the one that was.
  Result<std::shared_ptr<store::DvArchive>> Fetch(std::string_view path) const;
  // Whether what Fetch gave is none, or has lost its directory.
  bool IsGone(const Result<std::shared_ptr<store::DvArchive>>& archive) const;
  // The parent of the archive that has, or had, this ID and path.
  Result<std::shared_ptr<store::DvArchive>> ParentOf(std::string_view id, std::string_view path) const;
  std::unique_ptr<SizeCounter> CounterOf(std::shared_ptr<store::DvArchive> archive) const;

  PaneView view_;
  PaneContext& context_;
  const ArchiveIcons& icons_;
  ArchiveList list_;
  std::string shownPath_;                     // an archive that is gone cannot tell where it stood
  std::map<std::uint32_t, SizeTexts> sizes_;  // by unsorted index
  bool isHiding_ = true;
};

}  // namespace velmora::panes
