// The keys of the views. A key is written as toolkits read it: "Ctrl+Shift+F5", "Return", "Del".
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "panes/commands/actions.h"
#include "panes/pane.h"

namespace velmora::panes {

// In which views a key works.
enum class KeyScope { ArchiveViews, FileView, AllViews };

struct KeyBinding {
  std::string_view Key;
  KeyScope Scope;
  Action Runs;
  // A key that moves about within a view must reach the list, not the window's menus.
  bool IsListKey = false;
};

std::span<const KeyBinding> Keys();
bool WorksIn(const KeyBinding& binding, PaneView view);
// What a key does in a view, Action::None for any other.
Action ActionOfKey(std::string_view key, PaneView view);
// The key that menus and tool tips show for an action, "" for none; as the program writes it: "F5", "Ctrl+R".
std::string_view ShownKeyOf(Action action);

}  // namespace velmora::panes
