// A user as the site data know him.
#pragma once

#include <cstdint>
#include <string>

#include "store/account.h"

namespace velmora::store::embedded {

struct UserRecord {
  int Id = 0;  // from 1
  std::string Name;
  std::string LoginName;  // the operating system's
  std::string MailAddress;
  std::uint32_t Rights = 0;  // 0: known, but not allowed to sign on

  bool operator==(const UserRecord&) const = default;
};

// Rights of a new user: distributing messages.
inline constexpr std::uint32_t StandardRights = 0x2;
// Rights of a new administrator: all archives and commands, the jobs of all users, identifying senders and
// the access rights of archives.
inline constexpr std::uint32_t AdministratorRights = StandardRights | trustee::Administrator |
                                                     trustee::MoveArchives | trustee::DeleteArchives |
                                                     trustee::Expert | 0x4 | 0x100 | 0x40000;

}  // namespace velmora::store::embedded
