// The front end of unattended runs: nothing is shown, a question gets its default answer, a choice is
// cancelled.
#pragma once

#include "run/front_ends.h"

namespace velmora::run {

class SilentFrontEnd final : Prompts, Choosers, Progress, StatusDisplay, Viewers {
 public:
  FrontEnd Set() { return {*this, *this, *this, *this, *this}; }

 private:
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
};

}  // namespace velmora::run
