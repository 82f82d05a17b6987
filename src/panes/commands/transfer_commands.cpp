#include "panes/commands/transfer_commands.h"

#include <memory>
#include <string>

#include "mailarchive/export_run.h"
#include "panes/commands/dispatch.h"
#include "panes/commands/marked_commands.h"
#include "panes/commands/pane_changes.h"

namespace velmora::panes {
namespace {

using operations::CopyMode;

constexpr std::string_view NotAvailableTitle = "Funktion nicht verfügbar";

Outcome Refuse(CommandContext& context, std::string_view title, std::string_view reason) {
  context.prompts().Message(title, reason, run::Icon::Exclamation);
  return {};
}

Outcome StartExport(CommandContext& context, const ViewMarks& marks, CopyMode mode) {
  const bool isMove = mode == CopyMode::Move;
  ArchivePane& source = context.Panes.Left();
  if (source.IsRuleView()) {
    return Refuse(context, NotAvailableTitle,
                  isMove ? "Regeln können nicht als Datei verschoben werden"
                         : "Regeln können nicht als Datei kopiert werden");
  }
  Outcome outcome;
  outcome.Export = std::make_shared<const CopyMoveDialog::Parts>(CopyMoveDialog::Parts{
      context.files(), context.App.options, context.FormTexts, context.App.session.MayDeleteArchives(), mode,
      MarkedObjects(source, marks), context.Panes.Files().CurrentPath()});
  if (const std::string reason = CopyMoveDialog(*outcome.Export).NothingMarked(); !reason.empty()) {
    return Refuse(context, "Fehler", reason);
  }
  outcome.Dialog = DialogKind::CopyMove;
  return outcome;
}

// What is left after a run: the lists anew; what was moved is marked no more.
Outcome AfterTransfer(CommandContext& context, bool isMove) {
  Outcome outcome = ListVisiblePanes(context);
  outcome.ErrorLogChanged = true;
  if (isMove) outcome.Selection = SelectAll(context.Panes.Active(), false);
  return outcome;
}

}  // namespace

Outcome StartTransfer(CommandContext& context, const ViewMarks& marks, CopyMode mode) {
  if (context.Panes.ShowsFiles()) return StartExport(context, marks, mode);
  const PaneView view = context.Panes.ActiveView();
  ArchivePane& source = context.Panes.Archives(view);
  ArchivePane& other =
      context.Panes.Archives(view == PaneView::LZEBView ? PaneView::RZEBView : PaneView::LZEBView);
  store::Session& session = context.App.session;
  if (source.IsRuleView()) {
    return OpenMarked(context,
                      std::make_shared<RoutCopyMoveDialog>(RoutCopyMoveDialog::Parts{
                          *session.Account, mode, MarkedRules(source, marks), other.CurrentArchive()}));
  }
  return OpenMarked(
      context, std::make_shared<ZEBCopyMoveDialog>(ZEBCopyMoveDialog::Parts{
                   *session.Account, context.App.options, context.StoreChoices, session.MayDeleteArchives(),
                   mode, MarkedObjects(source, marks), other.CurrentArchive()}));
}

Outcome RunCopyMove(CommandContext& context, const CopyMoveRequest& request) {
  const BusyScope busy(context.Busy);
  if (!busy.Entered()) return {};
  context.App.run.ResetCancel();
  mailarchive::ExportContext exportContext{
      context.App.run, context.App.session,         context.Designs,
      request.Options, context.App.process.TempDir, context.App.process.DataDirectory};
  mailarchive::RunExport(exportContext, request.Selection, request.TargetDirectory);
  return AfterTransfer(context, request.Options.Mode == mailarchive::CopyMode::Move);
}

Outcome RunStoreTransfer(CommandContext& context, const ZEBCopyMoveRequest& request) {
  const BusyScope busy(context.Busy);
  if (!busy.Entered()) return {};
  operations::RunStoreCopy(BeginOperation(context), request.Options, request.Selection, request.Target);
  return AfterTransfer(context, request.Options.Mode == CopyMode::Move);
}

Outcome RunRuleTransfer(CommandContext& context, const RoutCopyMoveRequest& request) {
  const BusyScope busy(context.Busy);
  if (!busy.Entered()) return {};
  operations::RunRuleCopy(BeginOperation(context), request.Options, request.Selection, request.Target);
  return AfterTransfer(context, request.Options.Mode == CopyMode::Move);
}

}  // namespace velmora::panes
