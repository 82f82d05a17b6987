// The dialog of the four commands that add rows to the selection or take them out by a pattern.
#pragma once

#include <cstddef>
#include <array>
#include <string>
#include <string_view>

namespace velmora::panes {

// In the order of the four actions, which is the order of the captions.
enum class PatternAction { ExtendMessages = 0, ReduceMessages = 1, ExtendFiles = 2, ReduceFiles = 3 };

namespace pattern_text {
inline constexpr std::array<std::string_view, 4> Titles = {
    "Message Auswahl erweitern", "Message Auswahl reduzieren", "Dateiauswahl erweitern",
    "Dateiauswahl reduzieren"};
inline constexpr std::string_view Note = "( Wildcards ? und * sind zulässig )";
inline constexpr std::string_view InpPattern = "Muster :", CancelButton = "Abbrechen";
}  // namespace pattern_text

// The last patterns of this session: one of both archive views, one of the file view.
struct LastPatterns {
  std::string Messages = "*", Files = "*";
};

constexpr bool IsForFiles(PatternAction action) { return action >= PatternAction::ExtendFiles; }
constexpr bool Extends(PatternAction action) {
  return action == PatternAction::ExtendMessages || action == PatternAction::ExtendFiles;
}
constexpr PatternAction PatternActionFor(bool forFiles, bool extends) {
  if (forFiles) return extends ? PatternAction::ExtendFiles : PatternAction::ReduceFiles;
  return extends ? PatternAction::ExtendMessages : PatternAction::ReduceMessages;
}

class PatternDialog {
 public:
  PatternDialog(PatternAction action, LastPatterns& last)
      : action_(action), last_(IsForFiles(action) ? last.Files : last.Messages), pattern_(last_) {}

  std::string_view Title() const { return pattern_text::Titles[static_cast<std::size_t>(action_)]; }
  PatternAction Action() const { return action_; }
  const std::string& InpPattern() const { return pattern_; }
  void SetInpPattern(std::string_view pattern) { pattern_ = pattern; }

  // OK: the pattern to match rows with, remembered for the next time. An empty one matches nothing.
  const std::string& Ok() {
    last_ = pattern_;
    return last_;
  }

 private:
  PatternAction action_;
  std::string& last_;
  std::string pattern_;
};

}  // namespace velmora::panes
