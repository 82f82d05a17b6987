#include <algorithm>
#include <filesystem>
#include <set>

#include "base/text.h"
#include "store/special_archives.h"
#include "store/user_directory.h"
#include "store/vocabulary.h"
#include "store_fixture.h"

namespace velmora::store::embedded {
namespace {

class AccountTest : public StoreFixture {};

TEST_F(AccountTest, SignsOnUsersOfTheStoreByTheirLoginName) {
  EXPECT_EQ(anna_->User().Name(), "Anna");
  EXPECT_EQ(anna_->User().Trustees(), AdministratorRights);
  EXPECT_EQ(anna_->Description(), "BUERO");
  EXPECT_EQ(anna_->DavidRoot(), "\\\\BUERO\\DAVID");
  EXPECT_EQ(SignOn("bert")->User().Mailaddress(), "bert@example.org");
  EXPECT_EQ(ErrorOf(TrySignOn("carl")), store_error::LogonFailed);
  EXPECT_EQ(ErrorOf(TrySignOn("ANNA")), store_error::LogonFailed) << "login names are the host's, with case";
}

TEST_F(AccountTest, ServersAreFoundWithoutRegardToCaseAndUnknownOnesRefused) {
  EXPECT_TRUE(TrySignOn("anna", "buero"));
  EXPECT_EQ(ErrorOf(TrySignOn("anna", "WERK")), store_error::LogonFailed);
}

TEST_F(AccountTest, ArchivesOfUsersAreTold) {
  const auto bert = SignOn("bert");
  const std::string ofBert = (*bert->GetSpecialArchive(special::Inbox))->ID();
  for (auto* const account : {anna_.get(), bert.get()}) {
    EXPECT_TRUE(IsUserArchive(*account, ofBert));
    EXPECT_TRUE(IsUserArchive(*account, FoldCase(ofBert) + "\\"));
    EXPECT_FALSE(IsUserArchive(*account, (*account->GetSpecialArchive(special::Common))->ID()));
    EXPECT_FALSE(IsUserArchive(*account, ""));
  }
  EXPECT_FALSE(IsUserArchive(*anna_, (*anna_->GetSpecialArchive(special::UserRoots))->ID()));
  EXPECT_TRUE(IsUserArchive(*anna_, R"(BUERO\DAVID:ARCHIVE\USER\00000001\IN)"));
}

TEST_F(AccountTest, UserWithoutRightsSignsOnWithTrusteesZeroAndReachesNothing) {
  AddTestUser("Dora", "dora", 0);
  const auto dora = SignOn("dora");
  EXPECT_EQ(dora->User().Trustees(), 0U);
  EXPECT_EQ(ErrorOf(dora->GetSpecialArchive(special::OwnRoot)), store_error::NoAccess);
  EXPECT_EQ(ErrorOf(dora->GetArchive("Gemeinsam")), store_error::NoAccess);
}

TEST_F(AccountTest, LogonAfterLogoffMakesANewSession) {
  anna_->Logoff();
  EXPECT_TRUE(SignOn("anna")->GetArchive("/Archive"));
}

TEST_F(AccountTest, ListsUsersWithIdsThatNameTheirDirectories) {
  const auto users = anna_->Users();
  ASSERT_TRUE(users);
  ASSERT_EQ(users->size(), 2U);
  EXPECT_EQ((*users)[1]->Name(), "Bert");
  const auto root = anna_->GetArchive("user\\" + UserDirName((*users)[1]->UserID()));
  ASSERT_TRUE(root);
  EXPECT_EQ((*root)->FullPath(), "/Archive/Benutzer/Bert");
  EXPECT_EQ(UserDirName((*users)[1]->UserID()).size(), 8U);
}

TEST_F(AccountTest, AUserHasTheCardThatWasGivenLast) {
  const auto card = [&](const std::string& name) {
    const auto users = anna_->Users();
    const auto user = std::ranges::find_if(*users, [&](const auto& one) { return one->Name() == name; });
    auto address = (*user)->VCard();
    EXPECT_TRUE(address) << address.error().Text;
    return std::move(*address);
  };
  EXPECT_EQ(card("Bert")->Text(AddressProperty::City).value_or("?"), "") << "none was ever given";
  ASSERT_TRUE(Site().SetCard(bert_.Id, {{AddressProperty::City, "Köln"}, {AddressProperty::Title, "Dr."}}));
  ASSERT_TRUE(
      Site().SetCard(bert_.Id, {{AddressProperty::City, "Bonn"}, {AddressProperty::DefaultAddress, "2"}}));
  const auto bert = card("Bert");
  EXPECT_EQ(bert->Text(AddressProperty::City).value_or("?"), "Bonn");
  EXPECT_EQ(bert->Text(AddressProperty::Title).value_or("?"), "") << "replaced as a whole";
  EXPECT_EQ(FieldNumber(*bert->Get(AddressProperty::DefaultAddress)), 2);
  EXPECT_EQ(card("Anna")->Text(AddressProperty::City).value_or("?"), "");
  EXPECT_FALSE(bert->Item().Update()) << "a card stands in no archive";
  EXPECT_EQ(SignOn("bert")->User().VCard().value()->Text(AddressProperty::City).value_or("?"), "Bonn");
}

TEST_F(AccountTest, SpecialArchivesAreDistinctAndEachIsAnArchive) {
  std::set<std::string> ids;
  std::vector<int> kinds{0};
  for (int kind = 1; kind <= 12; ++kind) kinds.push_back(kind);
  for (int kind = 100; kind <= 113; ++kind) kinds.push_back(kind);
  for (const int kind : kinds) {
    const auto archive = anna_->GetSpecialArchive(kind);
    ASSERT_TRUE(archive) << kind << ": " << archive.error().Text;
    ids.insert((*archive)->ID());
    EXPECT_EQ(Archive((*archive)->FullPath())->ID(), (*archive)->ID()) << kind;
  }
  EXPECT_EQ(ids.size(), kinds.size());
  EXPECT_EQ(ErrorOf(anna_->GetSpecialArchive(13)), store_error::NotFound);
  EXPECT_EQ(ErrorOf(anna_->GetSpecialArchive(-1)), store_error::NotFound);
}

TEST_F(AccountTest, SpecialArchivesLieWhereTheFilesOfTheServerAreLookedFor) {
  EXPECT_EQ((*anna_->GetSpecialArchive(special::ArchiveRoot))->FullPath(), "/Archive");
  EXPECT_EQ((*anna_->GetSpecialArchive(special::ArchiveRoot))->ID(), "\\\\BUERO\\DAVID\\ARCHIVE");
  const std::string own = (*anna_->GetSpecialArchive(special::OwnRoot))->ID();
  for (const auto* place : {"in", "out", "address", "system\\trash", "$remind$"}) {
    EXPECT_TRUE(anna_->GetArchive(own + "\\" + place)) << place;
  }
  for (const auto* place : {"resource\\project", "system\\news", "system\\spam", "system\\trash",
                            "SYSTEM\\DAVID\\DOMAINS\\YESSEND", "SYSTEM\\DAVID\\DOMAINS\\NOSEND",
                            "SYSTEM\\DAVID\\DOMAINS\\AUTHDOMS", "SYSTEM\\DAVID\\DOMAINS\\ETRNDOMS",
                            "SYSTEM\\DAVID\\DVGRAB", "\\system\\trash"}) {
    EXPECT_TRUE(anna_->GetArchiveByVariant(place)) << place;
  }
}

struct PathForm {
  const char* Name;
  const char* Path;
};
class PathFormTest : public StoreFixture, public testing::WithParamInterface<PathForm> {};

TEST_P(PathFormTest, LeadsToTheArchive) {
  Create(*Archive("Gemeinsam"), "Vertrieb{VERTRIEB}");
  auto path = std::string(GetParam().Path);
  if (const auto host = path.find("HOST"); host != std::string::npos) {
    path.replace(host, 4, directory_.Path("store"));
  }
  const auto archive = anna_->GetArchive(path);
  ASSERT_TRUE(archive) << path << ": " << archive.error().Text;
  EXPECT_EQ((*archive)->FullPath(), "/Archive/Gemeinsam/Vertrieb");
  EXPECT_EQ((*archive)->ID(), "\\\\BUERO\\DAVID\\ARCHIVE\\common\\VERTRIEB");
}

INSTANTIATE_TEST_SUITE_P(
    Forms, PathFormTest,
    testing::Values(PathForm{"FullPath", "/Archive/Gemeinsam/Vertrieb"},
                    PathForm{"OtherCase", "/ARCHIVE/gemeinsam/VERTRIEB"},
                    PathForm{"Backslashes", "\\Archive\\Gemeinsam\\Vertrieb"},
                    PathForm{"WithoutLeadingSeparator", "Archive/Gemeinsam/Vertrieb"},
                    PathForm{"RelativeToTheRoot", "Gemeinsam\\Vertrieb"},
                    PathForm{"TrailingSeparator", "/Archive/Gemeinsam/Vertrieb/"},
                    PathForm{"Directories", "common\\vertrieb"},
                    PathForm{"Unc", "\\\\BUERO\\DAVID\\ARCHIVE\\common\\VERTRIEB"},
                    PathForm{"UncOtherCase", "\\\\buero\\david\\Archive\\COMMON\\vertrieb\\"},
                    PathForm{"UncWithSlashes", "//BUERO/DAVID/ARCHIVE/common/VERTRIEB"},
                    PathForm{"NetWare", "BUERO\\DAVID:ARCHIVE\\common\\VERTRIEB"},
                    PathForm{"NetWareOtherCase", "buero\\david:archive\\COMMON\\vertrieb"},
                    PathForm{"Drive", "HOST\\archive\\common\\VERTRIEB"},
                    PathForm{"DriveOtherCase", "HOST\\ARCHIVE\\Common\\vertrieb\\"}),
    [](const auto& form) { return std::string(form.param.Name); });

TEST_F(AccountTest, UnknownPathsAreNotFound) {
  for (const auto* path : {"", "/Archive/Nichts", "Nichts", "\\\\BUERO\\DAVID", "\\\\BUERO\\DAVID\\code",
                           "\\\\WERK\\DAVID\\ARCHIVE", "Z:\\", "Q:\\x", "BUERO\\DAVID:nichts",
                           "\\\\BUERO\\DAVID\\ARCHIVE\\common\\..\\user", "..", "/Archive/.."}) {
    EXPECT_EQ(ErrorOf(anna_->GetArchive(path)), store_error::NotFound) << path;
  }
}

TEST_F(AccountTest, NamesMayHoldColonsAndAnArchiveOfTheNameArchiveIsReached) {
  Create(*Archive("Gemeinsam"), "AW: Angebot");
  EXPECT_EQ(Archive("Gemeinsam/AW: Angebot")->FullPath(), "/Archive/Gemeinsam/AW: Angebot");
  Create(*Archive("/Archive"), "Archive");
  EXPECT_EQ(Archive("/Archive/Archive")->FullPath(), "/Archive/Archive");
  EXPECT_EQ(Archive("/Archive")->FullPath(), "/Archive");
}

TEST_F(AccountTest, SiteGivesWhatWasStored) {
  auto site = Site();
  ASSERT_TRUE(site.SetValue(site_value::Company, "Muster GmbH"));
  ASSERT_TRUE(site.SetValue(site_value::SiteID, "4711"));
  const auto read = anna_->Site();
  ASSERT_TRUE(read);
  EXPECT_EQ(read->Company, "Muster GmbH");
  EXPECT_EQ(read->SiteID, "4711");
  EXPECT_EQ(read->SiteReg, "");
}

TEST_F(AccountTest, ServerLogsAreArchivesWhenCopied) {
  const auto archive = Create(*Archive("Gemeinsam"), "{LogRx}Eingangsprotokoll");
  ASSERT_TRUE(anna_->Commit());
  for (const auto* log : {"david.rec", "david.log"}) {
    const auto copied =
        fileSystem_->CopyFile(anna_->DavidRoot() + "\\code\\" + log, archive->ID() + "\\Archive.dat");
    ASSERT_TRUE(copied) << copied.error().Text;
    const auto count = archive->MessageCount();
    ASSERT_TRUE(count) << count.error().Text;
    EXPECT_EQ(*count, 0);
  }
}

TEST_F(AccountTest, MailFilesComeAndGoByteForByte) {
  directory_.WriteHostFile("a.eml", PlainMessage);
  const auto inbox = anna_->GetSpecialArchive(special::Inbox);
  ASSERT_TRUE(inbox);
  const auto item = anna_->DVMailItemFromEml(directory_.Path("a.eml"), **inbox);
  ASSERT_TRUE(item) << item.error().Text;
  const auto path = anna_->DVEmlFromMailItem(**item, directory_.Path("tmp"));
  ASSERT_TRUE(path) << path.error().Text;
  EXPECT_TRUE(path->starts_with((*inbox)->ID())) << *path;
  EXPECT_EQ(fileSystem_->ReadFile(*path).value_or(""), PlainMessage);
  EXPECT_EQ(ErrorOf(anna_->DVMailItemFromEml(directory_.Path("no.eml"), **inbox)),
            platform::file_error::FileNotFound);
}

TEST_F(AccountTest, AFaxIsNoMailFileWhateverItsImageSays) {
  directory_.WriteHostFile("a.tif", PlainMessage);
  const auto inbox = *anna_->GetSpecialArchive(special::Inbox);
  const auto fax = inbox->CreateItem(item_type::Fax);
  ASSERT_TRUE(fax);
  EXPECT_EQ((*fax)->AsFax()->Sender().value_or(DvRecipient{}).Address, "") << "only mails are the user's";
  ASSERT_TRUE((*fax)->AsFax()->SetImage(directory_.Path("a.tif")));
  ASSERT_TRUE((*fax)->Item().Update());
  EXPECT_EQ(fileSystem_->ReadFile((*fax)->AsFax()->ImagePath()).value_or(""), PlainMessage);
  EXPECT_EQ(ErrorOf(anna_->DVEmlFromMailItem((*fax)->Item(), directory_.Path("tmp"))),
            store_error::WrongKind);
}

TEST_F(AccountTest, BroadcastListsBearTheirDescriptionOrTheirFileName) {
  const std::string lists = anna_->Resources().BroadcastListDirectory();
  ASSERT_TRUE(fileSystem_->WriteFile(lists + "\\kunden.rnd", "  ;Kunden M\xFCnchen \r\na@b.de\r\n"));
  ASSERT_TRUE(fileSystem_->WriteFile(lists + "\\plain.rnd", "a@b.de\r\n;kein Name\r\n"));
  ASSERT_TRUE(fileSystem_->WriteFile(lists + "\\notes.txt", ";x"));
  const auto read = anna_->Resources().BroadcastLists();
  ASSERT_TRUE(read);
  ASSERT_EQ(read->size(), 2U);
  EXPECT_EQ((*read)[0].Name, "Kunden München");
  EXPECT_EQ((*read)[1].Name, "plain.rnd");
  EXPECT_EQ((*read)[1].FilePath, lists + "\\plain.rnd");
  EXPECT_TRUE(anna_->Resources().CoverPages()->empty());
}

TEST_F(AccountTest, ResourcesMayLieElsewhereAndMayBeMissing) {
  directory_.WriteHostFile("logo.png", "x");
  auto site = Site();
  ASSERT_TRUE(site.SetValue(site_value::Graphics, directory_.Path()));
  ASSERT_TRUE(site.SetValue(site_value::FaxTemplates, directory_.Path("missing")));
  const auto graphics = anna_->Resources().Graphics();
  ASSERT_TRUE(graphics);
  ASSERT_EQ(graphics->size(), 1U);
  EXPECT_EQ(graphics->front().Name, "logo.png");
  const auto templates = anna_->Resources().FaxTemplates();
  ASSERT_TRUE(templates);
  EXPECT_TRUE(templates->empty());
}

TEST_F(AccountTest, EverythingOfTheStoreIsTheOwnersAlone) {
  namespace fs = std::filesystem;
  ASSERT_TRUE(Archive("Gemeinsam")->CreateEntry(2));
  ASSERT_TRUE(anna_->Commit());
  for (const auto& entry : fs::recursive_directory_iterator(location_.HostDirectory)) {
    if (!entry.is_directory()) continue;
    const auto others = fs::perms::group_all | fs::perms::others_all;
    EXPECT_EQ(entry.status().permissions() & others, fs::perms::none) << entry.path();
  }
}

}  // namespace
}  // namespace velmora::store::embedded
