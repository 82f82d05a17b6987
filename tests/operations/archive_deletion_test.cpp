#include "operations/archive_deletion.h"

#include <gtest/gtest.h>

#include "operations_fixture.h"
#include "store/errors.h"

namespace velmora::operations {
namespace {

class ArchiveDeletionTest : public OperationsFixture {
 protected:
  ArchiveDeletionTest() {
    for (const auto* subject : {"eins", "zwei"}) Deliver(*source_, subject);
    post_ = Create(*source_, "Post");
    Deliver(*post_, "drei");
    options_.EnDelArchives = true;
  }
  void Run(std::vector<Object> objects) { RunStoreDelete(Context(), options_, {root_, std::move(objects)}); }
  void RunOnSource() { Run({Mark(*source_)}); }
  std::filesystem::path HostOf(const store::DvArchive& archive) {
    return *fileSystem_->HostPath(archive.ID());
  }

  StoreDeleteOptions options_;
  ArchivePointer post_;
};

TEST_F(ArchiveDeletionTest, TreeGoesWithAllThatIsInIt) {
  const auto directory = HostOf(*source_);
  RunOnSource();
  EXPECT_FALSE(Exists("/Archive/Quelle"));
  EXPECT_FALSE(std::filesystem::exists(directory));
  EXPECT_EQ(run_.counters.Messages, 3);
  EXPECT_EQ(run_.counters.Archives, 2);
  EXPECT_EQ(frontEnd_.ProgressTitles, List{"Archive/Messages löschen"});
  EXPECT_TRUE(frontEnd_.Boxes.empty()) << "a deletion without errors has no summary";
  EXPECT_EQ(Damage(), List{});
}

TEST_F(ArchiveDeletionTest, WithoutStructureOnlyTheEntriesGo) {
  options_.EnDelArchives = false;
  const auto other = Create(*root_, "Anderes");
  AddLink(*source_, "Verweis", *other);
  RunOnSource();
  EXPECT_EQ(Subjects("/Archive/Quelle"), List{});
  EXPECT_EQ(Subjects("/Archive/Quelle/Post"), List{});
  EXPECT_EQ(Names("/Archive/Quelle"), (List{"Post", ">Verweis"}));
}

TEST_F(ArchiveDeletionTest, MarkedMessagesGo) {
  const auto key = Deliver(*source_, "weg");
  RunStoreDelete(Context(), options_, {source_, {Mark(key)}});
  EXPECT_EQ(Subjects("/Archive/Quelle"), (List{"eins", "zwei"}));
}

TEST_F(ArchiveDeletionTest, WhatTheFilterHidesStaysAndKeepsItsArchive) {
  scope_.ItemFilter = store::filter_preset::OnlyFax;
  RunOnSource();
  EXPECT_EQ(Subjects("/Archive/Quelle"), (List{"eins", "zwei"}));
  EXPECT_EQ(Subjects("/Archive/Quelle/Post"), List{"drei"});
  EXPECT_EQ(run_.counters.Errors, 2) << "the store refuses both archives";
  ASSERT_EQ(frontEnd_.Boxes.size(), 1U);
  EXPECT_EQ(frontEnd_.Boxes[0].Text, "mit 2 Fehler(n) (siehe Fehlerprotokoll) gelöscht");
}

TEST_F(ArchiveDeletionTest, EntriesGoFromTheLastToTheFirst) {
  RunOnSource();
  EXPECT_EQ(frontEnd_.ItemTexts, (List{"zwei", "eins", "drei"}));
}

// --- Links. ---

TEST_F(ArchiveDeletionTest, LinkLosesItsRecordAndItsTargetNothing) {
  const auto other = Create(*root_, "Anderes");
  Deliver(*other, "bleibt");
  AddLink(*source_, "Verweis", *other);
  const auto link = (*source_->SubArchives())[1];
  RunStoreDelete(Context(), options_, {source_, {Mark(*link, "Verweis")}});
  EXPECT_EQ(Names("/Archive/Quelle"), List{"Post"});
  EXPECT_EQ(Subjects("/Archive/Anderes"), List{"bleibt"});
  EXPECT_EQ(Damage(), List{});
}

TEST_F(ArchiveDeletionTest, TreeWithALinkGoesAndTheTargetStays) {
  const auto other = Create(*root_, "Anderes");
  Deliver(*other, "bleibt");
  AddLink(*post_, "Verweis", *other);
  RunOnSource();
  EXPECT_FALSE(Exists("/Archive/Quelle"));
  EXPECT_EQ(Subjects("/Archive/Anderes"), List{"bleibt"});
  EXPECT_EQ(run_.counters.Links, 1);
}

TEST_F(ArchiveDeletionTest, FollowedLinkLosesWhatItLeadsTo) {
  const auto other = Create(*Create(*root_, "Fach"), "Anderes");
  Deliver(*other, "weg");
  AddLink(*post_, "Verweis", *other);
  options_.EnLinkedArcs = true;
  RunOnSource();
  EXPECT_FALSE(Exists("/Archive/Quelle"));
  EXPECT_EQ(Subjects("/Archive/Fach/Anderes"), List{});
}

TEST_F(ArchiveDeletionTest, CircularLinkIsToldAndOkGoesOn) {
  options_.EnLinkedArcs = true;
  AddLink(*post_, "Zurück", *source_);
  RunOnSource();
  ASSERT_GE(frontEnd_.Boxes.size(), 1U);
  EXPECT_EQ(frontEnd_.Boxes[0].Title, "Zirkulare Referenz");
  EXPECT_EQ(frontEnd_.Boxes[0].Text,
            "Das Subarchive \"/Archive/Quelle/Post\" enthält die zirkulare Referenz \"Zurück\"\r\n"
            "Bitte entfernen sie diese mit der Funktion \"Zirkulare Archiveinträge entfernen\"\r\n"
            "im Kontextmenü oder unter \"Extras\" und wiederholen sie die Operation.");
  EXPECT_EQ(Subjects("/Archive/Quelle"), List{}) << "OK goes on with what is next";
  EXPECT_TRUE(Exists("/Archive/Quelle/Post")) << "it still holds the link";
}

TEST_F(ArchiveDeletionTest, CircularLinkAndCancelEndsTheRun) {
  options_.EnLinkedArcs = true;
  const auto first = Create(*source_, "Erstes");
  Deliver(*first, "bleibt");
  AddLink(*post_, "Zurück", *source_);
  const auto last = Create(*source_, "Letztes");
  AddLink(*last, "Zurück", *source_);
  frontEnd_.Answers = {run::Answer::Cancel};
  RunOnSource();
  EXPECT_EQ(Subjects("/Archive/Quelle/Erstes"), List{"bleibt"});
  EXPECT_NE(Log().find("Abbruch durch Benutzer"), std::string::npos);
}

// --- Physically. ---

TEST_F(ArchiveDeletionTest, PhysicalDeletionTakesTheRecordToo) {
  options_.EnPhysErase = true;
  WriteFile(*post_, "fremd.txt", "x");
  const auto directory = HostOf(*source_);
  RunOnSource();
  EXPECT_FALSE(std::filesystem::exists(directory));
  EXPECT_FALSE(Exists("/Archive/Quelle"));
  EXPECT_EQ(Names("/Archive").back(), "Ziel");
  EXPECT_EQ(run_.counters.Errors, 0) << Log();
  EXPECT_EQ(Damage(), List{});
}

TEST_F(ArchiveDeletionTest, FilterTurnsPhysicalDeletionOff) {
  options_.EnPhysErase = true;
  scope_.ItemFilter = store::filter_preset::OnlyFax;
  RunOnSource();
  EXPECT_EQ(Subjects("/Archive/Quelle"), (List{"eins", "zwei"}));
}

TEST_F(ArchiveDeletionTest, PhysicalDeletionSparesAnArchiveThatBelongsElsewhere) {
  ASSERT_TRUE(post_->Move(*target_));  // its directory stays within that of its old parent
  options_.EnPhysErase = true;
  RunOnSource();
  EXPECT_EQ(Subjects("/Archive/Ziel/Post"), List{"drei"});
  EXPECT_EQ(Subjects("/Archive/Quelle"), (List{"eins", "zwei"})) << "nothing was touched";
  EXPECT_NE(Log().find("an anderer Stelle des Baums"), std::string::npos) << Log();
}

TEST_F(ArchiveDeletionTest, PhysicalDeletionFollowsTheTree) {
  const auto elsewhere = Create(*target_, "Daneben");
  Deliver(*elsewhere, "weg");
  const auto directory = HostOf(*elsewhere);
  ASSERT_TRUE(elsewhere->Move(*source_));
  options_.EnPhysErase = true;
  RunOnSource();
  EXPECT_FALSE(std::filesystem::exists(directory));
  EXPECT_EQ(Damage(), List{});
}

TEST_F(ArchiveDeletionTest, ArchivesOfTheStoreItselfStay) {
  const auto inbox = *session_.Account->GetSpecialArchive(store::special::Inbox);
  const auto own = *session_.Account->GetSpecialArchive(store::special::OwnRoot);
  Deliver(*inbox, "weg");
  for (const bool physically : {false, true}) {
    options_.EnPhysErase = physically;
    Run({Mark(*own)});
    EXPECT_TRUE(session_.Account->GetSpecialArchive(store::special::Inbox).has_value());
    EXPECT_TRUE(std::filesystem::exists(HostOf(*inbox)));
    EXPECT_GT(run_.counters.Errors, 0);
  }
  EXPECT_EQ(Damage(), List{});
}

// --- Rights, cancel, failures. ---

TEST_F(ArchiveDeletionTest, ArchivesNeedTheRight) {
  session_.Trustees &= ~store::trustee::DeleteArchives;
  RunOnSource();
  EXPECT_EQ(Subjects("/Archive/Quelle"), (List{"eins", "zwei"}));
  EXPECT_EQ(run_.counters.Errors, 1);
}

TEST_F(ArchiveDeletionTest, CancelLeavesTheRestWhole) {
  for (int i = 0; i < 20; ++i) Deliver(*source_, std::to_string(i));
  frontEnd_.CancelAtPump = 8;
  RunOnSource();
  const auto left = Subjects("/Archive/Quelle").size();
  EXPECT_GT(left, 0U);
  EXPECT_LT(left, 22U);
  EXPECT_EQ(Subjects("/Archive/Quelle/Post"), List{"drei"});
  EXPECT_EQ(Damage(), List{});
}

TEST_F(ArchiveDeletionTest, ArchiveThatHasVanishedIsLogged) {
  const auto mark = Mark(*source_);
  RunOnSource();
  Run({mark});
  EXPECT_EQ(run_.counters.Errors, 1);
}

}  // namespace
}  // namespace velmora::operations
