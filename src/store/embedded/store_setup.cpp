#include "store/embedded/store_setup.h"

#include <fmt/core.h>

#include <filesystem>
#include <utility>

#include "base/paths.h"
#include "base/text.h"
#include "platform/host.h"
#include "platform/host_file_system.h"
#include "platform/make_folders.h"
#include "store/embedded/resources.h"
#include "store/embedded/server_logs.h"
#include "store/embedded/store_location.h"
#include "store/errors.h"

namespace velmora::store::embedded {
namespace {

constexpr std::string_view ArchiveFolder = "archive";
constexpr std::string_view CodeFolder = "code";
constexpr std::string_view SiteFile = "site.db";

// A directory that holds nothing but the beginnings of a store may become one.
Status RequireFree(platform::FileSystem& fileSystem, const std::string& directory) {
  const auto entries = fileSystem.List(directory, "*", platform::ListWhat::All);
  if (!entries) return Fail(entries.error());
  for (const auto& entry : *entries) {
    if (!EqualsFold(entry.Name, ArchiveFolder) && !EqualsFold(entry.Name, CodeFolder)) {
      return Fail(store_error::Failed, "Das Verzeichnis ist nicht leer");
    }
  }
  return {};
}

// Site data that cannot be read may be all that tells of the users, so they are not written over. An empty
// file is what a call leaves that was broken off.
Status RequireNoSite(platform::FileSystem& fileSystem, const std::string& code, const std::string& hostPath) {
  const auto site = SiteDatabase::Open(hostPath);
  if (site) return Fail(store_error::Failed, "Das Verzeichnis enthält bereits einen Speicher");
  const auto file = fileSystem.GetEntry(JoinPath(code, SiteFile));
  if (!file && file.error().Number != platform::file_error::FileNotFound) return Fail(file.error());
  if (!file || file->Size == 0) return {};
  return Fail(store_error::Failed,
              fmt::format("Das Verzeichnis enthält bereits einen Speicher, dessen Standortdaten nicht lesbar "
                          "sind ({}). Bitte zuerst {} wiederherstellen oder entfernen.",
                          site.error().Text, hostPath));
}

// Makes the archive of the table's row below `base`, unless a record leads there already.
Status MakeSpecial(ArchiveTree& tree, const std::string& base, const FixedArchive& archive, int owner) {
  const std::string directory = JoinPath(base, archive.Directory);
  if (tree.FindByDirectory(directory)) return {};
  const std::string parent = StripBackslash(DirectoryOf(directory));
  const auto made = tree.CreateAt(parent, archive.Name, directory, PropertiesOf(archive, owner));
  if (!made) return Fail(made.error());
  return {};
}

Status MakeSystemTree(ArchiveTree& tree, const StoreLayout& layout) {
  for (const auto& archive : SystemArchives()) {
    if (const auto made = MakeSpecial(tree, layout.ArchiveRoot(), archive, 0); !made) return made;
  }
  return {};
}

Status MakeContent(platform::FileSystem& fileSystem, const StoreLayout& layout, platform::Clock& clock,
                   const UserRecord& administrator) {
  ArchiveTree tree(fileSystem, layout.ArchiveRoot());
  if (const auto made = MakeSystemTree(tree, layout); !made) return made;
  if (const auto made = MakeUserTree(fileSystem, tree, layout, administrator); !made) return made;
  if (const auto made = MakeServerLogs(fileSystem, clock, layout); !made) return made;
  return MakeResourceDirectories(fileSystem, layout);
}

}  // namespace

std::string SiteDatabasePath(const std::string& hostDirectory) {
  return (std::filesystem::path(hostDirectory) / CodeFolder / SiteFile).string();
}

Status InitStore(const NewStore& store, platform::Clock& clock) {
  if (!IsServerName(store.ServerName)) {
    return Fail(store_error::BadName, fmt::format("Ungültiger Servername: {}", store.ServerName));
  }
  const auto host = platform::MakeHostFileSystem({});
  const std::string directory = host->FromHostPath(store.HostDirectory);
  if (const auto made = platform::MakeFolders(*host, directory, true); !made) return made;
  if (const auto free = RequireFree(*host, directory); !free) return free;
  for (const auto folder : {ArchiveFolder, CodeFolder}) {
    const auto made = platform::MakeFolders(*host, JoinPath(directory, folder), true);
    if (!made) return made;
  }
  auto lock = platform::TryInstanceLock(
      (std::filesystem::path(store.HostDirectory) / CodeFolder / "init.lock").string());
  if (!lock) return Fail(lock.error());
  if (!*lock) return Fail(store_error::Busy, "Der Speicher wird gerade von einem anderen Prozess angelegt");
  const std::string database = SiteDatabasePath(store.HostDirectory);
  const auto unused = RequireNoSite(*host, JoinPath(directory, CodeFolder), database);
  if (!unused) return unused;

  UserRecord administrator = store.Administrator;
  administrator.Id = 1;
  administrator.Rights = AdministratorRights;
  const StoreLayout layout(store.ServerName);
  const auto fileSystem = platform::MakeHostFileSystem({MappingOf({store.ServerName, store.HostDirectory})});
  if (const auto made = MakeContent(*fileSystem, layout, clock, administrator); !made) return made;

  platform::WriteOptions options;
  options.OwnerOnly = true;
  if (const auto made = fileSystem->WriteFile(JoinPath(layout.Code(), SiteFile), "", options); !made) {
    return made;
  }
  if (const auto made = SiteDatabase::Create(database, store.ServerName, administrator); !made) {
    return Fail(made.error());
  }
  return fileSystem->SyncWritten();
}

Status MakeUserTree(platform::FileSystem& fileSystem, ArchiveTree& tree, const StoreLayout& layout,
                    const UserRecord& user) {
  const std::string root = layout.UserRoot(user.Id);
  if (!tree.FindByDirectory(root)) {
    ArchiveProperties properties;
    properties.Kind = special::OwnRoot;
    properties.Owner = user.Id;
    const std::string& name = user.Name.empty() ? user.LoginName : user.Name;
    const auto made = tree.CreateAt(StripBackslash(DirectoryOf(root)), name, root, properties);
    if (!made) return Fail(made.error());
  }
  for (const auto& archive : UserArchives()) {
    if (const auto made = MakeSpecial(tree, root, archive, user.Id); !made) return made;
  }
  return fileSystem.SyncWritten();
}

Result<UserRecord> AddUser(platform::FileSystem& fileSystem, ArchiveTree& tree, const StoreLayout& layout,
                           SiteDatabase& site, UserRecord user) {
  auto added = site.AddUser(std::move(user));
  if (!added) return added;
  if (const auto made = MakeUserTree(fileSystem, tree, layout, *added); !made) return Fail(made.error());
  return added;
}

}  // namespace velmora::store::embedded
