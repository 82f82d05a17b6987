// The archive that a test copies an entry to.
#pragma once

#include <cstdlib>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "store/archive.h"
#include "store/errors.h"

namespace velmora::store::embedded {

// All that an item needs of the archive that it is copied to is its directory.
class TargetArchive : public DvArchive {
 public:
  explicit TargetArchive(std::string directory) : directory_(std::move(directory)) {}
  std::string FullPath() const override { return "/Archive/Ziel"; }
  std::string ID() const override { return directory_; }
  bool IsShortCut() const override { return false; }
  Result<std::string> DisplayName() override { return Unused(); }
  Status SetDisplayName(std::string_view) override { return Unused(); }
  Result<int> DisplayType() override { return Unused(); }
  Status SetDisplayType(int) override { return Unused(); }
  Result<bool> Hidden() override { return Unused(); }
  Status SetHidden(bool) override { return Unused(); }
  Result<bool> Packed() override { return Unused(); }
  Result<bool> AdminOnly() override { return Unused(); }
  Result<DateTime> LastModification() override { return Unused(); }
  Result<std::uint32_t> AccessRights() override { return Unused(); }
  Status Update() override { return Unused(); }
  Result<std::vector<std::shared_ptr<DvArchive>>> SubArchives() override { return Unused(); }
  Result<int> SubArchiveCount() override { return Unused(); }
  Result<int> MessageCount() override { return Unused(); }
  Result<std::unique_ptr<DvEntries>> GetEntries(std::uint32_t, EntryOrder) override { return Unused(); }
  Result<std::unique_ptr<DvItem>> GetEntry(EntryKey) override { return Unused(); }
  Result<std::unique_ptr<DvItemView>> ItemView(EntryKey) override { return Unused(); }
  DvRules& Rules() override { std::abort(); }
  Result<std::shared_ptr<DvArchive>> CreateSubArchive(std::string_view) override { return Unused(); }
  Result<std::unique_ptr<DvItemView>> CreateItem(int) override { return Unused(); }
  Result<std::unique_ptr<DvItem>> CreateEntry(int) override { return Unused(); }
  Status Delete() override { return Unused(); }
  Status Move(DvArchive&) override { return Unused(); }

 private:
  static tl::unexpected<Error> Unused() { return Fail(store_error::WrongKind, "not of use here"); }
  std::string directory_;
};

}  // namespace velmora::store::embedded
