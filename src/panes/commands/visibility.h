// Which commands are shown, enabled and checked: a pure function of the rights, the row under the cursor and
// what the views show.
#pragma once

#include <string>
#include <string_view>

#include "mailarchive/format/marker.h"
#include "panes/commands/command_table.h"
#include "panes/commands/key_table.h"
#include "panes/commands/rights.h"
#include "panes/pane.h"

namespace velmora::panes {

// The kinds of row of all views.
enum class RowKind { None, Control, Archive, Message, Routing, DirBack, Directory, File };
// `entryType`: see panes/rows.h, where archive lists and file lists count on their own.
RowKind RowKindOf(PaneView view, int entryType);

struct Situation {
  Rights UserRights;
  // --- The active view and the row under its cursor. ---
  PaneView ActiveView = PaneView::LZEBView;
  RowKind Row = RowKind::None;
  bool IsShortCut = false;    // of an archive
  bool IsInUserRoot = false;  // the archive lies in the tree of a user
  bool IsTrash = false;       // and is its trash
  // --- What the views show. ---
  bool ShowsFiles = true;  // ViewMode 1
  bool LeftRuleView = false, RightRuleView = false;
  bool LeftPropertyView = false, RightPropertyView = false;
  bool ShowsTabs = true;
  bool HidesHelperFiles = true;
  bool TabDisplayMode = false;                                        // RestoreViewTabsMode
  mailarchive::MailArcKind MailArc = mailarchive::MailArcKind::None;  // of the current directory
  // --- Of the program. ---
  bool IsBusy = false;
  bool ErrorLogExists = false;

  bool InRuleView() const {
    return ActiveView == PaneView::RZEBView ? RightRuleView
                                            : ActiveView == PaneView::LZEBView && LeftRuleView;
  }
  bool InFileView() const { return ActiveView == PaneView::RFSView; }
};

struct CommandState {
  bool IsVisible = true, IsEnabled = true, IsChecked = false;

  bool operator==(const CommandState&) const = default;
};

// InitUserMode, what the row changes, and the rights-dependent part of ClearBusy, in one.
CommandState StateOf(const Command& command, const Situation& situation);
bool IsMenuVisible(const Menu& menu, const Situation& situation);
// While the program is busy every top-level menu is disabled.
bool IsMenuEnabled(const Situation& situation);
// The tool tip of a command in that situation: a toggle tells what a click brings.
std::string ToolTipOf(const Command& command, const Situation& situation);

// Whether an action may run: built, not busy, the rights there, and a row that it can do something with.
bool MayRun(Action action, const Situation& situation);
// The same for one that came from a key, which asks for more: F6 wants the right to move whatever the row.
bool MayRunFromKey(Action action, const Situation& situation);

}  // namespace velmora::panes
