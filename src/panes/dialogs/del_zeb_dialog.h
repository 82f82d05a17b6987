// The dialog DelZEBDialogBox: what is marked in an archive pane is deleted.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "operations/archive_deletion.h"
#include "run/front_ends.h"
#include "settings/options.h"
#include "store/selection.h"

namespace velmora::panes {

// The check boxes, in the dialog's order.
enum class DelZEBBox { EnDelArchives, EnPhysErase, EnLinkedArcs };
inline constexpr std::size_t DelZEBBoxCount = 3;

struct DelZEBBoxText {
  bool operations::StoreDeleteOptions::*Option;
  std::string_view Control, Caption, Tip;
};
inline constexpr std::array<DelZEBBoxText, DelZEBBoxCount> DelZEBBoxes = {{
    {&operations::StoreDeleteOptions::EnDelArchives, "EnDelArchives", "Archivstruktur löschen",
     "Inhalt und Unterarchive löschen"},
    {&operations::StoreDeleteOptions::EnPhysErase, "EnPhysErase", "Archive auf Dateiebene löschen",
     "Löschen aller Dateien im Archiv-Verzeichnis. Diese Option ist nur bei abgeschaltetem Filter "
     "wirksam.\r\nAchtung: In den betreffenden Archiven dürfen in dieser Zeit keine Änderungen durch den "
     "David Service Layer stattfinden."},
    {&operations::StoreDeleteOptions::EnLinkedArcs, "EnLinkedArcs", "Verknüpfte Archive einschließen",
     "Verknüpfte Archive mit löschen.\r\nVorsicht:\r\nDiese Option kann u.U. schwer überblickbare Folgen "
     "haben!"},
}};

// What OK asks for: the arguments of operations::RunStoreDelete.
struct DelZEBRequest {
  operations::StoreDeleteOptions Options;
  store::Selection Selection;
};

class DelZEBDialog {
 public:
  struct Parts {
    const settings::Options& options;
    bool MayDeleteArchives = false;
    store::Selection Selection;
  };
  explicit DelZEBDialog(const Parts& parts);

  // The text under "Fehler" when nothing is marked that this user may delete; "" otherwise.
  std::string NothingMarked() const;

  // --- What the controls hold. ---
  std::string SourceText() const;  // "2 Archiv(e), 1 Message(s) löschen aus", the archive
  bool IsChecked(DelZEBBox box) const { return choices_.*OptionOf(box); }
  bool IsEnabled(DelZEBBox box) const;

  // --- What the user does; the view fills its boxes anew after each. ---
  void SetBox(DelZEBBox box, bool checked);  // of a disabled box: nothing happens

  // The run for the caller; nothing, after a message or a question that was cancelled: the dialog stays.
  std::optional<DelZEBRequest> Ok(run::Prompts& prompts);

 private:
  static constexpr bool operations::StoreDeleteOptions::*OptionOf(DelZEBBox box) {
    return DelZEBBoxes[static_cast<std::size_t>(box)].Option;
  }
  bool HasFilter() const;

  Parts parts_;
  operations::StoreDeleteOptions choices_;
};

}  // namespace velmora::panes
