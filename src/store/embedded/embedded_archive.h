// An archive of the built-in store: its record in the tree, its messages and rules.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "store/archive.h"
#include "store/embedded/rule_list.h"
#include "store/embedded/store_session.h"

namespace velmora::store::embedded {

class EmbeddedArchive final : public DvArchive {
 public:
  // `fullPath`: the path where the caller knows it; otherwise it is looked up when first asked for.
  // `rights`: of the user; an archive without any may be seen in a list, and refuses everything else.
  EmbeddedArchive(std::shared_ptr<StoreSession> session, ArchiveRecord record, std::uint32_t rights,
                  std::optional<std::string> fullPath = std::nullopt);
  EmbeddedArchive(const EmbeddedArchive&) = delete;
  EmbeddedArchive& operator=(const EmbeddedArchive&) = delete;

  std::string FullPath() const override;
  std::string ID() const override { return record_.Directory; }
  bool IsShortCut() const override { return record_.IsLink; }
  bool IsSpecial() override { return !record_.IsLink && session_->IsSpecial(record_.Directory); }

  Result<std::string> DisplayName() override;
  Status SetDisplayName(std::string_view name) override;
  Result<int> DisplayType() override { return Present().DisplayType; }
  Status SetDisplayType(int type) override;
  Result<bool> Hidden() override { return Present().Hidden; }
  Status SetHidden(bool hidden) override;
  Result<bool> Packed() override { return Present().Packed; }
  Result<bool> AdminOnly() override;
  Result<DateTime> LastModification() override;
  Result<std::uint32_t> AccessRights() override { return rights_; }
  Status Update() override;

  Result<std::vector<std::shared_ptr<DvArchive>>> SubArchives() override;
  Result<int> SubArchiveCount() override;
  Result<int> MessageCount() override;
  Result<std::unique_ptr<DvEntries>> GetEntries(std::uint32_t filter, EntryOrder order) override;
  Result<std::unique_ptr<DvItem>> GetEntry(EntryKey key) override;
  Result<std::unique_ptr<DvItemView>> ItemView(EntryKey key) override;
  DvRules& Rules() override { return rules_; }

  Result<std::shared_ptr<DvArchive>> CreateSubArchive(std::string_view name) override;
  Result<std::unique_ptr<DvItemView>> CreateItem(int type) override;
  Result<std::unique_ptr<DvItem>> CreateEntry(int type) override;
  Status Delete() override;
  Status Move(DvArchive& target) override;

 private:
  // Properties as the caller sees them: the record's with the pending writes.
  const ArchiveProperties& Present() const { return pending_ ? *pending_ : record_.Properties; }
  ArchiveProperties& Pending();
  bool IsRoot() const { return record_.ParentDirectory.empty(); }
  Status RequireAccess() const;
  // As RequireAccess; of a link on the archive in whose list it stands, whatever the rights on its target.
  Status RequireRecordAccess();
  // The record as it stands now: another process or an earlier deletion may have moved it in its list.
  Result<ArchiveRecord> FreshRecord();
  // Refused for what the store made itself.
  Status RequireOrdinary(std::string_view action);
  // True when nothing stands in the archive any more.
  Result<bool> IsEmpty();
  void DeleteDirectory();

  std::shared_ptr<StoreSession> session_;
  ArchiveRecord record_;
  std::uint32_t rights_;
  mutable std::optional<std::string> fullPath_;
  std::optional<std::string> pendingName_;
  std::optional<ArchiveProperties> pending_;
  RuleList rules_;
};

}  // namespace velmora::store::embedded
