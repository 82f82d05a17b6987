// The session data: the account, the current rights, the roots. Filled by SignOn.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "store/account.h"
#include "store/errors.h"

namespace velmora::store {

struct Session {
  std::shared_ptr<DvISEAPI> Api;
  std::unique_ptr<DvAccount> Account;
  std::shared_ptr<DvArchive> DefaultArchive;
  std::shared_ptr<DvArchive> LeftArchive, RightArchive;
  std::string ServerName;
  int BackendType = 0;
  std::uint32_t Trustees = 0;        // current rights, possibly cut by ForceStandardRights
  std::uint32_t ServerTrustees = 0;  // rights as the server gives them
  bool ForcedRights = false;
  std::string DavidDrive, DavidShare;  // the drive and share that map the store, "" without one

  bool IsAdministrator() const { return (Trustees & trustee::Administrator) != 0; }
  bool WasAdministrator() const { return (ServerTrustees & trustee::Administrator) != 0; }
  bool MayDeleteArchives() const { return (Trustees & trustee::DeleteArchives) != 0; }
};

// What is logged for an archive that stays for want of that right.
inline Error MayNotDeleteArchives() {
  return {store_error::NoAccess, "Das Recht zum Löschen von Archiven fehlt"};
}

}  // namespace velmora::store
