// The selection of a view, as pure functions over its rows: "[..]" is never part of one.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "panes/pane.h"

namespace velmora::panes {

// One switch per row of the list.
using SelectionSet = std::vector<bool>;

std::size_t CountSelected(const SelectionSet& selection);
SelectionSet SelectAll(const Pane& pane, bool on);
SelectionSet NegSelectAll(const Pane& pane, SelectionSet selection);

// The four actions of the dialog, with its captions.
enum class SelectionAction { ExtendMessages, ReduceMessages, ExtendFiles, ReduceFiles };
std::string_view CaptionOf(SelectionAction action);
inline constexpr std::string_view SelectionNote = "( Wildcards ? und * sind zulässig )";
// The action of a view's key: numeric + extends, numeric - reduces.
SelectionAction ActionOf(PaneView view, bool extend);
constexpr bool Extends(SelectionAction action) {
  return action == SelectionAction::ExtendMessages || action == SelectionAction::ExtendFiles;
}

// The rows whose text matches the pattern ("?" and "*", without regard to case) are added or taken out. The
// current row is deselected first. Only messages are tested on the left, messages and rules on the right,
// files in the file view. An empty pattern matches nothing.
SelectionSet ItemSelection(const Pane& pane, SelectionSet selection, std::optional<std::size_t> currentRow,
                           std::string_view pattern, bool extend);

// The index of the first row with that name, given in lower case: any row of the file view, archives of an
// archive view. -1 when there is none.
int FindByDisplayName(const Pane& pane, std::string_view lowerName);
// The next row from `start` on, wrapping, whose text starts with what was typed, without regard to case; -1.
int FindStartingWith(const Pane& pane, std::string_view typed, std::size_t start);
// The row with that tag (an archive's ID, "R" + number), or in the file view that key; -1.
int FindByTag(const Pane& pane, std::string_view tag);
// A selection by where its rows were appended, so that a sort does not move it, and back again.
SelectionSet ByUnsortedIndex(const Pane& pane, const SelectionSet& selection);
SelectionSet FromUnsortedIndex(const Pane& pane, const SelectionSet& appended);

}  // namespace velmora::panes
