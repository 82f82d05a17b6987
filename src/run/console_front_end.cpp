#include "run/console_front_end.h"

#include <fmt/format.h>
#include <signal.h>
#include <time.h>
#include <unistd.h>

#include <array>

#include "base/text.h"
#include "run/progress_text.h"

namespace velmora::run {
namespace {

constexpr std::int64_t PumpIntervalMilliseconds = 50;
constexpr std::int64_t DrawIntervalMilliseconds = 250;
constexpr std::size_t LineWidth = 79;
constexpr std::size_t ArchiveTextWidth = 32;

struct AnswerText {
  Buttons Set;
  Answer Value;
  std::string_view Letters;  // the accepted words, each between blanks
  std::string_view Caption;
};

constexpr std::array AnswerTexts = {
    AnswerText{Buttons::YesNo, Answer::Yes, " j ja y yes ", "j"},
    AnswerText{Buttons::YesNo, Answer::No, " n nein no ", "n"},
    AnswerText{Buttons::YesNoCancel, Answer::Yes, " j ja y yes ", "j"},
    AnswerText{Buttons::YesNoCancel, Answer::No, " n nein no ", "n"},
    AnswerText{Buttons::YesNoCancel, Answer::Cancel, " a abbrechen ", "a"},
    AnswerText{Buttons::OkCancel, Answer::Ok, " o ok ", "o"},
    AnswerText{Buttons::OkCancel, Answer::Cancel, " a abbrechen ", "a"},
};

std::string Choices(Buttons buttons, Answer defaultAnswer) {
  std::vector<std::string> captions;
  for (const AnswerText& answer : AnswerTexts) {
    if (answer.Set == buttons) {
      captions.push_back(answer.Value == defaultAnswer ? ToUpper(answer.Caption)
                                                       : std::string(answer.Caption));
    }
  }
  return Join(captions, "/");
}

Answer DecodeAnswer(Buttons buttons, std::string_view typed, Answer defaultAnswer) {
  const std::string word = fmt::format(" {} ", ToLower(Trim(typed)));
  for (const AnswerText& answer : AnswerTexts) {
    if (answer.Set == buttons && word != "  " && answer.Letters.find(word) != std::string_view::npos) {
      return answer.Value;
    }
  }
  return defaultAnswer;
}

}  // namespace

// Holds SIGINT back, so that it can be asked for between two entries instead of ending the process within
// one.
class ConsoleFrontEnd::InterruptGuard {
 public:
  InterruptGuard() {
    sigemptyset(&interrupt_);
    sigaddset(&interrupt_, SIGINT);
    pthread_sigmask(SIG_BLOCK, &interrupt_, &before_);
  }
  ~InterruptGuard() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
  InterruptGuard(const InterruptGuard&) = delete;
  InterruptGuard& operator=(const InterruptGuard&) = delete;

  // Whether one has come since the last call.
  bool Take() {
    const timespec noWait = {};
    return sigtimedwait(&interrupt_, nullptr, &noWait) == SIGINT;
  }

