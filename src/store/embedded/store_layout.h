// Where things lie in a built-in store: the directories of the special archives, of the users and of the
// site's files, below the store's share `\\SERVER\DAVID`.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "store/embedded/archive_tree.h"
#include "store/embedded/users.h"

namespace velmora::store::embedded {

// An archive that the store makes itself: never deleted, renamed or moved.
struct FixedArchive {
  int Kind;                    // the number under which GetSpecialArchive gives it; 0 for one that has none
  std::string_view Directory;  // below the archive root, or below the user's own directory
  std::string_view Name;
  int DisplayType = 0;  // DvDisplayAs...
  bool AdminOnly = false;
};

// Parents stand before their children in both.
std::span<const FixedArchive> SystemArchives();
std::span<const FixedArchive> UserArchives();

// The directories of one store as UNC paths without "\" at the end.
class StoreLayout {
 public:
  explicit StoreLayout(std::string_view serverName);

  const std::string& Root() const { return root_; }                // `\\SERVER\DAVID`
  const std::string& ArchiveRoot() const { return archiveRoot_; }  // `\\SERVER\DAVID\ARCHIVE`
  const std::string& Code() const { return code_; }                // site data and server logs
  std::string MoveJournals() const;                                // notes of processes that move entries
  std::string UserRoot(int userId) const;                          // kind 100
  // The directory of a kind of GetSpecialArchive for this user; nothing for a number without an archive.
  std::optional<std::string> SpecialDirectory(int kind, int userId) const;
  // Whether the store made the archive in this directory itself, the archives of `users` included.
  bool IsSpecial(std::string_view directory, std::span<const UserRecord> users) const;

 private:
  std::string root_, archiveRoot_, code_;
};

// What the record of a special archive holds. `owner`: user id, 0 for the system's archives.
ArchiveProperties PropertiesOf(const FixedArchive& archive, int owner);

}  // namespace velmora::store::embedded
