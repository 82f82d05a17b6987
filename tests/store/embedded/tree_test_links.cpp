// Links, and records that lead nowhere or back: nothing may hang on them.
#include <algorithm>
#include <filesystem>

#include "base/text.h"
#include "store/archive_record.h"
#include "store/embedded/record_properties.h"
#include "store/errors.h"
#include "tree_fixture.h"

namespace velmora::store::embedded {
namespace {

class TreeLinkTest : public TreeTest {
 protected:
  // A record as another program writes it: without a head of ours.
  void AppendForeign(std::string_view hostList, std::string_view directory, std::string_view name) {
    std::string content = HostExists(hostList) ? Temp.ReadHostFile(hostList) : "";
    content += DirRecord::Make(directory, name)->Bytes();
    Temp.WriteHostFile(hostList, content);
  }
};

TEST_F(TreeLinkTest, LinkLeadsToItsTarget) {
  const ArchiveRecord post = Make(Root, "Post", {.Kind = 101, .DisplayType = 6}),
                      other = Make(Root, "Auswahl");
  const ArchiveRecord inner = Make(post.Directory, "Innen");
  const auto link = Tree->AddLink(other.Directory, "Verweis", ToLower(post.Directory));
  ASSERT_TRUE(link);
  EXPECT_TRUE(link->IsLink);
  EXPECT_EQ(link->Directory, post.Directory) << "spelled as the archive's own record has it";
  const ArchiveRecord listed = Children(other.Directory).at(0);
  EXPECT_TRUE(listed.IsLink);
  EXPECT_EQ(listed.Name, "Verweis");
  EXPECT_EQ(listed.Properties.DisplayType, 6);
  EXPECT_EQ(listed.Properties.Kind, 0) << "a link to a special archive is no second one";
  EXPECT_TRUE(Tree->FindByNames(Root, {"Auswahl", "Verweis"})->IsLink);
  EXPECT_EQ(Tree->FindByNames(Root, {"Auswahl", "Verweis", "Innen"})->Directory, inner.Directory);
  EXPECT_EQ(Tree->NamesDownTo(inner.Directory), (Names{"Archive", "Post", "Innen"})) << "never over the link";
  EXPECT_FALSE(Tree->FindByDirectory(post.Directory)->IsLink);
  EXPECT_EQ(CheckTexts(), "");
}

TEST_F(TreeLinkTest, LinkNeedsAnArchive) {
  EXPECT_EQ(Tree->AddLink(Root, "x", R"(\\SERVER\DAVID\ARCHIVE\FEHLT)").error().Number,
            store_error::NotFound);
  EXPECT_TRUE(Children(Root).empty());
}

TEST_F(TreeLinkTest, RemovingRenamingAndMovingALinkLeaveItsTargetAlone) {
  const ArchiveRecord post = Make(Root, "Post"), other = Make(Root, "Auswahl");
  const std::string self = Temp.ReadHostFile("ARCHIVE/POST/archive.add");
  const ArchiveRecord link = *Tree->AddLink(Root, "Verweis", post.Directory);
  ASSERT_TRUE(Tree->Rename(link, "Umbenannt"));
  const auto moved = Tree->MoveRecord(Children(Root)[2], other.Directory);
  ASSERT_TRUE(moved);
  EXPECT_TRUE(Children(other.Directory)[0].IsLink);
  EXPECT_EQ(Children(other.Directory)[0].Name, "Umbenannt");
  ASSERT_TRUE(Tree->RemoveRecord(*moved));
  EXPECT_EQ(Tree->FindByDirectory(post.Directory)->Name, "Post");
  EXPECT_EQ(Temp.ReadHostFile("ARCHIVE/POST/archive.add"), self);
}

TEST_F(TreeLinkTest, LinkBesideItsTargetStaysALink) {
  const ArchiveRecord post = Make(Root, "Post");
  ASSERT_TRUE(Tree->AddLink(Root, "Nochmal", post.Directory));
  EXPECT_FALSE(Children(Root)[0].IsLink);
  EXPECT_TRUE(Children(Root)[1].IsLink);
  EXPECT_EQ(CheckTexts(), "");
}

TEST_F(TreeLinkTest, LinksToItselfAndUpwardsEnd) {
  const ArchiveRecord outer = Make(Root, "Außen"), inner = Make(outer.Directory, "Innen");
  ASSERT_TRUE(Tree->AddLink(inner.Directory, "Selbst", inner.Directory));
  ASSERT_TRUE(Tree->AddLink(inner.Directory, "Oben", outer.Directory));
  ASSERT_TRUE(Tree->AddLink(inner.Directory, "Ganz oben", Root));
  for (const ArchiveRecord& child : Children(inner.Directory)) EXPECT_TRUE(child.IsLink) << child.Name;
  EXPECT_EQ(Tree->FindByNames(Root, {"Außen", "Innen", "Oben", "Innen", "Selbst", "Selbst"})->Directory,
            inner.Directory);
  EXPECT_EQ(Tree->FindByNames(Root, {"Außen", "Innen", "Ganz oben", "Außen"})->Directory, outer.Directory);
  EXPECT_EQ(Tree->NamesDownTo(inner.Directory), (Names{"Archive", "Außen", "Innen"}));
  EXPECT_EQ(CheckTexts(), "") << "links are never circular";
}

TEST_F(TreeLinkTest, LinkToNothingIsListedAndEmpty) {
  const ArchiveRecord post = Make(Root, "Post");
  ASSERT_TRUE(Tree->AddLink(Root, "Verweis", post.Directory));
  std::filesystem::remove_all(Temp.HostPath("ARCHIVE/POST"));
  ASSERT_TRUE(Tree->RemoveRecord(Children(Root)[0]));
  const ArchiveRecord link = Children(Root).at(0);
  EXPECT_TRUE(link.IsLink);
  EXPECT_TRUE(Children(link.Directory).empty());
  EXPECT_EQ(Tree->FindByDirectory(link.Directory).error().Number, store_error::NotFound);
  EXPECT_EQ(Tree->FindByNames(Root, {"Verweis", "x"}).error().Number, store_error::NotFound);
  ASSERT_TRUE(Tree->RemoveRecord(link));
  EXPECT_TRUE(Children(Root).empty());
}

TEST_F(TreeLinkTest, ForeignRecordOfAnArchiveThatStandsElsewhereIsALink) {
  const ArchiveRecord post = Make(Root, "Post"), other = Make(Root, "Auswahl");
  AppendForeign("ARCHIVE/AUSWAHL/archive.dir", post.Directory, "Verweis");
  EXPECT_TRUE(Children(other.Directory).at(0).IsLink);
  EXPECT_FALSE(Tree->FindByDirectory(post.Directory)->IsLink);
  EXPECT_EQ(CheckTexts(), "");
}

TEST_F(TreeLinkTest, ForeignRecordsThatLeadBackUpAreCircularAndEnd) {
  const ArchiveRecord outer = Make(Root, "Aussen"), inner = Make(outer.Directory, "Innen");
  AppendForeign("ARCHIVE/AUSSEN/INNEN/archive.dir", inner.Directory, "Selbst");
  AppendForeign("ARCHIVE/AUSSEN/INNEN/archive.dir", outer.Directory, "Oben");
  AppendForeign("ARCHIVE/AUSSEN/INNEN/archive.dir", Root, "Root");
  for (const ArchiveRecord& child : Children(inner.Directory)) EXPECT_FALSE(child.IsLink) << child.Name;
  EXPECT_EQ(Tree->NamesDownTo(inner.Directory), (Names{"Archive", "Aussen", "Innen"}));
  const std::string texts = CheckTexts();
  for (const auto* name : {"\"Selbst\" führt zurück", "\"Oben\" führt zurück", "\"Root\" führt zurück"})
    EXPECT_NE(texts.find(name), std::string::npos) << texts;
  EXPECT_EQ(std::ranges::count(texts, '\n'), 3) << texts;
}

TEST_F(TreeLinkTest, StrayRecordsInACircleLeadNowhere) {
  for (const auto* name : {"A", "B"})
    std::filesystem::create_directories(Temp.HostPath("LOSE/" + std::string(name)));
  AppendForeign("LOSE/A/archive.dir", R"(\\SERVER\DAVID\LOSE\B)", "b");
  AppendForeign("LOSE/B/archive.dir", R"(\\SERVER\DAVID\LOSE\A)", "a");
  EXPECT_EQ(Children(R"(\\SERVER\DAVID\LOSE\A)").size(), 1u);
  EXPECT_EQ(Children(R"(\\SERVER\DAVID\LOSE\B)").size(), 1u);
  EXPECT_EQ(Tree->FindByDirectory(R"(\\SERVER\DAVID\LOSE\A)").error().Number, store_error::NotFound);
}

TEST_F(TreeLinkTest, RecordsThatClimbOutAreNotFollowed) {
  AppendForeign("ARCHIVE/archive.dir", R"(\\SERVER\DAVID\ARCHIVE\..\..\etc)", "Flucht");
  AppendForeign("ARCHIVE/archive.dir", R"(\\SERVER\DAVID\ARCHIVE\GUT)", "Gut");
  EXPECT_EQ(ChildNames(Root), Names{"Gut"});
  EXPECT_EQ(Children(Root)[0].RecordNumber, 2);
}

TEST_F(TreeLinkTest, OtherSpellingsOfAPathAreOneDirectory) {
  std::filesystem::create_directory(Temp.HostPath("ARCHIVE/ALT"));
  AppendForeign("ARCHIVE/archive.dir", R"(SERVER\DAVID:ARCHIVE\ALT)", "Alt");
  const auto found = Tree->FindByDirectory(R"(\\server\david\archive\alt)");
  ASSERT_TRUE(found);
  EXPECT_EQ(found->Directory, R"(SERVER\DAVID:ARCHIVE\ALT)") << "as it stands";
  const ArchiveRecord inner = Make(found->Directory, "Neu");
  EXPECT_EQ(Tree->NamesDownTo(inner.Directory), (Names{"Archive", "Alt", "Neu"}));
  EXPECT_EQ(CheckTexts(), "");
}

TEST_F(TreeLinkTest, RecordWithAnEmptyNameShowsItsDirectory) {
  std::filesystem::create_directory(Temp.HostPath("ARCHIVE/OHNE"));
  AppendForeign("ARCHIVE/archive.dir", R"(\\SERVER\DAVID\ARCHIVE\OHNE)", "");
  EXPECT_EQ(Children(Root).at(0).Name, "") << "as it stands";
  EXPECT_EQ(Tree->FindByNames(Root, {"Ohne"})->RecordNumber, 1);
  EXPECT_EQ(Tree->NamesDownTo(R"(\\SERVER\DAVID\ARCHIVE\OHNE)"), (Names{"Archive", "OHNE"}));
}

TEST_F(TreeLinkTest, RecordWithoutAPathDoesNotHideLaterOnes) {
  Temp.WriteHostFile("ARCHIVE/archive.dir",
                     std::string(DirRecord::Size, '\0') +
                         std::string(DirRecord::Make(std::string(Root) + "\\B", "B")->Bytes()));
  EXPECT_EQ(ChildNames(Root), Names{"B"});
  EXPECT_EQ(Children(Root)[0].RecordNumber, 2);
}

}  // namespace
}  // namespace velmora::store::embedded
