// The commands of the window: the entries of the menus, context menus, tool bars and pane bars, in the order
// in which they stand there. From this table the window is built.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "panes/commands/actions.h"

namespace velmora::panes {

enum class Place {
  FileMenu,
  CommandsMenu,
  MailArcMenu,  // MnMailArcOp, in the commands menu
  DocMenu,
  StatisticsMenu,
  ExtrasMenu,
  AddressMenu,  // MnAddressBook, in the extras menu
  FilterMenu,
  OptionsMenu,
  ViewMenu,
  HelpMenu,
  ItemContext,  // MnCxZEBItem, on LZEBView and RZEBView
  FileContext,  // MnCxFSItem, on RFSView
  TabContext,   // MnCxTab, on the tab strips
  ToolBar,
  LeftBar,  // the buttons above a view: they act on that view
  RightBar,
  FileBar,
  RightSideBar,  // above the right side, whatever it shows
};

// A top-level menu, or a menu that stands for an entry of another one.
struct Menu {
  Place Holds;
  std::string_view Id;
  std::string_view Caption;  // with "&" before its mnemonic
};
// The top-level menus in their order.
std::span<const Menu> MainMenus();

struct Command {
  std::string_view Id;
  Place Where;
  std::string_view Caption;       // with "&" before its mnemonic; of a button its accessible name
  Action Runs;                    // Action::None of an entry that opens a sub-menu
  bool StartsGroup = false;       // a separator stands before it
  std::string_view IconKey = {};  // of store::ToolbarImageKeys or store::ListImageKeys, "" for none
  std::string_view Tip = {};      // without its key; "" where the caption says it all
  bool IsCheckable = false;       // visibility.h says whether it is checked

  // The sub-menu behind it; nothing for an ordinary entry.
  bool OpensMenu() const { return Runs == Action::None; }
};

inline constexpr std::string_view NotYetAvailable = "Noch nicht verfügbar";

// All commands, those of one place beside each other.
std::span<const Command> Commands();
std::span<const Command> CommandsOf(Place place);
// Null for an unknown name.
const Command* FindCommand(std::string_view id);
std::size_t IndexOf(const Command& command);  // in Commands()
// The place of the entries behind a command that opens a menu.
Place SubMenuOf(const Command& command);

// The tool tip as it stands: the tip or the caption without its marker, with its key in brackets, or that the
// command is not available yet.
std::string ToolTipOf(const Command& command);
// A caption without the marker of its mnemonic.
std::string PlainCaption(std::string_view caption);

}  // namespace velmora::panes
