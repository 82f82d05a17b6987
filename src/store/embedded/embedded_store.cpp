#include "store/embedded/embedded_store.h"

#include <fmt/core.h>

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "store/embedded/embedded_account.h"
#include "store/embedded/store_setup.h"
#include "store/errors.h"

namespace velmora::store::embedded {
namespace {

class EmbeddedApi final : public DvISEAPI {
 public:
  EmbeddedApi(platform::FileSystem& fileSystem, platform::Clock& clock, std::vector<StoreLocation> stores,
              std::string loginName)
      : fileSystem_(fileSystem),
        clock_(clock),
        stores_(std::move(stores)),
        loginName_(std::move(loginName)) {}

  int MajorVersion() override { return 1; }
  int MinorVersion() override { return 0; }
  int Revision() override { return 0; }
  std::string Description() override { return "Velmora Store API"; }

  Result<std::unique_ptr<DvAccount>> Logon(std::string_view server) override {
    const auto* store = FindStore(server);
    if (store == nullptr) {
      return Fail(store_error::LogonFailed,
                  fmt::format("Der Server {} ist auf diesem Rechner nicht eingetragen (eingetragen: {})",
                              server, ServerNames()));
    }
    auto site = SiteDatabase::Open(SiteDatabasePath(store->HostDirectory));
    if (!site) return Fail(store_error::LogonFailed, site.error().Text);
    const auto user = site->FindUserByLogin(loginName_);
    if (!user) return Fail(store_error::LogonFailed, user.error().Text);
    if (!*user) {
      return Fail(store_error::LogonFailed,
                  fmt::format("{} ist kein Benutzer des Servers {}", loginName_, store->ServerName));
    }
    auto session =
        std::make_shared<StoreSession>(fileSystem_, clock_, store->ServerName, std::move(*site), **user);
    return std::make_unique<EmbeddedAccount>(std::move(session));
  }

 private:
  std::string ServerNames() const {
    std::vector<std::string> names;
    for (const auto& store : stores_) names.push_back(store.ServerName);
    return Join(names, ", ");
  }
  const StoreLocation* FindStore(std::string_view server) const {
    if (stores_.empty()) return nullptr;
    if (server.empty()) return &stores_.front();
    const auto found = std::ranges::find_if(
        stores_, [&](const StoreLocation& store) { return EqualsFold(store.ServerName, server); });
    return found == stores_.end() ? nullptr : &*found;
  }

  platform::FileSystem& fileSystem_;
  platform::Clock& clock_;
  std::vector<StoreLocation> stores_;
  std::string loginName_;
};

}  // namespace

std::shared_ptr<DvISEAPI> OpenEmbeddedApi(platform::FileSystem& fileSystem, platform::Clock& clock,
                                          std::vector<StoreLocation> stores, std::string loginName) {
  return std::make_shared<EmbeddedApi>(fileSystem, clock, std::move(stores), std::move(loginName));
}

Result<EntryKey> DeliverMessage(DvAccount& account, DvArchive& target, std::string_view message,
                                const DeliverOptions& options) {
  auto* embedded = dynamic_cast<EmbeddedAccount*>(&account);
  if (embedded == nullptr) return Fail(store_error::WrongKind, "Kein Konto des eingebauten Speichers");
  return embedded->Deliver(target, message, options);
}

}  // namespace velmora::store::embedded
