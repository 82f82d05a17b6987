#include "panes/selection.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "platform/name_mask.h"

namespace velmora::panes {
namespace {

constexpr std::array<std::string_view, 4> Captions = {"Message Auswahl erweitern",
                                                      "Message Auswahl reduzieren", "Dateiauswahl erweitern",
                                                      "Dateiauswahl reduzieren"};

// The first row of which something is true; -1.
template <typename Test>
int FindRow(const Pane& pane, std::size_t start, Test test) {
  const auto count = pane.RowCount();
  for (std::size_t i = 0; i < count; ++i) {
    const auto row = (start + i) % count;
    if (test(row)) return static_cast<int>(row);
  }
  return -1;
}

// The panes differ: rules are tested on the right only.
bool IsTested(PaneView view, int type) {
  if (view == PaneView::RFSView) return type == entry_type::FileEntry;
  return type == entry_type::MessageEntry || (type == entry_type::RoutingEntry && view == PaneView::RZEBView);
}

}  // namespace

std::size_t CountSelected(const SelectionSet& selection) {
  return static_cast<std::size_t>(std::ranges::count(selection, true));
}

SelectionSet SelectAll(const Pane& pane, bool on) {
  SelectionSet selection(pane.RowCount(), false);
  for (std::size_t row = 0; row < selection.size(); ++row) {
    selection[row] = on && pane.EntryType(row) != entry_type::ControlEntry;
  }
  return selection;
}

SelectionSet NegSelectAll(const Pane& pane, SelectionSet selection) {
  selection.resize(pane.RowCount(), false);
  for (std::size_t row = 0; row < selection.size(); ++row) {
    selection[row] = pane.EntryType(row) != entry_type::ControlEntry && !selection[row];
  }
  return selection;
}

std::string_view CaptionOf(SelectionAction action) { return Captions[static_cast<std::size_t>(action)]; }

SelectionAction ActionOf(PaneView view, bool extend) {
  if (view == PaneView::RFSView) return extend ? SelectionAction::ExtendFiles : SelectionAction::ReduceFiles;
  return extend ? SelectionAction::ExtendMessages : SelectionAction::ReduceMessages;
}

SelectionSet ItemSelection(const Pane& pane, SelectionSet selection, std::optional<std::size_t> currentRow,
                           std::string_view pattern, bool extend) {
  selection.resize(pane.RowCount(), false);
  if (currentRow && *currentRow < selection.size()) selection[*currentRow] = false;
  if (pattern.empty()) return selection;
  const platform::NameMask mask(pattern);
  for (std::size_t row = 0; row < selection.size(); ++row) {
    if (!IsTested(pane.View(), pane.EntryType(row))) continue;
    if (mask.Matches(FoldCase(pane.Text(row, 0)))) selection[row] = extend;
  }
  return selection;
}

int FindByDisplayName(const Pane& pane, std::string_view lowerName) {
  const bool hasFiles = pane.View() == PaneView::RFSView;
  return FindRow(pane, 0, [&](std::size_t row) {
    return (hasFiles || pane.EntryType(row) == entry_type::ArchiveEntry) &&
           ToLower(pane.Name(row)) == lowerName;
  });
}

int FindStartingWith(const Pane& pane, std::string_view typed, std::size_t start) {
  if (typed.empty()) return -1;
  return FindRow(pane, start, [&](std::size_t row) { return StartsWithFold(pane.Text(row, 0), typed); });
}

int FindByTag(const Pane& pane, std::string_view tag) {
  const bool hasFiles = pane.View() == PaneView::RFSView;
  return FindRow(pane, 0,
                 [&](std::size_t row) { return EqualsFold(hasFiles ? pane.Key(row) : pane.Tag(row), tag); });
}

SelectionSet ByUnsortedIndex(const Pane& pane, const SelectionSet& selection) {
  SelectionSet appended(pane.RowCount(), false);
  for (std::size_t row = 0; row < std::min(selection.size(), appended.size()); ++row) {
    if (selection[row]) appended[pane.UnsortedIndex(row)] = true;
  }
  return appended;
}

SelectionSet FromUnsortedIndex(const Pane& pane, const SelectionSet& appended) {
  SelectionSet selection(pane.RowCount(), false);
  for (std::size_t row = 0; row < selection.size(); ++row) {
    const std::size_t index = pane.UnsortedIndex(row);
    selection[row] = index < appended.size() && appended[index];
  }
  return selection;
}

}  // namespace velmora::panes
