// The panes of the window together: which is active, what the right side shows, and the steps that lead from
// one pane to another.
#pragma once

#include <string>
#include <string_view>

#include "panes/archive_icons.h"
#include "panes/archive_pane.h"
#include "panes/file_pane.h"
#include "panes/pane_context.h"

namespace velmora::panes {

// Values of the setting ViewMode: what the right side shows.
namespace view_mode {
inline constexpr int Archive = 0, FileSystem = 1;
}  // namespace view_mode

class TwoPanes {
 public:
  explicit TwoPanes(const PaneContext& context);
  TwoPanes(const TwoPanes&) = delete;
  TwoPanes& operator=(const TwoPanes&) = delete;

  ArchivePane& Left() { return left_; }
  ArchivePane& Right() { return right_; }
  FilePane& Files() { return files_; }
  ArchivePane& Archives(PaneView view) { return view == PaneView::RZEBView ? right_ : left_; }
  Pane& Of(PaneView view);

  // After each sign-on, before the panes are listed: reads where the special archives lie, and forgets the
  // archives visited on another server.
  void SignedOn();
  // Lists the left pane and what the right side shows.
  bool RefreshAll();

  // --- What is shown and active. ---
  bool ShowsFiles() const;  // ViewMode
  // Toggles ViewMode; a property view on the right ends with it. The pane that comes up is listed.
  void ToggleViewMode();
  void SetViewMode(int mode);
  PaneView ActiveView() const { return active_; }
  void SetActiveView(PaneView view);  // a view of the right side that is not shown: the one that is
  Pane& Active() { return Of(active_); }
  // Tab: the other side.
  void ActivateOther();
  // Both panes cannot be in property view: switching one on ends the other's.
  void TogglePropertyView(PaneView view);

  // --- From pane to pane. False, and nothing changes, when it cannot be done. ---
  bool ArcDirSync();  // the file pane shows the directory of the left archive
  bool DirArcSync();  // the left pane shows the archive of the current directory
  // The following two work only while both sides show archives.
  bool Swap();
  bool TakeOver(PaneView into);  // the other pane's archive

 private:
  PaneContext context_;
  ArchiveIcons icons_;
  ArchivePane left_, right_;
  FilePane files_;
  PaneView active_ = PaneView::LZEBView;
};

}  // namespace velmora::panes
