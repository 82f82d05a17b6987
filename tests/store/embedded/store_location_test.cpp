#include "store/embedded/store_location.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "store/embedded/sqlite.h"
#include "store/embedded/store_setup.h"
#include "store/errors.h"
#include "support/temp_dir.h"

namespace velmora::store::embedded {
namespace {

class StoreLocationTest : public testing::Test {
 protected:
  StoreLocationTest() {
    request_.ConfigDirectory = directory_.HostPath("config");
    request_.DataDirectory = directory_.HostPath("data");
    request_.LoginName = "anna";
    request_.FullName = "Anna";
    request_.ComputerName = "werk-pc.1";
  }

  StoreLocation Init(const std::string& name) {
    const StoreLocation store{name, directory_.HostPath(name)};
    const auto made = InitStore({store.HostDirectory, name, {0, "Anna", "anna", "anna@example.org", 0}},
                                platform::SystemClock());
    EXPECT_TRUE(made) << made.error().Text;
    return store;
  }
  void Register(const StoreLocation& store) { ASSERT_TRUE(RegisterServer(request_.ConfigDirectory, store)); }
  Result<std::vector<StoreLocation>> Resolve() { return ResolveStores(request_, platform::SystemClock()); }

  velmora::test::TempDir directory_;
  StoreRequest request_;
};

TEST_F(StoreLocationTest, AFirstStartMakesAStoreAndTheNextOneFindsIt) {
  const auto first = Resolve();
  ASSERT_TRUE(first) << first.error().Text;
  ASSERT_EQ(first->size(), 1U);
  EXPECT_EQ(first->front().ServerName, "WERK-PC1");
  EXPECT_EQ(first->front().HostDirectory, directory_.HostPath("data/david"));
  auto site = SiteDatabase::Open(SiteDatabasePath(first->front().HostDirectory));
  ASSERT_TRUE(site);
  EXPECT_EQ((*site->FindUserByLogin("anna"))->Rights, AdministratorRights);
  EXPECT_EQ(*Resolve(), *first);
  std::filesystem::remove_all(request_.ConfigDirectory);
  EXPECT_EQ(*Resolve(), *first) << "a store that is there is registered again, not made anew";
}

TEST_F(StoreLocationTest, TheServerMadeLastIsTheDefaultAndTheOthersStayKnown) {
  const auto one = Init("EINS");
  const auto two = Init("ZWEI");
  Register(one);
  Register(two);
  EXPECT_EQ(*Resolve(), (std::vector{two, one}));
  Register(one);
  EXPECT_EQ(*Resolve(), (std::vector{one, two}));
}

TEST_F(StoreLocationTest, ServersThatAreMadeAtOnceAreAllRegistered) {
  constexpr std::size_t Count = 16;
  std::vector<std::thread> makers;
  for (std::size_t i = 0; i < Count; ++i) {
    makers.emplace_back([this, i] { Register({"S" + std::to_string(i), directory_.HostPath("x")}); });
  }
  for (std::thread& maker : makers) maker.join();
  EXPECT_EQ(Resolve()->size(), Count);
}

TEST_F(StoreLocationTest, ADirectoryThatIsNamedGoesFirst) {
  const auto one = Init("EINS");
  const auto two = Init("ZWEI");
  Register(one);
  request_.Directory = two.HostDirectory + "/";
  EXPECT_EQ(*Resolve(), (std::vector{two, one}));
  request_.Directory = directory_.HostPath("nichts");
  EXPECT_EQ(Resolve().error().Number, store_error::NotFound);
}

TEST_F(StoreLocationTest, ARegisteredDirectoryThatHasVanishedIsNotReplaced) {
  const auto one = Init("EINS");
  Register(one);
  std::filesystem::remove_all(one.HostDirectory);
  EXPECT_EQ(*Resolve(), std::vector{one});
  EXPECT_FALSE(std::filesystem::exists(request_.DataDirectory));
}

TEST_F(StoreLocationTest, ADamagedListOfServersIsReportedAndKept) {
  std::filesystem::create_directories(request_.ConfigDirectory);
  directory_.WriteHostFile("config/servers.toml", "[servers\nX=");
  EXPECT_EQ(Resolve().error().Number, store_error::Damaged);
  EXPECT_FALSE(RegisterServer(request_.ConfigDirectory, {"EINS", "/x"}));
  EXPECT_EQ(directory_.ReadHostFile("config/servers.toml"), "[servers\nX=");
}

TEST_F(StoreLocationTest, OddDirectoriesAndNamesSurviveTheList) {
  const StoreLocation odd{"Eins_2-3", directory_.HostPath("a \"b\"\n[x]='ü'")};
  Register(odd);
  EXPECT_EQ(*Resolve(), std::vector{odd});
  Register({"EINS_2-3", "/srv/david"});
  EXPECT_EQ(*Resolve(), (std::vector{StoreLocation{"EINS_2-3", "/srv/david"}}))
      << "one server, whatever its case";
}

TEST_F(StoreLocationTest, ServerNames) {
  for (const auto* name : {"A", "BUERO", "zeb-1_x", "123456789012345"})
    EXPECT_TRUE(IsServerName(name)) << name;
  for (const auto* name : {"", "1234567890123456", "A B", "A\\B", "..", "Ä", "A/B", "A.B"}) {
    EXPECT_FALSE(IsServerName(name)) << name;
  }
}

TEST_F(StoreLocationTest, InitRefusesWhatIsInUse) {
  const auto one = Init("EINS");
  const NewStore again{one.HostDirectory, "ZWEI", {0, "Anna", "anna", "", 0}};
  EXPECT_FALSE(InitStore(again, platform::SystemClock()));
  EXPECT_EQ(*SiteDatabase::Open(SiteDatabasePath(one.HostDirectory))->Value(site_value::Server), "EINS");

  std::filesystem::create_directories(directory_.HostPath("full"));
  directory_.WriteHostFile("full/letter.txt", "x");
  const NewStore full{directory_.HostPath("full"), "DREI", {0, "Anna", "anna", "", 0}};
  EXPECT_FALSE(InitStore(full, platform::SystemClock()));
  EXPECT_FALSE(std::filesystem::exists(directory_.HostPath("full/archive")));
  const NewStore badName{directory_.HostPath("new"), "A\\B", {0, "Anna", "anna", "", 0}};
  EXPECT_EQ(InitStore(badName, platform::SystemClock()).error().Number, store_error::BadName);
}

// Neither those of a later version nor damaged ones: they may be all that tells of the users.
TEST_F(StoreLocationTest, InitNeverWritesOverSiteDataThatItCannotRead) {
  const auto one = Init("EINS");
  const std::string file = SiteDatabasePath(one.HostDirectory);
  const NewStore again{one.HostDirectory, "EINS", {0, "Zwei", "zwei", "", 0}};
  ASSERT_TRUE(Sqlite::Open(file, Sqlite::Mode::ReadWrite)->Execute("PRAGMA user_version = 99"));
  const auto refused = InitStore(again, platform::SystemClock());
  ASSERT_FALSE(refused);
  EXPECT_NE(refused.error().Text.find("Unbekannte Version 99"), std::string::npos) << refused.error().Text;
  ASSERT_TRUE(Sqlite::Open(file, Sqlite::Mode::ReadWrite)->Execute("PRAGMA user_version = 1"));
  EXPECT_EQ(SiteDatabase::Open(file)->Users()->front().LoginName, "anna");

  const std::string noise(5000, 'x');
  directory_.WriteHostFile("EINS/code/site.db", noise);
  EXPECT_FALSE(InitStore(again, platform::SystemClock()));
  EXPECT_EQ(directory_.ReadHostFile("EINS/code/site.db"), noise);
}

TEST_F(StoreLocationTest, InitGoesOnWhereItWasInterrupted) {
  const auto one = Init("EINS");
  directory_.WriteHostFile("EINS/code/site.db", "");
  std::filesystem::remove_all(one.HostDirectory + "/code/david.rec");
  const NewStore again{one.HostDirectory, "EINS", {0, "Anna", "anna", "", 0}};
  const auto made = InitStore(again, platform::SystemClock());
  ASSERT_TRUE(made) << made.error().Text;
  EXPECT_TRUE(std::filesystem::exists(one.HostDirectory + "/code/david.rec"));
  const auto fileSystem = platform::MakeHostFileSystem({MappingOf(one)});
  ArchiveTree tree(*fileSystem, StoreLayout("EINS").ArchiveRoot());
  EXPECT_TRUE(tree.Check().Findings.empty()) << "nothing stands twice";
}

TEST_F(StoreLocationTest, LoginNamesAreUnique) {
  const auto one = Init("EINS");
  auto site = SiteDatabase::Open(SiteDatabasePath(one.HostDirectory));
  ASSERT_TRUE(site);
  EXPECT_FALSE(site->AddUser({0, "Zwei", "anna", "", 2}));
  EXPECT_EQ(site->Users()->size(), 1U);
}

}  // namespace
}  // namespace velmora::store::embedded
