// The dialog of the four commands that add rows to the selection or take them out by a pattern. Captions and
// note stand in panes/selection.h.
#pragma once

#include <string>
#include <string_view>

#include "panes/selection.h"

namespace velmora::panes {

namespace pattern_text {
inline constexpr std::string_view InpPattern = "Muster :", CancelButton = "Abbrechen";
}  // namespace pattern_text

// The last patterns of this session: one of both archive views, one of the file view.
struct LastPatterns {
  std::string Messages = "*", Files = "*";
};

class PatternDialog {
 public:
  PatternDialog(SelectionAction action, LastPatterns& last)
      : action_(action), last_(IsForFiles(action) ? last.Files : last.Messages), pattern_(last_) {}

  std::string_view Title() const { return CaptionOf(action_); }
  const std::string& InpPattern() const { return pattern_; }
  void SetInpPattern(std::string_view pattern) { pattern_ = pattern; }

  // OK: the pattern for ItemSelection, offered again the next time.
  const std::string& Ok() {
    last_ = pattern_;
    return last_;
  }

 private:
  static bool IsForFiles(SelectionAction action) {
    return action == SelectionAction::ExtendFiles || action == SelectionAction::ReduceFiles;
  }

  SelectionAction action_;
  std::string& last_;
  std::string pattern_;
};

}  // namespace velmora::panes
