#include "panes/commands/transfer_commands.h"

#include <memory>
#include <string>

#include "panes/commands/dispatch.h"
#include "panes/commands/pane_changes.h"

namespace velmora::panes {
namespace {

using mailarchive::CopyMode;

constexpr std::string_view NotAvailableTitle = "Funktion nicht verfügbar";

}  // namespace

Outcome StartTransfer(CommandContext& context, const ViewMarks& marks, CopyMode mode) {
  const bool isMove = mode == CopyMode::Move;
  ArchivePane& source = context.Panes.Left();
  if (source.IsRuleView()) {
    context.prompts().Message(NotAvailableTitle,
                              isMove ? "Regeln können nicht als Datei verschoben werden"
                                     : "Regeln können nicht als Datei kopiert werden",
                              run::Icon::Exclamation);
    return {};
  }
  Outcome outcome;
  outcome.Export = std::make_shared<const CopyMoveDialog::Parts>(CopyMoveDialog::Parts{
      context.files(), context.App.options, context.FormTexts, context.App.session.MayDeleteArchives(), mode,
      MarkedObjects(source, marks), context.Panes.Files().CurrentPath()});
  if (const std::string reason = CopyMoveDialog(*outcome.Export).NothingMarked(); !reason.empty()) {
    context.prompts().Message("Fehler", reason, run::Icon::Exclamation);
    return {};
  }
  outcome.Dialog = DialogKind::CopyMove;
  return outcome;
}

Outcome RunCopyMove(CommandContext& context, const CopyMoveRequest& request) {
  const BusyScope busy(context.Busy);
  if (!busy.Entered()) return {};
  context.App.run.ResetCancel();
  mailarchive::ExportContext exportContext{
      context.App.run, context.App.session,         context.Designs,
      request.Options, context.App.process.TempDir, context.App.process.DataDirectory};
  mailarchive::RunExport(exportContext, request.Selection, request.TargetDirectory);
  Outcome outcome = ListVisiblePanes(context);
  outcome.ErrorLogChanged = true;
  if (request.Options.Mode == CopyMode::Move && context.Panes.ActiveView() == PaneView::LZEBView) {
    outcome.Selection = SelectAll(context.Panes.Left(), false);
  }
  return outcome;
}

}  // namespace velmora::panes
