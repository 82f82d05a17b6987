// The dialog ZEBCopyMoveDialogBox: what is marked in one archive pane goes into the archive of the other.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "operations/archive_copy.h"
#include "panes/dialogs/target_archive.h"
#include "settings/options.h"
#include "store/selection.h"

namespace velmora::panes {

// The check boxes, in the dialog's order.
enum class ZEBCopyMoveBox {
  EnDelArchives,
  EnCopyOnlyArcs,
  EnDblArcNames,
  EnLinkedArcs,
  EnSaveOrgArcs,
  EnCpyProp,
  EnRoutings,
};
inline constexpr std::size_t ZEBCopyMoveBoxCount = 7;

struct ZEBCopyMoveBoxText {
  bool operations::StoreCopyOptions::*Option;
  std::string_view Control, Caption, Tip;
};
// "Verknüpung" and "wird kopieren" are deliberate: users know the texts so.
inline constexpr std::array<ZEBCopyMoveBoxText, ZEBCopyMoveBoxCount> ZEBCopyMoveBoxes = {{
    {&operations::StoreCopyOptions::EnDelArchives, "EnDelArchives", "Archivstruktur löschen",
     "Beim Verschieben wird die Quellarchiv-Struktur und nicht nur die Nachrichten gelöscht."},
    {&operations::StoreCopyOptions::EnCopyOnlyArcs, "EnCopyOnlyArcs", "Nur Archivstruktur kopieren",
     "Es wird nur die Archivstruktur ohne Nachrichten kopiert."},
    {&operations::StoreCopyOptions::EnDblArcNames, "EnDblArcNames", "Doppelte Archivnamen verhindern",
     "Vorhandene Archive mit gleichem Anzeigenamen werden nicht neu angelegt sondern der Inhalt in das "
     "vorhandene Archiv kopiert/verschoben. Groß- und Kleinschreibung wird berücksichtigt."},
    {&operations::StoreCopyOptions::EnLinkedArcs, "EnLinkedArcs",
     "Verknüpfte Archive mit kopieren/verschieben",
     "Verknüpfte Archive werden nicht als Verknüpung kopiert sondern deren Inhalt wird "
     "kopieren/verschoben"},
    {&operations::StoreCopyOptions::EnSaveOrgArcs, "EnSaveOrgArcs", "Verzeichnisnamen beibehalten",
     "Der Verzeichnisname des Quellarchivs wird im Zielarchiv beibehalten."},
    {&operations::StoreCopyOptions::EnCpyProp, "EnCpyProp", "Eigenschaften kopieren",
     "Das Zielarchiv bekommt alle Eigenschaften des Quellarchivs."},
    {&operations::StoreCopyOptions::EnRoutings, "EnRoutings", "Regeln kopieren",
     "Die Verteilerregeln werden mit kopiert/verschoben. Eine Anpassung an das Ziel wird nicht "
     "vorgenommen."},
}};

namespace zeb_copy_move_text {
inline constexpr std::string_view CMDstTip = "Zielarchiv";
inline constexpr std::string_view SrcArcTip = "Anderes Zielarchiv wählen", SrcArcTitle = "Zielarchiv";
inline constexpr std::string_view CancelButton = "Abbrechen";
}  // namespace zeb_copy_move_text

// What OK asks for: the arguments of operations::RunStoreCopy.
struct ZEBCopyMoveRequest {
  operations::StoreCopyOptions Options;
  store::Selection Selection;
  std::shared_ptr<store::DvArchive> Target;
};

class ZEBCopyMoveDialog {
 public:
  struct Parts {
    store::DvAccount& account;
    const settings::Options& options;
    operations::StoreCopyOptions& LastChoices;  // of this session: the boxes as OK left them
    bool MayDeleteArchives = false;
    operations::CopyMode Mode = operations::CopyMode::Copy;
    store::Selection Selection;
    std::shared_ptr<store::DvArchive> Target;  // the current archive of the other pane
  };
  explicit ZEBCopyMoveDialog(const Parts& parts);

  // "Es sind keine Objekte zum Kopieren markiert", under "Fehler", when nothing is marked: then the dialog is
  // not shown. "" otherwise.
  std::string NothingMarked() const;

  // --- What the controls hold. ---
  std::string_view Title() const;  // also the caption of OkButton
  std::string SourceText() const;  // "2 Archiv(e), 1 Message(s) kopieren von", the archive, "nach"
  bool IsChecked(ZEBCopyMoveBox box) const { return choices_.*OptionOf(box); }
  bool IsEnabled(ZEBCopyMoveBox box) const;
  const std::string& CMDst() const { return target_.Text(); }

  // --- What the user does. ---
  void SetBox(ZEBCopyMoveBox box, bool checked);  // of a disabled box: nothing happens
  void SetCMDst(std::string_view path) { target_.SetText(path); }
  void SrcArc(run::Choosers& choosers) { target_.Choose(choosers, zeb_copy_move_text::SrcArcTitle); }

  // The run for the caller; nothing, after a message, when the target does not exist: the dialog stays.
  std::optional<ZEBCopyMoveRequest> Ok(run::Prompts& prompts);

 private:
  static constexpr bool operations::StoreCopyOptions::*OptionOf(ZEBCopyMoveBox box) {
    return ZEBCopyMoveBoxes[static_cast<std::size_t>(box)].Option;
  }

  Parts parts_;
  operations::StoreCopyOptions choices_;
  TargetArchive target_;
};

}  // namespace velmora::panes
