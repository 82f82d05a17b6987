#include "panes/commands/command_table.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "base/text.h"
#include "panes/commands/key_table.h"

namespace velmora::panes {
namespace {

constexpr bool Group = true;  // a separator stands before the entry

constexpr auto MenuTable = std::to_array<Menu>({
    {Place::FileMenu, "MnFile", "&Datei"},
    {Place::CommandsMenu, "MnCommands", "&Befehle"},
    {Place::DocMenu, "MnDoc", "D&okumentation"},
    {Place::StatisticsMenu, "MnStatistics", "&Statistik"},
    {Place::ExtrasMenu, "MnExtras", "E&xtras"},
    {Place::FilterMenu, "MnFilter", "&Filter"},
    {Place::OptionsMenu, "MnOpt", "O&ptionen"},
    {Place::ViewMenu, "MnView", "&Ansicht"},
    {Place::HelpMenu, "MnHelp", "&Hilfe"},
});

constexpr auto CommandTable = std::to_array<Command>({
    // --- Menus. ---
    {"MnSaveViewAsList", Place::FileMenu, "Ansicht als &Liste speichern", Action::SaveViewAsList},
    {"MnSaveStatus", Place::FileMenu, "Einstellungen &speichern", Action::SaveSettings, false, "Save"},
    {"MnVelmoraExit", Place::FileMenu, "&Beenden", Action::Exit, Group},

    {"MnCopy", Place::CommandsMenu, "&Kopieren", Action::Copy, false, "Copy"},
    {"MnMove", Place::CommandsMenu, "&Verschieben", Action::Move, false, "Cut"},
    {"MnDelete", Place::CommandsMenu, "&Löschen", Action::Delete, false, "Delete"},
    {"MnRename", Place::CommandsMenu, "&Umbenennen", Action::Rename},
    {"MnMailArcOp", Place::CommandsMenu, "&Mailarchive", Action::None, Group},
    {"MnNewArc", Place::CommandsMenu, "Neues &Archiv", Action::NewArchive, Group, "NewFolder"},
    {"MnNewDir", Place::CommandsMenu, "&Neues Verzeichnis", Action::NewDirectory, Group, "NewFolder"},
    {"MnChgItemProp", Place::CommandsMenu, "&Eigenschaften ändern", Action::ChangeItemProperties, Group},
    {"MnDelDblArcEntries", Place::CommandsMenu, "&Doppelte Archiveinträge entfernen",
     Action::RemoveDoubleEntries, Group},
    {"MnDelCircArcEntries", Place::CommandsMenu, "&Zirkulare Archivreferenzen suchen/entfernen",
     Action::RemoveCircularEntries},
    {"MnDelArcEntry", Place::CommandsMenu, "Archivein&trag entfernen", Action::RemoveArchiveEntry},
    {"MnArcCleaning", Place::CommandsMenu, "Na&chrichten bereinigen", Action::CleanMessages, Group},
    {"MnCleanTrash", Place::CommandsMenu, "&Papierkorb löschen", Action::CleanTrash},
    {"MnCopyTreeToZEB", Place::CommandsMenu, "Verzeichnis&struktur in ZEB kopieren", Action::CopyTreeToStore,
     Group},
    {"MnAddToZEB", Place::CommandsMenu, "Ver&waistes Archiv zum ZEB hinzufügen", Action::AddToStore},
    {"MnRefresh", Place::CommandsMenu, "&Fenster aktualisieren", Action::Refresh, Group, "Refresh"},
    {"MnRefeshAccount", Place::CommandsMenu, "Acc&ount aktualisieren", Action::RefreshAccount},

    {"MnIndexTree", Place::MailArcMenu, "Inhaltsverzeichnis&baum anlegen", Action::IndexTree, false, "Index"},
    {"MnIndexCurrent", Place::MailArcMenu, "&Inhaltsverzeichnis anlegen", Action::IndexCurrent, false,
     "FolderIndex"},
    {"MnDspIndex", Place::MailArcMenu, "Inhaltsverzeichnis &anzeigen", Action::ShowIndex, false, "DspIndex"},
    {"MnSetMailArc", Place::MailArcMenu, "Mailarchiv-&Kennung setzen", Action::SetMarker, Group},
    {"MnArcDescriptor", Place::MailArcMenu, "&Descriptor Mailarchiv anzeigen", Action::ShowArchiveDescriptor},
    {"MnEntryDescriptor", Place::MailArcMenu, "Descriptor Mailarchiv-&Eintrag anzeigen",
     Action::ShowEntryDescriptor},
    {"MnMailArcToZeb", Place::MailArcMenu, "Mailarchiv in &ZEB kopieren", Action::ImportMailArchive, Group},

    {"MnMakeAna", Place::DocMenu, "&System-Dokumentation", Action::DocumentSystem},
    {"MnDocCurObj", Place::DocMenu, "&Markierte Archive", Action::DocumentMarked, Group, "ObjDoc"},
    {"MnArcTree", Place::DocMenu, "Archiv-&Baum", Action::DocumentArchiveTree},
    {"MnDocSiteProp", Place::DocMenu, "Site-&Eigenschaften", Action::DocumentSite, Group},
    {"MnUserListDoc", Place::DocMenu, "Benutzer-&Liste", Action::DocumentUsers},
    {"MnMakeACLList", Place::DocMenu, "&Filesystem-Berechtigungen", Action::DocumentFileRights},
    {"MnCurUsrDoc", Place::DocMenu, "&Angemeldeter Benutzer", Action::DocumentCurrentUser},

    {"MnMakeStat", Place::StatisticsMenu, "&Archiv-Statistik", Action::ArchiveStatistics, false, "ObjStat"},
    {"MnMakeMsgStat", Place::StatisticsMenu, "&Nachrichten-Statistik", Action::MessageStatistics},

    {"MnProperties", Place::ExtrasMenu, "&Objekt-Eigenschaften", Action::Properties, false, "Properties"},
    {"MnMakeLinks", Place::ExtrasMenu, "&Links anlegen", Action::MakeLinks, false, "Link"},
    {"MnShowArchiveTree", Place::ExtrasMenu, "Archiv&struktur anzeigen", Action::ShowArchiveTree, false,
     "ArchiveTree"},
    {"MnUserProp", Place::ExtrasMenu, "&Benutzer-Informationen", Action::UserInformation, Group},
    {"MnUserList", Place::ExtrasMenu, "Benutzer-L&iste", Action::UserList},
    {"MnShowLog", Place::ExtrasMenu, "Ein-/Ausgangs-&Protokolle anzeigen", Action::ShowServerLogs},
    {"MnBroadcastLists", Place::ExtrasMenu, "&Rundsendungen", Action::BroadcastLists},
    {"MnReminderCfg", Place::ExtrasMenu, "&Notifier-Konfiguration", Action::ConfigureNotifier, Group},
    {"MnRemAcc", Place::ExtrasMenu, "Remote A&ccess bearbeiten", Action::EditRemoteAccess},
    {"MnCleanTrashAll", Place::ExtrasMenu, "&Alle Papierkörbe löschen", Action::CleanAllTrash},
    {"MnSiteInformation", Place::ExtrasMenu, "Si&te Information", Action::SiteInformation},
    {"MnMigration", Place::ExtrasMenu, "&Migrationshilfen", Action::Migration},
    {"MnExpArcTree", Place::ExtrasMenu, "&Export Archiv-Baum", Action::ExportArchiveTree, Group},
    {"MnImpArcTree", Place::ExtrasMenu, "Import Archiv-Ba&um", Action::ImportArchiveTree},
    {"MnAddressBook", Place::ExtrasMenu, "A&dressbuch", Action::None},
    {"MnChangeServer", Place::ExtrasMenu, "Server &wechseln", Action::ChangeServer, Group, "Netwrk"},

    {"MnAddrExp", Place::AddressMenu, "Adressen &exportieren", Action::ExportAddresses, false, "AddrExp"},
    {"MnAddrImp", Place::AddressMenu, "Adressen &importieren", Action::ImportAddresses, false, "AddrImp"},

    {"MnDvFilter", Place::FilterMenu, "&Filter", Action::Filter, false, "Filter"},
    {"MnOptions", Place::OptionsMenu, "&Einstellungen", Action::Options, false, "Options"},

    {.Id = "MnEnTabs",
     .Where = Place::ViewMenu,
     .Caption = "Archiv-/Verzeichnis-&Tabs",
     .Runs = Action::ToggleTabs,
     .IsCheckable = true},
    {"MnResetForm", Place::ViewMenu, "&Fenstergröße auf Standard setzen", Action::ResetForm, Group},
    {"MnLastSaveSize", Place::ViewMenu, "&Letzte gespeicherte Fenstergröße", Action::LastSavedSize},

    {"MnShowHelp", Place::HelpMenu, "&Hilfe", Action::Help},
    {"MnSysInfo", Place::HelpMenu, "&System-Informationen", Action::SystemInformation},
    {"MnOpenVelmoraSite", Place::HelpMenu, "Velmora im &Web", Action::OpenWebSite},
    {"MnInfo", Place::HelpMenu, "Ü&ber", Action::About, Group},

    // --- Context menus. ---
    {"MnCxCopy", Place::ItemContext, "&Kopieren", Action::Copy, false, "Copy"},
    {"MnCxMove", Place::ItemContext, "&Verschieben", Action::Move, false, "Cut"},
    {"MnCxDel", Place::ItemContext, "&Löschen", Action::Delete, false, "Delete"},
    {"MnCxRename", Place::ItemContext, "&Umbenennen", Action::Rename},
    {"MnCxProp", Place::ItemContext, "&Objekt-Eigenschaften", Action::Properties, Group, "Properties"},
    {"MnCxChgItemProp", Place::ItemContext, "&Eigenschaften ändern", Action::ChangeItemProperties},
    {"MnCxDoc", Place::ItemContext, "Doku&mentation", Action::DocumentMarked, Group, "ObjDoc"},
    {"MnCxArcTree", Place::ItemContext, "Archiv-&Baum", Action::DocumentArchiveTree},
    {"MnCxStat", Place::ItemContext, "Archiv-&Statistik", Action::ArchiveStatistics, false, "ObjStat"},
    {"MnCxMsgStat", Place::ItemContext, "&Nachrichten-Statistik", Action::MessageStatistics},
    {"MnCxArcCleaning", Place::ItemContext, "Na&chrichten bereinigen", Action::CleanMessages, Group},
    {"MnCxDelDblArcEntries", Place::ItemContext, "Doppelte Archivein&träge entfernen",
     Action::RemoveDoubleEntries},
    {"MnCxDelCircArcEntries", Place::ItemContext, "&Zirkulare Archivreferenzen suchen/entfernen",
     Action::RemoveCircularEntries},
    {"MnCxDelArcEntry", Place::ItemContext, "&Archiveintrag entfernen", Action::RemoveArchiveEntry},
    {"MnCxTrashCleaning", Place::ItemContext, "&Papierkorb löschen", Action::CleanTrash},
    {"MnCxRemAcc", Place::ItemContext, "&Remote Access bearbeiten", Action::EditRemoteAccess},
    {"MnCxZEBFileProperties", Place::ItemContext, "Datei-Ei&genschaften", Action::FileProperties, Group},
    {"MnCxPhysDir", Place::ItemContext, "Verzeichnis anze&igen", Action::ShowPhysicalDirectory},
    {"MnCxPhysFile", Place::ItemContext, "&Datei anzeigen", Action::ShowPhysicalFile},
    {"MnCxReminder", Place::ItemContext, "Noti&fier ", Action::ConfigureNotifier},
    {"MnCxZEBACL", Place::ItemContext, "Files&ystem-Berechtigungen", Action::DocumentFileRights},
    {"MnZEBCxAddTab", Place::ItemContext, "Als Tab speic&hern", Action::AddTab, Group},
    {"MnCxExpertTools", Place::ItemContext, "E&xperten-Tools", Action::ExpertTools},

    {"MnCxFsRename", Place::FileContext, "&Umbenennen", Action::Rename},
    {"MnCxFsDel", Place::FileContext, "&Löschen", Action::Delete, false, "Delete"},
    {"MnCxFsShowArc", Place::FileContext, "Als &Archiv anzeigen", Action::ShowArchiveOfDirectory, Group},
    {"MnCxFSDispMailArcAsZEB", Place::FileContext, "&Mailarchiv als ZEB anzeigen",
     Action::ShowMailArchiveInStore},
    {"MnCxFsAddMailArcToZEB", Place::FileContext, "Mailarchiv in &ZEB kopieren", Action::ImportMailArchive},
    {"MnCxFSArcMailInZEB", Place::FileContext, "&Nachricht in ZEB archivieren", Action::ImportMailFile},
    {"MnCxFSAddToZEB", Place::FileContext, "Ver&waistes Archiv zum ZEB hinzufügen", Action::AddToStore},
    {"MnCxFsDisplayFile", Place::FileContext, "&Datei anzeigen", Action::OpenFile, Group},
    {"MnCxFsShowItem", Place::FileContext, "ZEB-&Eintrag anzeigen", Action::ShowEntryOfFile},
    {"MnCxFsProperties", Place::FileContext, "Ei&genschaften", Action::Properties, Group, "Properties"},
    {"MnCxFSACL", Place::FileContext, "Files&ystem-Berechtigungen", Action::DocumentFileRights},
    {"MnCxFSAddTab", Place::FileContext, "Als &Tab speichern", Action::AddTab, Group},

    {"MnCxSaveViewToTab", Place::TabContext, "&Ansicht als Tab speichern", Action::SaveViewToTab},
    {"MnCxDelTab", Place::TabContext, "Tab &löschen", Action::DeleteTab},
    {"MnCxDelAllTabs", Place::TabContext, "Alle &Tabs löschen", Action::DeleteAllTabs},
    {"MnCxTabProp", Place::TabContext, "Tab &Eigenschaften", Action::TabProperties, Group},
    {"MnCxSetTabStd", Place::TabContext, "Tab-&Standards", Action::SetStandardTabs},
    {.Id = "MnCxDispMode",
     .Where = Place::TabContext,
     .Caption = "&Kompletten Anzeigestatus wechseln",
     .Runs = Action::ToggleTabDisplayMode,
     .StartsGroup = Group,
     .IsCheckable = true},

    // --- Tool bar. ---
    {"tbrSave", Place::ToolBar, "Einstellungen speichern", Action::SaveSettings, false, "Save"},
    {"tbrCreate", Place::ToolBar, "Neues Archiv oder Verzeichnis", Action::Create, Group, "NewFolder"},
    {"tbrCopy", Place::ToolBar, "Kopieren", Action::Copy, false, "Copy"},
    {"tbrMove", Place::ToolBar, "Verschieben", Action::Move, false, "Cut"},
    {"tbrDelete", Place::ToolBar, "Löschen", Action::Delete, false, "Delete"},
    {"tbrLink", Place::ToolBar, "Links anlegen", Action::MakeLinks, false, "Link"},
    {"tbrAddrExp", Place::ToolBar, "Adressen exportieren", Action::ExportAddresses, Group, "AddrExp"},
    {"tbrAddrImp", Place::ToolBar, "Adressen importieren", Action::ImportAddresses, false, "AddrImp"},
    {"tbrIndex", Place::ToolBar, "Inhaltsverzeichnisbaum anlegen", Action::IndexTree, Group, "Index"},
    {"tbrFolderIndex", Place::ToolBar, "Inhaltsverzeichnis anlegen", Action::IndexCurrent, false,
     "FolderIndex"},
    {"tbrDspIndex", Place::ToolBar, "Inhaltsverzeichnis anzeigen", Action::ShowIndex, false, "DspIndex"},
    {"tbrShowArchiveTree", Place::ToolBar, "Archivstruktur anzeigen", Action::ShowArchiveTree, Group,
     "ArchiveTree"},
    {"tbrProperties", Place::ToolBar, "Objekt-Eigenschaften", Action::Properties, false, "Properties"},
    {"tbrStatCurObj", Place::ToolBar, "Archiv-Statistik", Action::ArchiveStatistics, false, "ObjStat"},
    {"tbrDocCurObj", Place::ToolBar, "Markierte Archive dokumentieren", Action::DocumentMarked, false,
     "ObjDoc"},
    {"tbrUserHome", Place::ToolBar, "Schnellzugriff auf Benutzerarchive", Action::UserArchives, Group,
     "UserHome"},
    {"tbrRefresh", Place::ToolBar, "Anzeige aktualisieren", Action::Refresh, false, "Refresh"},
    {"tbrErrLog", Place::ToolBar, "Fehlerprotokoll", Action::ShowErrorLog, Group, "Warning"},
    {"tbrFilter", Place::ToolBar, "Filter", Action::Filter, false, "Filter"},
    {"tbrOptions", Place::ToolBar, "Einstellungen", Action::Options, false, "Options"},
    {"tbrNotePad", Place::ToolBar, "Notizblock", Action::NotePad, Group, "NotePad"},
    {"ExtAppButton", Place::ToolBar, "Externes Programm", Action::ExternalApplication},

    // --- The buttons of the panes. ---
    {"LZEBArcBack", Place::LeftBar, "Übergeordnetes Archiv", Action::GoUp, false, "FolderBack"},
    {"LZEBGoToArcRoot", Place::LeftBar, "Zum obersten Archiv", Action::GoToRoot, false, "AArchive"},
    {"ArcDirSync", Place::LeftBar, "Verzeichnis des Archivs in der Dateiansicht zeigen", Action::ArcDirSync,
     false, "FolderOpen"},
    {.Id = "LZEBMsgRoutView",
     .Where = Place::LeftBar,
     .Caption = "Regelansicht",
     .Runs = Action::ToggleRuleView,
     .IconKey = "IForwarding",
     .IsCheckable = true},
    {.Id = "LZEBPropView",
     .Where = Place::LeftBar,
     .Caption = "Eigenschaften-Ansicht",
     .Runs = Action::TogglePropertyView,
     .IconKey = "Properties",
     .IsCheckable = true},

    {"RZEBArcBack", Place::RightBar, "Übergeordnetes Archiv", Action::GoUp, false, "FolderBack"},
    {"RZEBGoToArcRoot", Place::RightBar, "Zum obersten Archiv", Action::GoToRoot, false, "AArchive"},
    {.Id = "RZEBMsgRoutView",
     .Where = Place::RightBar,
     .Caption = "Regelansicht",
     .Runs = Action::ToggleRuleView,
     .IconKey = "IForwarding",
     .IsCheckable = true},
    {.Id = "RZEBPropView",
     .Where = Place::RightBar,
     .Caption = "Eigenschaften-Ansicht",
     .Runs = Action::TogglePropertyView,
     .IconKey = "Properties",
     .IsCheckable = true},

    {"DirBack", Place::FileBar, "Übergeordnetes Verzeichnis", Action::GoUp, false, "FolderBack"},
    {"GoToDirRoot", Place::FileBar, "Zum obersten Verzeichnis", Action::GoToRoot, false, "Hdisk"},
    {"DirArcSync", Place::FileBar, "Archiv des Verzeichnisses zeigen", Action::DirArcSync, false, "AArchive"},
    {.Id = "ZEBCmdArc",
     .Where = Place::FileBar,
     .Caption = "Hilfsdateien des Mailarchivs zeigen",
     .Runs = Action::ToggleHelperFiles,
     .IconKey = "File",
     .IsCheckable = true},

    {.Id = "ZEBFSView",
     .Where = Place::RightSideBar,
     .Caption = "Dateiansicht",
     .Runs = Action::ToggleViewMode,
     .IconKey = "Hdisk",
     .IsCheckable = true},
});

constexpr bool StandsTogether() {
  for (std::size_t first = 0; first + 1 < CommandTable.size(); ++first) {
    if (CommandTable[first].Where == CommandTable[first + 1].Where) continue;
    for (std::size_t later = first + 1; later < CommandTable.size(); ++later) {
      if (CommandTable[later].Where == CommandTable[first].Where) return false;
    }
  }
  return true;
}
static_assert(StandsTogether(), "the commands of one place stand beside each other");

}  // namespace

std::span<const Menu> MainMenus() { return MenuTable; }

std::span<const Command> Commands() { return CommandTable; }

std::span<const Command> CommandsOf(Place place) {
  const auto begin = std::ranges::find(CommandTable, place, &Command::Where);
  const auto end =
      std::find_if(begin, CommandTable.end(), [&](const Command& command) { return command.Where != place; });
  return {begin, end};
}

const Command* FindCommand(std::string_view id) {
  const auto found = std::ranges::find(CommandTable, id, &Command::Id);
  return found == CommandTable.end() ? nullptr : &*found;
}

std::size_t IndexOf(const Command& command) {
  return static_cast<std::size_t>(&command - CommandTable.data());
}

Place SubMenuOf(const Command& command) {
  return command.Id == "MnAddressBook" ? Place::AddressMenu : Place::MailArcMenu;
}

std::string PlainCaption(std::string_view caption) { return ReplaceAll(caption, "&", ""); }

std::string ToolTipOf(const Command& command) {
  if (!command.OpensMenu() && !IsBuilt(command.Runs)) return std::string(NotYetAvailable);
  std::string tip =
      command.Tip.empty() ? std::string(Trim(PlainCaption(command.Caption))) : std::string(command.Tip);
  const std::string_view key = ShownKeyOf(command.Runs);
  return key.empty() ? tip : fmt::format("{} [{}]", tip, key);
}

}  // namespace velmora::panes
