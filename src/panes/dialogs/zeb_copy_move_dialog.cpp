#include "panes/dialogs/zeb_copy_move_dialog.h"

#include "panes/dialogs/selection_text.h"

namespace velmora::panes {

ZEBCopyMoveDialog::ZEBCopyMoveDialog(const Parts& parts)
    : parts_(parts), choices_(parts.LastChoices), target_(parts.account, parts.Target) {
  choices_.Mode = parts.Mode;
  choices_.EnDelArchives = parts.options.DeleteArchive && IsEnabled(ZEBCopyMoveBox::EnDelArchives);
}

std::string ZEBCopyMoveDialog::NothingMarked() const {
  return parts_.Selection.Objects.empty() ? NothingToTransfer(parts_.Mode) : "";
}

std::string_view ZEBCopyMoveDialog::Title() const { return TitleOf(parts_.Mode); }

std::string ZEBCopyMoveDialog::SourceText() const {
  return TransferText(CountText(parts_.Selection), parts_.Mode, parts_.Selection.CurrentArchive->FullPath());
}

bool ZEBCopyMoveDialog::IsEnabled(ZEBCopyMoveBox box) const {
  return box != ZEBCopyMoveBox::EnDelArchives ||
         (parts_.Mode == operations::CopyMode::Move && parts_.MayDeleteArchives);
}

void ZEBCopyMoveDialog::SetBox(ZEBCopyMoveBox box, bool checked) {
  if (IsEnabled(box)) choices_.*OptionOf(box) = checked;
}

std::optional<ZEBCopyMoveRequest> ZEBCopyMoveDialog::Ok(run::Prompts& prompts) {
  auto target = target_.Find(prompts);
  if (!target) return std::nullopt;
  parts_.LastChoices = choices_;
  return ZEBCopyMoveRequest{choices_, parts_.Selection, std::move(target)};
}

}  // namespace velmora::panes
