#include "run/error_log_view.h"

#include <vector>

#include "base/code_page.h"

namespace velmora::run {
namespace {

constexpr std::string_view LogTitle = "Fehlerprotokoll";

void ShowLogOrReason(Run& run) {
  const Result<std::string> bytes = run.fileSystem().ReadFile(run.ErrorLogPath());
  if (bytes) {
    const std::vector<FileFilter> saveFilters = {{"Textdatei (*.txt)", "*.txt"},
                                                 {"Alle Dateien (*.*)", "*.*"}};
    run.frontEnd().viewers.ShowText(LogTitle, FromCodePage(*bytes), saveFilters);
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