 private:
  sigset_t interrupt_ = {};
  sigset_t before_ = {};
};

ConsoleFrontEnd::ConsoleFrontEnd(platform::Clock& clock, std::FILE* input, std::FILE* output,
                                 bool interactive)
    : clock_(clock), input_(input), output_(output), interactive_(interactive) {}

ConsoleFrontEnd::~ConsoleFrontEnd() { ClearProgress(); }

bool ConsoleFrontEnd::IsTerminal(std::FILE* input, std::FILE* output) {
  return isatty(fileno(input)) == 1 && isatty(fileno(output)) == 1;
}

void ConsoleFrontEnd::Write(std::string_view text) {
  // A console that has gone away must not end a run.
  (void)std::fwrite(text.data(), 1, text.size(), output_);
  (void)std::fflush(output_);
}

std::optional<std::string> ConsoleFrontEnd::ReadLine() {
  std::string line;
  for (int byte = std::fgetc(input_); byte != '\n'; byte = std::fgetc(input_)) {
    if (byte == EOF) {
      return std::nullopt;
    }
    line.push_back(static_cast<char>(byte));
  }
  return line;
}

// --- Prompts. ---

void ConsoleFrontEnd::Message(std::string_view title, std::string_view text, Icon) {
  ClearProgress();
  Write(fmt::format("{}: {}\n", title, ReplaceAll(text, "\r\n", "\n")));
}

Answer ConsoleFrontEnd::Question(std::string_view title, std::string_view text, Buttons buttons,
                                 Answer defaultAnswer) {
  if (!interactive_) {
    return defaultAnswer;
  }
  ClearProgress();
  Write(fmt::format("{}: {} [{}] ", title, ReplaceAll(text, "\r\n", "\n"), Choices(buttons, defaultAnswer)));
  const std::optional<std::string> typed = ReadLine();
  return typed ? DecodeAnswer(buttons, *typed, defaultAnswer) : defaultAnswer;
}

std::optional<std::string> ConsoleFrontEnd::InputLine(std::string_view title, std::string_view label,
                                                      std::string_view value) {
  if (!interactive_) {
    return std::nullopt;
  }
  ClearProgress();
  Write(fmt::format("{}: {} [{}] ", title, label, value));
  std::optional<std::string> typed = ReadLine();
  if (typed && Trim(*typed).empty()) {
    typed = std::string(value);
  }
  return typed;
}

// --- Choosers: a path is typed. ---

std::optional<std::string> ConsoleFrontEnd::ChooseFolder(std::string_view title, std::string_view start) {
  return InputLine(title, "Verzeichnis", start);
}
std::optional<std::string> ConsoleFrontEnd::ChooseFile(std::string_view title, std::string_view start,
                                                       const std::vector<FileFilter>&, FileUse) {
  return InputLine(title, "Datei", start);
}
std::optional<std::string> ConsoleFrontEnd::ChooseArchive(std::string_view title,
                                                          std::string_view startFullPath) {
  return InputLine(title, "Archiv", startFullPath);
}
std::optional<std::string> ConsoleFrontEnd::ChooseUser(std::string_view title) {
  return InputLine(title, "Benutzer", "");
}

// --- Progress. ---

void ConsoleFrontEnd::Show(std::string_view title) {
  archiveText_.clear();
  itemText_.clear();
  done_ = total_ = 0;
  cancelRequested_ = false;
  shownAt_ = clock_.SteadyMilliseconds();
  lastPump_ = lastDraw_ = shownAt_ - DrawIntervalMilliseconds;
  interrupts_ = std::make_unique<InterruptGuard>();
  if (interactive_) {
    Write(fmt::format("{}\n", title));
  }
}

void ConsoleFrontEnd::SetArchiveText(std::string_view text) { archiveText_ = text; }
void ConsoleFrontEnd::SetItemText(std::string_view text) { itemText_ = text; }
void ConsoleFrontEnd::SetBar(std::int64_t done, std::int64_t total) {
  done_ = done;
  total_ = total;
}

void ConsoleFrontEnd::Close() {
  ClearProgress();
  interrupts_.reset();
}

bool ConsoleFrontEnd::Pump() {
  const std::int64_t now = clock_.SteadyMilliseconds();
  if (now - lastPump_ < PumpIntervalMilliseconds) {
    return cancelRequested_;
  }
  lastPump_ = now;
  if (interrupts_ && interrupts_->Take()) {
    cancelRequested_ = true;
  }
  if (interactive_ && interrupts_ && now - lastDraw_ >= DrawIntervalMilliseconds) {
    lastDraw_ = now;
    DrawProgress();
  }
  return cancelRequested_;
}

void ConsoleFrontEnd::DrawProgress() {
  // The texts come from mail: control characters would drive the terminal.
  std::string line = std::string(LeftCharacters(archiveText_, ArchiveTextWidth));
  if (total_ > 0) {
    line += fmt::format("  {}  noch {}", ProgressText(done_, total_),
                        RemainingTimeText((clock_.SteadyMilliseconds() - shownAt_) / 1000, done_, total_));
  }
  line += "  " + itemText_;
  Write(fmt::format("\r{}\x1b[K", LeftCharacters(BlankControlCharacters(line), LineWidth)));
  progressDrawn_ = true;
}

void ConsoleFrontEnd::ClearProgress() {
  if (progressDrawn_) {
    Write("\r\x1b[K");
    progressDrawn_ = false;
  }
}

// --- Status and viewers. ---

void ConsoleFrontEnd::SetStatusText(std::string_view) {}
void ConsoleFrontEnd::ShowWait(std::string_view text) {
  if (interactive_ && !text.empty()) {
    ClearProgress();
    Write(fmt::format("{}\n", text));
  }
}
void ConsoleFrontEnd::EndWait() {}

void ConsoleFrontEnd::ShowText(std::string_view title, std::string_view text, const TextUses&) {
  Message(title, text, Icon::None);
}
void ConsoleFrontEnd::OpenDocument(std::string_view path) {
  ClearProgress();
  Write(fmt::format("{}\n", path));
}

}  // namespace velmora::run
