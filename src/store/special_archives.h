// The special archives: where they lie, and which icon stands for them in a list.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "store/session.h"

namespace velmora::store {

// Paths below a user's own root; the first three also below the root of the store.
namespace special_path {
inline constexpr std::string_view Project = "resource\\project";
inline constexpr std::string_view News = "system\\news";
inline constexpr std::string_view Spam = "system\\spam";
inline constexpr std::string_view Trash = "system\\trash";
inline constexpr std::string_view Address = "address";
inline constexpr std::string_view Remind = "$remind$";  // the entry of the reminders
}  // namespace special_path

// A row of the icon table: an archive that GetSpecialArchive gives, or with kind 0 one below the root.
struct SpecialArchive {
  int Kind;
  std::string_view Path;
  std::string_view IconKey;
};

// Row i has the position i + 1; the icon of a position is ListImageKeys[ArchiveIconOffset + position].
inline constexpr auto SpecialArchives = std::to_array<SpecialArchive>({
    {special::UserRoots, "", "AUserRoot"},
    {special::Common, "", "ACommon"},
    {3, "", "AFaxBox"},
    {special::PublicAddresses, "", "AAddress"},
    {5, "", "ATextModules"},
    {6, "", "AWeb"},
    {7, "", "AGroups"},
    {8, "", "AForms"},
    {9, "", "ANews"},
    {10, "", "ATemplates"},
    {11, "", "AFormsInclude"},
    {12, "", "ATVIndex"},
    {special::OwnRoot, "", "AMyDavid"},
    {special::Inbox, "", "AIn"},
    {special::Outgoing, "", "AOut"},
    {103, "", "APTextModules"},
    {104, "", "AContacts"},
    {105, "", "ADrafts"},
    {special::PersonalAddresses, "", "APAddress"},
    {107, "", "ACal"},
    {108, "", "ARemind"},
    {109, "", "ATasks"},
    {110, "", "ALinks"},
    {111, "", "APTemplates"},
    {112, "", "ATrash"},
    {113, "", "APPortal"},
    {0, special_path::Project, "AProject"},
    {0, special_path::News, "APNews"},
    {0, special_path::Spam, "APSpam"},
});

inline constexpr int DefaultArchivePosition = 1;        // of an archive that is none of these
inline constexpr int RemoteAccessArchivePosition = 30;  // of one that is open to remote access
inline constexpr std::string_view RemoteAccessIconKey = "AUserRootRem";

// The name of the user with this id. "DvISE Archive" for -1, the mark of the store's own archives, "unknown"
// where no user has the id or the users cannot be read.
std::string ArchiveOwnerName(DvAccount& account, int id);

// Whether an archive is a user's: it lies below the root of all user archives, or of the signed-on user's
// own. `id`: its physical directory as a UNC or NetWare path.
bool IsUserArchive(DvAccount& account, std::string_view id);

}  // namespace velmora::store
