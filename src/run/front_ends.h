// The five interfaces between the rules and whoever watches. Four sets exist: the window, silent (unattended
// runs: a question gets its default answer), console (velmoractl) and scripted (tests).
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::run {

enum class Icon { None, Information, Question, Exclamation, Stop };
enum class Buttons { YesNo, YesNoCancel, OkCancel };
enum class Answer { Yes, No, Cancel, Ok };

class Prompts {
 public:
  virtual ~Prompts() = default;
  virtual void Message(std::string_view title, std::string_view text, Icon icon) = 0;
  virtual Answer Question(std::string_view title, std::string_view text, Buttons buttons,
                          Answer defaultAnswer) = 0;
  // Nothing when the user cancels.
  virtual std::optional<std::string> InputLine(std::string_view title, std::string_view label,
                                               std::string_view value) = 0;
};

struct FileFilter {
  std::string Caption, Mask;
};

// What a file is chosen for: to read it, it must exist; to make or replace it, the user is asked before an
// existing one is taken; to make or go on with it, an existing one is taken without a question.
enum class FileUse { Read, Replace, GoOn };

class Choosers {
 public:
  virtual ~Choosers() = default;
  // Windows paths; nothing when the user cancels.
  virtual std::optional<std::string> ChooseFolder(std::string_view title, std::string_view start) = 0;
  virtual std::optional<std::string> ChooseFile(std::string_view title, std::string_view start,
                                                const std::vector<FileFilter>& filters, FileUse use) = 0;
  virtual std::optional<std::string> ChooseArchive(std::string_view title,
                                                   std::string_view startFullPath) = 0;
  virtual std::optional<std::string> ChooseUser(std::string_view title) = 0;
};

// The progress box: the current archive, the current item, a bar, a cancel button.
class Progress {
 public:
  virtual ~Progress() = default;
  virtual void Show(std::string_view title) = 0;
  virtual void SetArchiveText(std::string_view text) = 0;
  virtual void SetItemText(std::string_view text) = 0;
  virtual void SetBar(std::int64_t done, std::int64_t total) = 0;  // total 0: no end known
  virtual void Close() = 0;
  // Lets the interface breathe, at most every 50 ms. True once the user has asked to cancel.
  virtual bool Pump() = 0;
};

class StatusDisplay {
 public:
  virtual ~StatusDisplay() = default;
  virtual void SetStatusText(std::string_view text) = 0;
  virtual void ShowWait(std::string_view text) = 0;
  virtual void EndWait() = 0;
};

// What a shown text can be used for. What is empty is not offered.
struct TextUses {
  std::vector<FileFilter> SaveFilters;
  std::function<bool()> Delete;  // asks, and deletes what the text comes from; true: it is gone
};

class Viewers {
 public:
  virtual ~Viewers() = default;
  virtual void ShowText(std::string_view title, std::string_view text, const TextUses& uses) = 0;
  virtual void OpenDocument(std::string_view path) = 0;
};

// One set, handed down by reference. Owned by main.
struct FrontEnd {
  Prompts& prompts;
  Choosers& choosers;
  Progress& progress;
  StatusDisplay& status;
  Viewers& viewers;
};

}  // namespace velmora::run
