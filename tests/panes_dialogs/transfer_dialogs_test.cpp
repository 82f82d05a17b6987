// Copying and moving within the store: archives and messages, rules.
#include "dialogs_fixture.h"
#include "panes/dialogs/rout_copy_move_dialog.h"
#include "panes/dialogs/zeb_copy_move_dialog.h"

namespace velmora::panes {
namespace {

using operations::CopyMode;
using RuleBox = RoutCopyMoveBox;

class TransferDialogsTest : public DialogsTest {
 protected:
  ZEBCopyMoveDialog Dialog(CopyMode mode = CopyMode::Copy) {
    return ZEBCopyMoveDialog({*account, options, last, mayDelete, mode, selection, fake.Open(outbox.ID)});
  }
  RoutCopyMoveDialog RuleDialog(CopyMode mode = CopyMode::Copy) {
    return RoutCopyMoveDialog({*account, mode, rules, fake.Open(outbox.ID)});
  }

  operations::StoreCopyOptions last;
};

// --- Archives and messages. ---

TEST_F(TransferDialogsTest, TextsFollowTheMode) {
  EXPECT_EQ(Dialog().Title(), "Kopieren");
  EXPECT_EQ(Dialog(CopyMode::Move).Title(), "Verschieben");
  EXPECT_EQ(Dialog().SourceText(), "1 Message(s) kopieren von\r\n" + inbox.FullPath + "\r\n nach");
  selection.Objects = {{Archive, 0, "a", false}, {Archive, 0, "b", true}, {Message, 1, "", false}};
  EXPECT_EQ(Dialog(CopyMode::Move).SourceText(),
            "1 Archiv(e), 1 Link(s), 1 Message(s) verschieben von\r\n" + inbox.FullPath + "\r\n nach");
}

TEST_F(TransferDialogsTest, WithNothingMarkedItDoesNotOpen) {
  EXPECT_EQ(Dialog().NothingMarked(), "");
  selection.Objects.clear();
  EXPECT_EQ(Dialog().NothingMarked(), "Es sind keine Objekte zum Kopieren markiert");
  EXPECT_EQ(Dialog(CopyMode::Move).NothingMarked(), "Es sind keine Objekte zum Verschieben markiert");
}

TEST_F(TransferDialogsTest, TheTableOfBoxesStandsInTheirOrder) {
  EXPECT_EQ(ZEBCopyMoveBoxes[static_cast<std::size_t>(ZEBCopyMoveBox::EnDelArchives)].Control,
            "EnDelArchives");
  EXPECT_EQ(ZEBCopyMoveBoxes[static_cast<std::size_t>(ZEBCopyMoveBox::EnSaveOrgArcs)].Control,
            "EnSaveOrgArcs");
  EXPECT_EQ(ZEBCopyMoveBoxes[static_cast<std::size_t>(ZEBCopyMoveBox::EnRoutings)].Control, "EnRoutings");
  // "Verknüpung" has been misspelled since users know it.
  EXPECT_NE(ZEBCopyMoveBoxes[static_cast<std::size_t>(ZEBCopyMoveBox::EnLinkedArcs)].Tip.find(
                "nicht als Verknüpung"),
            std::string_view::npos);
}

TEST_F(TransferDialogsTest, TheStructureIsDeletedOnlyByAMoveWithTheRight) {
  EXPECT_FALSE(Dialog().IsEnabled(ZEBCopyMoveBox::EnDelArchives));
  EXPECT_FALSE(Dialog().IsChecked(ZEBCopyMoveBox::EnDelArchives));
  EXPECT_TRUE(Dialog(CopyMode::Move).IsEnabled(ZEBCopyMoveBox::EnDelArchives));
  EXPECT_TRUE(Dialog(CopyMode::Move).IsChecked(ZEBCopyMoveBox::EnDelArchives));
  options.DeleteArchive = false;
  EXPECT_FALSE(Dialog(CopyMode::Move).IsChecked(ZEBCopyMoveBox::EnDelArchives));
  options.DeleteArchive = true;
  mayDelete = false;
  auto dialog = Dialog(CopyMode::Move);
  EXPECT_FALSE(dialog.IsEnabled(ZEBCopyMoveBox::EnDelArchives));
  dialog.SetBox(ZEBCopyMoveBox::EnDelArchives, true);
  EXPECT_FALSE(dialog.Ok(prompts())->Options.EnDelArchives);
}

TEST_F(TransferDialogsTest, EachBoxLeadsToItsOption) {
  auto dialog = Dialog(CopyMode::Move);
  dialog.SetBox(ZEBCopyMoveBox::EnDelArchives, false);
  const auto all = {ZEBCopyMoveBox::EnCopyOnlyArcs, ZEBCopyMoveBox::EnDblArcNames,
                    ZEBCopyMoveBox::EnLinkedArcs,   ZEBCopyMoveBox::EnSaveOrgArcs,
                    ZEBCopyMoveBox::EnCpyProp,      ZEBCopyMoveBox::EnRoutings};
  for (const ZEBCopyMoveBox box : all) {
    dialog.SetBox(box, true);
    const auto chosen = dialog.Ok(prompts())->Options;
    EXPECT_EQ(chosen.EnCopyOnlyArcs, box == ZEBCopyMoveBox::EnCopyOnlyArcs);
    EXPECT_EQ(chosen.EnDblArcNames, box == ZEBCopyMoveBox::EnDblArcNames);
    EXPECT_EQ(chosen.EnLinkedArcs, box == ZEBCopyMoveBox::EnLinkedArcs);
    EXPECT_EQ(chosen.EnSaveOrgArcs, box == ZEBCopyMoveBox::EnSaveOrgArcs);
    EXPECT_EQ(chosen.EnCpyProp, box == ZEBCopyMoveBox::EnCpyProp);
    EXPECT_EQ(chosen.EnRoutings, box == ZEBCopyMoveBox::EnRoutings);
    EXPECT_FALSE(chosen.EnDelArchives);
    EXPECT_EQ(chosen.Mode, CopyMode::Move);
    dialog.SetBox(box, false);
  }
}

TEST_F(TransferDialogsTest, BoxesStandAsTheLastRunOfTheSessionLeftThem) {
  auto first = Dialog(CopyMode::Move);
  first.SetBox(ZEBCopyMoveBox::EnCpyProp, true);
  EXPECT_FALSE(Dialog().IsChecked(ZEBCopyMoveBox::EnCpyProp))
      << "a dialog that was not confirmed leaves nothing";
  ASSERT_TRUE(first.Ok(prompts()));
  const auto second = Dialog();
  EXPECT_TRUE(second.IsChecked(ZEBCopyMoveBox::EnCpyProp));
  EXPECT_FALSE(second.IsChecked(ZEBCopyMoveBox::EnDelArchives));
  EXPECT_FALSE(second.IsChecked(ZEBCopyMoveBox::EnRoutings));
}

TEST_F(TransferDialogsTest, TheTargetIsTheArchiveOfTheOtherPane) {
  auto dialog = Dialog();
  EXPECT_EQ(dialog.CMDst(), outbox.FullPath);
  const auto request = dialog.Ok(prompts());
  ASSERT_TRUE(request);
  EXPECT_EQ(request->Target->ID(), outbox.ID);
  EXPECT_EQ(request->Selection.Objects.size(), 1u);
  EXPECT_TRUE(front.Boxes.empty());
}

// A path finds the first archive of its name; the one that the pane shows is meant.
TEST_F(TransferDialogsTest, OfTwoArchivesOfOneNameTheOneOfThePaneIsTheTarget) {
  const auto& second = fake.AddArchive(&root, "Ausgang", R"(\\S\DAVID\ARCHIVE\OUT2)");
  ZEBCopyMoveDialog dialog({*account, options, last, true, CopyMode::Copy, selection, fake.Open(second.ID)});
  ASSERT_EQ(second.FullPath, outbox.FullPath);
  EXPECT_EQ(dialog.Ok(prompts())->Target->ID(), second.ID);
}

TEST_F(TransferDialogsTest, AnotherTargetIsTypedOrChosen) {
  auto dialog = Dialog();
  dialog.SetCMDst("  " + root.FullPath + " ");
  EXPECT_EQ(dialog.Ok(prompts())->Target->ID(), root.ID);
  front.Inputs = {std::nullopt, inbox.FullPath};
  dialog.SrcArc(set.choosers);
  EXPECT_EQ(dialog.Ok(prompts())->Target->ID(), root.ID);
  dialog.SrcArc(set.choosers);
  EXPECT_EQ(dialog.Ok(prompts())->Target->ID(), inbox.ID);
}

TEST_F(TransferDialogsTest, AMissingTargetKeepsTheDialogOpen) {
  auto dialog = Dialog();
  for (const char* path : {"/Gibt es nicht", "", "   "}) {
    front.Boxes.clear();
    dialog.SetCMDst(path);
    EXPECT_FALSE(dialog.Ok(prompts()));
    ASSERT_EQ(front.Boxes.size(), 1u);
    EXPECT_EQ(front.Boxes[0].Title, "Falsches Zielarchiv");
  }
}

TEST_F(TransferDialogsTest, ALinkAsTargetMeansWhatItLeadsTo) {
  fake.AddLink(inbox, outbox);
  const auto link = fake.Open(inbox.ID)->SubArchives()->front();
  ASSERT_TRUE(link->IsShortCut());
  ZEBCopyMoveDialog dialog({*account, options, last, true, CopyMode::Copy, selection, link});
  const auto request = dialog.Ok(prompts());
  ASSERT_TRUE(request);
  EXPECT_EQ(request->Target->ID(), outbox.ID);
  EXPECT_FALSE(request->Target->IsShortCut());
}

// --- Rules. ---

TEST_F(TransferDialogsTest, RulesAreCountedInTheText) {
  EXPECT_EQ(RuleDialog().SourceText(), "2 Regel(n) kopieren von\r\n" + inbox.FullPath + "\r\n nach");
  EXPECT_EQ(RuleDialog(CopyMode::Move).Title(), "Verschieben");
  EXPECT_EQ(RuleDialog().NothingMarked(), "");
  rules.Rules.clear();
  EXPECT_EQ(RuleDialog().NothingMarked(), "Es sind keine Objekte zum Kopieren markiert");
}

TEST_F(TransferDialogsTest, ArchivesAreMadeOnlyForTargetsThatAreAdapted) {
  auto dialog = RuleDialog();
  EXPECT_FALSE(dialog.IsEnabled(RuleBox::EnCreateArcs));
  dialog.SetBox(RuleBox::EnCreateArcs, true);
  EXPECT_FALSE(dialog.IsChecked(RuleBox::EnCreateArcs));
  dialog.SetBox(RuleBox::EnUpdRouteArcs, true);
  dialog.SetBox(RuleBox::EnCreateArcs, true);
  EXPECT_TRUE(dialog.Ok(prompts())->Options.EnCreateArcs);
  dialog.SetBox(RuleBox::EnUpdRouteArcs, false);
  EXPECT_FALSE(dialog.Ok(prompts())->Options.EnCreateArcs);
}

TEST_F(TransferDialogsTest, TheRequestHoldsWhatWasChosenForTheRules) {
  auto dialog = RuleDialog(CopyMode::Move);
  dialog.SetBox(RuleBox::EnDelLostArcs, true);
  const auto request = dialog.Ok(prompts());
  ASSERT_TRUE(request);
  EXPECT_EQ(request->Options.Mode, CopyMode::Move);
  EXPECT_TRUE(request->Options.EnDelLostArcs);
  EXPECT_FALSE(request->Options.EnUpdRouteArcs || request->Options.EnCreateArcs);
  EXPECT_EQ(request->Target->ID(), outbox.ID);
  ASSERT_EQ(request->Selection.Rules.size(), 2u);
  EXPECT_EQ(request->Selection.Rules[1].Position, 3);
}

TEST_F(TransferDialogsTest, RulesNeedATarget) {
  auto dialog = RuleDialog();
  dialog.SetCMDst("/Gibt es nicht");
  EXPECT_FALSE(dialog.Ok(prompts()));
  EXPECT_EQ(front.Boxes.size(), 1u);
}

TEST_F(TransferDialogsTest, TheTipOfTheAdaptionNamesTheOtherOption) {
  const std::string_view tip = RoutCopyMoveBoxes[0].Tip;
  EXPECT_TRUE(
      tip.starts_with("Regelziele an die Zielarchiv-Umgebung anpassen. Die Anpassung geschieht nur, "
                      "wenn das Zielarchiv vorhanden ist oder die "));
  EXPECT_TRUE(tip.ends_with(" aktiviert ist."));
  EXPECT_NE(tip.find(RoutCopyMoveBoxes[1].Caption), std::string_view::npos);
}

}  // namespace
}  // namespace velmora::panes
