#include "panes/dialogs/del_fs_dialog.h"

#include "mailarchive/format/marker.h"
#include "panes/dialogs/selection_text.h"

namespace velmora::panes {

DelFSDialog::DelFSDialog(const Parts& parts)
    : parts_(parts),
      canHoldContent_(mailarchive::ProbeMailArc(parts.fileSystem, parts.Selection.Directory).CanHoldContent) {
  choices_.EnDelDirs = parts.options.DeleteFolder;
  choices_.EnMakeIdx = parts.options.MakeIndex && canHoldContent_;
  choices_.HideMailArcHelperFiles = parts.HideHelperFiles;
  choices_.DateIndexSortedUp = parts.options.DateIndexSortedUp;
  choices_.ClearErrorLog = parts.options.ClearErrorLog;
}

std::string DelFSDialog::NothingMarked() const {
  return parts_.Selection.Items.empty() ? std::string(NothingToDelete) : "";
}

std::string DelFSDialog::SourceText() const {
  return DeletionText(CountText(parts_.Selection), parts_.Selection.Directory);
}

bool DelFSDialog::IsEnabled(DelFSBox box) const { return box != DelFSBox::EnMakeIdx || canHoldContent_; }

void DelFSDialog::SetBox(DelFSBox box, bool checked) {
  if (IsEnabled(box)) choices_.*OptionOf(box) = checked;
}

std::optional<DelFSRequest> DelFSDialog::Ok(run::Prompts& prompts) {
  if (const std::string reason = NothingMarked(); !reason.empty()) {
    prompts.Message("Fehler", reason, run::Icon::Exclamation);
    return std::nullopt;
  }
  return DelFSRequest{choices_, parts_.Selection};
}

}  // namespace velmora::panes
