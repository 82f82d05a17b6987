#include "store/special_archives.h"

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

}  // namespace velmora::store
