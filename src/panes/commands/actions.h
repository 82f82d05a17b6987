// What commands do. Entries of menus, context menus and tool bar that do the same, and its key, name one
// action.
#pragma once

#include <cstdint>

namespace velmora::panes {

enum class Action : std::uint8_t {
  None,
  // --- File. ---
  SaveViewAsList,
  SaveSettings,
  Exit,  // after a question
  ExitWithoutAsking,
  // --- Commands on what is marked. ---
  Copy,
  Move,
  Delete,
  Rename,
  NewArchive,
  NewDirectory,
  Create,  // a new archive or directory, by the active view
  ChangeItemProperties,
  RemoveDoubleEntries,
  RemoveCircularEntries,
  RemoveArchiveEntry,
  CleanMessages,
  CleanTrash,
  CopyTreeToStore,
  AddToStore,
  Refresh,
  RefreshAccount,
  // --- Mail archives in the file view. ---
  IndexTree,
  IndexCurrent,
  ShowIndex,
  SetMarker,
  ShowArchiveDescriptor,
  ShowEntryDescriptor,
  ImportMailArchive,
  ImportMailFile,
  ShowMailArchiveInStore,
  ToggleHelperFiles,
  // --- Documentation and statistics. ---
  DocumentSystem,
  DocumentMarked,
  DocumentArchiveTree,
  DocumentSite,
  DocumentUsers,
  DocumentFileRights,
  DocumentCurrentUser,
  ArchiveStatistics,
  MessageStatistics,
  // --- Extras. ---
  Properties,
  FileProperties,
  MakeLinks,
  CreateShortCut,
  ShowArchiveTree,
  UserInformation,
  UserList,
  ShowServerLogs,
  BroadcastLists,
  ConfigureNotifier,
  EditRemoteAccess,
  CleanAllTrash,
  SiteInformation,
  Migration,
  ExpertTools,
  ExportArchiveTree,
  ImportArchiveTree,
  ExportAddresses,
  ImportAddresses,
  ChangeServer,
  // --- Filter, options, view. ---
  Filter,
  ResetFilter,   // a double click on the warning
  ToggleHiding,  // a double click on the status panel of a pane
  Options,
  ToggleTabs,
  SaveViewToTab,
  AddTab,
  DeleteTab,
  DeleteAllTabs,
  TabProperties,
  SetStandardTabs,
  ToggleTabDisplayMode,
  ActivateTab1,
  ActivateTab2,
  ActivateTab3,
  ActivateTab4,
  ActivateTab5,
  ResetForm,
  LastSavedSize,
  ToggleViewMode,
  ToggleRuleView,
  TogglePropertyView,
  ShowListItem,
  // --- Help. ---
  Help,
  SystemInformation,
  OpenWebSite,
  About,
  // --- The tool bar alone. ---
  ShowErrorLog,
  UserArchives,
  NotePad,
  ExternalApplication,
  // --- Rows and selection. ---
  NextPane,
  Open,  // Enter and double click
  ShowMessage,
  ShowPhysicalDirectory,
  ShowPhysicalFile,
  ShowPhysical,  // the file of a message, the directory of an archive
  ShowArchiveOfDirectory,
  ShowEntryOfFile,
  OpenFile,
  RowSize,
  FlipSelection,
  SelectAll,
  ClearSelection,
  NegateSelection,
  ExtendSelection,
  ReduceSelection,
  // --- The place of a pane. ---
  GoUp,
  GoToRoot,
  GoToUserRoot,
  GoBack,
  GoForward,
  EditPath,     // the cursor into the path field of the active view
  ChooseDrive,  // the cursor into DrvBox
  ArcDirSync,
  DirArcSync,
  SwapPanes,
  TakeRightIntoLeft,
  TakeLeftIntoRight,
};

// Commands of an action that is not built yet stand in their menus, disabled.
bool IsBuilt(Action action);

}  // namespace velmora::panes
