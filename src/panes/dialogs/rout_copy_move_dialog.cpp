#include "panes/dialogs/rout_copy_move_dialog.h"

#include <utility>

#include "panes/dialogs/selection_text.h"

namespace velmora::panes {

RoutCopyMoveDialog::RoutCopyMoveDialog(const Parts& parts)
    : parts_(parts), target_(parts.account, parts.Target) {
  choices_.Mode = parts.Mode;
}

std::string RoutCopyMoveDialog::NothingMarked() const {
  return parts_.Selection.Rules.empty() ? NothingToTransfer(parts_.Mode) : "";
}

std::string_view RoutCopyMoveDialog::Title() const { return TitleOf(parts_.Mode); }

std::string RoutCopyMoveDialog::SourceText() const {
  return TransferText(CountText(parts_.Selection), parts_.Mode, parts_.Selection.Archive->FullPath());
}

// Archives are made for targets that are adapted, and for no others.
bool RoutCopyMoveDialog::IsEnabled(RoutCopyMoveBox box) const {
  return box != RoutCopyMoveBox::EnCreateArcs || choices_.EnUpdRouteArcs;
}

void RoutCopyMoveDialog::SetBox(RoutCopyMoveBox box, bool checked) {
  if (IsEnabled(box)) choices_.*OptionOf(box) = checked;
}

std::optional<RoutCopyMoveRequest> RoutCopyMoveDialog::Ok(run::Prompts& prompts) {
  auto target = target_.Find(prompts);
  if (!target) return std::nullopt;
  operations::RuleCopyOptions options = choices_;
  options.EnCreateArcs = choices_.EnCreateArcs && IsEnabled(RoutCopyMoveBox::EnCreateArcs);
  return RoutCopyMoveRequest{options, parts_.Selection, std::move(target)};
}

}  // namespace velmora::panes
