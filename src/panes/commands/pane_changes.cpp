#include "panes/commands/pane_changes.h"

namespace velmora::panes {

void NoteChange(Outcome& outcome, PaneView view) {
  switch (view) {
    case PaneView::LZEBView:
      outcome.LeftChanged = true;
      break;
    case PaneView::RZEBView:
      outcome.RightChanged = true;
      break;
    case PaneView::RFSView:
      outcome.FilesChanged = true;
      break;
  }
}

Outcome WentTo(const CommandContext& context) {
  Outcome outcome;
  NoteChange(outcome, context.Panes.ActiveView());
  outcome.CurrentRow = context.Panes.Active().CursorRow();
  return outcome;
}

void ListAnew(ArchivePane& pane) {
  // A command may have taken away the archive that was shown.
  if (!pane.RefreshNearest()) (void)pane.GoToRoot();
}

Outcome ListVisiblePanes(CommandContext& context) {
  Outcome outcome;
  ListAnew(context.Panes.Left());
  outcome.LeftChanged = true;
  if (context.Panes.ShowsFiles()) {
    (void)context.Panes.Files().Refresh();  // a failure has been reported, the old list stands
    outcome.FilesChanged = true;
  } else {
    ListAnew(context.Panes.Right());
    outcome.RightChanged = true;
  }
  return outcome;
}

}  // namespace velmora::panes
