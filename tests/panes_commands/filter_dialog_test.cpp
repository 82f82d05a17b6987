#include "panes/dialogs/filter_dialog.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "support/scripted_front_end.h"

namespace velmora::panes {
namespace {

class FilterDialogTest : public testing::Test {
 protected:
  static const store::FilterBox& Box(std::string_view control) {
    return *std::ranges::find(store::FilterBoxes, control, &store::FilterBox::Control);
  }
  static const store::FilterPreset& Preset(std::string_view control) {
    return *std::ranges::find(store::FilterPresets, control, &store::FilterPreset::Control);
  }
  // The preset that is on, "" for none.
  static std::string PresetOn(const FilterDialog& dialog) {
    std::string on;
    for (const store::FilterPreset& preset : store::FilterPresets) {
      if (dialog.IsOn(preset)) on += preset.Control;
    }
    return on;
  }
  run::Prompts& prompts() { return set.prompts; }

  settings::Options options;
  test::ScriptedFrontEnd front;
  run::FrontEnd set = front.Set();
};

TEST_F(FilterDialogTest, WithoutAFilterEverythingButTheFinalStatusIsChecked) {
  const FilterDialog dialog(options, true);
  for (const store::FilterBox& box : store::FilterBoxes) {
    EXPECT_EQ(dialog.IsChecked(box), box.Control != "FltConclusion") << box.Control;
  }
  EXPECT_EQ(PresetOn(dialog), "FltNone");
  EXPECT_EQ(dialog.FltValue(), "301FB");
  EXPECT_TRUE(dialog.FltHidden());
  EXPECT_FALSE(dialog.Changed());
}

TEST_F(FilterDialogTest, NormalDiffersFromAllInTheFinalStatusOnly) {
  options.DvItemFilter = 0x301FF;
  const FilterDialog dialog(options, true);
  EXPECT_EQ(PresetOn(dialog), "FltDefault");
  for (const store::FilterBox& box : store::FilterBoxes) EXPECT_TRUE(dialog.IsChecked(box)) << box.Control;
}

TEST_F(FilterDialogTest, EachPresetTakesItsMask) {
  FilterDialog dialog(options, true);
  for (const store::FilterPreset& preset : store::FilterPresets) {
    dialog.StdFltChange(preset.Mask);
    EXPECT_EQ(dialog.Mask(), preset.Mask);
    EXPECT_EQ(PresetOn(dialog), preset.Control);
  }
}

TEST_F(FilterDialogTest, OnlyOneTypeLeavesLinksAndDocumentsVisible) {
  FilterDialog dialog(options, true);
  dialog.StdFltChange(Preset("FltOnlyFax").Mask);
  EXPECT_TRUE(dialog.IsChecked(Box("FltLinkItems")));
  EXPECT_TRUE(dialog.IsChecked(Box("FltDocumentItems")));
  EXPECT_FALSE(dialog.IsChecked(Box("FltEMailItems")));
  dialog.StdFltChange(Preset("FltOnlyMFA").Mask);
  EXPECT_FALSE(dialog.IsChecked(Box("FltLinkItems")));
  EXPECT_FALSE(dialog.IsChecked(Box("FltDocumentItems")));
}

TEST_F(FilterDialogTest, TypesAreExcludedAndStatusIsIncludedByASetBit) {
  FilterDialog dialog(options, true);
  dialog.SetBox(Box("FltFaxItems"), false);
  EXPECT_EQ(dialog.Mask(), 0x301FBu | 0x200u);
  dialog.SetBox(Box("FltViewed"), false);
  EXPECT_EQ(dialog.Mask(), (0x301FBu | 0x200u) & ~0x20u);
  dialog.SetBox(Box("FltFaxItems"), true);
  dialog.SetBox(Box("FltViewed"), true);
  EXPECT_EQ(dialog.Mask(), 0x301FBu);
  EXPECT_TRUE(dialog.Changed());
}

TEST_F(FilterDialogTest, BitsWithoutAControlStayAsTheyAre) {
  options.DvItemFilter = 0x188;  // all four of them
  FilterDialog dialog(options, true);
  dialog.SetBox(Box("FltFaxItems"), false);
  EXPECT_EQ(dialog.Mask() & 0x198u, 0x188u);
  dialog.SetBox(Box("FltFaxItems"), true);
  EXPECT_EQ(dialog.Mask(), 0x188u);
}

TEST_F(FilterDialogTest, AMaskReachedByHandLightsItsPreset) {
  FilterDialog dialog(options, true);
  dialog.SetBox(Box("FltConclusion"), true);
  EXPECT_EQ(PresetOn(dialog), "FltDefault");
  EXPECT_EQ(dialog.FltValue(), "301FF");
  dialog.SetBox(Box("FltViewed"), false);
  EXPECT_EQ(PresetOn(dialog), "");
}

TEST_F(FilterDialogTest, CancelKeepsTheMaskButNotTheHiddenEntries) {
  {
    FilterDialog dialog(options, true);
    dialog.SetBox(Box("FltFaxItems"), false);
    dialog.SetFltHidden(false);
  }  // "Abbrechen"
  EXPECT_EQ(options.DvItemFilter, 0x301FB);
  // It is no part of the mask and takes effect at once.
  EXPECT_FALSE(options.DvInhibitItems);
}

TEST_F(FilterDialogTest, OkTakesTheMaskAndListsAnewAfterAChangeOnly) {
  EXPECT_FALSE(FilterDialog(options, true).Ok());
  FilterDialog dialog(options, true);
  dialog.SetBox(Box("FltDocumentItems"), false);
  EXPECT_TRUE(dialog.Ok());
  EXPECT_EQ(static_cast<std::uint32_t>(options.DvItemFilter), 0x080301FBu);
}

TEST_F(FilterDialogTest, ResetAsksAndNoIsTheDefault) {
  FilterDialog dialog(options, true);
  dialog.StdFltChange(Preset("FltOnlyFax").Mask);
  dialog.SetFltHidden(false);
  dialog.FltReset(prompts());
  EXPECT_EQ(front.Boxes.back(), (test::ScriptedFrontEnd::Box{
                                    "Reset Filter", "Alle Filterbedingungen auf Standard setzen?", true}));
  EXPECT_EQ(dialog.Mask(), Preset("FltOnlyFax").Mask);
  EXPECT_FALSE(options.DvInhibitItems);
}

TEST_F(FilterDialogTest, ResetTurnsEverythingOn) {
  options.DvItemFilter = 0x301FF;
  options.DvInhibitItems = false;
  FilterDialog dialog(options, true);
  front.Answers = {run::Answer::Yes};
  dialog.FltReset(prompts());
  EXPECT_EQ(dialog.FltValue(), "301FB");
  EXPECT_TRUE(dialog.FltHidden());
  EXPECT_TRUE(dialog.Changed());
}

TEST_F(FilterDialogTest, OnlyAnAdministratorSeesTheMask) {
  EXPECT_TRUE(FilterDialog(options, true).FltValueVisible());
  EXPECT_FALSE(FilterDialog(options, false).FltValueVisible());
}

}  // namespace
}  // namespace velmora::panes
