#include "store/archive_records.h"
#include "store/filter.h"
#include "store_fixture.h"

namespace velmora::store::embedded {
namespace {

class ArchiveTest : public StoreFixture {
 protected:
  std::shared_ptr<DvArchive> common_ = Archive("Gemeinsam");
};

TEST_F(ArchiveTest, SubArchivesKnowTheirPathsAndAreFoundByThem) {
  Create(*common_, "Vertrieb");
  Create(*common_, "Einkauf");
  const auto children = common_->SubArchives();
  ASSERT_TRUE(children);
  EXPECT_EQ(static_cast<int>(children->size()), *common_->SubArchiveCount());
  for (const auto& child : *children) {
    EXPECT_EQ(Archive(child->FullPath())->ID(), child->ID());
    EXPECT_EQ(Archive(child->ID())->FullPath(), child->FullPath());
  }
  EXPECT_EQ(children->back()->FullPath(), "/Archive/Gemeinsam/Einkauf");
}

TEST_F(ArchiveTest, BracesNameTheDirectoryAndATakenOneIsNeverShared) {
  const auto first = Create(*common_, "Rechnungen{RE2026}");
  EXPECT_EQ(*first->DisplayName(), "Rechnungen");
  EXPECT_EQ(first->ID(), common_->ID() + "\\RE2026");
  const auto second = Create(*common_, "{re2026}Andere");
  EXPECT_EQ(*second->DisplayName(), "Andere");
  EXPECT_NE(first->ID(), second->ID());
  const auto third = Create(*common_, "{LEER}");
  EXPECT_EQ(*third->DisplayName(), "LEER");
}

TEST_F(ArchiveTest, EqualNamesAreAllowedAndAPathFindsTheFirst) {
  const auto first = Create(*common_, "Post");
  const auto second = Create(*common_, "Post");
  EXPECT_NE(first->ID(), second->ID());
  EXPECT_EQ(Archive("Gemeinsam/Post")->ID(), first->ID());
}

TEST_F(ArchiveTest, PropertiesStandInMemoryUntilUpdate) {
  const auto archive = Create(*common_, "Alt");
  ASSERT_TRUE(archive->SetDisplayName("Neu"));
  ASSERT_TRUE(archive->SetDisplayType(4));
  ASSERT_TRUE(archive->SetHidden(true));
  EXPECT_EQ(*archive->DisplayName(), "Neu");
  EXPECT_EQ(*Archive(archive->ID())->DisplayName(), "Alt");
  EXPECT_EQ(*Archive(archive->ID())->DisplayType(), 0);
  ASSERT_TRUE(archive->Update());
  const auto again = Archive("Gemeinsam/Neu");
  EXPECT_EQ(again->ID(), archive->ID());
  EXPECT_EQ(*again->DisplayType(), 4);
  EXPECT_TRUE(*again->Hidden());
  EXPECT_EQ(archive->FullPath(), "/Archive/Gemeinsam/Neu");
  EXPECT_EQ(ErrorOf(anna_->GetArchive("Gemeinsam/Alt")), store_error::NotFound);
}

TEST_F(ArchiveTest, ARecordWithoutANameShowsItsDirectoryHoweverItsPathEnds) {
  const std::string directory = common_->ID() + "\\FREMD";
  ASSERT_TRUE(fileSystem_->CreateFolder(directory));
  ASSERT_TRUE(AppendArchiveRecord(*fileSystem_, common_->ID(), *DirRecord::Make(directory + "\\", "")));
  const auto archive = common_->SubArchives()->back();
  EXPECT_EQ(*archive->DisplayName(), "FREMD");
  EXPECT_EQ(archive->FullPath(), "/Archive/Gemeinsam/FREMD");
  EXPECT_EQ(Archive("Gemeinsam/FREMD")->FullPath(), archive->FullPath());
  ASSERT_TRUE(archive->SetDisplayName("Anders"));
  ASSERT_TRUE(archive->SetDisplayName(""));
  EXPECT_EQ(*archive->DisplayName(), "FREMD");
}

TEST_F(ArchiveTest, UpdateWithoutWritesChangesNothing) { EXPECT_TRUE(common_->Update()); }

TEST_F(ArchiveTest, UpdateFindsItsRecordAfterDeletionsBeforeIt) {
  const auto first = Create(*common_, "A");
  const auto second = Create(*common_, "B");
  const auto third = Create(*common_, "C");
  ASSERT_TRUE(first->Delete());
  ASSERT_TRUE(third->SetDisplayName("Z"));
  ASSERT_TRUE(third->Update());
  EXPECT_EQ(*Archive(second->ID())->DisplayName(), "B");
  EXPECT_EQ(*Archive(third->ID())->DisplayName(), "Z");
}

TEST_F(ArchiveTest, SpecialArchivesAndRootsAreNeitherDeletedNorRenamedNorMoved) {
  for (const auto* path :
       {"/Archive", "Benutzer", "Benutzer/Bert", "Benutzer/Bert/Eingang", "Gemeinsam/Web",
        "Benutzer/Bert/System/Papierkorb", "System/David/Domains/ETRN-Domains", "Ressourcen"}) {
    const auto archive = Archive(path);
    EXPECT_EQ(ErrorOf(archive->Delete()), store_error::Protected) << path;
    EXPECT_EQ(ErrorOf(archive->SetDisplayName("Anders")), store_error::Protected) << path;
    EXPECT_EQ(ErrorOf(archive->Move(*Archive("Adressen"))), store_error::Protected) << path;
    EXPECT_TRUE(anna_->GetArchive(path)) << path;
  }
}

TEST_F(ArchiveTest, DeleteIsRefusedWhileAnythingIsLeft) {
  const auto archive = Create(*common_, "Akte");
  const auto child = Create(*archive, "Unter");
  EXPECT_EQ(ErrorOf(archive->Delete()), store_error::NotEmpty);
  ASSERT_TRUE(child->Delete());

  ArchiveTree tree(*fileSystem_, layout_.ArchiveRoot());
  ASSERT_TRUE(tree.AddLink(archive->ID(), "Verweis", common_->ID()));
  EXPECT_EQ(ErrorOf(archive->Delete()), store_error::NotEmpty) << "a link record is left";
  const auto links = archive->SubArchives();
  ASSERT_TRUE(links && links->size() == 1);
  ASSERT_TRUE(links->front()->Delete());
  EXPECT_TRUE(anna_->GetArchive("Gemeinsam")) << "deleting a link leaves its target";

  auto entry = archive->CreateEntry(1);
  ASSERT_TRUE(entry);
  ASSERT_EQ((*archive->GetEntries(filter_bit::AddressItems | filter_preset::None))->Count(), 0);
  EXPECT_EQ(ErrorOf(archive->Delete()), store_error::NotEmpty)
      << "the filter hides the entry, yet it is there";
  ASSERT_TRUE((*entry)->Delete());

  ASSERT_TRUE(archive->Delete());
  EXPECT_EQ(ErrorOf(anna_->GetArchive("Gemeinsam/Akte")), store_error::NotFound);
  EXPECT_FALSE(fileSystem_->FolderExists(archive->ID()));
  EXPECT_EQ(ErrorOf(archive->Delete()), store_error::NotFound) << "it is gone";
}

TEST_F(ArchiveTest, AnArchiveThatMovedOutSurvivesTheDeletionOfItsOldParent) {
  const auto parent = Create(*common_, "Alt");
  const auto child = Create(*parent, "Wertvoll");
  ASSERT_TRUE(child->CreateEntry(2));
  ASSERT_TRUE(child->Move(*Archive("Ressourcen")));
  EXPECT_EQ(child->FullPath(), "/Archive/Ressourcen/Wertvoll");
  ASSERT_TRUE(parent->Delete());
  EXPECT_EQ(*Archive("Ressourcen/Wertvoll")->MessageCount(), 1);
  EXPECT_EQ(Archive("Ressourcen/Wertvoll")->ID(), child->ID()) << "the directory stays where it is";
}

TEST_F(ArchiveTest, AnArchiveNeverMovesIntoItself) {
  const auto archive = Create(*common_, "Ring");
  const auto child = Create(*archive, "Unter");
  EXPECT_EQ(ErrorOf(archive->Move(*archive)), store_error::Failed);
  EXPECT_EQ(ErrorOf(archive->Move(*child)), store_error::Failed);
  EXPECT_TRUE(anna_->GetArchive("Gemeinsam/Ring/Unter"));
}

TEST_F(ArchiveTest, ALinkShowsItsTargetUnderItsOwnPath) {
  const auto target = Create(*Archive("Ressourcen"), "Ziel");
  ASSERT_TRUE(target->CreateEntry(2));
  ArchiveTree tree(*fileSystem_, layout_.ArchiveRoot());
  ASSERT_TRUE(tree.AddLink(common_->ID(), "Verweis", target->ID()));
  const auto link = Archive("Gemeinsam/Verweis");
  EXPECT_TRUE(link->IsShortCut());
  EXPECT_EQ(link->ID(), target->ID());
  EXPECT_EQ(link->FullPath(), "/Archive/Gemeinsam/Verweis");
  EXPECT_EQ(*link->MessageCount(), 1);
  EXPECT_FALSE(Archive(target->ID())->IsShortCut());
}

TEST_F(ArchiveTest, LastModificationFollowsTheContent) {
  const auto archive = Create(*common_, "Neu");
  EXPECT_TRUE(archive->LastModification()->IsNull());
  ASSERT_TRUE(archive->CreateEntry(2));
  ASSERT_TRUE(anna_->Commit());
  EXPECT_FALSE(archive->LastModification()->IsNull());
}

TEST_F(ArchiveTest, ANewMailIsTheUsersUnlessItNamesASender) {
  const auto item = common_->CreateItem(2);
  ASSERT_TRUE(item);
  ASSERT_NE((*item)->AsMail(), nullptr);
  EXPECT_EQ((*item)->AsMail()->Sender()->Address, "anna@example.org");
  EXPECT_EQ(*common_->MessageCount(), 0) << "not stored before its Update";
}

}  // namespace
}  // namespace velmora::store::embedded
