#include "panes/commands/delete_commands.h"

#include <memory>

#include "panes/commands/dispatch.h"
#include "panes/commands/marked_commands.h"
#include "panes/commands/pane_changes.h"

namespace velmora::panes {
namespace {

Outcome AfterDeletion(CommandContext& context) {
  Outcome outcome = ListVisiblePanes(context);
  outcome.ErrorLogChanged = true;
  outcome.Selection = SelectAll(context.Panes.Active(), false);
  return outcome;
}

}  // namespace

Outcome StartDeletion(CommandContext& context, const ViewMarks& marks) {
  const bool mayDelete = context.App.session.MayDeleteArchives();
  if (context.Panes.ActiveView() == PaneView::RFSView) {
    return OpenMarked(context,
                      std::make_shared<DelFSDialog>(DelFSDialog::Parts{
                          context.files(), context.App.options, MarkedFiles(context.Panes.Files(), marks),
                          context.App.options.HideMailArcHelperFiles}));
  }
  const ArchivePane& pane = context.Panes.Archives(context.Panes.ActiveView());
  if (pane.IsRuleView()) {
    return OpenMarked(context, std::make_shared<DelRoutDialog>(MarkedRules(pane, marks), mayDelete));
  }
  return OpenMarked(context, std::make_shared<DelZEBDialog>(DelZEBDialog::Parts{
                                 context.App.options, mayDelete, MarkedObjects(pane, marks)}));
}

Outcome RunStoreDeletion(CommandContext& context, const DelZEBRequest& request) {
  const BusyScope busy(context.Busy);
  if (!busy.Entered()) return {};
  operations::RunStoreDelete(BeginOperation(context), request.Options, request.Selection);
  return AfterDeletion(context);
}

Outcome RunRuleDeletion(CommandContext& context, const operations::RuleSelection& rules) {
  const BusyScope busy(context.Busy);
  if (!busy.Entered()) return {};
  operations::RunDeleteRules(BeginOperation(context), rules);
  return AfterDeletion(context);
}

Outcome RunFileDeletion(CommandContext& context, const DelFSRequest& request) {
  const BusyScope busy(context.Busy);
  if (!busy.Entered()) return {};
  context.App.run.ResetCancel();
  mailarchive::IndexContext index{context.App.run, context.Designs, context.App.options.CreateAutorunInf,
                                  context.App.process.DataDirectory};
  operations::RunDeleteFiles(index, request.Options, request.Selection,
                             context.App.session.Account->DavidRoot());
  return AfterDeletion(context);
}

}  // namespace velmora::panes
