// What a pane shows when the store or the disk fails.
#include <gtest/gtest.h>

#include "pane_fixture.h"

namespace velmora::panes {
namespace {

using List = std::vector<std::string>;
using test::Fault;

class PaneFailuresTest : public PanesTest {};

TEST_F(PaneFailuresTest, AFailureAmongTheMessagesKeepsTheRowsListedSoFar) {
  fake.AddArchive(&inbox, "Sub", R"(\\SERVER\DAVID\ARCHIVE\IN\S)");
  AddMail(inbox, "b");
  AddMail(inbox, "a");
  AddMail(inbox, "c").FailingField = store::tag::SenderAddress;
  AddMail(inbox, "d");
  EXPECT_TRUE(Left().ShowArchive(inbox.ID));
  EXPECT_EQ(Texts(Left()), (List{"[..]", "Sub", "a", "b"})) << "sorted as far as they were read";
  EXPECT_EQ(Left().StatusText(0), "2 Items") << "the status tells what is listed";
  ASSERT_EQ(frontEnd.Boxes.size(), 1u);
  EXPECT_EQ(frontEnd.Boxes[0].Title, "Fehler");
  EXPECT_EQ(frontEnd.Boxes[0].Text,
            "/ZEB/Eingang\nFeld nicht lesbar\n\"velmoractl store check\" prüft den Speicher.");
  EXPECT_NE(LogText().find("DvISE-Error Feld nicht lesbar"), std::string::npos) << LogText();
  EXPECT_EQ(run.counters.Errors, 1);
}

TEST_F(PaneFailuresTest, AnArchiveWhoseMessagesCannotBeReadShowsItsArchives) {
  fake.AddArchive(&inbox, "Sub", R"(\\SERVER\DAVID\ARCHIVE\IN\S)");
  inbox.EntriesFail = true;
  EXPECT_TRUE(Left().ShowArchive(inbox.ID));
  EXPECT_EQ(Texts(Left()), (List{"[..]", "Sub"}));
  EXPECT_EQ(frontEnd.Boxes.size(), 1u);
}

TEST_F(PaneFailuresTest, AFailureAmongTheArchivesKeepsTheRowsListedSoFar) {
  outbox.NameFails = true;
  EXPECT_TRUE(Left().Refresh());
  EXPECT_EQ(Texts(Left()), List{"Eingang"});
  EXPECT_EQ(frontEnd.Boxes.size(), 1u);
}

TEST_F(PaneFailuresTest, AFailureAmongTheRulesKeepsTheRowsListedSoFar) {
  inbox.Rules.resize(3);
  inbox.Rules[0].Name = "erste";
  inbox.FailingRule = 1;
  options.LZEBViewModeRouting = 1;
  EXPECT_TRUE(Left().ShowArchive(inbox.ID));
  EXPECT_EQ(Texts(Left()), (List{"[..]", "erste"}));
  EXPECT_EQ(frontEnd.Boxes.size(), 1u);
}

TEST_F(PaneFailuresTest, AnArchiveThatCannotBeEnteredKeepsTheOldList) {
  ASSERT_TRUE(Left().Refresh());
  const auto before = Left().Generation();
  inbox.SubArchivesFail = true;
  EXPECT_EQ(Left().Enter(1), EnterResult::Failed);
  outbox.NoAccess = true;
  EXPECT_EQ(Left().Enter(0), EnterResult::Failed);
  EXPECT_EQ(Texts(Left()), (List{"Ausgang", "Eingang"}));
  EXPECT_EQ(Left().CurrentArchive()->FullPath(), "/ZEB");
  EXPECT_EQ(Left().Generation(), before);
  EXPECT_FALSE(Left().CanGoBack());
  EXPECT_EQ(frontEnd.Boxes.size(), 2u);
}

TEST_F(PaneFailuresTest, AnArchiveThatVanishedMeanwhileKeepsTheOldList) {
  AddMail(inbox, "x");
  ASSERT_TRUE(Left().ShowArchive(inbox.ID));
  fake.Remove(inbox);
  EXPECT_FALSE(Left().Refresh());
  EXPECT_EQ(Texts(Left()), (List{"[..]", "x"}));
  EXPECT_EQ(frontEnd.Boxes.size(), 1u);
}

TEST_F(PaneFailuresTest, OfAVanishedArchiveTheNearestAboveItIsShown) {
  ASSERT_TRUE(Left().ShowArchive(inbox.ID));
  fake.Remove(inbox);
  EXPECT_TRUE(Left().RefreshNearest());
  EXPECT_EQ(Left().CurrentArchive()->FullPath(), "/ZEB");
  EXPECT_EQ(Texts(Left()), (List{"Ausgang"}));
  EXPECT_TRUE(frontEnd.Boxes.empty());
}

TEST_F(PaneFailuresTest, AnArchiveWithoutItsDirectoryIsGoneThoughTheListAboveStillTellsOfIt) {
  auto& year = fake.AddArchive(&inbox, "2026", dir.Path("IN\\2026"));
  auto& may = fake.AddArchive(&year, "Mai", dir.Path("IN\\2026\\MAI"));
  inbox.ID = dir.Path("IN");
  for (const auto* archive : {&inbox, &year, &may}) ASSERT_TRUE(host->CreateFolder(archive->ID));
  ASSERT_TRUE(Left().ShowArchive(may.ID));
  EXPECT_TRUE(Left().RefreshNearest());
  EXPECT_EQ(Left().CurrentArchive()->FullPath(), "/ZEB/Eingang/2026/Mai") << "it is there";
  ASSERT_TRUE(host->DeleteFolder(year.ID, true));
  EXPECT_TRUE(Left().RefreshNearest());
  EXPECT_EQ(Left().CurrentArchive()->FullPath(), "/ZEB/Eingang");
  EXPECT_TRUE(frontEnd.Boxes.empty());
}

TEST_F(PaneFailuresTest, AnArchiveOnAShareThatNobodyMapsIsNotTakenForGone) {
  ASSERT_TRUE(Left().ShowArchive(inbox.ID));
  EXPECT_TRUE(Left().RefreshNearest());
  EXPECT_EQ(Left().CurrentArchive()->FullPath(), "/ZEB/Eingang");
}

TEST_F(PaneFailuresTest, ARowOfAVanishedArchiveCannotBeEntered) {
  ASSERT_TRUE(Left().Refresh());
  fake.Remove(inbox);
  EXPECT_EQ(Left().Enter(1), EnterResult::Failed);
  EXPECT_EQ(Texts(Left()), (List{"Ausgang", "Eingang"}));
}

TEST_F(PaneFailuresTest, AVanishedPlaceOfTheHistoryIsPassedOver) {
  ASSERT_TRUE(Left().Refresh());
  ASSERT_TRUE(Left().ShowArchive(inbox.ID));
  ASSERT_TRUE(Left().ShowArchive(outbox.ID));
  fake.Remove(inbox);
  EXPECT_FALSE(Left().GoBack());
  EXPECT_EQ(Left().CurrentArchive()->FullPath(), "/ZEB/Ausgang");
  EXPECT_TRUE(Left().GoBack());
  EXPECT_EQ(Left().CurrentArchive()->FullPath(), "/ZEB");
  EXPECT_TRUE(Left().GoForward());
  EXPECT_EQ(Left().CurrentArchive()->FullPath(), "/ZEB/Ausgang");
}

TEST_F(PaneFailuresTest, AViewOfRulesThatCannotBeListedStaysTheViewOfMessages) {
  ASSERT_TRUE(Left().ShowArchive(inbox.ID));
  fake.Remove(inbox);
  EXPECT_FALSE(Left().SetRuleView(true));
  EXPECT_FALSE(Left().IsRuleView()) << "columns and rows belong together";
}

TEST_F(PaneFailuresTest, ABusyOrDamagedStoreComesWithAdvice) {
  ReportStoreFailure(run, "/ZEB", {store::store_error::Busy, "Besetzt"});
  ReportStoreFailure(run, "/ZEB", {store::store_error::Damaged, "Kaputt"});
  ReportStoreFailure(run, "/ZEB", {store::store_error::NoAccess, "Verboten"});
  ASSERT_EQ(frontEnd.Boxes.size(), 3u);
  EXPECT_EQ(frontEnd.Boxes[0].Text, "/ZEB\nBesetzt\nBitte in einigen Augenblicken noch einmal versuchen.");
  EXPECT_EQ(frontEnd.Boxes[1].Text, "/ZEB\nKaputt\n\"velmoractl store check\" prüft den Speicher.");
  EXPECT_EQ(frontEnd.Boxes[2].Text, "/ZEB\nVerboten");
  EXPECT_EQ(LogText().find("Augenblicken"), std::string::npos) << "the log tells of the failure only";
}

TEST_F(PaneFailuresTest, NoBoxInAnUnattendedRun) {
  run.BatchMode = true;
  EXPECT_FALSE(Left().ShowArchive("/ZEB/Fehlt"));
  EXPECT_TRUE(frontEnd.Boxes.empty());
  EXPECT_EQ(run.counters.Errors, 1);
}

// --- Directories. ---

TEST_F(PaneFailuresTest, ADirectoryThatCannotBeEnteredKeepsTheOldList) {
  ASSERT_TRUE(host->CreateFolder(dir.Path("sub")));
  dir.WriteHostFile("a.txt", "x");
  ASSERT_TRUE(Files().Refresh());
  const auto before = Texts(Files());
  ASSERT_TRUE(host->DeleteFolder(dir.Path("sub"), true));
  EXPECT_EQ(Files().Enter(2), EnterResult::Failed);
  EXPECT_EQ(Texts(Files()), before);
  EXPECT_EQ(currentPath, dir.Path() + "\\");
  ASSERT_EQ(frontEnd.Boxes.size(), 1u);
  EXPECT_EQ(frontEnd.Boxes[0].Title, "Fehler");
  EXPECT_NE(LogText().find("76"), std::string::npos);
}

TEST_F(PaneFailuresTest, ADirectoryThatVanishedMeanwhileKeepsTheOldList) {
  ASSERT_TRUE(host->CreateFolder(dir.Path("sub")));
  dir.WriteHostFile("sub/a.txt", "x");
  ASSERT_TRUE(Files().ShowDirectory(dir.Path("sub")));
  ASSERT_TRUE(host->DeleteFolder(dir.Path("sub"), true));
  EXPECT_FALSE(Files().Refresh());
  EXPECT_EQ(Texts(Files()), (List{" [..]", "a.txt"}));
}

TEST_F(PaneFailuresTest, AFailureAmongTheFilesKeepsTheDirectories) {
  ASSERT_TRUE(host->CreateFolder(dir.Path("sub")));
  dir.WriteHostFile("a.txt", "x");
  ASSERT_TRUE(Files().Refresh());
  files.FailOn(Fault::List, 2, platform::file_error::DeviceError);
  EXPECT_TRUE(Files().Refresh());
  EXPECT_EQ(Texts(Files()), (List{" [..]", "sub"}));
  EXPECT_EQ(Files().StatusText(0), "0 Files");
  EXPECT_EQ(frontEnd.Boxes.size(), 1u);
}

}  // namespace
}  // namespace velmora::panes
