// What the commands on marked objects have in common: how their dialog opens, how their run begins.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "operations/operation_settings.h"
#include "panes/commands/command_context.h"
#include "panes/commands/outcome.h"

namespace velmora::panes {

// Asks for the dialog; one with nothing to do tells why instead.
template <typename Dialog>
Outcome OpenMarked(CommandContext& context, std::shared_ptr<Dialog> dialog) {
  Outcome outcome;
  if (const std::string reason = dialog->NothingMarked(); !reason.empty()) {
    context.prompts().Message("Fehler", reason, run::Icon::Exclamation);
    return outcome;
  }
  outcome.Dialog = DialogKind::Prepared;
  outcome.Prepared = std::move(dialog);
  return outcome;
}

// A cancel of an earlier run is none of this one.
inline operations::Operation BeginOperation(CommandContext& context) {
  context.App.run.ResetCancel();
  return operations::OperationOf(context.App.run, context.App.session, context.App.options);
}

}  // namespace velmora::panes
