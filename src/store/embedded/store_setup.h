// Making a store, and the trees of its users.
#pragma once

#include <string>

#include "base/result.h"
#include "platform/clock.h"
#include "platform/file_system.h"
#include "store/embedded/archive_tree.h"
#include "store/embedded/site_database.h"
#include "store/embedded/store_layout.h"
#include "store/embedded/users.h"

namespace velmora::store::embedded {

struct NewStore {
  std::string HostDirectory;  // absolute; made with what is missing above it
  std::string ServerName;
  UserRecord Administrator;  // id and rights are given here: the first user, all rights
};

// Makes the directories, the tree with all special archives, the server logs, the resource directories and,
// as the last step, the site data: a store without site data is none, and the call can be repeated after a
// failure. All is the owner's alone. Failed when the directory holds a store, be it one whose site data
// cannot be read, or anything else; BadName for a server's name that cannot be part of a path.
Status InitStore(const NewStore& store, platform::Clock& clock);

// The host path of a store's site data.
std::string SiteDatabasePath(const std::string& hostDirectory);

// Makes what is missing of a user's tree.
Status MakeUserTree(platform::FileSystem& fileSystem, ArchiveTree& tree, const StoreLayout& layout,
                    const UserRecord& user);

// Makes a new user and his tree; the record with its id. Failed when the login name is taken.
Result<UserRecord> AddUser(platform::FileSystem& fileSystem, ArchiveTree& tree, const StoreLayout& layout,
                           SiteDatabase& site, UserRecord user);

}  // namespace velmora::store::embedded
