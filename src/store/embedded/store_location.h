// Which stores this machine has, and which of them a program works on.
//
// The servers stand in `servers.toml` in the user's configuration directory:
//
//   [default]
//   server = "ZEB1"
//   [servers]
//   ZEB1 = "/srv/david"
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "platform/clock.h"
#include "platform/host.h"
#include "platform/host_file_system.h"

namespace velmora::store::embedded {

// A server and the host directory of its store, the share `\\<ServerName>\DAVID`.
struct StoreLocation {
  std::string ServerName;
  std::string HostDirectory;

  bool operator==(const StoreLocation&) const = default;
};

platform::PathMapping MappingOf(const StoreLocation& store);
std::vector<platform::PathMapping> MappingsOf(const std::vector<StoreLocation>& stores);

// What the choice of a store depends on.
struct StoreRequest {
  std::string Directory;        // host path that the user named (option or VELMORA_STORE), "" for none
  std::string ConfigDirectory;  // host paths
  std::string DataDirectory;
  std::string LoginName, FullName, ComputerName;  // of a store made on a first start and its administrator
};
// The request of this process; `option`: what its command line names, "" for nothing.
StoreRequest RequestOfProcess(std::string_view option);

// The stores, the one to work on first, then the other registered servers: the directory that the request
// names; else the default server; else, when no server is registered, the store in the user's data directory,
// which is made and registered when it is not there. NotFound when a directory named is no store.
Result<std::vector<StoreLocation>> ResolveStores(const StoreRequest& request, platform::Clock& clock);

// Adds the server to servers.toml, or changes its directory, and makes it the default; what other processes
// add meanwhile stays.
Status RegisterServer(const std::string& configDirectory, const StoreLocation& store);

// Whether a text may be a server's name: 1 to 15 letters, digits, "-", "_" (it is part of every path).
bool IsServerName(std::string_view name);
// A host path as typed in absolute form.
std::string AbsoluteHostPath(const std::string& hostPath);

}  // namespace velmora::store::embedded
