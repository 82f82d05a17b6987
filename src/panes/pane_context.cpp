#include "panes/pane_context.h"

#include <fmt/core.h>

#include <algorithm>
#include <iterator>

#include "platform/file_system.h"
#include "store/errors.h"

namespace velmora::panes {
namespace {

// What a person can do about a failure of the store.
struct Advice {
  int Number;
  std::string_view Text;
};
constexpr std::string_view CheckStore = "\"velmoractl store check\" prüft den Speicher.";
constexpr Advice Advices[] = {
    {store::store_error::Busy, "Bitte in einigen Augenblicken noch einmal versuchen."},
    {store::store_error::Damaged, CheckStore},
    {platform::file_error::PathNotFound, CheckStore},
};

void Show(run::Run& run, std::string_view what, const Error& error, std::string_view advice) {
  if (run.BatchMode) return;
  const auto text = fmt::format("{}\n{}{}{}", what, error.Text, advice.empty() ? "" : "\n", advice);
  run.frontEnd().prompts.Message("Fehler", text, run::Icon::Stop);
}

}  // namespace

void ReportStoreFailure(run::Run& run, std::string_view what, const Error& error) {
  run.LogError(what, error.Number, "DvISE-Error " + error.Text, run::Severity::Error);
  const auto* const advice = std::ranges::find(Advices, error.Number, &Advice::Number);
  Show(run, what, error, advice == std::end(Advices) ? std::string_view() : advice->Text);
}

void ReportFileFailure(run::Run& run, std::string_view what, const Error& error) {
  run.LogError(what, error);
  Show(run, what, error, {});
}

}  // namespace velmora::panes
