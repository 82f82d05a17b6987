#include "maintenance/tree_check.h"

#include "damaged_tree_fixture.h"
#include "maintenance/circular_entries.h"
#include "support/faulty_file_system.h"

namespace velmora::maintenance {
namespace {

class TreeCheckTest : public DamagedTreeTest {
 protected:
  TreeReport Check() { return CheckTree(*run_, Archive("/Archive")); }
  static Texts Lines(const TreeReport& report) {
    Texts lines;
    for (const auto& finding : report.Findings) lines.push_back(Describe(finding));
    return lines;
  }
};

TEST_F(TreeCheckTest, ASoundTreeHasNoFindings) {
  AddLink(a_, "Verweis", b_);
  AddLink(inner_, "Nach oben", common_);
  const auto report = Check();
  EXPECT_EQ(Lines(report), Texts{});
  EXPECT_GT(report.Archives, 40);
  EXPECT_EQ(FindCircularEntries(*run_, Archive("/Archive")).size(), 0u)
      << "a short-cut that points upwards is not circular";
}

TEST_F(TreeCheckTest, TwoSiblingsThatReferToOneAncestorAreTwoPairs) {
  AddRecord(inner_, common_->ID(), "Eins");
  AddRecord(inner_, common_->ID(), "Zwei");
  const auto found = FindCircularEntries(*run_, common_);
  ASSERT_EQ(found.size(), 2u);
  for (const CircularEntry& entry : found) {
    EXPECT_EQ(entry.Parent, inner_->ID());
    EXPECT_EQ(entry.Child, common_->ID());
  }
}

TEST_F(TreeCheckTest, AllCircularEntriesAreRemovedAndShortCutsBesideThemStay) {
  AddRecord(inner_, inner_->ID(), "Selbst");
  AddRecord(inner_, a_->ID(), "Eltern");
  AddLink(inner_, "Verweis", a_);
  AddRecord(inner_, common_->ID(), "Eins");
  AddRecord(b_, common_->ID(), "Auch B");
  const std::string before = store::ReadArchiveList(*files_, inner_->ID()).value();
  EXPECT_EQ(FindCircularEntries(*run_, common_).size(), 4u);
  EXPECT_EQ(RemoveCircularEntries(*run_, common_), 4);
  EXPECT_EQ(Names(inner_), Texts{">Verweis"});
  EXPECT_EQ(Names(b_), Texts{});
  EXPECT_EQ(files_->ReadFile(inner_->ID() + "\\archivedir.bak").value(), before) << "one rewrite per list";
  EXPECT_EQ(RemoveCircularEntries(*run_, common_), 0);
  EXPECT_EQ(Lines(Check()), Texts{});
  EXPECT_EQ(Archive("/Archive/Gemeinsam/A/Innen")->ID(), inner_->ID());
}

TEST_F(TreeCheckTest, WhatTheUserDoesNotSeeIsNotTouched) {
  AddRecord(inner_, common_->ID(), "Eins");
  const auto isVisible = [&](store::DvArchive& archive) { return archive.ID() != inner_->ID(); };
  EXPECT_TRUE(FindCircularEntries(*run_, common_, isVisible).empty());
  EXPECT_EQ(RemoveCircularEntries(*run_, common_, isVisible), 0);
}

TEST_F(TreeCheckTest, ACancelRemovesNothing) {
  AddRecord(inner_, common_->ID(), "Eins");
  frontEnd_.CancelAtPump = 1;
  EXPECT_EQ(RemoveCircularEntries(*run_, common_), 0);
  EXPECT_EQ(Names(inner_), Texts{"Eins"});
}

TEST_F(TreeCheckTest, FindingsTellWhereAndWhat) {
  AddRecord(common_, a_->ID(), "A noch einmal");
  AddRecord(b_, common_->ID(), "Kreis");
  AddRecord(b_, b_->ID() + "\\WEG", "Weg");
  AddLink(a_, "Verweis", b_);
  const Texts lines = Lines(Check());
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_EQ(lines[0], "/Archive/Gemeinsam/B: Der Eintrag \"Kreis\" führt zurück auf " + common_->ID());
  EXPECT_EQ(lines[1],
            "/Archive/Gemeinsam/B: Der Eintrag \"Weg\" nennt das fehlende Verzeichnis " + b_->ID() + "\\WEG");
  EXPECT_EQ(lines[2], "/Archive/Gemeinsam: Der Eintrag \"A noch einmal\" (" + a_->ID() +
                          ") ist doppelt; zuerst steht er in der Liste von /Archive/Gemeinsam");
}

TEST_F(TreeCheckTest, ARepairTakesDoubledAndCircularEntriesAndDanglingOnesOnlyWhenAsked) {
  AddRecord(common_, a_->ID(), "A zwei");
  AddRecord(common_, a_->ID(), "A drei");
  AddRecord(b_, common_->ID(), "Kreis");
  AddRecord(b_, b_->ID() + "\\WEG", "Weg");
  const auto gone = common_->CreateSubArchive("Ziel").value();
  AddLink(a_, "Ins Leere", gone);
  std::filesystem::remove_all(HostPath(gone));

  const TreeRepair careful = RepairTree(*run_, Check(), {});
  EXPECT_EQ(careful.Doubled, 2);
  EXPECT_EQ(careful.Circular, 1);
  EXPECT_EQ(careful.Dangling, 0);
  EXPECT_EQ(careful.Failed, 0);
  EXPECT_EQ(Names(a_).back(), ">Ins Leere");
  EXPECT_EQ(Names(b_), Texts{"Weg"});
  EXPECT_EQ(Archive("/Archive/Gemeinsam/A")->ID(), a_->ID()) << "the first entry stays";

  const TreeRepair whole = RepairTree(*run_, Check(), {.Dangling = true});
  EXPECT_EQ(whole.Dangling, 3) << "\"Weg\", \"Ziel\" and the link to it";
  EXPECT_EQ(Lines(Check()), Texts{});
  EXPECT_EQ(Names(a_), Texts{"Innen"});
}

TEST_F(TreeCheckTest, AnArchiveInTwoListsKeepsTheFirst) {
  // Neither list lies around the directory, so that neither record is a mere link.
  const std::string path = StripBackslash(DirectoryOf(common_->ID())) + "\\ANDERSWO";
  ASSERT_TRUE(files_->CreateFolder(path));
  AddRecord(inner_, path, "Erster");
  AddRecord(b_, path, "Zweiter");
  const auto report = Check();
  ASSERT_EQ(report.Findings.size(), 1u) << Lines(report).size();
  EXPECT_FALSE(report.Findings[0].IsFirstHere);
  EXPECT_EQ(RepairTree(*run_, report, {}).Doubled, 1);
  EXPECT_EQ(Names(inner_), Texts{"Erster"});
  EXPECT_EQ(Names(b_), Texts{});
}

TEST_F(TreeCheckTest, AnInterruptedListIsToldAndRecovered) {
  const std::string host = HostPath(a_);
  std::filesystem::rename(host + "/archive.dir", host + "/archivedir.bak");
  std::filesystem::copy_file(host + "/archive.add", host + "/archive.vlw");
  const auto report = Check();
  ASSERT_EQ(report.Findings.size(), 1u);
  EXPECT_EQ(Describe(report.Findings[0]),
            "/Archive/Gemeinsam/A: archive.dir fehlt nach einem abgebrochenen Schreibvorgang; es gilt "
            "archivedir.bak");
  EXPECT_EQ(RepairTree(*run_, report, {}).Recovered, 1);
  EXPECT_TRUE(std::filesystem::exists(host + "/archive.dir"));
  EXPECT_EQ(Names(a_), Texts{"Innen"});
  EXPECT_EQ(Lines(Check()), Texts{});
}

TEST_F(TreeCheckTest, AListThatCannotBeReadIsToldAndNothingBelowItIsTouched) {
  const std::string list = HostPath(a_) + "/archive.dir";
  std::filesystem::remove(list);
  std::filesystem::create_directory(list);
  const auto report = Check();
  ASSERT_EQ(report.Findings.size(), 1u);
  EXPECT_EQ(report.Findings[0].Fault, TreeFault::Unreadable);
  EXPECT_EQ(report.Findings[0].Name, "/Archive/Gemeinsam/A");
  EXPECT_EQ(RepairTree(*run_, report, {.Dangling = true}).Removed(), 0);
}

TEST_F(TreeCheckTest, ADirectoryOnAShareThatNobodyMapsIsNotTakenForGone) {
  AddRecord(b_, R"(\\ANDERER\DAVID\ARCHIVE\X)", "Fremd");
  const auto report = Check();
  ASSERT_EQ(report.Findings.size(), 1u);
  EXPECT_EQ(report.Findings[0].Fault, TreeFault::Unreadable);
  EXPECT_EQ(RepairTree(*run_, report, {.Dangling = true}).Removed(), 0);
  EXPECT_EQ(Names(b_), Texts{"Fremd"});
}

TEST_F(TreeCheckTest, AFullDiskIsCountedAndLoggedAndLosesNothing) {
  AddRecord(b_, common_->ID(), "Kreis");
  const auto report = Check();
  velmora::test::FaultyFileSystem faulty(*files_);
  run::Run run(faulty, platform::SystemClock(), frontEnd_.Set(), files_->FromHostPath(directory_.HostPath()));
  faulty.FailOn(velmora::test::Fault::Write, 1, platform::file_error::DiskFull);
  const TreeRepair repair = RepairTree(run, report, {});
  EXPECT_EQ(repair.Circular, 0);
  EXPECT_EQ(repair.Failed, 1);
  EXPECT_EQ(Names(b_), Texts{"Kreis"});
  EXPECT_NE(Log().find("Velmora Error"), std::string::npos);
}

TEST_F(TreeCheckTest, WhatOthersHaveRepairedMeanwhileIsLeftAlone) {
  AddRecord(common_, a_->ID(), "A zwei");
  const auto report = Check();
  ASSERT_EQ(RepairTree(*run_, report, {}).Doubled, 1);
  EXPECT_EQ(RepairTree(*run_, report, {}).Doubled, 0) << "the last entry must not go";
  EXPECT_EQ(Archive("/Archive/Gemeinsam/A")->ID(), a_->ID());
}

}  // namespace
}  // namespace velmora::maintenance
