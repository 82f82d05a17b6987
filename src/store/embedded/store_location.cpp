#include "store/embedded/store_location.h"

#include <fmt/core.h>

#include <algorithm>
#include <cctype>
#include <filesystem>

#include "base/paths.h"
#include "base/text.h"
#include "platform/make_folders.h"
#include "settings/settings_lock.h"
#include "settings/toml_text.h"
#include "settings/values.h"
#include "store/embedded/site_database.h"
#include "store/embedded/store_setup.h"
#include "store/errors.h"

namespace velmora::store::embedded {
namespace {

constexpr std::size_t MaxServerName = 15;
constexpr const char* FirstStoreFolder = "david";

std::string JoinHostPath(const std::string& directory, const char* name) {
  return (std::filesystem::path(directory) / name).string();
}

// The names in servers.toml.
constexpr const char* ServersSection = "servers";
constexpr const char* DefaultSection = "default";
constexpr const char* DefaultName = "server";

std::string RegistryPath(const std::string& configDirectory, platform::FileSystem& fileSystem) {
  return fileSystem.FromHostPath(JoinHostPath(configDirectory, "servers.toml"));
}

Result<std::string> ReadRegistry(const std::string& configDirectory) {
  const auto fileSystem = platform::MakeHostFileSystem({});
  const std::string path = RegistryPath(configDirectory, *fileSystem);
  if (!fileSystem->FileExists(path)) return std::string();
  return fileSystem->ReadFile(path);
}

// The registered servers, the default one first.
Result<std::vector<StoreLocation>> RegisteredServers(const std::string& registry) {
  const auto values = settings::ParseSettings(registry);
  if (!values)
    return Fail(
        store_error::Damaged,
        "Die Liste der Server (servers.toml im Konfigurationsverzeichnis) ist beschädigt. Bitte berichtigen "
        "oder löschen und die Server neu eintragen.");
  std::vector<StoreLocation> servers;
  if (const auto section = values->find(ServersSection); section != values->end()) {
    for (const auto& [name, directory] : section->second) {
      if (IsServerName(name)) servers.push_back({name, settings::ToText(directory)});
    }
  }
  if (const auto* first = settings::FindValue(*values, DefaultSection, DefaultName)) {
    std::ranges::stable_partition(servers, [&](const StoreLocation& store) {
      return EqualsFold(store.ServerName, settings::ToText(*first));
    });
  }
  return servers;
}

void PutFirst(std::vector<StoreLocation>& stores, const StoreLocation& store) {
  std::erase_if(stores,
                [&](const StoreLocation& other) { return EqualsFold(other.ServerName, store.ServerName); });
  stores.insert(stores.begin(), store);
}

// The name that the store in the directory has given itself.
Result<StoreLocation> ReadLocation(const std::string& hostDirectory) {
  auto site = SiteDatabase::Open(SiteDatabasePath(hostDirectory));
  if (!site) return Fail(site.error());
  auto name = site->Value(site_value::Server);
  if (!name) return Fail(name.error());
  if (!IsServerName(*name)) return Fail(store_error::Damaged, "Die Standortdaten nennen keinen Servernamen");
  return StoreLocation{std::move(*name), hostDirectory};
}

// The computer's name in the form of a server's name.
std::string FirstServerName(const StoreRequest& request) {
  std::string name = ToUpper(request.ComputerName);
  std::erase_if(name, [](char c) { return !IsServerName(std::string_view(&c, 1)); });
  name = name.substr(0, MaxServerName);
  return name.empty() ? "DAVID" : name;
}

Result<StoreLocation> MakeFirstStore(const StoreRequest& request, platform::Clock& clock) {
  const std::string directory = JoinHostPath(request.DataDirectory, FirstStoreFolder);
  auto present = ReadLocation(directory);
  if (present || present.error().Number != store_error::NotFound) return present;
  NewStore store;
  store.HostDirectory = directory;
  store.ServerName = FirstServerName(request);
  store.Administrator = {0, request.FullName, request.LoginName, request.LoginName + "@localhost",
                         AdministratorRights};
  if (const auto made = InitStore(store, clock); !made) {
    // Another process may have made it in this moment.
    present = ReadLocation(directory);
    if (present) return present;
    return Fail(made.error());
  }
  return StoreLocation{store.ServerName, directory};
}

}  // namespace

platform::PathMapping MappingOf(const StoreLocation& store) {
  return {"\\\\" + store.ServerName + "\\DAVID", store.HostDirectory};
}

std::vector<platform::PathMapping> MappingsOf(const std::vector<StoreLocation>& stores) {
  std::vector<platform::PathMapping> mappings;
  for (const auto& store : stores) mappings.push_back(MappingOf(store));
  return mappings;
}

StoreRequest RequestOfProcess(std::string_view option) {
  const auto directories = platform::FindHostDirectories();
  StoreRequest request;
  request.Directory = option;
  if (option.empty()) request.Directory = platform::EnvironmentVariable("VELMORA_STORE").value_or("");
  request.ConfigDirectory = directories.Config;
  request.DataDirectory = directories.Data;
  request.LoginName = platform::UserLoginName();
  request.FullName = platform::UserFullName();
  request.ComputerName = platform::ComputerName();
  return request;
}

Result<std::vector<StoreLocation>> ResolveStores(const StoreRequest& request, platform::Clock& clock) {
  const auto registry = ReadRegistry(request.ConfigDirectory);
  if (!registry) return Fail(registry.error());
  auto registered = RegisteredServers(*registry);
  if (!registered) return registered;
  auto stores = std::move(*registered);
  if (!request.Directory.empty()) {
    const auto named = ReadLocation(AbsoluteHostPath(request.Directory));
    if (!named) return Fail(named.error());
    PutFirst(stores, *named);
  } else if (stores.empty()) {
    const auto first = MakeFirstStore(request, clock);
    if (!first) return Fail(first.error());
    if (const auto done = RegisterServer(request.ConfigDirectory, *first); !done) return Fail(done.error());
    stores.push_back(*first);
  }
  return stores;
}

Status RegisterServer(const std::string& configDirectory, const StoreLocation& store) {
  const std::string directory = AbsoluteHostPath(store.HostDirectory);
  if (!IsValidUtf8(directory))
    return Fail(store_error::BadName, "Der Name des Verzeichnisses ist kein UTF-8-Text");
  const auto fileSystem = platform::MakeHostFileSystem({});
  const std::string path = RegistryPath(configDirectory, *fileSystem);
  if (const auto made = platform::MakeFolders(*fileSystem, DirectoryOf(path), true); !made) return made;
  const auto lock = settings::LockSettings(configDirectory);
  if (!lock) return Fail(lock.error());
  const auto registry = ReadRegistry(configDirectory);
  if (!registry) return Fail(registry.error());
  const auto servers = RegisteredServers(*registry);
  if (!servers) return Fail(servers.error());
  std::vector<settings::Change> changes;
  for (const auto& other : *servers) {
    if (EqualsFold(other.ServerName, store.ServerName)) {
      changes.push_back({ServersSection, other.ServerName, std::nullopt});
    }
  }
  changes.push_back({ServersSection, store.ServerName, directory});
  changes.push_back({DefaultSection, DefaultName, store.ServerName});
  platform::WriteOptions options;
  options.OwnerOnly = true;
  return fileSystem->ReplaceFile(path, settings::ChangeSettings(*registry, changes), options);
}

bool IsServerName(std::string_view name) {
  return !name.empty() && name.size() <= MaxServerName && std::ranges::all_of(name, [](unsigned char c) {
    return c < 0x80 && (std::isalnum(c) != 0 || c == '-' || c == '_');
  });
}

std::string AbsoluteHostPath(const std::string& hostPath) {
  std::error_code ignored;  // without a working directory the path stays as it is
  const auto absolute = std::filesystem::absolute(hostPath, ignored).lexically_normal();
  const std::string text = absolute.has_filename() ? absolute.string() : absolute.parent_path().string();
  return text.empty() ? hostPath : text;
}

}  // namespace velmora::store::embedded
