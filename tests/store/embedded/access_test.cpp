#include <algorithm>

#include "store/vocabulary.h"
#include "store_fixture.h"

namespace velmora::store::embedded {
namespace {

class AccessTest : public StoreFixture {
 protected:
  AccessTest() : bertAccount_(SignOn("bert")) {}

  int BertsErrorOn(std::string_view path) { return ErrorOf(bertAccount_->GetArchive(path)); }
  std::string Own(DvAccount& account) { return (*account.GetSpecialArchive(special::OwnRoot))->ID(); }

  std::unique_ptr<DvAccount> bertAccount_;
};

TEST_F(AccessTest, AdministratorsHaveEveryRightEverywhere) {
  for (const auto* path :
       {"/Archive", "Benutzer", "Benutzer/Bert/Eingang", "System/David/Domains", "FaxBox"}) {
    EXPECT_EQ(*Archive(path)->AccessRights(), 0xFBU) << path;
  }
}

TEST_F(AccessTest, OrdinaryUsersReachTheirTreeAndWhatAllShare) {
  for (const auto* path : {"Benutzer/Bert", "Benutzer/Bert/Eingang", "Benutzer/Bert/System/Papierkorb",
                           "Gemeinsam", "Gemeinsam/Web", "Adressen", "Ressourcen", "resource\\project"}) {
    EXPECT_EQ(BertsErrorOn(path), 0) << path;
  }
  EXPECT_FALSE(TestBit(*Archive(*bertAccount_, "Gemeinsam")->AccessRights(), access_right::SetOwner));
  EXPECT_TRUE(TestBit(*Archive(*bertAccount_, "Gemeinsam")->AccessRights(), access_right::Write));
}

TEST_F(AccessTest, OrdinaryUsersAreKeptFromTheRest) {
  for (const auto* path : {"/Archive", "Benutzer", "Benutzer/Anna", "Benutzer/Anna/Eingang", "System",
                           "SYSTEM\\DAVID\\DOMAINS\\AUTHDOMS", "FaxBox", "system\\trash"}) {
    EXPECT_EQ(BertsErrorOn(path), store_error::NoAccess) << path;
  }
  EXPECT_EQ(ErrorOf(bertAccount_->GetSpecialArchive(special::ArchiveRoot)), store_error::NoAccess);
  EXPECT_EQ(ErrorOf(bertAccount_->GetSpecialArchive(special::UserRoots)), store_error::NoAccess);
  EXPECT_EQ(ErrorOf(bertAccount_->GetSpecialArchive(special::Inbox)), 0);
}

TEST_F(AccessTest, ArchivesForAdministratorsOnlyAreShutWithAllBelowThem) {
  const auto closed = Create(*Archive("Gemeinsam"), "Vorstand");
  Create(*closed, "Protokolle");
  ArchiveTree tree(*fileSystem_, layout_.ArchiveRoot());
  auto record = tree.FindByDirectory(closed->ID());
  ASSERT_TRUE(record);
  record->Properties.AdminOnly = true;
  ASSERT_TRUE(tree.SetProperties(*record, record->Properties));

  EXPECT_EQ(BertsErrorOn("Gemeinsam/Vorstand"), store_error::NoAccess);
  EXPECT_EQ(BertsErrorOn("Gemeinsam/Vorstand/Protokolle"), store_error::NoAccess);
  EXPECT_TRUE(*Archive("Gemeinsam/Vorstand")->AdminOnly());
  const auto listed = Archive(*bertAccount_, "Gemeinsam")->SubArchives();
  ASSERT_TRUE(listed);
  const auto seen =
      std::ranges::find_if(*listed, [&](const auto& archive) { return archive->ID() == closed->ID(); });
  ASSERT_NE(seen, listed->end());
  EXPECT_EQ(*(*seen)->AccessRights(), 0U);
  EXPECT_EQ(ErrorOf((*seen)->SubArchives()), store_error::NoAccess);
  EXPECT_EQ(ErrorOf((*seen)->GetEntries(0x301FB)), store_error::NoAccess);
  EXPECT_EQ(ErrorOf((*seen)->CreateEntry(2)), store_error::NoAccess);
  EXPECT_EQ(ErrorOf((*seen)->CreateSubArchive("x")), store_error::NoAccess);
  EXPECT_EQ(ErrorOf((*seen)->Rules().Count()), store_error::NoAccess);
  EXPECT_EQ(ErrorOf((*seen)->SetHidden(true)), store_error::NoAccess);
  EXPECT_EQ(ErrorOf((*seen)->Delete()), store_error::NoAccess);
}

TEST_F(AccessTest, ALinkOpensNoDoor) {
  ArchiveTree tree(*fileSystem_, layout_.ArchiveRoot());
  ASSERT_TRUE(tree.AddLink(Own(*bertAccount_), "Annas Post", Own(*anna_)));
  EXPECT_EQ(BertsErrorOn("Benutzer/Bert/Annas Post"), store_error::NoAccess);
  const auto listed = Archive(*bertAccount_, "Benutzer/Bert")->SubArchives();
  ASSERT_TRUE(listed);
  const auto& link = listed->back();
  ASSERT_TRUE(link->IsShortCut());
  EXPECT_EQ(*link->AccessRights(), 0U);
  EXPECT_EQ(ErrorOf(link->SubArchives()), store_error::NoAccess);
  ASSERT_TRUE(link->Delete()) << "the link is in Bert's own list";
  EXPECT_EQ(ErrorOf(anna_->GetArchive("Benutzer/Bert/Annas Post")), store_error::NotFound);
  EXPECT_TRUE(anna_->GetArchive("Benutzer/Anna"));
}

TEST_F(AccessTest, ALinkInAForeignListIsNotTheUsersToRemove) {
  ArchiveTree tree(*fileSystem_, layout_.ArchiveRoot());
  ASSERT_TRUE(tree.AddLink(Own(*anna_), "Alle", Archive("Gemeinsam")->ID()));
  const auto link = Archive(*bertAccount_, "Benutzer/Anna/Alle");
  EXPECT_TRUE(link->IsShortCut());
  EXPECT_TRUE(link->SubArchives()) << "the target is common";
  EXPECT_EQ(ErrorOf(link->Delete()), store_error::NoAccess);
  EXPECT_EQ(ErrorOf(link->SetDisplayName("Meins")), store_error::NoAccess);
  EXPECT_TRUE(Archive("Benutzer/Anna/Alle"));
}

TEST_F(AccessTest, WhatMovesIntoAUsersTreeIsTheUsers) {
  const auto archive = Create(*Archive("Benutzer/Anna"), "Akte");
  EXPECT_EQ(BertsErrorOn(archive->ID()), store_error::NoAccess);
  ASSERT_TRUE(archive->Move(*Archive("Benutzer/Bert")));
  EXPECT_EQ(BertsErrorOn("Benutzer/Bert/Akte"), 0);
  EXPECT_EQ(BertsErrorOn(archive->ID()), 0);
}

TEST_F(AccessTest, NothingMovesIntoAnArchiveWithoutRights) {
  const auto own = Create(*Archive(*bertAccount_, "Benutzer/Bert"), "Akte");
  const auto target = Archive("Benutzer/Anna");
  ArchiveTree tree(*fileSystem_, layout_.ArchiveRoot());
  ASSERT_TRUE(tree.AddLink(Own(*bertAccount_), "Annas Post", target->ID()));
  const auto listed = Archive(*bertAccount_, "Benutzer/Bert")->SubArchives();
  ASSERT_TRUE(listed);
  EXPECT_EQ(ErrorOf(own->Move(*listed->back())), store_error::NoAccess);
}

}  // namespace
}  // namespace velmora::store::embedded
