#include "panes/dialogs/del_rout_dialog.h"

#include <utility>

#include "panes/dialogs/selection_text.h"

namespace velmora::panes {

DelRoutDialog::DelRoutDialog(operations::RuleSelection selection, bool mayDelete)
    : selection_(std::move(selection)), mayDelete_(mayDelete) {}

std::string DelRoutDialog::NothingMarked() const {
  return selection_.Rules.empty() || !mayDelete_ ? std::string(NothingToDelete) : "";
}

std::string DelRoutDialog::SourceText() const {
  std::string text = DeletionText(CountText(selection_), selection_.Archive->FullPath());
  for (const operations::MarkedRule& rule : selection_.Rules) text += "\r\n" + rule.Name;
  return text;
}

std::optional<operations::RuleSelection> DelRoutDialog::Ok(run::Prompts& prompts) const {
  if (const std::string reason = NothingMarked(); !reason.empty()) {
    prompts.Message("Fehler", reason, run::Icon::Exclamation);
    return std::nullopt;
  }
  return selection_;
}

}  // namespace velmora::panes
