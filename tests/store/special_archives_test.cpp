#include "store/special_archives.h"

#include <gtest/gtest.h>

#include "store/icon_keys.h"

namespace velmora::store {
namespace {

class NamedUser final : public DvUser {
 public:
  NamedUser(std::string name, int id) : name_(std::move(name)), id_(id) {}
  std::string Name() override { return name_; }
  int UserID() override { return id_; }
  std::string LoginName() override { return name_; }
  std::uint32_t Trustees() override { return 0; }
  std::string Mailaddress() override { return ""; }

 private:
  std::string name_;
  int id_;
};

class AccountWithUsers final : public DvAccount {
 public:
  bool Fails = false;

  Result<std::vector<std::unique_ptr<DvUser>>> Users() override {
    if (Fails) return Fail(1, "gestört");
    std::vector<std::unique_ptr<DvUser>> users;
    users.push_back(std::make_unique<NamedUser>("Anna Müller", 7));
    users.push_back(std::make_unique<NamedUser>("Bernd Schmidt", 8));
    return users;
  }

  DvUser& User() override { return user_; }
  std::string Description() override { return ""; }
  std::string DavidRoot() override { return ""; }
  std::string ProductName() override { return ""; }
  std::string BackendDescription() override { return ""; }
  int Product() override { return 0; }
  int BackendType() override { return 0; }
  Result<DvSite> Site() override { return DvSite(); }
  DvResources& Resources() override { throw std::logic_error("no resources in this test"); }
  Result<std::shared_ptr<DvArchive>> GetArchive(std::string_view) override { return Fail(1, ""); }
  Result<std::shared_ptr<DvArchive>> GetSpecialArchive(int) override { return Fail(1, ""); }
  Result<std::string> DVEmlFromMailItem(DvItem&, std::string_view) override { return Fail(1, ""); }
  Result<std::unique_ptr<DvItem>> DVMailItemFromEml(std::string_view, DvArchive&) override {
    return Fail(1, "");
  }
  Status Commit() override { return {}; }
  void Logoff() override {}

 private:
  NamedUser user_{"", 0};
};

TEST(ArchiveOwnerTest, NamesTheUser) {
  AccountWithUsers account;
  EXPECT_EQ(ArchiveOwnerName(account, 8), "Bernd Schmidt");
  EXPECT_EQ(ArchiveOwnerName(account, 9), "unknown");
  EXPECT_EQ(ArchiveOwnerName(account, -1), "DvISE Archive");
}

TEST(ArchiveOwnerTest, UnreadableUsersLeaveItUnknown) {
  AccountWithUsers account;
  account.Fails = true;
  EXPECT_EQ(ArchiveOwnerName(account, 8), "unknown");
  EXPECT_EQ(ArchiveOwnerName(account, -1), "DvISE Archive");
}

TEST(SpecialArchiveTest, EveryRowHasTheIconOfItsPosition) {
  ASSERT_EQ(SpecialArchives.size(), 29U);
  for (std::size_t i = 0; i < SpecialArchives.size(); ++i)
    EXPECT_EQ(SpecialArchives[i].IconKey, ListImageKeys[ArchiveIconOffset + i + 1]);
  EXPECT_EQ(RemoteAccessIconKey, ListImageKeys[ArchiveIconOffset + RemoteAccessArchivePosition]);
}

TEST(SpecialArchiveTest, KindsRiseThenThreeFoldersFollow) {
  for (std::size_t i = 0; i < 26; ++i) {
    EXPECT_EQ(SpecialArchives[i].Kind, static_cast<int>(i < 12 ? i + 1 : i - 12 + 100));
    EXPECT_TRUE(SpecialArchives[i].Path.empty());
  }
  for (std::size_t i = 26; i < 29; ++i) EXPECT_EQ(SpecialArchives[i].Kind, 0);
  EXPECT_EQ(SpecialArchives[26].Path, "resource\\project");
  EXPECT_EQ(SpecialArchives[27].Path, "system\\news");
  EXPECT_EQ(SpecialArchives[28].Path, "system\\spam");
}

}  // namespace
}  // namespace velmora::store
