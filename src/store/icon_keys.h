// The keys of the images, in the order of the image lists. Views address an image by its position in
// ListImageKeys.
#pragma once

#include <array>
#include <string_view>

namespace velmora::store {

inline constexpr auto ToolbarImageKeys = std::to_array<std::string_view>(
    {"Save",    "New",     "Back",     "Print",     "Copy",        "Cut",         "Paste",   "Hdisk",
     "Fdisk",   "Cdisk",   "RemDrv",   "Netwrk",    "NwNBH",       "Refresh",     "Options", "Properties",
     "Delete",  "Index",   "DspIndex", "NewFolder", "FolderIndex", "ArchiveTree", "Filter",  "Link",
     "AddrImp", "AddrExp", "Warning",  "NotePad",   "UserHome",    "ObjStat",     "ObjDoc"});

inline constexpr auto ListImageKeys = std::to_array<std::string_view>(
    {"ALink",     "FolderClosed", "FolderOpen",  "FolderBack",    "File",          "AArchive",
     "AUserRoot", "ACommon",      "AFaxBox",     "AAddress",      "ATextModules",  "AWeb",
     "AGroups",   "AForms",       "ANews",       "ATemplates",    "AFormsInclude", "ATVIndex",
     "AMyDavid",  "AIn",          "AOut",        "APTextModules", "AContacts",     "ADrafts",
     "APAddress", "ACal",         "ARemind",     "ATasks",        "ALinks",        "APTemplates",
     "ATrash",    "APPortal",     "AProject",    "APNews",        "APSpam",        "AUserRootRem",
     "IUnknown",  "IAddress",     "IMail",       "IFax",          "ISMS",          "IVoiceMail",
     "ITMail",    "ITermin",      "ILink",       "IVideo",        "IAudio",        "ITvProg",
     "ITask",     "IMailAtt",     "IDocument",   "INote",         "ISysMsg",       "ISysInfo",
     "IModStart", "IModTerm",     "IDFML",       "IRoutEn",       "IRoutDi",       "IForwarding",
     "IXMedia",   "IAutoReply",   "INewMessage", "IMisc",         "INewStreamTag", "IGeneral",
     "IStdEXE"});

// Positions in ListImageKeys. To the first is added an archive's place among the special archives, to the
// second an item type, to the third the variant of a display type.
inline constexpr int ArchiveIconOffset = 5;
inline constexpr int ItemIconOffset = 36;
inline constexpr int ItemVariantOffset = ItemIconOffset + 12;

static_assert(ListImageKeys[ArchiveIconOffset] == "AArchive");
static_assert(ListImageKeys[ItemIconOffset] == "IUnknown");
static_assert(ListImageKeys[ItemVariantOffset + 1] == "IMailAtt");

}  // namespace velmora::store
