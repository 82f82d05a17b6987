// The front end of tests: answers come from a script, and all that was shown is kept. A question beyond the
// script gets its default answer.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "run/front_ends.h"

namespace velmora::test {

class ScriptedFrontEnd final : run::Prompts, run::Choosers, run::Progress, run::StatusDisplay, run::Viewers {
 public:
  struct Box {
    std::string Title, Text;
    bool IsQuestion = false;

    bool operator==(const Box&) const = default;
  };

  run::FrontEnd Set() { return {*this, *this, *this, *this, *this}; }

  // --- The script. ---
  std::deque<run::Answer> Answers;
  std::deque<std::optional<std::string>> Inputs;  // also of the choosers
  bool DeletesViewedText = false;                 // where a viewed text can be deleted
  int CancelAtPump = 0;                           // the pump, counted from 1, that asks to cancel; 0 never

  // --- What was shown. ---
  std::vector<Box> Boxes;
  std::vector<std::string> ArchiveTexts, ItemTexts, StatusTexts, Waits, Documents;
  std::vector<std::string> ProgressTitles;
  std::vector<Box> ViewedTexts;
  bool ViewedTextDeleted = false;
  int Pumps = 0;
  int ProgressClosed = 0;
  int WaitsEnded = 0;

 private:
  void Message(std::string_view title, std::string_view text, run::Icon) override {
    Boxes.push_back({std::string(title), std::string(text), false});
  }
  run::Answer Question(std::string_view title, std::string_view text, run::Buttons,
                       run::Answer defaultAnswer) override {
    Boxes.push_back({std::string(title), std::string(text), true});
    if (Answers.empty()) {
      return defaultAnswer;
    }
    const run::Answer answer = Answers.front();
    Answers.pop_front();
    return answer;
  }
  std::optional<std::string> InputLine(std::string_view, std::string_view, std::string_view) override {
    return NextInput();
  }
  std::optional<std::string> ChooseFolder(std::string_view, std::string_view) override { return NextInput(); }
  std::optional<std::string> ChooseFile(std::string_view, std::string_view,
                                        const std::vector<run::FileFilter>&, run::FileUse) override {
    return NextInput();
  }
  std::optional<std::string> ChooseArchive(std::string_view, std::string_view) override {
    return NextInput();
  }
  std::optional<std::string> ChooseUser(std::string_view) override { return NextInput(); }

  void Show(std::string_view title) override { ProgressTitles.emplace_back(title); }
  void SetArchiveText(std::string_view text) override { ArchiveTexts.emplace_back(text); }
  void SetItemText(std::string_view text) override { ItemTexts.emplace_back(text); }
  void SetBar(std::int64_t, std::int64_t) override {}
  void Close() override { ++ProgressClosed; }
  bool Pump() override { return ++Pumps >= CancelAtPump && CancelAtPump > 0; }

  void SetStatusText(std::string_view text) override { StatusTexts.emplace_back(text); }
  void ShowWait(std::string_view text) override { Waits.emplace_back(text); }
  void EndWait() override { ++WaitsEnded; }

  void ShowText(std::string_view title, std::string_view text, const run::TextUses& uses) override {
    ViewedTexts.push_back({std::string(title), std::string(text), false});
    if (DeletesViewedText && uses.Delete) ViewedTextDeleted = uses.Delete();
  }
  void OpenDocument(std::string_view path) override { Documents.emplace_back(path); }

  std::optional<std::string> NextInput() {
    if (Inputs.empty()) {
      return std::nullopt;
    }
    std::optional<std::string> input = Inputs.front();
    Inputs.pop_front();
    return input;
  }
};

}  // namespace velmora::test
