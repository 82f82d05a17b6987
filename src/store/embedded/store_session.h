// What the objects of one session share: the account, its archives and their rules.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "platform/clock.h"
#include "platform/file_system.h"
#include "store/embedded/access_control.h"
#include "store/embedded/archive_tree.h"
#include "store/embedded/message_store.h"
#include "store/embedded/server_logs.h"
#include "store/embedded/site_database.h"
#include "store/embedded/store_layout.h"
#include "store/embedded/users.h"

namespace velmora::store::embedded {

struct StoreSession {
  StoreSession(platform::FileSystem& fileSystem, platform::Clock& clock, const std::string& serverName,
               SiteDatabase site, UserRecord user);

  platform::FileSystem& FileSystem;
  platform::Clock& Clock;
  std::string ServerName;
  StoreLayout Layout;
  SiteDatabase Site;
  UserRecord User;
  ArchiveTree Tree;
  ServerLogs Logs;  // outlives the messages: what it tells of is committed first
  MessageStore Messages;
  AccessControl Access;

  // Whether the store made this archive itself. An unreadable user list counts every user's archives as made
  // by it.
  bool IsSpecial(std::string_view directory);
};

// "a/b" of the full path of the parent and what the tree shows for the record: its name, or the name of its
// directory where it has none.
std::string ChildPath(std::string_view parentPath, const ArchiveRecord& record);
std::string ShownName(const ArchiveRecord& record);
// The full path of an archive by its place in the tree; NotFound when no record leads to it any more.
Result<std::string> FullPathOf(ArchiveTree& tree, const ArchiveRecord& record);

// The archive that a text names: a FullPath with "/" or "\", with or without a leading one, from the root or
// relative to it, by display names or by directories; or a physical directory as `\\SERVER\SHARE\x`, `X:\x`
// or `SERVER\SHARE:x`. Without regard to case. NotFound.
Result<ArchiveRecord> FindArchive(StoreSession& session, std::string_view path);

}  // namespace velmora::store::embedded
