// The front end of velmoractl: messages go to standard error; so does the progress, on one line that is
// rewritten, when standard error is a terminal. A question is answered on the terminal, and gets its default
// answer where nobody can type. Ctrl+C while a run shows its progress asks the run to cancel.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

#include "platform/clock.h"
#include "run/front_ends.h"

namespace velmora::run {

class ConsoleFrontEnd final : Prompts, Choosers, Progress, StatusDisplay, Viewers {
 public:
  // `interactive`: whether somebody watches and can type; see IsTerminal.
  ConsoleFrontEnd(platform::Clock& clock, std::FILE* input, std::FILE* output, bool interactive);
  ~ConsoleFrontEnd() override;
  ConsoleFrontEnd(const ConsoleFrontEnd&) = delete;
  ConsoleFrontEnd& operator=(const ConsoleFrontEnd&) = delete;

  FrontEnd Set() { return {*this, *this, *this, *this, *this}; }
  // Whether both streams are a terminal.
  static bool IsTerminal(std::FILE* input, std::FILE* output);

 private:
  class InterruptGuard;

  void Message(std::string_view title, std::string_view text, Icon icon) override;
  Answer Question(std::string_view title, std::string_view text, Buttons buttons,
                  Answer defaultAnswer) override;
  std::optional<std::string> InputLine(std::string_view title, std::string_view label,
                                       std::string_view value) override;

  std::optional<std::string> ChooseFolder(std::string_view title, std::string_view start) override;
  std::optional<std::string> ChooseFile(std::string_view title, std::string_view start,
                                        const std::vector<FileFilter>& filters, FileUse use) override;
  std::optional<std::string> ChooseArchive(std::string_view title, std::string_view startFullPath) override;
  std::optional<std::string> ChooseUser(std::string_view title) override;

  void Show(std::string_view title) override;
  void SetArchiveText(std::string_view text) override;
  void SetItemText(std::string_view text) override;
  void SetBar(std::int64_t done, std::int64_t total) override;
  void Close() override;
  bool Pump() override;

  void SetStatusText(std::string_view text) override;
  void ShowWait(std::string_view text) override;
  void EndWait() override;

  void ShowText(std::string_view title, std::string_view text, const TextUses& uses) override;
  void OpenDocument(std::string_view path) override;

  void Write(std::string_view text);
  void DrawProgress();
  void ClearProgress();
  std::optional<std::string> ReadLine();

  platform::Clock& clock_;
  std::FILE* input_;   // not owned
  std::FILE* output_;  // not owned
  bool interactive_;
  std::unique_ptr<InterruptGuard> interrupts_;  // while the progress is shown
  std::string archiveText_, itemText_;
  std::int64_t done_ = 0, total_ = 0;
  std::int64_t shownAt_ = 0, lastPump_ = 0, lastDraw_ = 0;  // steady milliseconds
  bool progressDrawn_ = false;
  bool cancelRequested_ = false;
};

}  // namespace velmora::run
