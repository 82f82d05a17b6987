#include "run/error_log_view.h"

#include "base/code_page.h"

namespace velmora::run {
namespace {

constexpr std::string_view LogTitle = "Fehlerprotokoll";

bool AskAndDeleteLog(Run& run) {
  const Answer answer = run.frontEnd().prompts.Question(
      "Protokoll löschen", "Fehlerprotokoll wirklich löschen ?", Buttons::YesNo, Answer::No);
  if (answer != Answer::Yes) {
    return false;
  }
  run.DeleteErrorLog();
  if (run.ErrorLogExists()) {
    run.frontEnd().prompts.Message(LogTitle, "Das Fehlerprotokoll kann nicht gelöscht werden.", Icon::Stop);
    return false;
  }
  return true;
}

void ShowLogOrReason(Run& run) {
  const Result<std::string> bytes = run.fileSystem().ReadFile(run.ErrorLogPath());
  if (bytes) {
    TextUses uses;
    uses.SaveFilters = {{"Textdatei (*.txt)", "*.txt"}, {"Alle Dateien (*.*)", "*.*"}};
    uses.Delete = [&run] { return AskAndDeleteLog(run); };
    run.frontEnd().viewers.ShowText(LogTitle, FromCodePage(*bytes), uses);
  } else if (run.ErrorLogExists()) {
    run.frontEnd().prompts.Message(LogTitle, bytes.error().Text, Icon::Exclamation);
  } else {
    run.frontEnd().prompts.Message(LogTitle, "Es ist kein Fehlerprotokoll vorhanden.", Icon::Exclamation);
  }
}

}  // namespace

bool ErrLogButtonEnabled(Run& run) { return run.ErrorLogExists(); }

void ViewErrorLog(Run& run) {
  run.frontEnd().status.ShowWait("");
  ShowLogOrReason(run);
  run.frontEnd().status.EndWait();
}

}  // namespace velmora::run
