// Stores for tests. Making one syncs every record of some fifty archives to the disk; a copy of one that was
// made with the build costs a few milliseconds.
#pragma once

#include <string>
#include <string_view>

namespace velmora::test {

// A server with the administrator "anna" and one ordinary user.
struct StoreTemplate {
  std::string_view Server;
  std::string_view AdministratorName;    // of the login name "anna"
  std::string_view UserName, UserLogin;  // with the rights of every user
};

inline constexpr StoreTemplate Zeb1Store = {"ZEB1", "Anna Admin", "Otto Ohne", "otto"};
inline constexpr StoreTemplate BueroStore = {"BUERO", "Anna", "Bert", "bert"};

// Copies the store to `directory` (a host path), which does not exist yet. The mail address of each user is
// his login name at example.org.
void CopyTestStore(const StoreTemplate& store, const std::string& directory);

}  // namespace velmora::test
