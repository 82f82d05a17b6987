#include "ui/window_geometry.h"

#include <algorithm>

namespace velmora::ui {
namespace {

constexpr int SmallestWidth = 320, SmallestHeight = 240;
constexpr int SmallestPane = 80;
constexpr int LargestFactor = 2;  // of the screen: larger ones come from another machine, or are damaged

int Dots(std::int32_t twips) { return twips / TwipsPerDot; }

// A length of the settings in dots; the default where it makes no sense on this screen.
int LengthOr(std::int32_t twips, std::int32_t fallbackTwips, int smallest, int room) {
  const int dots = Dots(twips);
  const bool isSensible = dots >= smallest && dots <= room * LargestFactor;
  return std::clamp(isSensible ? dots : Dots(fallbackTwips), smallest, std::max(room, smallest));
}

}  // namespace

WindowFrame FrameFromOptions(const settings::Options& options, const ScreenArea& screen) {
  const settings::Options defaults;
  WindowFrame frame;
  frame.Width = LengthOr(options.FrmWidth, defaults.FrmWidth, SmallestWidth, screen.Width);
  frame.Height = LengthOr(options.FrmHeight, defaults.FrmHeight, SmallestHeight, screen.Height);
  frame.Left = screen.Left + std::max((screen.Width - frame.Width) / 2, 0);
  frame.Top = std::clamp(Dots(options.FrmTop), screen.Top,
                         std::max(screen.Top + screen.Height - frame.Height, screen.Top));
  frame.IsMaximized = options.WindowsState == window_state::Maximized;
  frame.LeftPane = LengthOr(options.VwWidth, defaults.VwWidth, SmallestPane, screen.Width);
  const int total = LengthOr(options.DnWidth, defaults.DnWidth, SmallestPane * 2, screen.Width);
  frame.RightPane = std::max(total - frame.LeftPane, SmallestPane);
  return frame;
}

void FrameToOptions(const WindowFrame& frame, settings::Options& options) {
  options.FrmWidth = frame.Width * TwipsPerDot;
  options.FrmHeight = frame.Height * TwipsPerDot;
  options.FrmTop = frame.Top * TwipsPerDot;
  options.WindowsState = frame.IsMaximized ? window_state::Maximized : window_state::Normal;
  options.VwWidth = frame.LeftPane * TwipsPerDot;
  options.DnWidth = (frame.LeftPane + frame.RightPane) * TwipsPerDot;
  options.VwrLeft = options.VwlLeft + options.VwWidth;
}

}  // namespace velmora::ui
