// An archive pane: places, view modes, hiding, status texts.
#include "panes/archive_pane.h"

#include <gtest/gtest.h>

#include "pane_fixture.h"
#include "panes/selection.h"

namespace velmora::panes {
namespace {

using List = std::vector<std::string>;

class ArchivePaneTest : public PanesTest {
 protected:
  std::string PlaceOf(const ArchivePane& pane) { return pane.CurrentArchive()->FullPath(); }
};

// --- Going from place to place. ---

TEST_F(ArchivePaneTest, EnterOpensAnArchiveAndTheWayUpLeadsBack) {
  ASSERT_TRUE(Left().Refresh());
  EXPECT_EQ(Left().Enter(1), EnterResult::Entered);
  EXPECT_EQ(PlaceOf(Left()), "/ZEB/Eingang");
  EXPECT_EQ(session.LeftArchive->FullPath(), "/ZEB/Eingang") << "the session owns what the pane shows";
  EXPECT_EQ(session.RightArchive->FullPath(), "/ZEB");
  EXPECT_EQ(Left().CursorRow(), 0u);
  EXPECT_EQ(Left().Enter(0), EnterResult::Entered);
  EXPECT_EQ(PlaceOf(Left()), "/ZEB");
  EXPECT_EQ(Left().CursorRow(), 1u) << "the cursor stands on the archive that was left";
}

TEST_F(ArchivePaneTest, AShortCutEntersItsTarget) {
  fake.AddLink(outbox, inbox);
  ASSERT_TRUE(Left().ShowArchive(outbox.ID));
  EXPECT_EQ(Left().Enter(1), EnterResult::Entered);
  EXPECT_EQ(PlaceOf(Left()), "/ZEB/Eingang");
  EXPECT_FALSE(Left().CurrentArchive()->IsShortCut());
}

TEST_F(ArchivePaneTest, AMessageIsForWhoeverShowsMessages) {
  AddMail(inbox, "x");
  ASSERT_TRUE(Left().ShowArchive(inbox.ID));
  EXPECT_EQ(Left().Enter(1), EnterResult::Message);
  EXPECT_EQ(Left().Enter(2), EnterResult::Nothing);
  EXPECT_EQ(PlaceOf(Left()), "/ZEB/Eingang");
}

TEST_F(ArchivePaneTest, AboveTheRootThereIsNothing) {
  ASSERT_TRUE(Left().Refresh());
  EXPECT_FALSE(Left().GoUp());
  EXPECT_TRUE(frontEnd.Boxes.empty());
}

TEST_F(ArchivePaneTest, OfArchivesWithOneNameTheParentIsTheOneThatHoldsTheDirectory) {
  fake.AddArchive(&root, "Doppelt", R"(\\SERVER\DAVID\ARCHIVE\D1)");
  auto& second = fake.AddArchive(&root, "Doppelt", R"(\\SERVER\DAVID\ARCHIVE\D2)");
  auto& sub = fake.AddArchive(&second, "Sub", R"(\\SERVER\DAVID\ARCHIVE\D2\S)");
  ASSERT_TRUE(Left().ShowArchive(sub.ID));
  ASSERT_TRUE(Left().GoUp());
  EXPECT_EQ(Left().CurrentArchive()->ID(), second.ID);
}

TEST_F(ArchivePaneTest, AnArchiveWhoseDirectoryLiesElsewhereFindsItsParentByPath) {
  auto& moved = fake.AddArchive(&inbox, "Umgezogen", R"(\\SERVER\DAVID\ARCHIVE\OUT\M)");
  ASSERT_TRUE(Left().ShowArchive(moved.ID));
  ASSERT_TRUE(Left().GoUp());
  EXPECT_EQ(Left().CurrentArchive()->ID(), inbox.ID);
}

TEST_F(ArchivePaneTest, RootsAreOneStepAway) {
  fake.SpecialArchives[store::special::OwnRoot] = outbox.ID;
  ASSERT_TRUE(Left().ShowArchive(inbox.ID));
  EXPECT_TRUE(Left().GoToUserRoot());
  EXPECT_EQ(PlaceOf(Left()), "/ZEB/Ausgang");
  EXPECT_TRUE(Left().GoToRoot());
  EXPECT_EQ(PlaceOf(Left()), "/ZEB");
}

TEST_F(ArchivePaneTest, VisitedPlacesLeadBackAndForward) {
  ASSERT_TRUE(Left().Refresh());
  ASSERT_TRUE(Left().ShowArchive(inbox.ID));
  ASSERT_TRUE(Left().ShowArchive(outbox.ID));
  ASSERT_TRUE(Left().Refresh()) << "is no new place";
  EXPECT_TRUE(Left().GoBack());
  EXPECT_EQ(PlaceOf(Left()), "/ZEB/Eingang");
  EXPECT_TRUE(Left().GoBack());
  EXPECT_EQ(PlaceOf(Left()), "/ZEB");
  EXPECT_FALSE(Left().GoBack());
  EXPECT_TRUE(Left().GoForward());
  EXPECT_TRUE(Left().GoForward());
  EXPECT_EQ(PlaceOf(Left()), "/ZEB/Ausgang");
  EXPECT_FALSE(Left().CanGoForward());
  EXPECT_FALSE(Right().CanGoBack()) << "each pane has its own";
}

TEST_F(ArchivePaneTest, ASignOnForgetsThePlacesOfTheOtherServer) {
  ASSERT_TRUE(Left().Refresh());
  ASSERT_TRUE(Left().ShowArchive(inbox.ID));
  panes.SignedOn();
  EXPECT_FALSE(Left().CanGoBack());
}

TEST_F(ArchivePaneTest, TheHeadingIsThePathOrTheName) {
  ASSERT_TRUE(Left().ShowArchive(inbox.ID));
  EXPECT_EQ(Left().PathText(), "/ZEB/Eingang");
  options.DisplayLZEBArchiveFullPath = false;
  EXPECT_EQ(Left().PathText(), "Eingang");
  EXPECT_EQ(Right().PathText(), "/ZEB");
  options.DisplayRZEBArchiveFullPath = false;
  EXPECT_EQ(Right().PathText(), "ZEB");
}

TEST_F(ArchivePaneTest, WithoutAnArchiveThereIsNothingToShow) {
  session.LeftArchive = nullptr;
  EXPECT_FALSE(Left().Refresh());
  EXPECT_FALSE(Left().GoUp());
  EXPECT_EQ(Left().PathText(), "");
  EXPECT_EQ(Left().StatusText(0), "0 Items");
}

// --- View modes. ---

TEST_F(ArchivePaneTest, MessagesAndRulesKeepTheirSortModesApart) {
  options.LZEBSortingMode = sort_mode::From;
  options.LZEBSortingDirection = false;
  options.LZEBRoutingSortingMode = sort_mode::Condition;
  ASSERT_TRUE(Left().Refresh());
  EXPECT_EQ(Left().Sorting(), (SortState{sort_mode::From, false}));
  EXPECT_EQ(Left().Columns().size(), 5u);
  ASSERT_TRUE(Left().SetRuleView(true));
  EXPECT_EQ(options.LZEBViewModeRouting, 1);
  EXPECT_EQ(Left().Columns().size(), 4u) << "the fifth column is removed";
  EXPECT_EQ(Left().Sorting(), (SortState{sort_mode::Condition, true}));
  Left().ClickHeader(3);
  EXPECT_EQ(options.LZEBRoutingSortingMode, sort_mode::Destination);
  ASSERT_TRUE(Left().SetRuleView(false));
  EXPECT_EQ(Left().Sorting(), (SortState{sort_mode::From, false}));
  EXPECT_EQ(options.RZEBRoutingSortingMode, sort_mode::Name) << "the right pane has its own";
}

TEST_F(ArchivePaneTest, AClickOnAHeaderStandsInTheSettings) {
  ASSERT_TRUE(Right().Refresh());
  const auto before = Right().Generation();
  Right().ClickHeader(1);
  EXPECT_EQ(options.RZEBSortingMode, sort_mode::Date);
  EXPECT_TRUE(options.RZEBSortingDirection);
  Right().ClickHeader(1);
  EXPECT_FALSE(options.RZEBSortingDirection);
  EXPECT_GT(Right().Generation(), before);
  EXPECT_EQ(options.LZEBSortingMode, sort_mode::Name);
}

// --- Hiding. ---

TEST_F(ArchivePaneTest, HidingStrikesFromTheThresholdOn) {
  options.SizeCheck = 50;
  AddMails(inbox, 49);
  ASSERT_TRUE(Left().ShowArchive(inbox.ID));
  EXPECT_EQ(Left().RowCount(), 50u);
  EXPECT_EQ(Left().StatusText(0), "49 Items");
  EXPECT_EQ(Left().HidingToolTip(), "");
  AddMail(inbox, "die fünfzigste");
  ASSERT_TRUE(Left().Refresh());
  EXPECT_EQ(Left().RowCount(), 1u) << "the pane shows only its archives";
  EXPECT_EQ(Left().StatusText(0), "(50) Items");
  EXPECT_EQ(Left().HidingToolTip(), "Nachrichtenausblendung aktiv");
}

TEST_F(ArchivePaneTest, TheFlagOfThePaneShowsThemAll) {
  options.SizeCheck = 1;
  AddMails(inbox, 1);
  ASSERT_TRUE(Left().ShowArchive(inbox.ID));
  EXPECT_EQ(Left().StatusText(0), "(1) Item");
  ASSERT_TRUE(Left().ToggleHiding());
  EXPECT_EQ(Left().RowCount(), 2u);
  EXPECT_EQ(Left().StatusText(0), "1 Item");
  EXPECT_EQ(Left().HidingToolTip(), "Nachrichtenausblendung deaktiviert");
  EXPECT_TRUE(Right().IsHiding()) << "each pane has its own";
  ASSERT_TRUE(Left().ToggleHiding());
  EXPECT_EQ(Left().RowCount(), 1u);
}

TEST_F(ArchivePaneTest, WithoutAThresholdTheFlagStaysOn) {
  EXPECT_FALSE(Left().ToggleHiding());
  EXPECT_TRUE(Left().IsHiding());
  AddMails(inbox, 3);
  ASSERT_TRUE(Left().ShowArchive(inbox.ID));
  EXPECT_EQ(Left().StatusText(0), "3 Items");
}

// --- Status texts. ---

TEST_F(ArchivePaneTest, AnArchiveWithNothingButTheWayUpHasNoItems) {
  ASSERT_TRUE(Left().ShowArchive(inbox.ID));
  EXPECT_EQ(Texts(Left()), List{"[..]"});
  EXPECT_EQ(Left().StatusText(0), "0 Items");
}

TEST_F(ArchivePaneTest, StatusCountsMessages) {
  AddMail(inbox, "x");
  ASSERT_TRUE(Left().ShowArchive(inbox.ID));
  EXPECT_EQ(Left().StatusText(0), "1 Item");
  AddMail(inbox, "y");
  ASSERT_TRUE(Left().Refresh());
  EXPECT_EQ(Left().StatusText(0), "2 Items");
}

TEST_F(ArchivePaneTest, ASelectionStandsBeforeTheNumberOfMessages) {
  fake.AddArchive(&inbox, "Sub", R"(\\SERVER\DAVID\ARCHIVE\IN\S)");
  AddMails(inbox, 5);
  ASSERT_TRUE(Left().ShowArchive(inbox.ID));
  EXPECT_EQ(Left().StatusText(3), "3/5");
  options.SizeCheck = 2;
  ASSERT_TRUE(Left().Refresh());
  EXPECT_EQ(Left().StatusText(1), "1/(5)");
  ASSERT_TRUE(Left().ToggleHiding());
  EXPECT_EQ(Left().StatusText(1), "1/5");
}

TEST_F(ArchivePaneTest, WithoutArchivesAboveTheMessagesASelectionIsNotCounted) {
  AddMails(root, 2);
  root.SubArchives.clear();
  ASSERT_TRUE(Left().Refresh());
  EXPECT_EQ(Left().StatusText(1), "2 Items");
}

// --- Sizes. ---

TEST_F(ArchivePaneTest, TheSizeOfAnArchiveStandsInItsRow) {
  inbox.ID = dir.Path("in");
  ASSERT_TRUE(host->CreateFolder(inbox.ID));
  dir.WriteHostFile("in/archive.dat", std::string(3000, 'x'));
  AddMails(inbox, 2);
  ASSERT_TRUE(Left().Refresh());
  ASSERT_EQ(Left().Name(1), "Eingang");
  EXPECT_EQ(Left().Text(1, 1), "");
  EXPECT_TRUE(Left().ShowSize(1));
  EXPECT_EQ(Left().Text(1, 1), "0 Arc(s)/ 2 Msg(s)");
  EXPECT_EQ(Left().Text(1, 2), "3.000  (3 KB)");
  EXPECT_EQ(Left().Text(0, 1), "");
  Left().ClickHeader(0);
  EXPECT_EQ(Left().Text(0, 2), "3.000  (3 KB)") << "it goes with its row";
  ASSERT_TRUE(Left().Refresh());
  EXPECT_EQ(Left().Text(0, 2), "") << "until the list is made anew";
}

TEST_F(ArchivePaneTest, OnlyArchivesHaveASize) {
  AddMail(inbox, "x");
  ASSERT_TRUE(Left().ShowArchive(inbox.ID));
  EXPECT_FALSE(Left().ShowSize(0));
  EXPECT_FALSE(Left().ShowSize(1));
  EXPECT_FALSE(Left().ShowSize(7));
}

// --- Texts of others. ---

TEST_F(ArchivePaneTest, ADangerousSubjectIsShownHarmlessAndStaysAsItIsStored) {
  const std::string subject =
      "a\nb\xE2\x80\xAE"
      "fdp.exe";
  auto& mail = AddMail(inbox, subject);
  mail.Attachments = {
      {"x\xE2\x80\xAE"
       "fdp.exe",
       ""}};
  ASSERT_TRUE(Left().ShowArchive(inbox.ID));
  EXPECT_EQ(Left().Text(1, 0), "a b[U+202E]fdp.exe");
  EXPECT_EQ(Left().Text(1, 3), "x[U+202E]fdp.exe");
  EXPECT_EQ(Left().Name(1), subject);
  EXPECT_EQ(Left().Message(1)->Subject, subject);
}

// --- The window while a list is filled. ---

// Looks at the pane as a repaint does, and asks to stop.
class Repaint final : public FillWatcher {
 public:
  bool Breathe() override {
    ++Breaths;
    RowsSeen = Watched->RowCount();
    ColumnsSeen = Watched->Columns().size();
    return true;
  }
  const Pane* Watched = nullptr;
  int Breaths = 0;
  std::size_t RowsSeen = 0, ColumnsSeen = 0;
};

// A clock by which every look takes a while.
class SlowClock final : public platform::Clock {
 public:
  DateTime Now() override { return {}; }
  std::int64_t SteadyMilliseconds() override { return now_ += 30; }

