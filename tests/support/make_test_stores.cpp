// Makes the stores that tests copy, anew, in the directory that the command line names.

#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>

#include "platform/clock.h"
#include "platform/host_file_system.h"
#include "store/embedded/site_database.h"
#include "store/embedded/store_location.h"
#include "store/embedded/store_setup.h"
#include "support/stores_lock.h"
#include "support/test_store.h"

namespace velmora::test {
namespace {

namespace embedded = store::embedded;

embedded::UserRecord User(std::string_view name, std::string_view login, std::uint32_t rights) {
  return {0, std::string(name), std::string(login), std::string(login) + "@example.org", rights};
}

Status MakeStore(const StoreTemplate& store, const std::string& directory) {
  const std::string server(store.Server);
  const Status made = embedded::InitStore({directory, server, User(store.AdministratorName, "anna", 0)},
                                          platform::SystemClock());
  if (!made) {
    return made;
  }
  const auto files = platform::MakeHostFileSystem({embedded::MappingOf({server, directory})});
  const embedded::StoreLayout layout(server);
  embedded::ArchiveTree tree(*files, layout.ArchiveRoot());
  Result<embedded::SiteDatabase> site = embedded::SiteDatabase::Open(embedded::SiteDatabasePath(directory));
  if (!site) {
    return Fail(site.error());
  }
  const auto added = embedded::AddUser(*files, tree, layout, *site,
                                       User(store.UserName, store.UserLogin, embedded::StandardRights));
  return added ? Status{} : Fail(added.error());
}

int MakeAll(const std::filesystem::path& directory) {
  std::filesystem::create_directories(directory);
  const StoresLock lock(directory.string(), StoresUse::Make);
  for (const StoreTemplate& store : {Zeb1Store, BueroStore}) {
    const std::filesystem::path place = directory / store.Server;
    std::filesystem::remove_all(place);
    if (const Status made = MakeStore(store, place.string()); !made) {
      std::fprintf(stderr, "%s: %s\n", place.c_str(), made.error().Text.c_str());
      return 1;
    }
  }
  return 0;
}

}  // namespace
}  // namespace velmora::test

int main(int argumentCount, char** arguments) {
  if (argumentCount != 2) {
    std::fputs("usage: make_test_stores DIRECTORY\n", stderr);
    return 2;
  }
  try {
    return velmora::test::MakeAll(std::filesystem::absolute(arguments[1]));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
