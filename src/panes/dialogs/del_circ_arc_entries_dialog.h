// The dialog DelCircArcEntries: entries below an archive that point back up are shown and removed.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "maintenance/circular_entries.h"
#include "panes/rows.h"
#include "run/run.h"
#include "store/account.h"

namespace velmora::panes {

namespace del_circ_arc_entries_text {
inline constexpr std::string_view Title = "Zirkulare Archiveinträge suchen / entfernen";
inline constexpr std::string_view SrcArc = "Zirkulare Archiveinträge entfernen aus:",
                                  ListCircRef = "Gefundene zirkulare Referenzen:", DblCnt = "Anzahl:";
inline constexpr std::string_view CancelButton = "Abbrechen";
}  // namespace del_circ_arc_entries_text

class DelCircArcEntriesDialog {
 public:
  // For the archive under the cursor and all below it that `isVisible` shows. Nothing, after a message, when
  // there is nothing to remove, and for a short-cut.
  static std::optional<DelCircArcEntriesDialog> Open(run::Run& run, store::DvAccount& account,
                                                     const ArchiveRow& row,
                                                     maintenance::Visibility isVisible = {});

  // --- What the controls hold. ---
  const std::string& SrcArc() const { return path_; }
  const std::string& ListCircRef() const { return report_; }  // lines, ended by CR LF
  std::string DblCnt() const { return std::to_string(count_); }

  enum class End { Stays, Closes, ClosesChanged };  // changed: the list is to be shown anew
  // Asks, removes all circular entries and tells how many went.
  End Ok();

 private:
  DelCircArcEntriesDialog(run::Run& run, store::DvAccount& account, maintenance::Visibility isVisible)
      : run_(run), account_(account), isVisible_(std::move(isVisible)) {}

  run::Run& run_;
  store::DvAccount& account_;
  maintenance::Visibility isVisible_;
  std::string id_, path_, report_;
  std::size_t count_ = 0;
};

}  // namespace velmora::panes
