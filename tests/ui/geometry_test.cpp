#include <gtest/gtest.h>

#include "ui/window_geometry.h"

namespace velmora::ui {
namespace {

constexpr ScreenArea Screen = {0, 0, 1920, 1040};

TEST(WindowGeometryTest, TheDefaultsAreDotsOfFifteenTwips) {
  const WindowFrame frame = FrameFromOptions(settings::Options(), Screen);
  EXPECT_EQ(frame.Width, 800);
  EXPECT_EQ(frame.Height, 603);
  EXPECT_EQ(frame.Left, 560);  // in the middle
  EXPECT_FALSE(frame.IsMaximized);
}

// The default top is -195 twips: no title bar may stand above the screen.
TEST(WindowGeometryTest, ATopAboveTheScreenComesOntoIt) {
  EXPECT_EQ(FrameFromOptions(settings::Options(), Screen).Top, 0);
  EXPECT_EQ(FrameFromOptions(settings::Options(), {100, 30, 1820, 1000}).Top, 30);
}

TEST(WindowGeometryTest, ASizeThatNoScreenHasIsTheDefaultOne) {
  settings::Options options;
  options.FrmWidth = 2'000'000'000;
  options.FrmHeight = -5;
  options.VwWidth = 2'000'000'000;
  const WindowFrame frame = FrameFromOptions(options, Screen);
  EXPECT_EQ(frame.Width, 800);
  EXPECT_EQ(frame.Height, 603);
  EXPECT_LE(frame.LeftPane, Screen.Width);
}

TEST(WindowGeometryTest, ATopBelowTheScreenComesUp) {
  settings::Options options;
  options.FrmTop = 1'000'000;
  const WindowFrame frame = FrameFromOptions(options, Screen);
  EXPECT_EQ(frame.Top, Screen.Height - frame.Height);
}

TEST(WindowGeometryTest, ASomewhatLargerWindowIsCutToTheScreen) {
  settings::Options options;
  options.FrmWidth = 2500 * TwipsPerDot;
  EXPECT_EQ(FrameFromOptions(options, Screen).Width, Screen.Width);
}

TEST(WindowGeometryTest, AFrameComesBackAsItWasStored) {
  const WindowFrame stored = {.Left = 460,
                              .Top = 20,
                              .Width = 1000,
                              .Height = 700,
                              .IsMaximized = true,
                              .LeftPane = 480,
                              .RightPane = 500};
  settings::Options options;
  FrameToOptions(stored, options);
  EXPECT_EQ(FrameFromOptions(options, Screen), stored);
  EXPECT_EQ(options.WindowsState, 2);
}

}  // namespace
}  // namespace velmora::ui
