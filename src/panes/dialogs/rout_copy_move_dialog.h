// The dialog RoutCopyMoveDialogBox: the rules that are marked in a rule view go into another archive.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "operations/rule_copy.h"
#include "panes/dialogs/target_archive.h"

namespace velmora::panes {

// The check boxes, in the dialog's order.
enum class RoutCopyMoveBox { EnUpdRouteArcs, EnCreateArcs, EnDelLostArcs };
inline constexpr std::size_t RoutCopyMoveBoxCount = 3;

struct RoutCopyMoveBoxText {
  bool operations::RuleCopyOptions::*Option;
  std::string_view Control, Caption, Tip;
};
inline constexpr std::array<RoutCopyMoveBoxText, RoutCopyMoveBoxCount> RoutCopyMoveBoxes = {{
    {&operations::RuleCopyOptions::EnUpdRouteArcs, "EnUpdRouteArcs", "Regel-Zielarchive anpassen",
     "Regelziele an die Zielarchiv-Umgebung anpassen. Die Anpassung geschieht nur, wenn das Zielarchiv "
     "vorhanden ist oder die Option \"Nicht vorhandene Archive anlegen\" aktiviert ist."},
    {&operations::RuleCopyOptions::EnCreateArcs, "EnCreateArcs", "Nicht vorhandene Archive anlegen",
     "Im Zielarchiv nicht vorhandene Verteilungszielarchive werden automatisch angelegt"},
    {&operations::RuleCopyOptions::EnDelLostArcs, "EnDelLostArcs", "Ungültige Verteilungsziele löschen",
     "Verteilungsziele mit ungültigem Zielarchiv werden nicht kopiert"},
}};

namespace rout_copy_move_text {
inline constexpr std::string_view CMDstTip =
    "Zielarchiv, bei manueller Zielangabe Groß-/Kleinschreibung beachten";
inline constexpr std::string_view SrcArcTip = "Anderes Zielarchiv auswählen", SrcArcTitle = "Zielarchiv";
inline constexpr std::string_view CancelButton = "Abbrechen";
}  // namespace rout_copy_move_text

// What OK asks for: the arguments of operations::RunRuleCopy.
struct RoutCopyMoveRequest {
  operations::RuleCopyOptions Options;
  operations::RuleSelection Selection;
  std::shared_ptr<store::DvArchive> Target;
};

class RoutCopyMoveDialog {
 public:
  struct Parts {
    store::DvAccount& account;
    operations::CopyMode Mode = operations::CopyMode::Copy;
    operations::RuleSelection Selection;
    std::shared_ptr<store::DvArchive> Target;  // the current archive of the other pane
  };
  explicit RoutCopyMoveDialog(const Parts& parts);

  // "Es sind keine Objekte zum Kopieren markiert", under "Fehler", when no rule is marked; "" otherwise.
  std::string NothingMarked() const;

  // --- What the controls hold. ---
  std::string_view Title() const;  // also the caption of OkButton
  std::string SourceText() const;  // "2 Regel(n) kopieren von", the archive, "nach"
  bool IsChecked(RoutCopyMoveBox box) const { return choices_.*OptionOf(box); }
  bool IsEnabled(RoutCopyMoveBox box) const;
  const std::string& CMDst() const { return target_.Text(); }

  // --- What the user does; the view fills its boxes anew after each. ---
  void SetBox(RoutCopyMoveBox box, bool checked);  // of a disabled box: nothing happens
  void SetCMDst(std::string_view path) { target_.SetText(path); }
  void SrcArc(run::Choosers& choosers) { target_.Choose(choosers, rout_copy_move_text::SrcArcTitle); }

  // The run for the caller; nothing, after a message, when the target does not exist: the dialog stays.
  std::optional<RoutCopyMoveRequest> Ok(run::Prompts& prompts);

 private:
  static constexpr bool operations::RuleCopyOptions::*OptionOf(RoutCopyMoveBox box) {
    return RoutCopyMoveBoxes[static_cast<std::size_t>(box)].Option;
  }

  Parts parts_;
  operations::RuleCopyOptions choices_;
  TargetArchive target_;
};

}  // namespace velmora::panes
