// The tree of archives, loaded node by node.
#include "panes/archive_nodes.h"

#include <gtest/gtest.h>

#include "pane_fixture.h"

namespace velmora::panes {
namespace {

class ArchiveNodesTest : public PanesTest {
 protected:
  static std::vector<std::string> Names(const ArchiveNode& node) {
    std::vector<std::string> names;
    for (const auto& child : node.Children) names.push_back(child->DisplayName);
    return names;
  }
};

TEST_F(ArchiveNodesTest, ChildrenAreLoadedWhenTheirNodeIsExpandedAndSorted) {
  fake.AddArchive(&root, "bauer", R"(\\SERVER\DAVID\ARCHIVE\B)");
  fake.AddArchive(&inbox, "2024", R"(\\SERVER\DAVID\ARCHIVE\IN\A)");
  ArchiveNodes nodes(session);
  EXPECT_EQ(nodes.Root().DisplayName, "ZEB");
  EXPECT_TRUE(nodes.Root().Children.empty());
  ASSERT_TRUE(nodes.Expand(nodes.Root()));
  EXPECT_EQ(Names(nodes.Root()), (std::vector<std::string>{"Ausgang", "bauer", "Eingang"}));
  EXPECT_FALSE(nodes.Root().Children[2]->IsLoaded);
  EXPECT_TRUE(nodes.Root().Children[2]->MayHaveChildren);
  EXPECT_FALSE(nodes.Root().Children[0]->MayHaveChildren);
  ASSERT_TRUE(nodes.Expand(nodes.Root()));
  EXPECT_EQ(nodes.Root().Children.size(), 3u) << "once";
}

TEST_F(ArchiveNodesTest, Icons) {
  ArchiveNodes nodes(session);
  ASSERT_TRUE(nodes.Expand(nodes.Root()));
  EXPECT_EQ(nodes.Root().IconKey(true), "AArchive");
  EXPECT_EQ(nodes.Root().Children[0]->IconKey(true), "FolderOpen");
  EXPECT_EQ(nodes.Root().Children[0]->IconKey(false), "FolderClosed");
}

TEST_F(ArchiveNodesTest, ALinkThatLeadsBackEndsTheWay) {
  fake.AddLink(inbox, root);
  ArchiveNodes nodes(session);
  ASSERT_TRUE(nodes.Expand(nodes.Root()));
  auto& in = *nodes.Root().Children[1];
  ASSERT_TRUE(nodes.Expand(in));
  ASSERT_EQ(in.Children.size(), 1u);
  EXPECT_TRUE(in.Children[0]->IsShortCut);
  EXPECT_FALSE(in.Children[0]->MayHaveChildren);
  ASSERT_TRUE(nodes.Expand(*in.Children[0]));
  EXPECT_TRUE(in.Children[0]->Children.empty());
}

TEST_F(ArchiveNodesTest, AFailureLeavesTheNodeToBeTriedAgain) {
  ArchiveNodes nodes(session);
  root.SubArchivesFail = true;
  EXPECT_FALSE(nodes.Expand(nodes.Root()));
  EXPECT_FALSE(nodes.Root().IsLoaded);
  root.SubArchivesFail = false;
  EXPECT_TRUE(nodes.Expand(nodes.Root()));
  EXPECT_EQ(nodes.Root().Children.size(), 2u);
}

TEST_F(ArchiveNodesTest, AnArchiveIsFoundAndTheWayToItExpanded) {
  fake.AddArchive(&root, "Eingang", R"(\\SERVER\DAVID\ARCHIVE\IN2)");
  auto& second = *root.SubArchives.back();
  auto& sub = fake.AddArchive(&second, "Tief", R"(\\SERVER\DAVID\ARCHIVE\IN2\T)");
  ArchiveNodes nodes(session);
  auto* const found = nodes.Find(*fake.Open(sub.ID));
  ASSERT_NE(found, nullptr);
  EXPECT_EQ(found->ID, sub.ID);
  EXPECT_EQ(found->Parent->ID, second.ID) << "of two with one name the right one";
  EXPECT_EQ(nodes.Find(*fake.Open(root.ID)), &nodes.Root());
  auto& elsewhere = fake.AddArchive(nullptr, "Anderswo", R"(\\SERVER\DAVID\X)");
  EXPECT_EQ(nodes.Find(*fake.Open(elsewhere.ID)), nullptr);
}

}  // namespace
}  // namespace velmora::panes
