#include "cli/store_access.h"

#include <fmt/core.h>

#include <utility>

#include "cli/exit_status.h"
#include "cli/output.h"
#include "platform/clock.h"
#include "platform/host_file_system.h"
#include "store/embedded/embedded_store.h"
#include "store/errors.h"

namespace velmora::cli {

namespace embedded = store::embedded;

Result<SignedOnStore> SignOn(const std::string& storeOption) {
  const auto request = embedded::RequestOfProcess(storeOption);
  auto stores = embedded::ResolveStores(request, platform::SystemClock());
  if (!stores) return Fail(stores.error());
  SignedOnStore access;
  access.Location = stores->front();
  access.FileSystem = platform::MakeHostFileSystem(embedded::MappingsOf(*stores));
  access.Api = embedded::OpenEmbeddedApi(*access.FileSystem, platform::SystemClock(), std::move(*stores),
                                         request.LoginName);
  auto account = access.Api->Logon("");
  if (!account) return Fail(account.error());
  access.Account = std::move(*account);
  if (access.Account->User().Trustees() == 0) {
    return Fail(store::store_error::LogonFailed, fmt::format("{} hat keine Rechte auf dem Server {}",
                                                             request.LoginName, access.Location.ServerName));
  }
  return access;
}

tl::expected<SignedOnStore, int> SignOnAsAdministrator(const std::string& storeOption,
                                                       std::string_view refusal) {
  auto access = SignOn(storeOption);
  if (!access) {
    PrintError("Anmeldung fehlgeschlagen", access.error());
    return tl::unexpected(exit_status::NoSignOn);
  }
  if (!access->IsAdministrator()) {
    PrintError(refusal);
    return tl::unexpected(exit_status::DoneWithErrors);
  }
  return *std::move(access);
}

std::string WindowsPath(platform::FileSystem& fileSystem, const std::string& hostPath) {
  return fileSystem.FromHostPath(embedded::AbsoluteHostPath(hostPath));
}

}  // namespace velmora::cli
