#include "panes/dialogs/del_dbl_arc_entries_dialog.h"

#include <fmt/format.h>

#include "panes/dialogs/repair_texts.h"

namespace velmora::panes {

std::optional<DelDblArcEntriesDialog> DelDblArcEntriesDialog::Open(run::Run& run, store::DvAccount& account,
                                                                   const ArchiveRow& row) {
  const auto archive = maintenance::FetchArchive(run, account, row.ID);
  if (!archive) return std::nullopt;
  run::Prompts& prompts = run.frontEnd().prompts;
  // An archive that no list names, as the root, stands nowhere twice.
  const auto records = store::FindArchiveRecords(run.fileSystem(), account, **archive);
  const std::size_t count = records ? records->size() : 0;
  if (count <= 1) {
    prompts.Message("Kein doppelter Eintrag vorhanden",
                    "Das ausgewählte Archiv ist korrekt mit nur einem Eintrag im ZEB-Tree "
                    "(\"Archive.dir\") notiert.",
                    run::Icon::Information);
    return std::nullopt;
  }
  if (row.IsShortCut) {
    TellShortCutIsLeft(prompts);
    return std::nullopt;
  }
  return DelDblArcEntriesDialog(run, account, row.ID, (*archive)->FullPath(), count);
}

bool DelDblArcEntriesDialog::Ok() {
  const auto archive = account_.GetArchive(id_);
  if (!archive || (*archive)->IsShortCut()) return false;
  const int removed = maintenance::RemoveDuplicates(run_, account_, **archive);
  // No blank before "aus": users know the text so.
  run_.frontEnd().prompts.Message("Fertig",
                                  fmt::format("Es wurden {} Mehrfacheintr{}aus \"Archive.dir\" entfernt.",
                                              removed, removed == 1 ? "ag" : "äge"),
                                  run::Icon::Information);
  return true;
}

}  // namespace velmora::panes
