#include "operations/archive_copy.h"

#include <gtest/gtest.h>

#include "operations_fixture.h"
#include "store/errors.h"

namespace velmora::operations {
namespace {

class ArchiveCopyTest : public OperationsFixture {
 protected:
  // Quelle: three mails, Quelle/Post: one, Quelle/Post/Alt: one.
  void FillSource() {
    for (const auto* subject : {"eins", "zwei", "drei"}) Deliver(*source_, subject);
    post_ = Create(*source_, "Post");
    Deliver(*post_, "vier");
    old_ = Create(*post_, "Alt");
    Deliver(*old_, "fünf");
  }
  void Run(std::vector<Object> objects) {
    RunStoreCopy(Context(), options_, {root_, std::move(objects)}, target_);
  }
  void RunOnSource() { Run({Mark(*source_)}); }

  StoreCopyOptions options_;
  ArchivePointer post_, old_;
};

TEST_F(ArchiveCopyTest, TreeArrivesWithItsEntries) {
  FillSource();
  RunOnSource();
  EXPECT_EQ(Subjects("/Archive/Ziel/Quelle"), (List{"eins", "zwei", "drei"}));
  EXPECT_EQ(Subjects("/Archive/Ziel/Quelle/Post/Alt"), List{"fünf"});
  EXPECT_EQ(Subjects("/Archive/Quelle/Post/Alt"), List{"fünf"});
  EXPECT_EQ(run_.counters.Archives, 3);
  EXPECT_EQ(run_.counters.Messages, 5);
  EXPECT_EQ(run_.counters.Errors, 0);
  EXPECT_EQ(frontEnd_.ProgressTitles, List{"Archive/Messages kopieren"});
  ASSERT_EQ(frontEnd_.Boxes.size(), 1U);
  EXPECT_EQ(frontEnd_.Boxes[0].Text.substr(0, 43), "3 Archiv(e)\r\n5 Message(s)\r\nmit 0 Fehler(n)\r");
  EXPECT_EQ(Damage(), List{});
}

TEST_F(ArchiveCopyTest, MoveLeavesTheStructureUnlessAskedFor) {
  FillSource();
  options_.Mode = CopyMode::Move;
  RunOnSource();
  EXPECT_EQ(frontEnd_.ProgressTitles, List{"Archive/Messages verschieben"});
  EXPECT_EQ(Subjects("/Archive/Quelle/Post"), List{});
  EXPECT_EQ(Names("/Archive/Quelle/Post"), List{"Alt"});
  EXPECT_EQ(Subjects("/Archive/Ziel/Quelle/Post"), List{"vier"});
  EXPECT_EQ(Damage(), List{});
}

TEST_F(ArchiveCopyTest, MoveWithStructureDeletionLeavesNothing) {
  FillSource();
  options_.Mode = CopyMode::Move;
  options_.EnDelArchives = true;
  RunOnSource();
  EXPECT_FALSE(Exists("/Archive/Quelle"));
  EXPECT_EQ(Subjects("/Archive/Ziel/Quelle/Post/Alt"), List{"fünf"});
  EXPECT_EQ(Damage(), List{});
}

TEST_F(ArchiveCopyTest, MarkedMessagesGoIntoTheTargetItself) {
  const auto key = Deliver(*source_, "eins");
  Deliver(*source_, "zwei");
  options_.Mode = CopyMode::Move;
  RunStoreCopy(Context(), options_, {source_, {Mark(key)}}, target_);
  EXPECT_EQ(Subjects(*target_), List{"eins"});
  EXPECT_EQ(Subjects(*source_), List{"zwei"});
}

TEST_F(ArchiveCopyTest, EntriesGetTheCopyMark) {
  Deliver(*source_, "eins");
  RunOnSource();
  const auto copy = Open("/Archive/Ziel/Quelle");
  const auto item = (*copy->GetEntries(store::filter_preset::None))->Item(0);
  EXPECT_EQ(store::FieldNumber(*(*item)->Fields().Get(store::tag::CopyMarker)), 1);
  const auto original = (*source_->GetEntries(store::filter_preset::None))->Item(0);
  EXPECT_EQ(store::FieldNumber(*(*original)->Fields().Get(store::tag::CopyMarker)), 0);
}

TEST_F(ArchiveCopyTest, WhatTheFilterHidesIsNotTouched) {
  Deliver(*source_, "eins");
  scope_.ItemFilter = store::filter_preset::OnlyFax;
  options_.Mode = CopyMode::Move;
  options_.EnDelArchives = true;
  RunOnSource();
  EXPECT_EQ(Subjects("/Archive/Quelle"), List{"eins"}) << "the store refuses to delete what holds an entry";
  EXPECT_EQ(Subjects("/Archive/Ziel/Quelle"), List{});
  EXPECT_NE(Log().find("DvISE-Error L"), std::string::npos) << Log();
}

// --- Onto and into itself. ---

TEST_F(ArchiveCopyTest, OntoOrBelowItselfShowsRecursiveCopyWhateverTheOptions) {
  FillSource();
  for (const ArchivePointer& target : {source_, post_, old_}) {
    for (const bool on : {false, true}) {
      options_ = {on ? CopyMode::Move : CopyMode::Copy, on, on, on, on, on, on, on};
      frontEnd_.Boxes.clear();
      RunStoreCopy(Context(), options_, {root_, {Mark(*source_)}}, target);
      ASSERT_EQ(frontEnd_.Boxes.size(), 2U);
      EXPECT_EQ(frontEnd_.Boxes[0].Title, "Rekursive Kopie");
      EXPECT_EQ(frontEnd_.Boxes[0].Text, source_->ID() +
                                             "\r\n\r\nkann nicht auf oder in sich selbst nach \r\n\r\n" +
                                             target->ID() + "\r\n\r\nkopiert oder verschoben werden");
      EXPECT_EQ(run_.counters.Archives, 0);
    }
  }
  EXPECT_EQ(Names("/Archive/Quelle"), List{"Post"});
  EXPECT_EQ(Subjects("/Archive/Quelle"), (List{"eins", "zwei", "drei"}));
}

TEST_F(ArchiveCopyTest, IDsAreComparedUpToABackslash) {
  EXPECT_TRUE(IsRecursiveCopy("\\\\S\\DAVID\\A", "\\\\s\\david\\a"));
  EXPECT_TRUE(IsRecursiveCopy("\\\\S\\DAVID\\A", "S\\DAVID:a\\b"));
  EXPECT_FALSE(IsRecursiveCopy("\\\\S\\DAVID\\A", "\\\\S\\DAVID\\AB"));
}

// The directory lies elsewhere, so that the IDs do not show it.
TEST_F(ArchiveCopyTest, TargetThatTheTreeShowsBelowTheSourceIsNoSource) {
  FillSource();
  ASSERT_TRUE(target_->Move(*post_));
  RunOnSource();
  EXPECT_EQ(Names("/Archive/Quelle/Post/Ziel"), List{"Quelle"});
  EXPECT_EQ(Names("/Archive/Quelle/Post/Ziel/Quelle/Post"), List{"Alt"});
  EXPECT_NE(Log().find("Ziel dieses Laufs"), std::string::npos) << Log();
  EXPECT_EQ(Damage(), List{});
}

// --- Merging. ---

TEST_F(ArchiveCopyTest, MergesIntoTheSameNameWithCase) {
  FillSource();
  options_.EnDblArcNames = true;
  Create(*target_, "quelle");
  const auto merged = Create(*target_, "Quelle");
  Create(*merged, "post");
  Deliver(*merged, "null");
  WriteFile(*source_, "archive.ini", "LayoutFile=x.htm\r\n");
  options_.EnCpyProp = true;
  RunOnSource();
  EXPECT_EQ(Names("/Archive/Ziel"), (List{"quelle", "Quelle"}));
  EXPECT_EQ(Subjects(*merged), (List{"null", "eins", "zwei", "drei"}));
  EXPECT_EQ(ReadFile(*merged, "archive.ini"), "(none)") << "merging brings only content";
  EXPECT_EQ((*merged->SubArchives()).size(), 2U) << "\"post\" is another archive than \"Post\"";
  EXPECT_EQ(Damage(), List{});
}

TEST_F(ArchiveCopyTest, WithoutMergingASecondArchiveOfTheNameComes) {
  FillSource();
  RunOnSource();
  RunOnSource();
  EXPECT_EQ(Names("/Archive/Ziel"), (List{"Quelle", "Quelle"}));
}

TEST_F(ArchiveCopyTest, TwoSourcesOfOneNameMergeIntoOne) {
  Deliver(*Create(*source_, "Post"), "eins");
  Deliver(*Create(*source_, "Post"), "zwei");
  options_.EnDblArcNames = true;
  RunOnSource();
  EXPECT_EQ(Names("/Archive/Ziel/Quelle"), List{"Post"});
  EXPECT_EQ(Subjects("/Archive/Ziel/Quelle/Post"), (List{"eins", "zwei"}));
}

TEST_F(ArchiveCopyTest, MergingAnArchiveIntoItselfChangesNothing) {
  FillSource();
  options_ = {CopyMode::Move, true, false, true, false, false, false, false};
  RunStoreCopy(Context(), options_, {root_, {Mark(*source_)}}, root_);
  EXPECT_EQ(Subjects("/Archive/Quelle"), (List{"eins", "zwei", "drei"}));
  EXPECT_EQ(Subjects("/Archive/Quelle/Post/Alt"), List{"fünf"});
  EXPECT_EQ(Names("/Archive").back(), "Ziel");
  EXPECT_NE(Log().find("dasselbe Archiv"), std::string::npos) << Log();
}

TEST_F(ArchiveCopyTest, NoNameIsABlank) {
  // A store may list an archive without a display name; it goes under one blank.
  SameNames names(*target_);
  names.Add("", source_);
  EXPECT_EQ(names.FindSameNameArchive(" "), source_);
  EXPECT_EQ(names.FindSameNameArchive(""), nullptr);
}

// --- Directory names. ---

TEST_F(ArchiveCopyTest, DirectoryNameIsKept) {
  const auto special = Create(*source_, "Rechnungen{RE2026}");
  options_.EnSaveOrgArcs = true;
  RunStoreCopy(Context(), options_, {source_, {Mark(*special)}}, target_);
  EXPECT_EQ(FileNameOf(Open("/Archive/Ziel/Rechnungen")->ID()), "RE2026");
  EXPECT_EQ(frontEnd_.Boxes.size(), 1U);
}

TEST_F(ArchiveCopyTest, TakenDirectoryNameWarnsOncePerArchive) {
  Create(*target_, "Da{RE2026}");
  const auto special = Create(*source_, "Rechnungen{RE2026}");
  options_.EnSaveOrgArcs = true;
  RunStoreCopy(Context(), options_, {source_, {Mark(*special)}}, target_);
  ASSERT_EQ(frontEnd_.Boxes.size(), 2U);
  EXPECT_EQ(frontEnd_.Boxes[0],
            (velmora::test::ScriptedFrontEnd::Box{
                "Doppelter Verzeichnisname",
                "Es existiert bereits ein Archiv mit gleichem Verzeichnisnamen.\r\n"
                "Die Beibehaltung des Verzeichnissnamens wird für dieses Archiv abgeschaltet.",
                false}));
  EXPECT_NE(FileNameOf(Open("/Archive/Ziel/Rechnungen")->ID()), "RE2026");
}

TEST_F(ArchiveCopyTest, BracesInANameStayInIt) {
  const auto braces = Create(*source_, "x");
  ASSERT_TRUE(braces->SetDisplayName("Satz {1}"));
  ASSERT_TRUE(braces->Update());
  RunStoreCopy(Context(), options_, {source_, {Mark(*braces)}}, target_);
  EXPECT_EQ(Names("/Archive/Ziel"), List{"Satz {1}"});
}

// --- Only the structure. ---

TEST_F(ArchiveCopyTest, OnlyTheTreeWithItsPropertiesAndNoMessage) {
  FillSource();
  ASSERT_TRUE(post_->SetHidden(true));
  ASSERT_TRUE(post_->SetDisplayType(5));
  ASSERT_TRUE(post_->Update());
  WriteFile(*post_, "archive.ini", "ini");
  WriteFile(*post_, "access.ini", "access");
  WriteFile(*post_, "archive.srt", "srt");
  WriteFile(*post_, "public.wav", "wav");
  WriteFile(*post_, "other.txt", "no");
  options_.EnCopyOnlyArcs = options_.EnCpyProp = true;
  RunOnSource();
  const auto copy = Open("/Archive/Ziel/Quelle/Post");
  EXPECT_EQ(Subjects(*copy), List{});
  EXPECT_TRUE(*copy->Hidden());
  EXPECT_EQ(*copy->DisplayType(), 5);
  EXPECT_EQ(ReadFile(*copy, "archive.ini") + ReadFile(*copy, "access.ini") + ReadFile(*copy, "archive.srt") +
                ReadFile(*copy, "public.wav"),
            "iniaccesssrtwav");
  EXPECT_EQ(ReadFile(*copy, "other.txt"), "(none)");
  EXPECT_EQ(run_.counters.Messages, 0);
  EXPECT_EQ(Damage(), List{});
}

TEST_F(ArchiveCopyTest, MoveOfOnlyTheTreeDeletesNothingThatHoldsMessages) {
  FillSource();
  options_.Mode = CopyMode::Move;
  options_.EnCopyOnlyArcs = true;
  RunOnSource();
  EXPECT_EQ(Subjects("/Archive/Quelle"), (List{"eins", "zwei", "drei"}));
  EXPECT_EQ(run_.counters.Errors, 0);
  options_.EnDelArchives = true;
  RunOnSource();
  EXPECT_EQ(Subjects("/Archive/Quelle/Post/Alt"), List{"fünf"});
  EXPECT_GT(run_.counters.Errors, 0);
}

TEST_F(ArchiveCopyTest, RulesComeOnlyWhenAskedForAndAsTheyStand) {
  auto rule = source_->Rules().Add("An die Ablage");
  (*rule)->Data().Destinations = {source_->FullPath()};
  ASSERT_TRUE((*rule)->Update());
  RunOnSource();
  EXPECT_EQ(*Open("/Archive/Ziel/Quelle")->Rules().Count(), 0);
  options_.EnRoutings = true;
  options_.EnDblArcNames = false;
  RunOnSource();
  const auto second = (*target_->SubArchives()).at(1);
  ASSERT_EQ(*second->Rules().Count(), 1);
  EXPECT_EQ((*second->Rules().Item(0))->Data().Destinations, List{source_->FullPath()});
}

// --- Links. ---

TEST_F(ArchiveCopyTest, LinkArrivesAsALink) {
  const auto other = Create(*root_, "Anderes");
  Deliver(*other, "eins");
  AddLink(*source_, "Verweis", *other);
  RunOnSource();
  EXPECT_EQ(Names("/Archive/Ziel/Quelle"), List{">Verweis"});
  EXPECT_EQ((*Open("/Archive/Ziel/Quelle")->SubArchives())[0]->ID(), other->ID());
  EXPECT_EQ(run_.counters.Links, 1);
  EXPECT_EQ(Damage(), List{});
}

TEST_F(ArchiveCopyTest, FollowedLinkArrivesAsItsContent) {
  // A link to a sibling counts as one that leads back.
  const auto other = Create(*Create(*root_, "Fach"), "Anderes");
  ASSERT_TRUE(other->SetHidden(true));
  ASSERT_TRUE(other->Update());
  Deliver(*other, "eins");
  AddLink(*source_, "Verweis", *other);
  options_.EnLinkedArcs = options_.EnCpyProp = true;
  RunOnSource();
  EXPECT_EQ(Names("/Archive/Ziel/Quelle"), List{"Verweis"});
  EXPECT_EQ(Subjects("/Archive/Ziel/Quelle/Verweis"), List{"eins"});
  EXPECT_TRUE(*Open("/Archive/Ziel/Quelle/Verweis")->Hidden());
  EXPECT_EQ(Damage(), List{});
}

TEST_F(ArchiveCopyTest, FollowedLinkToNothingIsLoggedAndMakesNothing) {
  const auto other = Create(*Create(*root_, "Fach"), "Anderes");
  AddLink(*source_, "Verweis", *other);
  ASSERT_TRUE(other->Delete());
  options_.EnLinkedArcs = true;
  RunOnSource();
  EXPECT_EQ(Names("/Archive/Ziel/Quelle"), List{});
  EXPECT_EQ(run_.counters.Errors, 1) << Log();
}

TEST_F(ArchiveCopyTest, MovedLinkLeavesItsListAndNothingElse) {
  const auto other = Create(*root_, "Anderes");
  Deliver(*other, "eins");
  AddLink(*source_, "Verweis", *other);
  options_.Mode = CopyMode::Move;
  options_.EnDelArchives = true;
  const auto link = (*source_->SubArchives())[0];
  RunStoreCopy(Context(), options_, {source_, {Mark(*link, "Verweis")}}, target_);
  EXPECT_EQ(Names("/Archive/Quelle"), List{});
  EXPECT_EQ(Names("/Archive/Ziel"), List{">Verweis"});
  EXPECT_EQ(Subjects("/Archive/Anderes"), List{"eins"});
}

TEST_F(ArchiveCopyTest, MoveWithStructureTakesLinksAlong) {
  const auto other = Create(*root_, "Anderes");
  AddLink(*source_, "Verweis", *other);
  options_.Mode = CopyMode::Move;
  options_.EnDelArchives = true;
  RunOnSource();
  EXPECT_FALSE(Exists("/Archive/Quelle"));
  EXPECT_EQ(Names("/Archive/Ziel/Quelle"), List{">Verweis"});
  EXPECT_TRUE(Exists("/Archive/Anderes"));
}

TEST_F(ArchiveCopyTest, LinksThatLeadBackEndNoWalk) {
  FillSource();
  AddLink(*old_, "Zurück", *source_);
  AddLink(*post_, "Selbst", *post_);
  AddLink(*source_, "Ziel", *target_);
  options_.EnLinkedArcs = true;
  RunOnSource();
  EXPECT_EQ(Subjects("/Archive/Ziel/Quelle/Post/Alt"), List{"fünf"});
  EXPECT_EQ(Names("/Archive/Ziel/Quelle/Post"), List{"Alt"});
}

// --- Rights, cancel, failures. ---

TEST_F(ArchiveCopyTest, MoveOfArchivesNeedsTheRight) {
  FillSource();
  session_.Trustees &= ~store::trustee::DeleteArchives;
  options_.Mode = CopyMode::Move;
  RunOnSource();
  EXPECT_EQ(Names("/Archive/Ziel"), List{});
  EXPECT_EQ(Subjects("/Archive/Quelle"), (List{"eins", "zwei", "drei"}));
  EXPECT_EQ(run_.counters.Errors, 1);
}

TEST_F(ArchiveCopyTest, CancelledMoveLeavesTheRestWhole) {
  for (int i = 0; i < 20; ++i) Deliver(*source_, std::to_string(i));
  frontEnd_.CancelAtPump = 10;
  options_.Mode = CopyMode::Move;
  options_.EnDelArchives = true;
  RunOnSource();
  const auto moved = Subjects("/Archive/Ziel/Quelle"), left = Subjects("/Archive/Quelle");
  EXPECT_GT(moved.size(), 0U);
  EXPECT_GT(left.size(), 0U);
  EXPECT_EQ(moved.size() + left.size(), 20U);
  EXPECT_NE(Log().find("Abbruch durch Benutzer"), std::string::npos);
  EXPECT_EQ(Damage(), List{});
}

TEST_F(ArchiveCopyTest, PendingCancelDoesNothing) {
  FillSource();
  run_.RequestCancel();
  RunOnSource();
  EXPECT_TRUE(frontEnd_.ProgressTitles.empty());
  EXPECT_EQ(Names("/Archive/Ziel"), List{});
}

TEST_F(ArchiveCopyTest, ArchiveThatHasVanishedIsLogged) {
  Object gone = Mark(*source_);
  gone.ArchivePath += "X";
  Run({gone});
  EXPECT_EQ(run_.counters.Errors, 1);
  EXPECT_NE(Log().find("DvISE-Error Kopieren"), std::string::npos) << Log();
}

TEST_F(ArchiveCopyTest, FailuresAreLoggedForAdministratorsAndCountedForAll) {
  // An entry whose content is gone cannot be copied whole.
  Deliver(*source_, "eins");
  ASSERT_TRUE(session_.Account->Commit());
  std::filesystem::remove(std::filesystem::path(*fileSystem_->HostPath(source_->ID())) / "00000001.001");
  std::filesystem::create_directory(std::filesystem::path(*fileSystem_->HostPath(source_->ID())) /
                                    "00000001.001");
  RunOnSource();
  const auto errors = run_.counters.Errors;
  const auto log = Log();
  session_.Trustees &= ~store::trustee::Administrator;
  RunOnSource();
  EXPECT_EQ(run_.counters.Errors, errors);
  if (errors > 0) {
    EXPECT_NE(log.find("/Archive/Quelle/eins->/Archive/Ziel/Quelle"), std::string::npos) << log;
    EXPECT_EQ(Log(), log);
  }
}

TEST_F(ArchiveCopyTest, SourceWhoseConfigurationDidNotComeAlongStays) {
  WriteFile(*source_, "archive.ini", "x");
  const auto ini = std::filesystem::path(*fileSystem_->HostPath(source_->ID())) / "archive.ini";
  std::filesystem::remove(ini);
  std::filesystem::create_symlink("/nowhere/at/all", ini);
  options_.Mode = CopyMode::Move;
  options_.EnDelArchives = options_.EnCpyProp = true;
  RunOnSource();
  EXPECT_TRUE(Exists("/Archive/Ziel/Quelle"));
  EXPECT_TRUE(Exists("/Archive/Quelle"));
}

}  // namespace
}  // namespace velmora::operations
