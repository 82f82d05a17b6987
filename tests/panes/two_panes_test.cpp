// The panes together.
#include "panes/two_panes.h"

#include <gtest/gtest.h>

#include "pane_fixture.h"

namespace velmora::panes {
namespace {

class TwoPanesTest : public PanesTest {
 protected:
  static std::string PlaceOf(const ArchivePane& pane) { return pane.CurrentArchive()->FullPath(); }
};

TEST_F(TwoPanesTest, TheRightSideIsActiveAsWhatItShows) {
  EXPECT_TRUE(panes.ShowsFiles()) << "the default";
  panes.SetActiveView(PaneView::RZEBView);
  EXPECT_EQ(panes.ActiveView(), PaneView::RFSView);
  EXPECT_EQ(&panes.Active(), &Files());
  panes.ToggleViewMode();
  EXPECT_EQ(options.ViewMode, 0);
  EXPECT_EQ(panes.ActiveView(), PaneView::RZEBView);
  EXPECT_EQ(Right().RowCount(), 2u) << "what comes up is listed";
  panes.ActivateOther();
  EXPECT_EQ(panes.ActiveView(), PaneView::LZEBView);
  panes.ActivateOther();
  EXPECT_EQ(panes.ActiveView(), PaneView::RZEBView);
}

TEST_F(TwoPanesTest, SwitchingToFilesEndsThePropertyViewOnTheRight) {
  options.ViewMode = 0;
  panes.TogglePropertyView(PaneView::RZEBView);
  EXPECT_EQ(options.RZEBViewMode, 1);
  panes.ToggleViewMode();
  EXPECT_EQ(options.ViewMode, 1);
  EXPECT_EQ(options.RZEBViewMode, 0);
}

TEST_F(TwoPanesTest, BothPanesCannotBeInPropertyView) {
  options.ViewMode = 0;
  panes.TogglePropertyView(PaneView::LZEBView);
  EXPECT_TRUE(Left().IsPropertyView());
  panes.TogglePropertyView(PaneView::RZEBView);
  EXPECT_FALSE(Left().IsPropertyView());
  EXPECT_TRUE(Right().IsPropertyView());
  panes.TogglePropertyView(PaneView::RZEBView);
  EXPECT_FALSE(Right().IsPropertyView());
  panes.TogglePropertyView(PaneView::RFSView);
  EXPECT_FALSE(Left().IsPropertyView());
}

TEST_F(TwoPanesTest, TheFilePaneShowsTheDirectoryOfTheLeftArchive) {
  inbox.ID = dir.Path("in");
  ASSERT_TRUE(host->CreateFolder(inbox.ID));
  dir.WriteHostFile("in/archive.dat", "x");
  options.ViewMode = 0;
  options.RZEBViewMode = 1;
  ASSERT_TRUE(Left().ShowArchive(inbox.ID));
  EXPECT_TRUE(panes.ArcDirSync());
  EXPECT_EQ(currentPath, inbox.ID + "\\");
  EXPECT_TRUE(panes.ShowsFiles());
  EXPECT_EQ(options.RZEBViewMode, 0);
  EXPECT_EQ(Files().Name(1), "archive.dat");
}

TEST_F(TwoPanesTest, ADirectoryThatCannotBeShownLeavesTheViewAsItIs) {
  options.ViewMode = 0;
  ASSERT_TRUE(Left().ShowArchive(inbox.ID));
  EXPECT_FALSE(panes.ArcDirSync());
  EXPECT_FALSE(panes.ShowsFiles());
  EXPECT_EQ(currentPath, dir.Path() + "\\");
  EXPECT_EQ(frontEnd.Boxes.size(), 1u);
}

TEST_F(TwoPanesTest, TheLeftPaneShowsTheArchiveOfTheDirectory) {
  currentPath = inbox.ID + "\\";
  EXPECT_TRUE(panes.DirArcSync());
  EXPECT_EQ(PlaceOf(Left()), "/ZEB/Eingang");
}

TEST_F(TwoPanesTest, ADirectoryThatIsNoArchiveIsTold) {
  currentPath = R"(Z:\tmp\)";
  EXPECT_FALSE(panes.DirArcSync());
  inbox.NoAccess = true;
  currentPath = inbox.ID;
  EXPECT_FALSE(panes.DirArcSync());
  ASSERT_EQ(frontEnd.Boxes.size(), 2u);
  EXPECT_EQ(frontEnd.Boxes[0].Title, "Unbekanntes Verzeichnis");
  EXPECT_EQ(frontEnd.Boxes[0].Text,
            R"(Das Verzeichnis Z:\tmp ist kein ZEB-Archiv oder es besteht kein Zugriffsrecht.)");
  EXPECT_EQ(frontEnd.Boxes[1].Title, "Unbekanntes Verzeichnis");
  EXPECT_EQ(PlaceOf(Left()), "/ZEB");
}

TEST_F(TwoPanesTest, SwapExchangesAllThatThePanesShow) {
  options.ViewMode = 0;
  options.LZEBSortingMode = sort_mode::From;
  options.RZEBRoutingSortingDirection = false;
  AddMail(outbox, "x");
  ASSERT_TRUE(Left().ShowArchive(inbox.ID));
  ASSERT_TRUE(Right().ShowArchive(outbox.ID));
  ASSERT_TRUE(Right().SetRuleView(true));
  EXPECT_TRUE(panes.Swap());
  EXPECT_EQ(PlaceOf(Left()), "/ZEB/Ausgang");
  EXPECT_EQ(PlaceOf(Right()), "/ZEB/Eingang");
  EXPECT_TRUE(Left().IsRuleView());
  EXPECT_FALSE(Right().IsRuleView());
  EXPECT_EQ(options.RZEBSortingMode, sort_mode::From);
  EXPECT_FALSE(options.LZEBRoutingSortingDirection);
  EXPECT_EQ(Right().RowCount(), 1u);
  EXPECT_TRUE(Left().Refresh());
  EXPECT_EQ(PlaceOf(Left()), "/ZEB/Ausgang") << "the session has changed sides too";
}

TEST_F(TwoPanesTest, SwapDoesNothingBesideTheFileSystem) {
  ASSERT_TRUE(Left().ShowArchive(inbox.ID));
  const auto before = Left().Generation();
  EXPECT_FALSE(panes.Swap());
  EXPECT_EQ(PlaceOf(Left()), "/ZEB/Eingang");
  EXPECT_EQ(Left().Generation(), before);
}

TEST_F(TwoPanesTest, OnePaneTakesOverTheOthersArchive) {
  options.ViewMode = 0;
  ASSERT_TRUE(Left().ShowArchive(inbox.ID));
  ASSERT_TRUE(Right().ShowArchive(outbox.ID));
  EXPECT_TRUE(panes.TakeOver(PaneView::LZEBView));
  EXPECT_EQ(PlaceOf(Left()), "/ZEB/Ausgang");
  ASSERT_TRUE(Left().ShowArchive(inbox.ID));
  EXPECT_TRUE(panes.TakeOver(PaneView::RZEBView));
  EXPECT_EQ(PlaceOf(Right()), "/ZEB/Eingang");
  EXPECT_NE(session.LeftArchive, session.RightArchive) << "each pane has an object of its own";
  options.ViewMode = 1;
  ASSERT_TRUE(Left().ShowArchive(outbox.ID));
  EXPECT_FALSE(panes.TakeOver(PaneView::LZEBView));
  EXPECT_EQ(PlaceOf(Left()), "/ZEB/Ausgang");
}

TEST_F(TwoPanesTest, RefreshListsWhatIsShown) {
  EXPECT_TRUE(panes.RefreshAll());
  EXPECT_EQ(Left().RowCount(), 2u);
  EXPECT_EQ(Right().RowCount(), 0u) << "the right archive is not shown";
  EXPECT_GT(Files().RowCount(), 0u);
  options.ViewMode = 0;
  EXPECT_TRUE(panes.RefreshAll());
  EXPECT_EQ(Right().RowCount(), 2u);
}

}  // namespace
}  // namespace velmora::panes
