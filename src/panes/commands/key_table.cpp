#include "panes/commands/key_table.h"

#include <algorithm>
#include <array>

namespace velmora::panes {
namespace {

constexpr bool ListKey = true;

// The first binding of an action is the one that is shown.
constexpr auto KeyTable = std::to_array<KeyBinding>({
    {"Tab", KeyScope::AllViews, Action::NextPane, ListKey},
    {"Ins", KeyScope::AllViews, Action::FlipSelection, ListKey},
    {"Return", KeyScope::AllViews, Action::Open, ListKey},
    {"Enter", KeyScope::AllViews, Action::Open, ListKey},
    {"Space", KeyScope::AllViews, Action::RowSize, ListKey},
    {"Num+*", KeyScope::AllViews, Action::NegateSelection, ListKey},
    {"Num+-", KeyScope::AllViews, Action::ReduceSelection, ListKey},
    {"Num++", KeyScope::AllViews, Action::ExtendSelection, ListKey},
    {"F1", KeyScope::AllViews, Action::Help},
    {"F2", KeyScope::AllViews, Action::Rename},
    {"F3", KeyScope::ArchiveViews, Action::ShowMessage},
    {"F3", KeyScope::FileView, Action::OpenFile},
    {"F4", KeyScope::ArchiveViews, Action::ArcDirSync},
    {"F5", KeyScope::AllViews, Action::Copy},
    {"F6", KeyScope::AllViews, Action::Move},
    {"F7", KeyScope::AllViews, Action::Create},
    {"F8", KeyScope::AllViews, Action::Delete},
    {"Del", KeyScope::AllViews, Action::Delete, ListKey},
    {"F9", KeyScope::AllViews, Action::ShowIndex},
    {"F11", KeyScope::AllViews, Action::Properties},
    {"F12", KeyScope::AllViews, Action::UserArchives},

    {"Shift+A", KeyScope::AllViews, Action::ClearSelection, ListKey},
    {"Shift+F4", KeyScope::ArchiveViews, Action::ShowPhysical},

    {"Ctrl+A", KeyScope::AllViews, Action::SelectAll, ListKey},
    {"Ctrl+D", KeyScope::AllViews, Action::ChooseDrive},
    {"Ctrl+L", KeyScope::AllViews, Action::EditPath},
    {"Ctrl+R", KeyScope::AllViews, Action::Refresh},
    {"Ctrl+U", KeyScope::AllViews, Action::SwapPanes},
    {"Ctrl+.", KeyScope::AllViews, Action::ShowListItem},
    {"Ctrl+/", KeyScope::AllViews, Action::ResetForm},
    {"Ctrl+\\", KeyScope::AllViews, Action::GoToRoot},
    {"Ctrl+1", KeyScope::AllViews, Action::ActivateTab1},
    {"Ctrl+2", KeyScope::AllViews, Action::ActivateTab2},
    {"Ctrl+3", KeyScope::AllViews, Action::ActivateTab3},
    {"Ctrl+4", KeyScope::AllViews, Action::ActivateTab4},
    {"Ctrl+5", KeyScope::AllViews, Action::ActivateTab5},

    {"Alt+Return", KeyScope::AllViews, Action::Properties},
    {"Alt+F1", KeyScope::ArchiveViews, Action::TakeRightIntoLeft},
    {"Alt+F2", KeyScope::ArchiveViews, Action::TakeLeftIntoRight},
    {"Alt+F4", KeyScope::AllViews, Action::ExitWithoutAsking},
    {"Alt+F7", KeyScope::ArchiveViews, Action::CreateShortCut},
    {"Alt+F8", KeyScope::ArchiveViews, Action::CleanMessages},
    {"Alt+\\", KeyScope::ArchiveViews, Action::GoToUserRoot},
    {"Alt+F11", KeyScope::ArchiveViews, Action::ChangeItemProperties},
    {"Alt+F12", KeyScope::ArchiveViews, Action::MessageStatistics},
    {"Alt+Left", KeyScope::AllViews, Action::GoBack, ListKey},
    {"Alt+Right", KeyScope::AllViews, Action::GoForward, ListKey},
    {"Backspace", KeyScope::AllViews, Action::GoUp, ListKey},
});

}  // namespace

std::span<const KeyBinding> Keys() { return KeyTable; }

bool WorksIn(const KeyBinding& binding, PaneView view) {
  if (binding.Scope == KeyScope::AllViews) return true;
  return (binding.Scope == KeyScope::FileView) == (view == PaneView::RFSView);
}

Action ActionOfKey(std::string_view key, PaneView view) {
  const auto found = std::ranges::find_if(
      KeyTable, [&](const KeyBinding& binding) { return binding.Key == key && WorksIn(binding, view); });
  return found == KeyTable.end() ? Action::None : found->Runs;
}

std::string_view ShownKeyOf(Action action) {
  // What making a new archive or directory has in common is its key.
  if (action == Action::NewArchive || action == Action::NewDirectory) action = Action::Create;
  const auto found = std::ranges::find(KeyTable, action, &KeyBinding::Runs);
  return found == KeyTable.end() ? std::string_view() : found->Key;
}

}  // namespace velmora::panes
