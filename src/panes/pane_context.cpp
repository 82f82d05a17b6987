#include "panes/pane_context.h"

#include <fmt/core.h>

namespace velmora::panes {
namespace {

void Show(run::Run& run, std::string_view what, const Error& error) {
  if (run.BatchMode) return;
  run.frontEnd().prompts.Message("Fehler", fmt::format("{}\n{}", what, error.Text), run::Icon::Stop);
}

}  // namespace

void ReportStoreFailure(run::Run& run, std::string_view what, const Error& error) {
  run.LogError(what, error.Number, "DvISE-Error " + error.Text, run::Severity::Error);
  Show(run, what, error);
}

void ReportFileFailure(run::Run& run, std::string_view what, const Error& error) {
  run.LogError(what, error);
  Show(run, what, error);
}

}  // namespace velmora::panes
