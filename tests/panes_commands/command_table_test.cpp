#include "panes/commands/command_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "base/text.h"
#include "panes/commands/dispatch.h"
#include "panes/commands/key_table.h"
#include "store/icon_keys.h"

namespace velmora::panes {
namespace {

constexpr std::array AllPlaces = {
    Place::FileMenu,   Place::CommandsMenu, Place::MailArcMenu, Place::DocMenu,      Place::StatisticsMenu,
    Place::ExtrasMenu, Place::AddressMenu,  Place::FilterMenu,  Place::OptionsMenu,  Place::ViewMenu,
    Place::HelpMenu,   Place::ItemContext,  Place::FileContext, Place::TabContext,   Place::ToolBar,
    Place::LeftBar,    Place::RightBar,     Place::FileBar,     Place::RightSideBar,
};
bool IsMenu(Place place) { return place <= Place::TabContext; }

std::vector<std::string_view> IdsOf(Place place) {
  std::vector<std::string_view> ids;
  for (const Command& command : CommandsOf(place)) ids.push_back(command.Id);
  return ids;
}

// "" where there is none, or more than one.
std::string MnemonicOf(std::string_view caption) {
  const std::size_t marker = caption.find('&');
  if (marker == std::string_view::npos || caption.find('&', marker + 1) != std::string_view::npos) return "";
  return ToLower(LeftCharacters(caption.substr(marker + 1), 1));
}

TEST(CommandTable, EachCommandStandsOnceUnderItsName) {
  std::set<std::string_view> ids;
  for (const Command& command : Commands()) {
    EXPECT_TRUE(ids.insert(command.Id).second) << command.Id;
    EXPECT_EQ(FindCommand(command.Id), &command);
    EXPECT_EQ(&Commands()[IndexOf(command)], &command);
    EXPECT_FALSE(command.Caption.empty()) << command.Id;
  }
  EXPECT_EQ(FindCommand("MnNothing"), nullptr);
  std::size_t count = 0;
  for (const Place place : AllPlaces) count += CommandsOf(place).size();
  EXPECT_EQ(count, Commands().size());
}

TEST(CommandTable, MnemonicsDoNotClashWithinAMenu) {
  for (const Place place : AllPlaces) {
    if (!IsMenu(place)) continue;
    std::map<std::string, std::string_view> taken;
    for (const Command& command : CommandsOf(place)) {
      const std::string mnemonic = MnemonicOf(command.Caption);
      EXPECT_FALSE(mnemonic.empty()) << command.Id;
      const auto [other, isNew] = taken.emplace(mnemonic, command.Id);
      EXPECT_TRUE(isNew) << command.Id << " and " << other->second << ": " << mnemonic;
    }
  }
}

TEST(CommandTable, MnemonicsOfTheMenuBarDoNotClash) {
  std::set<std::string> taken;
  for (const Menu& menu : MainMenus()) {
    EXPECT_FALSE(MnemonicOf(menu.Caption).empty()) << menu.Id;
    EXPECT_TRUE(taken.insert(MnemonicOf(menu.Caption)).second) << menu.Id;
    EXPECT_FALSE(CommandsOf(menu.Holds).empty()) << menu.Id;
  }
  EXPECT_EQ(MainMenus().size(), 9u);
}

TEST(CommandTable, ButtonsHaveNoMarkerInTheirNames) {
  for (const Command& command : Commands()) {
    if (!IsMenu(command.Where)) {
      EXPECT_EQ(command.Caption.find('&'), std::string_view::npos) << command.Id;
    }
  }
}

TEST(CommandTable, NoMenuBeginsWithASeparator) {
  for (const Place place : AllPlaces) EXPECT_FALSE(CommandsOf(place).front().StartsGroup);
}

TEST(CommandTable, IconsAreOnesThatExist) {
  for (const Command& command : Commands()) {
    if (command.IconKey.empty()) continue;
    const bool isKnown =
        std::ranges::find(store::ToolbarImageKeys, command.IconKey) != store::ToolbarImageKeys.end() ||
        std::ranges::find(store::ListImageKeys, command.IconKey) != store::ListImageKeys.end();
    EXPECT_TRUE(isKnown) << command.Id << ": " << command.IconKey;
  }
}

TEST(CommandTable, ToolBarStandsInItsOrder) {
  const std::vector<std::string_view> expected = {
      "tbrSave",       "tbrCreate",     "tbrCopy",      "tbrMove",        "tbrDelete",   "tbrLink",
      "tbrAddrExp",    "tbrAddrImp",    "tbrIndex",     "tbrFolderIndex", "tbrDspIndex", "tbrShowArchiveTree",
      "tbrProperties", "tbrStatCurObj", "tbrDocCurObj", "tbrUserHome",    "tbrRefresh",  "tbrErrLog",
      "tbrFilter",     "tbrOptions",    "tbrNotePad",   "ExtAppButton"};
  EXPECT_EQ(IdsOf(Place::ToolBar), expected);
}

TEST(CommandTable, ContextMenusStandInTheirOrder) {
  EXPECT_EQ(IdsOf(Place::ItemContext), (std::vector<std::string_view>{"MnCxCopy",
                                                                      "MnCxMove",
                                                                      "MnCxDel",
                                                                      "MnCxRename",
                                                                      "MnCxProp",
                                                                      "MnCxChgItemProp",
                                                                      "MnCxDoc",
                                                                      "MnCxArcTree",
                                                                      "MnCxStat",
                                                                      "MnCxMsgStat",
                                                                      "MnCxArcCleaning",
                                                                      "MnCxDelDblArcEntries",
                                                                      "MnCxDelCircArcEntries",
                                                                      "MnCxDelArcEntry",
                                                                      "MnCxTrashCleaning",
                                                                      "MnCxRemAcc",
                                                                      "MnCxZEBFileProperties",
                                                                      "MnCxPhysDir",
                                                                      "MnCxPhysFile",
                                                                      "MnCxReminder",
                                                                      "MnCxZEBACL",
                                                                      "MnZEBCxAddTab",
                                                                      "MnCxExpertTools"}));
  EXPECT_EQ(IdsOf(Place::FileContext),
            (std::vector<std::string_view>{
                "MnCxFsRename", "MnCxFsDel", "MnCxFsShowArc", "MnCxFSDispMailArcAsZEB",
                "MnCxFsAddMailArcToZEB", "MnCxFSArcMailInZEB", "MnCxFSAddToZEB", "MnCxFsDisplayFile",
                "MnCxFsShowItem", "MnCxFsProperties", "MnCxFSACL", "MnCxFSAddTab"}));
  EXPECT_EQ(IdsOf(Place::TabContext),
            (std::vector<std::string_view>{"MnCxSaveViewToTab", "MnCxDelTab", "MnCxDelAllTabs", "MnCxTabProp",
                                           "MnCxSetTabStd", "MnCxDispMode"}));
}

TEST(CommandTable, CaptionsOfTheMenusAreTheseWithoutTheirMarker) {
  const std::map<std::string_view, std::string_view> captions = {
      {"MnSaveViewAsList", "Ansicht als Liste speichern"},
      {"MnSaveStatus", "Einstellungen speichern"},
      {"MnVelmoraExit", "Beenden"},
      {"MnCopy", "Kopieren"},
      {"MnMove", "Verschieben"},
      {"MnDelete", "Löschen"},
      {"MnRename", "Umbenennen"},
      {"MnMailArcOp", "Mailarchive"},
      {"MnNewArc", "Neues Archiv"},
      {"MnNewDir", "Neues Verzeichnis"},
      {"MnChgItemProp", "Eigenschaften ändern"},
      {"MnDelDblArcEntries", "Doppelte Archiveinträge entfernen"},
      {"MnDelCircArcEntries", "Zirkulare Archivreferenzen suchen/entfernen"},
      {"MnDelArcEntry", "Archiveintrag entfernen"},
      {"MnArcCleaning", "Nachrichten bereinigen"},
      {"MnCleanTrash", "Papierkorb löschen"},
      {"MnCopyTreeToZEB", "Verzeichnisstruktur in ZEB kopieren"},
      {"MnAddToZEB", "Verwaistes Archiv zum ZEB hinzufügen"},
      {"MnRefresh", "Fenster aktualisieren"},
      {"MnRefeshAccount", "Account aktualisieren"},
      {"MnMakeAna", "System-Dokumentation"},
      {"MnDocCurObj", "Markierte Archive"},
      {"MnArcTree", "Archiv-Baum"},
      {"MnDocSiteProp", "Site-Eigenschaften"},
      {"MnUserListDoc", "Benutzer-Liste"},
      {"MnMakeACLList", "Filesystem-Berechtigungen"},
      {"MnCurUsrDoc", "Angemeldeter Benutzer"},
      {"MnMakeStat", "Archiv-Statistik"},
      {"MnMakeMsgStat", "Nachrichten-Statistik"},
      {"MnProperties", "Objekt-Eigenschaften"},
      {"MnMakeLinks", "Links anlegen"},
      {"MnShowArchiveTree", "Archivstruktur anzeigen"},
      {"MnUserProp", "Benutzer-Informationen"},
      {"MnUserList", "Benutzer-Liste"},
      {"MnShowLog", "Ein-/Ausgangs-Protokolle anzeigen"},
      {"MnBroadcastLists", "Rundsendungen"},
      {"MnReminderCfg", "Notifier-Konfiguration"},
      {"MnRemAcc", "Remote Access bearbeiten"},
      {"MnCleanTrashAll", "Alle Papierkörbe löschen"},
      {"MnSiteInformation", "Site Information"},
      {"MnMigration", "Migrationshilfen"},
      {"MnExpArcTree", "Export Archiv-Baum"},
      {"MnImpArcTree", "Import Archiv-Baum"},
      {"MnAddressBook", "Adressbuch"},
      {"MnChangeServer", "Server wechseln"},
      {"MnDvFilter", "Filter"},
      {"MnOptions", "Einstellungen"},
      {"MnEnTabs", "Archiv-/Verzeichnis-Tabs"},
      {"MnResetForm", "Fenstergröße auf Standard setzen"},
      {"MnLastSaveSize", "Letzte gespeicherte Fenstergröße"},
      {"MnShowHelp", "Hilfe"},
      {"MnSysInfo", "System-Informationen"},
      {"MnOpenVelmoraSite", "Velmora im Web"},
      {"MnInfo", "Über"},
      {"MnCxPhysDir", "Verzeichnis anzeigen"},
      {"MnCxPhysFile", "Datei anzeigen"},
      {"MnCxReminder", "Notifier "},
      {"MnZEBCxAddTab", "Als Tab speichern"},
      {"MnCxFSAddTab", "Als Tab speichern"},
      {"MnCxSaveViewToTab", "Ansicht als Tab speichern"},
      {"MnCxDispMode", "Kompletten Anzeigestatus wechseln"},
  };
  for (const auto& [id, caption] : captions) {
    const Command* const command = FindCommand(id);
    ASSERT_NE(command, nullptr) << id;
    EXPECT_EQ(PlainCaption(command->Caption), caption);
  }
}

TEST(CommandTable, ToolTipsNameTheKey) {
  const auto tip = [](std::string_view id) { return ToolTipOf(*FindCommand(id)); };
  EXPECT_EQ(tip("tbrSave"), "Einstellungen speichern");
  EXPECT_EQ(tip("tbrCreate"), "Neues Archiv oder Verzeichnis [F7]");
  EXPECT_EQ(tip("tbrCopy"), "Kopieren [F5]");
  EXPECT_EQ(tip("tbrMove"), "Verschieben [F6]");
  EXPECT_EQ(tip("tbrDspIndex"), "Inhaltsverzeichnis anzeigen [F9]");
  EXPECT_EQ(tip("tbrUserHome"), "Schnellzugriff auf Benutzerarchive [F12]");
  EXPECT_EQ(tip("tbrRefresh"), "Anzeige aktualisieren [Ctrl+R]");
  EXPECT_EQ(tip("tbrErrLog"), "Fehlerprotokoll");
  EXPECT_EQ(tip("MnNewArc"), "Neues Archiv [F7]");
  EXPECT_EQ(tip("MnCopy"), "Kopieren [F5]");
}

TEST(CommandTable, WhatIsNotBuiltYetSaysSo) {
  for (const std::string_view id :
       {"MnProperties", "tbrLink", "MnMakeAna", "MnUserList", "MnCxFSArcMailInZEB"}) {
    EXPECT_EQ(ToolTipOf(*FindCommand(id)), "Noch nicht verfügbar") << id;
  }
  // What opens a menu is no command of its own.
  EXPECT_EQ(ToolTipOf(*FindCommand("MnMailArcOp")), "Mailarchive");
}

TEST(CommandTable, TheContextMenusDoWhatTheirTwinsDo) {
  constexpr std::pair<std::string_view, std::string_view> twins[] = {
      {"MnCopy", "MnCxCopy"},
      {"MnMove", "MnCxMove"},
      {"MnDelete", "MnCxDel"},
      {"MnDelete", "MnCxFsDel"},
      {"MnRename", "MnCxRename"},
      {"MnRename", "MnCxFsRename"},
      {"MnDelDblArcEntries", "MnCxDelDblArcEntries"},
      {"MnDelCircArcEntries", "MnCxDelCircArcEntries"},
      {"MnDelArcEntry", "MnCxDelArcEntry"}};
  for (const auto& [main, context] : twins) {
    EXPECT_EQ(FindCommand(main)->Runs, FindCommand(context)->Runs) << context;
    EXPECT_TRUE(IsBuilt(FindCommand(main)->Runs)) << main;
  }
}

TEST(CommandTable, EveryBuiltActionIsDispatchedAndNoOther) {
  for (const Command& command : Commands()) {
    if (!command.OpensMenu()) {
      EXPECT_EQ(HasRoutine(command.Runs), IsBuilt(command.Runs)) << command.Id;
    }
  }
  for (const KeyBinding& binding : Keys()) {
    EXPECT_EQ(HasRoutine(binding.Runs), IsBuilt(binding.Runs)) << binding.Key;
  }
}

TEST(CommandTable, EntriesThatOpenAMenuLeadToTheirs) {
  EXPECT_EQ(SubMenuOf(*FindCommand("MnMailArcOp")), Place::MailArcMenu);
  EXPECT_EQ(SubMenuOf(*FindCommand("MnAddressBook")), Place::AddressMenu);
  for (const Command& command : Commands()) {
    const bool isOne = command.Id == "MnMailArcOp" || command.Id == "MnAddressBook";
    EXPECT_EQ(command.OpensMenu(), isOne) << command.Id;
  }
}

TEST(CommandTable, TwinsRunTheSame) {
  const std::array<std::pair<std::string_view, std::string_view>, 12> twins = {{
      {"MnCopy", "MnCxCopy"},
      {"MnCopy", "tbrCopy"},
      {"MnMove", "tbrMove"},
      {"MnDelete", "MnCxFsDel"},
      {"MnRename", "MnCxFsRename"},
      {"MnRename", "MnCxRename"},
      {"MnProperties", "tbrProperties"},
      {"MnDvFilter", "tbrFilter"},
      {"MnOptions", "tbrOptions"},
      {"MnCleanTrash", "MnCxTrashCleaning"},
      {"MnIndexTree", "tbrIndex"},
      {"MnIndexCurrent", "tbrFolderIndex"},
  }};
  for (const auto& [one, other] : twins) EXPECT_EQ(FindCommand(one)->Runs, FindCommand(other)->Runs) << other;
}

TEST(KeyTable, EachKeyDoesOneThingInAView) {
  for (const PaneView view : {PaneView::LZEBView, PaneView::RZEBView, PaneView::RFSView}) {
    std::set<std::string_view> keys;
    for (const KeyBinding& binding : Keys()) {
      if (WorksIn(binding, view)) {
        EXPECT_TRUE(keys.insert(binding.Key).second) << binding.Key;
      }
    }
  }
}

TEST(KeyTable, KeysOfTheArchiveViews) {
  const std::map<std::string_view, Action> expected = {
      {"Tab", Action::NextPane},
      {"Ins", Action::FlipSelection},
      {"Return", Action::Open},
      {"Space", Action::RowSize},
      {"Num+*", Action::NegateSelection},
      {"Num+-", Action::ReduceSelection},
      {"Num++", Action::ExtendSelection},
      {"F1", Action::Help},
      {"F2", Action::Rename},
      {"F3", Action::ShowMessage},
      {"F4", Action::ArcDirSync},
      {"F5", Action::Copy},
      {"F6", Action::Move},
      {"F7", Action::Create},
      {"F8", Action::Delete},
      {"Del", Action::Delete},
      {"F11", Action::Properties},
      {"F12", Action::UserArchives},
      {"Shift+A", Action::ClearSelection},
      {"Shift+F4", Action::ShowPhysical},
      {"Ctrl+A", Action::SelectAll},
      {"Ctrl+R", Action::Refresh},
      {"Ctrl+U", Action::SwapPanes},
      {"Ctrl+.", Action::ShowListItem},
      {"Ctrl+/", Action::ResetForm},
      {"Ctrl+\\", Action::GoToRoot},
      {"Ctrl+1", Action::ActivateTab1},
      {"Ctrl+5", Action::ActivateTab5},
      {"Alt+Return", Action::Properties},
      {"Alt+F1", Action::TakeRightIntoLeft},
      {"Alt+F2", Action::TakeLeftIntoRight},
      {"Alt+F4", Action::ExitWithoutAsking},
      {"Alt+F7", Action::CreateShortCut},
      {"Alt+F8", Action::CleanMessages},
      {"Alt+\\", Action::GoToUserRoot},
      {"Alt+F11", Action::ChangeItemProperties},
      {"Alt+F12", Action::MessageStatistics},
  };
  for (const auto& [key, action] : expected) {
    EXPECT_EQ(ActionOfKey(key, PaneView::LZEBView), action) << key;
    EXPECT_EQ(ActionOfKey(key, PaneView::RZEBView), action) << key;
  }
  // The list moves its cursor by itself.
  for (const std::string_view key : {"Down", "PageDown", "End"}) {
    EXPECT_EQ(ActionOfKey(key, PaneView::LZEBView), Action::None) << key;
  }
}

TEST(KeyTable, KeysOfTheFileView) {
  EXPECT_EQ(ActionOfKey("F3", PaneView::RFSView), Action::OpenFile);
  EXPECT_EQ(ActionOfKey("F4", PaneView::RFSView), Action::None);
  EXPECT_EQ(ActionOfKey("F7", PaneView::RFSView), Action::Create);
  EXPECT_EQ(ActionOfKey("Alt+F8", PaneView::RFSView), Action::None);
}

}  // namespace
}  // namespace velmora::panes