 private:
  std::int64_t now_ = 0;
};

TEST_F(ArchivePaneTest, TheWindowBreathesDuringAFillAndShowsTheOldListUntilItsEnd) {
  AddMails(inbox, 2000);
  SlowClock slowClock;
  Repaint repaint;
  run::Run slowRun(files, slowClock, frontEnd.Set(), dir.Path());
  TwoPanes watched(PaneContext{session, options, slowRun, currentPath, repaint});
  watched.SignedOn();
  repaint.Watched = &watched.Left();
  ASSERT_TRUE(watched.Left().Refresh());
  repaint.Breaths = 0;
  ASSERT_TRUE(watched.Left().ShowArchive(inbox.ID));
  EXPECT_GT(repaint.Breaths, 0);
  EXPECT_EQ(repaint.RowsSeen, 2u) << "the two archives of the root";
  EXPECT_EQ(watched.Left().RowCount(), 2001u) << "a fill goes on to its end";

  inbox.Rules.resize(5);
  ASSERT_TRUE(watched.Left().SetRuleView(true));
  EXPECT_EQ(repaint.RowsSeen, 2001u);
  EXPECT_EQ(repaint.ColumnsSeen, 5u) << "the columns of the rows that are still shown";
  EXPECT_EQ(watched.Left().Columns().size(), 4u);
}

}  // namespace
}  // namespace velmora::panes
