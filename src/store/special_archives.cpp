#include "store/special_archives.h"

#include "base/paths.h"
#include "base/text.h"

namespace velmora::store {

std::string ArchiveOwnerName(DvAccount& account, int id) {
  constexpr int storeItself = -1;
  const std::string fallback = id == storeItself ? "DvISE Archive" : "unknown";
  const auto users = account.Users();
  if (!users) return fallback;
  for (const auto& user : *users)
    if (user->UserID() == id) return user->Name();
  return fallback;
}

bool IsUserArchive(DvAccount& account, std::string_view id) {
  const std::string directory = StripBackslash(NormalizePath(id));
  const auto all = account.GetSpecialArchive(special::UserRoots);
  if (all && IsSameOrBelow(directory, (*all)->ID()))
    return !EqualsFold(directory, StripBackslash((*all)->ID()));
  // Who is no administrator sees no other user's archives.
  const auto own = account.GetSpecialArchive(special::OwnRoot);
  return own && IsSameOrBelow(directory, (*own)->ID());
}

}  // namespace velmora::store
