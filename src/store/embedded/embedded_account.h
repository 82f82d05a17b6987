// A session of the built-in store.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "store/account.h"
#include "store/embedded/resources.h"
#include "store/embedded/store_session.h"

namespace velmora::store::embedded {

class EmbeddedUser final : public DvUser {
 public:
  EmbeddedUser(std::shared_ptr<StoreSession> session, UserRecord record)
      : session_(std::move(session)), record_(std::move(record)) {}
  std::string Name() override { return record_.Name; }
  int UserID() override { return record_.Id; }
  std::string LoginName() override { return record_.LoginName; }
  std::uint32_t Trustees() override { return record_.Rights; }
  std::string Mailaddress() override { return record_.MailAddress; }
  Result<std::unique_ptr<DvAddressItem>> VCard() override;

 private:
  std::shared_ptr<StoreSession> session_;
  UserRecord record_;
};

class EmbeddedAccount final : public DvAccount {
 public:
  explicit EmbeddedAccount(std::shared_ptr<StoreSession> session);
  ~EmbeddedAccount() override;
  EmbeddedAccount(const EmbeddedAccount&) = delete;
  EmbeddedAccount& operator=(const EmbeddedAccount&) = delete;

  DvUser& User() override { return user_; }
  Result<std::vector<std::unique_ptr<DvUser>>> Users() override;
  std::string Description() override { return session_->ServerName; }
  std::string DavidRoot() override { return session_->Layout.Root(); }
  std::string ProductName() override { return "David"; }
  std::string BackendDescription() override { return "Velmora-Speicher"; }
  int Product() override;
  int BackendType() override;
  Result<DvSite> Site() override;
  DvResources& Resources() override { return resources_; }

  Result<std::shared_ptr<DvArchive>> GetArchive(std::string_view path) override;
  Result<std::shared_ptr<DvArchive>> GetSpecialArchive(int kind) override;

  Result<std::string> DVEmlFromMailItem(DvItem& item, std::string_view temporaryDirectory) override;
  Result<std::unique_ptr<DvItem>> DVMailItemFromEml(std::string_view path, DvArchive& target) override;
  // The bytes of a message as a new entry of the archive, noted in the receive log.
  Result<EntryKey> Deliver(DvArchive& target, std::string_view message, const DeliverOptions& options);

  void SetPatience(Patience patience) override;
  Status Commit() override;
  std::optional<Error> TakeWarning() override { return session_->Logs.TakeWarning(); }
  // Commits what is pending; archives that are still held stay usable.
  void Logoff() override;

 private:
  Result<std::shared_ptr<DvArchive>> Open(ArchiveRecord record);
  Result<EntryKey> Store(DvArchive& target, std::string_view message, const DeliverOptions& options);

  std::shared_ptr<StoreSession> session_;
  EmbeddedUser user_;
  embedded::Resources resources_;
};

}  // namespace velmora::store::embedded
