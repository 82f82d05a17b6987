#include "panes/commands/repair_commands.h"

#include <memory>
#include <utility>

#include "maintenance/entry_removal.h"
#include "panes/commands/dispatch.h"
#include "panes/commands/pane_changes.h"

namespace velmora::panes {
namespace {

// The archive under the cursor of an archive pane; null for another row.
const ArchiveRow* ArchiveOf(const CommandContext& context, const ViewMarks& marks) {
  if (context.Panes.ActiveView() == PaneView::RFSView || !marks.CurrentRow) return nullptr;
  return context.Panes.Archives(context.Panes.ActiveView()).Archive(*marks.CurrentRow);
}

// What a routine has told may be in the log, too.
Outcome AfterRoutine() {
  Outcome outcome;
  outcome.ErrorLogChanged = true;
  return outcome;
}

Outcome AfterRepair(CommandContext& context) {
  Outcome outcome = ListVisiblePanes(context);
  outcome.ErrorLogChanged = true;
  return outcome;
}

template <typename Dialog>
Outcome Open(std::optional<Dialog> dialog) {
  Outcome outcome = AfterRoutine();
  if (!dialog) return outcome;
  outcome.Dialog = DialogKind::Prepared;
  outcome.Prepared = std::make_shared<Dialog>(*std::move(dialog));
  return outcome;
}

}  // namespace

Outcome RemoveDoubleEntries(CommandContext& context, const ViewMarks& marks) {
  const ArchiveRow* const row = ArchiveOf(context, marks);
  if (row == nullptr) return {};
  return Open(DelDblArcEntriesDialog::Open(context.App.run, *context.App.session.Account, *row));
}

Outcome RemoveCircularEntries(CommandContext& context, const ViewMarks& marks) {
  const ArchiveRow* const row = ArchiveOf(context, marks);
  if (row == nullptr) return {};
  const auto isVisible = [current = row->ID](store::DvArchive& archive) {
    return IsArchiveVisible(archive.ID(), current, ShowAllArchives);
  };
  return Open(DelCircArcEntriesDialog::Open(context.App.run, *context.App.session.Account, *row, isVisible));
}

Outcome RemoveArchiveEntry(CommandContext& context, const ViewMarks& marks) {
  const ArchiveRow* const row = ArchiveOf(context, marks);
  if (row == nullptr) return {};
  const auto parent = context.Panes.Archives(context.Panes.ActiveView()).CurrentArchive();
  const bool isChanged = maintenance::DeleteArchiveEntry(
      context.App.run, *context.App.session.Account, *parent, {row->ID, row->DisplayName, row->IsShortCut});
  return isChanged ? AfterRepair(context) : AfterRoutine();
}

Outcome RunDoubleEntriesOk(CommandContext& context, DelDblArcEntriesDialog& dialog) {
  const BusyScope busy(context.Busy);
  if (!busy.Entered()) return {};
  return dialog.Ok() ? AfterRepair(context) : AfterRoutine();
}

std::optional<Outcome> RunCircularEntriesOk(CommandContext& context, DelCircArcEntriesDialog& dialog) {
  const BusyScope busy(context.Busy);
  if (!busy.Entered()) return std::nullopt;
  switch (dialog.Ok()) {
    case DelCircArcEntriesDialog::End::ClosesChanged:
      return AfterRepair(context);
    case DelCircArcEntriesDialog::End::Closes:
      return AfterRoutine();
    case DelCircArcEntriesDialog::End::Stays:
      break;
  }
  return std::nullopt;
}

}  // namespace velmora::panes
