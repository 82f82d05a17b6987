// From an action to what it does.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "addresses/address_export_dialog.h"
#include "panes/commands/command_context.h"
#include "panes/commands/outcome.h"
#include "panes/dialogs/new_archive_dialog.h"
#include "panes/dialogs/options_dialog.h"

namespace velmora::panes {

// Runs an action on the active view. The program is busy meanwhile; nothing happens while it is busy already,
// for an action that is not built, and where the rights are missing. An action of a pane's own buttons: make
// that pane active first.
Outcome RunAction(CommandContext& context, Action action, const ViewMarks& marks);
// Whether RunAction knows what the action does.
bool HasRoutine(Action action);

// --- What follows a dialog's OK, in the busy state likewise. ---
Outcome RunCopyMove(CommandContext& context, const CopyMoveRequest& request);
Outcome RunStoreTransfer(CommandContext& context, const ZEBCopyMoveRequest& request);
Outcome RunRuleTransfer(CommandContext& context, const RoutCopyMoveRequest& request);
Outcome RunStoreDeletion(CommandContext& context, const DelZEBRequest& request);
Outcome RunRuleDeletion(CommandContext& context, const operations::RuleSelection& rules);
Outcome RunFileDeletion(CommandContext& context, const DelFSRequest& request);
Outcome RunDoubleEntriesOk(CommandContext& context, DelDblArcEntriesDialog& dialog);
// Nothing as long as the dialog stays.
std::optional<Outcome> RunCircularEntriesOk(CommandContext& context, DelCircArcEntriesDialog& dialog);
Outcome RunAddressExport(CommandContext& context, const addresses::AddressExportRequest& request);
Outcome RunFilterOk(CommandContext& context, bool changed);  // FilterDialog::Ok
Outcome RunChangeServer(CommandContext& context, const std::string& server);
Outcome RunPattern(CommandContext& context, SelectionAction action, std::string_view pattern,
                   const ViewMarks& marks);
Outcome RunNewArchive(CommandContext& context, const NewArchiveRequest& request);
Outcome RunMarkerSet(CommandContext& context);  // MailArcMarkerDialog::Ok answered true
Outcome RunOptionsOk(CommandContext& context, const OptionsAnswer& answer);
// The label of the row under the cursor has got a new text.
Outcome RunRename(CommandContext& context, std::size_t row, std::string_view newName);

}  // namespace velmora::panes
