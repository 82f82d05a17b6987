// What a walk costs, on a tree too large to lie on a disk for a test.
#include <gtest/gtest.h>

#include <fmt/format.h>

#include <memory>
#include <string>

#include "maintenance/circular_entries.h"
#include "maintenance/tree_traversal.h"
#include "platform/clock.h"
#include "platform/host_file_system.h"
#include "support/fake_store.h"
#include "support/scripted_front_end.h"
#include "support/temp_dir.h"

namespace velmora::maintenance {
namespace {

class TreeWalkCostTest : public testing::Test {
 protected:
  TreeWalkCostTest()
      : files_(platform::MakeHostFileSystem({{"Z:", "/"}})),
        store_(*files_),
        run_(*files_, platform::SystemClock(), frontEnd_.Set(), directory_.Path()) {}

  // A record that stands for an archive which has one already.
  static void AddAgain(test::FakeArchiveData& list, const std::shared_ptr<test::FakeArchiveData>& archive) {
    list.SubArchives.push_back(archive);
  }

  test::TempDir directory_;
  std::unique_ptr<platform::FileSystem> files_;
  test::FakeStore store_;
  test::ScriptedFrontEnd frontEnd_;
  run::Run run_;
};

TEST_F(TreeWalkCostTest, EveryArchiveOfALargeTreeIsVisitedOnce) {
  constexpr int Lists = 100, Each = 199;
  auto& root = store_.AddArchive(nullptr, "Archive", R"(\\S\DAVID\ARCHIVE)");
  for (int i = 0; i < Lists; ++i) {
    auto& list = store_.AddArchive(&root, fmt::format("L{}", i), fmt::format(R"(\\S\DAVID\ARCHIVE\L{})", i));
    for (int k = 0; k < Each; ++k)
      store_.AddArchive(&list, fmt::format("K{}", k), fmt::format(R"(\\S\DAVID\ARCHIVE\L{}\K{})", i, k));
  }
  int visits = 0;
  Traversal traversal;
  traversal.Visit = [&](const auto&, const auto&, Encounter encounter) {
    EXPECT_EQ(encounter, Encounter::New);
    ++visits;
    return true;
  };
  TraverseTree(run_, store_.Open("/Archive"), traversal);
  EXPECT_EQ(visits, Lists * (Each + 1));
}

// Each level lists the next one twice: whoever enters both walks 2^40 ways.
TEST_F(TreeWalkCostTest, ArchivesThatStandTwiceAreEnteredOnce) {
  constexpr int Depth = 40;
  auto* list = &store_.AddArchive(nullptr, "Archive", R"(\\S\DAVID\ARCHIVE)");
  std::string id = list->ID;
  for (int i = 0; i < Depth; ++i) {
    id += "\\X";
    auto* next = &store_.AddArchive(list, "X", id);
    AddAgain(*list, list->SubArchives.back());
    list = next;
  }
  int visits = 0;
  Traversal traversal;
  traversal.Visit = [&](const auto&, const auto&, Encounter) {
    ++visits;
    return true;
  };
  TraverseTree(run_, store_.Open("/Archive"), traversal);
  EXPECT_EQ(visits, 2 * Depth);
}

// Deeper than a stack of calls would carry, and every archive leads back to the first.
TEST_F(TreeWalkCostTest, ADeepTreeThatLeadsBackEverywhereComesToAnEnd) {
  constexpr int Depth = 20'000;
  auto& holder = store_.AddArchive(nullptr, "H", R"(\\S\DAVID\HALT)");
  auto* list = &store_.AddArchive(&holder, "Start", R"(\\S\DAVID\ARCHIVE\START)");
  const auto start = holder.SubArchives.back();
  for (int i = 0; i < Depth; ++i) {
    auto* next = &store_.AddArchive(&holder, "T", fmt::format(R"(\\S\DAVID\ARCHIVE\T{})", i));
    AddAgain(*list, holder.SubArchives.back());
    AddAgain(*next, start);
    list = next;
  }
  EXPECT_EQ(FindCircularEntries(run_, store_.Open("/H/Start")).size(), static_cast<std::size_t>(Depth));
}

}  // namespace
}  // namespace velmora::maintenance
