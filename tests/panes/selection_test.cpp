// Selecting rows and finding them.
#include "panes/selection.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "pane_fixture.h"

namespace velmora::panes {
namespace {

using Rows = std::vector<std::size_t>;

Rows Selected(const SelectionSet& selection) {
  Rows rows;
  for (std::size_t row = 0; row < selection.size(); ++row) {
    if (selection[row]) rows.push_back(row);
  }
  return rows;
}

class SelectionTest : public PanesTest {
 protected:
  // "[..]", the archive "Post", the messages "Angebot 1", "Angebot 2", "Rechnung".
  SelectionTest() {
    fake.AddArchive(&inbox, "Post", R"(\\SERVER\DAVID\ARCHIVE\IN\P)");
    for (const auto* subject : {"Angebot 1", "Angebot 2", "Rechnung"}) AddMail(inbox, subject);
    options.ViewMode = 0;
    EXPECT_TRUE(Left().ShowArchive(inbox.ID));
    EXPECT_TRUE(Right().ShowArchive(inbox.ID));
  }
};

TEST_F(SelectionTest, AllButTheWayUp) {
  EXPECT_EQ(Selected(SelectAll(Left(), true)), (Rows{1, 2, 3, 4}));
  EXPECT_EQ(Selected(SelectAll(Left(), false)), Rows{});
  EXPECT_EQ(CountSelected(SelectAll(Left(), true)), 4u);
}

TEST_F(SelectionTest, ARowWithNothingButTheWayUpSelectsNothing) {
  ASSERT_TRUE(Left().ShowArchive(outbox.ID));
  ASSERT_EQ(Left().RowCount(), 1u);
  EXPECT_EQ(Selected(SelectAll(Left(), true)), Rows{});
  EXPECT_EQ(Selected(NegSelectAll(Left(), {})), Rows{});
}

TEST_F(SelectionTest, TheSelectionIsTurnedButTheWayUpStaysOut) {
  SelectionSet selection(5, false);
  selection[0] = selection[2] = true;
  EXPECT_EQ(Selected(NegSelectAll(Left(), selection)), (Rows{1, 3, 4}));
}

TEST_F(SelectionTest, APatternAddsAndTakesOutMessages) {
  auto selection = ItemSelection(Left(), {}, std::nullopt, "angebot*", true);
  EXPECT_EQ(Selected(selection), (Rows{2, 3})) << "without regard to case";
  selection = ItemSelection(Left(), selection, std::nullopt, "*", true);
  EXPECT_EQ(Selected(selection), (Rows{2, 3, 4})) << "archives are not tested";
  selection = ItemSelection(Left(), selection, std::nullopt, "Angebot ?", false);
  EXPECT_EQ(Selected(selection), Rows{4});
  EXPECT_EQ(Selected(ItemSelection(Left(), {}, std::nullopt, "", true)), Rows{})
      << "no pattern matches nothing";
}

TEST_F(SelectionTest, ASelectedArchiveStaysSelected) {
  SelectionSet selection(5, false);
  selection[1] = true;
  EXPECT_EQ(Selected(ItemSelection(Left(), selection, std::nullopt, "*", false)), Rows{1});
}

TEST_F(SelectionTest, TheCurrentRowIsDeselectedFirst) {
  SelectionSet selection(5, false);
  selection[1] = selection[4] = true;
  EXPECT_EQ(Selected(ItemSelection(Left(), selection, 4, "Angebot*", true)), (Rows{1, 2, 3}));
  EXPECT_EQ(Selected(ItemSelection(Left(), selection, 2, "Angebot*", true)), (Rows{1, 2, 3, 4}))
      << "it is tested like the others";
}

TEST_F(SelectionTest, RulesAreTestedOnTheRightOnly) {
  // The panes have always differed here, and the users of both know it.
  inbox.Rules.resize(2);
  inbox.Rules[0].Name = "Faxe";
  inbox.Rules[1].Name = "Mails";
  ASSERT_TRUE(Left().SetRuleView(true));
  ASSERT_TRUE(Right().SetRuleView(true));
  EXPECT_EQ(Selected(ItemSelection(Left(), {}, std::nullopt, "*", true)), Rows{});
  EXPECT_EQ(Selected(ItemSelection(Right(), {}, std::nullopt, "*", true)), (Rows{2, 3}));
}

TEST_F(SelectionTest, InTheFileViewOnlyFilesAreTested) {
  ASSERT_TRUE(host->CreateFolder(dir.Path("a.txt.d")));
  for (const auto* name : {"a.txt", "b.TXT", "c.doc"}) dir.WriteHostFile(name, "x");
  ASSERT_TRUE(Files().Refresh());
  const auto selection = ItemSelection(Files(), {}, std::nullopt, "*.txt*", true);
  EXPECT_EQ(Selected(selection), (Rows{1, 3}));
  EXPECT_EQ(Files().Name(1), "a.txt");
  EXPECT_EQ(Files().Name(3), "b.TXT");
}

TEST_F(SelectionTest, CaptionsOfTheFourActions) {
  EXPECT_EQ(CaptionOf(ActionOf(PaneView::LZEBView, true)), "Message Auswahl erweitern");
  EXPECT_EQ(CaptionOf(ActionOf(PaneView::RZEBView, false)), "Message Auswahl reduzieren");
  EXPECT_EQ(CaptionOf(ActionOf(PaneView::RFSView, true)), "Dateiauswahl erweitern");
  EXPECT_EQ(CaptionOf(ActionOf(PaneView::RFSView, false)), "Dateiauswahl reduzieren");
}

TEST_F(SelectionTest, ANameFindsArchivesOnlyInAnArchiveView) {
  AddMail(inbox, "post");
  ASSERT_TRUE(Left().Refresh());
  EXPECT_EQ(FindByDisplayName(Left(), "post"), 1);
  EXPECT_EQ(FindByDisplayName(Left(), "rechnung"), -1) << "a message";
  EXPECT_EQ(FindByDisplayName(Left(), "Post"), -1) << "the name is given in lower case";
}

TEST_F(SelectionTest, ANameFindsEveryRowOfTheFileView) {
  ASSERT_TRUE(host->CreateFolder(dir.Path("Neu")));
  dir.WriteHostFile("Datei.txt", "x");
  ASSERT_TRUE(Files().Refresh());
  EXPECT_EQ(FindByDisplayName(Files(), "neu"), 2);
  EXPECT_EQ(FindByDisplayName(Files(), "datei.txt"), 1);
  EXPECT_EQ(FindByDisplayName(Files(), "fehlt"), -1);
}

TEST_F(SelectionTest, TypingFindsTheNextRowAndWraps) {
  EXPECT_EQ(FindStartingWith(Left(), "ang", 0), 2);
  EXPECT_EQ(FindStartingWith(Left(), "ang", 3), 3);
  EXPECT_EQ(FindStartingWith(Left(), "ang", 4), 2);
  EXPECT_EQ(FindStartingWith(Left(), "P", 4), 1);
  EXPECT_EQ(FindStartingWith(Left(), "x", 0), -1);
  EXPECT_EQ(FindStartingWith(Left(), "", 0), -1);
  EXPECT_EQ(FindStartingWith(Right(), "ang", 99), 2) << "beyond the end counts from the top";
}

TEST_F(SelectionTest, ASelectionGoesWithItsRowsThroughASort) {
  SelectionSet selection(Left().RowCount(), false);
  selection[1] = selection[Left().RowCount() - 1] = true;
  std::vector<std::string> names;
  for (std::size_t row = 0; row < selection.size(); ++row) {
    if (selection[row]) names.push_back(Left().Name(row));
  }
  const SelectionSet appended = ByUnsortedIndex(Left(), selection);
  Left().ClickHeader(0);
  const SelectionSet after = FromUnsortedIndex(Left(), appended);
  EXPECT_EQ(CountSelected(after), 2u);
  EXPECT_NE(after, selection) << "the sort has moved them";
  for (std::size_t row = 0; row < after.size(); ++row) {
    EXPECT_EQ(after[row], std::ranges::find(names, Left().Name(row)) != names.end()) << row;
  }
  EXPECT_EQ(CountSelected(FromUnsortedIndex(Left(), {})), 0u);
}

TEST_F(SelectionTest, RowsAreFoundAgainAfterASort) {
  const auto tag = Left().Tag(2);
  Left().ClickHeader(0);
  EXPECT_EQ(FindByTag(Left(), tag), 4);
  EXPECT_EQ(FindByTag(Left(), "R9999"), -1);
}

}  // namespace
}  // namespace velmora::panes
