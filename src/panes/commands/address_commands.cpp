// The export of addresses, from the dialog's OK to the end of its run.

#include "panes/commands/dispatch.h"

namespace velmora::panes {

Outcome RunAddressExport(CommandContext& context, const addresses::AddressExportRequest& request) {
  const BusyScope busy(context.Busy);
  if (!busy.Entered()) return {};
  context.App.run.ResetCancel();
  addresses::RunAddressExport(context.App.run, context.App.session, request);
  Outcome outcome;
  outcome.ErrorLogChanged = true;
  if (context.Panes.ShowsFiles()) {
    (void)context.Panes.Files().Refresh();  // a failure has been reported, the old list stands
    outcome.FilesChanged = true;
  }
  return outcome;
}

}  // namespace velmora::panes
