// The dialog DelDblArcEntries: an archive that stands several times in its parent's archive.dir keeps its
// first entry.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "maintenance/entry_removal.h"
#include "panes/rows.h"
#include "run/run.h"
#include "store/account.h"

namespace velmora::panes {

namespace del_dbl_arc_entries_text {
inline constexpr std::string_view Title = "Doppelte Archiveinträge löschen";
inline constexpr std::string_view SrcArc = "Doppelte Archiveinträge löschen von:",
                                  DblCnt = "Anzahl der identischen Einträge:";
inline constexpr std::string_view CancelButton = "Abbrechen";
}  // namespace del_dbl_arc_entries_text

class DelDblArcEntriesDialog {
 public:
  // For the archive under the cursor. Nothing, after a message, when there is nothing to remove: an archive
  // with one entry, a short-cut, one that cannot be fetched.
  static std::optional<DelDblArcEntriesDialog> Open(run::Run& run, store::DvAccount& account,
                                                    const ArchiveRow& row);

  // --- What the controls hold. ---
  const std::string& SrcArc() const { return path_; }  // the archive's full path
  std::string DblCnt() const { return std::to_string(count_); }

  // Removes all entries but the first and tells how many went. True: the list is to be shown anew. The dialog
  // closes in any case.
  bool Ok();

 private:
  DelDblArcEntriesDialog(run::Run& run, store::DvAccount& account, std::string id, std::string path,
                         std::size_t count)
      : run_(run), account_(account), id_(std::move(id)), path_(std::move(path)), count_(count) {}

  run::Run& run_;
  store::DvAccount& account_;
  std::string id_, path_;
  std::size_t count_;
};

}  // namespace velmora::panes
