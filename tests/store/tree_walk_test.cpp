#include "store/tree_walk.h"

#include <gtest/gtest.h>

#include <string>

namespace velmora::store {
namespace {

TEST(IsCircularReferenceTest, WhatIsNoLinkIsSafe) {
  EXPECT_FALSE(IsCircularReference(R"(\\S\DAVID\A)", R"(\\S\DAVID\A\B)", false));
}

TEST(IsCircularReferenceTest, LinkToItselfOrAboveIsCircular) {
  EXPECT_TRUE(IsCircularReference(R"(\\S\DAVID\A\B)", R"(\\S\DAVID\A\B)", true));
  EXPECT_TRUE(IsCircularReference(R"(\\S\DAVID\A)", R"(\\S\DAVID\A\B\C)", true));
}

TEST(IsCircularReferenceTest, LinkWhoseHolderLiesAboveIsCircularToo) {
  EXPECT_TRUE(IsCircularReference(R"(\\S\DAVID\A\X)", R"(\\S\DAVID\A\B)", true));
}

TEST(IsCircularReferenceTest, LinkIntoAnotherBranchIsSafe) {
  EXPECT_FALSE(IsCircularReference(R"(\\S\DAVID\USER\1\IN)", R"(\\S\DAVID\USER\2\IN)", true));
}

TEST(IsCircularReferenceTest, NamesAreComparedWhole) {
  EXPECT_FALSE(IsCircularReference(R"(\\S\DAVID\USER\1\IN)", R"(\\S\DAVID\USER\10\IN)", true));
}

TEST(IsCircularReferenceTest, NeitherCaseNorFormNorEndCounts) {
  EXPECT_TRUE(IsCircularReference(R"(\\s\david\a\)", R"(\\S\DAVID\A\B)", true));
  EXPECT_TRUE(IsCircularReference(R"(S\DAVID:A)", R"(\\S\DAVID\A\B)", true));
}

TEST(WalkPathTest, ArchiveOnThePathIsNeverEnteredAgain) {
  WalkPath path;
  EXPECT_TRUE(path.Enter(R"(\\S\DAVID\A)"));
  EXPECT_TRUE(path.Enter(R"(\\S\DAVID\A\B)"));
  EXPECT_TRUE(path.Contains(R"(S\DAVID:a\)"));
  EXPECT_FALSE(path.Enter(R"(\\s\david\a)"));
  path.Leave();
  EXPECT_TRUE(path.Enter(R"(\\S\DAVID\A\B)"));
}

TEST(WalkPathTest, EndsWhereNoTreeGoes) {
  WalkPath path;
  for (std::size_t depth = 0; depth < WalkPath::MaxDepth; ++depth)
    EXPECT_TRUE(path.Enter(std::to_string(depth)));
  EXPECT_FALSE(path.Enter("tief"));
}

}  // namespace
}  // namespace velmora::store
