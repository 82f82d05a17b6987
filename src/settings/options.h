// All settings of the program as values. The members bear the names under which the settings are stored, and
// their initialisers are the defaults; options_table.h says where each is stored.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace velmora::settings {

inline constexpr std::size_t TabCount = 5;
inline constexpr std::size_t TabFieldCount = 8;
// The fields of a pane's tabs: tab t holds the fields t * 8 to t * 8 + 7.
using TabFields = std::array<std::string, TabCount * TabFieldCount>;

inline constexpr std::size_t ServerListLength = 10;
using ServerList = std::array<std::string, ServerListLength>;

inline constexpr std::int32_t NoItemFilter = 0x301FB;

struct Options {
  // --- Window geometry (twips) and display switches. ---
  std::int32_t ViewMode = 1;  // 1: the file system on the right
  std::int32_t FrmWidth = 12000, FrmHeight = 9045, FrmTop = -195;
  std::int32_t WindowsState = 0;
  std::int32_t VwWidth = 5800, VwHeight = 5535, VwTop = 2040, VwlLeft = 90, VwrLeft = 5970;
  std::int32_t DnWidth = 11655, DnTop = 7680;
  std::int32_t LastActiveView = 0;
  // Widths of columns, in twips and joined by ","; an empty place is for the program to decide.
  std::string LZEBColumnWidths, RZEBColumnWidths, FSColumnWidths;
  std::string LZEBRoutingColumnWidths, RZEBRoutingColumnWidths;
  bool EnableBalloonTips = true;
  bool DisplayLZEBArchiveFullPath = true, DisplayRZEBArchiveFullPath = true;
  bool DisplayFolderShareName = false;
  std::int32_t SaveCmdLineMode = 0;  // 0 never, 1 at the next start, 2 at each; stored as SaveCmdLineInFile

  // --- Options of the program and the memories of its dialogs. ---
  std::string LastUsedServer;
  bool AutoSaveSettings = true;
  std::int32_t LastUserRights = 0;
  bool TICDisplayFile = false, TICIntegration = true;
  bool DisplayFileIcons = true, DisplayArcSize = true, DisplayCircularReferences = true;
  bool DisplayHiddenChar = true;
  bool SeparateAttachmentsFolder = true;
  std::string AttachmentFolder = "Attachments", HTMLMailFolder = "HTMLMails", FaxFolder = "FaxImages";
  std::string EMLFolder = "Eml", VCFFolder = "VCards", VoiceMailFolder = "VoiceMails";
  std::string CommentFolder = "Comments";
  bool NoDuplicateFiles = true, MakeIndex = true, CreateAutorunInf = true;
  bool DeleteArchive = true;  // off for a user without the right to delete archives
  bool DeleteFolder = true;
  bool ClearErrorLog = true;
  bool CopyAsViewed = true, RefreshArchiveSyncToTreeView = true, DateIndexSortedUp = true;
  bool MultiPartFiles = false;
  bool HideMailArcHelperFiles = true;
  std::int32_t SizeCheck = 0;
  std::int32_t AddressExportFormat = 2, AddressImportFormat = 6;
  std::string CSVSeparator = ";", NABSeparator = ",";
  std::int32_t DvItemFilter = NoItemFilter;
  bool DvInhibitItems = true;
  std::string MaxItemCount = "50";
  std::int32_t LZEBViewModeRouting = 0, RZEBViewModeRouting = 0, LZEBViewMode = 0, RZEBViewMode = 0;
  std::string DesignPath;  // "Designs" in the program directory
  std::string ArchiveDesign = "Standard";
  std::string ExcelAddressForm = "Adressbuch.xls", CSVAddressForm = "Adressbuch.csv";
  std::string GWAddressForm = "Adressbuch.nab";
  std::string ExcelAddressPath, CSVAddressPath, VCFAddressPath, GWAddressPath;  // PersonalDir
  std::string DefaultAddressbookName = "Adressbuch";
  std::string ExcelUserListPath, CSVUserListPath;  // PersonalDir
  std::string ExcelUserListForm = "DvUserList.xls", CSVUserListForm = "DvUserList.csv";
  std::int32_t UserListExportFormat = 2;
  std::string UserListSeparator = ";";
  std::int32_t LZEBSortingMode = 1, RZEBSortingMode = 1, FSSortingMode = 1;
  bool LZEBSortingDirection = true, RZEBSortingDirection = true, FSSortingDirection = true;
  std::int32_t LZEBRoutingSortingMode = 1, RZEBRoutingSortingMode = 1;
  bool LZEBRoutingSortingDirection = true, RZEBRoutingSortingDirection = true;
  bool AddressOverwrite = false, AddressEnableSubarchive = false, UserListOverwrite = false;
  std::string ExternalApplication = "c:\\windows\\explorer.exe";
  std::string ArchiveFormCopyRight;  // product, version and copyright of this build
  std::string ArchiveFormComment;
  bool ViewTabs = true;
  std::string LastDocFile, LastExpFile, LastImpFile, LastArcStatFile, LastMsgStatFile, LastMailExportFile;

  // --- Of the server of the session. ---
  std::string LastUsedPath;                        // PersonalDir
  std::string TempDirPath;                         // "": the default one
  std::string LastUsedCArchive, LastUsedDArchive;  // FullPath of the default archive
  std::int32_t RestoreViewTabsMode = 0;
  std::int32_t LZEBTabItemCount = 5, RZEBTabItemCount = 5, RFSTabItemCount = 5;
  TabFields LZEBTabItem, RZEBTabItem, RFSTabItem;

  // --- Servers used, the newest first. ---
  ServerList DvServer;

  bool operator==(const Options&) const = default;
};

}  // namespace velmora::settings
