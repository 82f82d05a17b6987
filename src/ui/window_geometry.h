// The place and size of the main window as the settings hold them: in twips, 15 to a dot of 96 dpi.
#pragma once

#include "settings/options.h"

namespace velmora::ui {

inline constexpr int TwipsPerDot = 15;
// Values of WindowsState.
namespace window_state {
inline constexpr int Normal = 0, Maximized = 2;
}  // namespace window_state

// In dots, within the screen.
struct WindowFrame {
  int Left = 0, Top = 0, Width = 0, Height = 0;
  bool IsMaximized = false;
  int LeftPane = 0, RightPane = 0;  // widths

  bool operator==(const WindowFrame&) const = default;
};

// The part of a screen that windows may take.
struct ScreenArea {
  int Left = 0, Top = 0, Width = 0, Height = 0;
};

// What the settings say, brought onto the screen: a size that no screen has becomes the default one, a place
// outside of it the nearest one within. The window stands in the middle from left to right.
WindowFrame FrameFromOptions(const settings::Options& options, const ScreenArea& screen);
void FrameToOptions(const WindowFrame& frame, settings::Options& options);

}  // namespace velmora::ui
