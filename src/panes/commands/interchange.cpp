#include "panes/commands/interchange.h"

#include <string>

#include "base/paths.h"
#include "panes/commands/open_path.h"
#include "panes/commands/pane_changes.h"
#include "startup/hand_over.h"

namespace velmora::panes {
namespace {

bool NamesMessage(const startup::ProcessFields& process) {
  return process.StartMode == startup::start_mode::Archive &&
         process.StartArgKind == startup::start_arg::Message;
}

// Selects the message that the line names and, where the settings say so, asks for the viewer.
Outcome ShowNamedMessage(CommandContext& context) {
  Outcome outcome = OpenPathInPane(context, context.App.process.StartArchiveArg, true);
  if (!outcome.CurrentRow || !context.App.options.TICDisplayFile) return outcome;
  const ArchivePane& left = context.Panes.Left();
  if (const MessageRow* message = left.Message(*outcome.CurrentRow)) {
    outcome.Message = MessageRequest{left.CurrentArchive(), message->RecNo};
  }
  return outcome;
}

// A path that was handed over is of no use where both sides show archives.
Outcome ShowNamedPath(CommandContext& context) {
  Outcome outcome;
  outcome.LayoutChanged = !context.Panes.ShowsFiles();
  context.Panes.SetViewMode(view_mode::FileSystem);
  outcome.FilesChanged = true;
  return outcome;
}

// An archive may be named by its path in the tree, which is no directory to show.
void KeepExistingDirectory(CommandContext& context, const std::string& shownBefore) {
  std::string& current = context.App.process.CurrentPath;
  const std::string named = NormalizePath(context.files().FromUserPath(current));
  current = context.files().FolderExists(StripBackslash(named)) ? AddBackslash(named) : shownBefore;
}

}  // namespace

Outcome TickInterchange(CommandContext& context) {
  if (context.Busy.IsBusy() || !startup::HandOverFileExists(context.App)) return {};
  const BusyScope busy(context.Busy);
  const std::string shownBefore = context.App.process.CurrentPath;
  const startup::HandOverTick tick = startup::PollHandOver(context.App);
  Outcome outcome;
  if (tick.ExitStatus) {
    outcome.ExitStatus = tick.ExitStatus;
    return outcome;
  }
  KeepExistingDirectory(context, shownBefore);
  if (context.App.process.StartArgKind == startup::start_arg::Path) outcome.Add(ShowNamedPath(context));
  outcome.Add(ListVisiblePanes(context));
  if (tick.ShowMessage) outcome.Add(ShowNamedMessage(context));
  return outcome;
}

Outcome ShowStartMessage(CommandContext& context) {
  Outcome outcome;
  if (NamesMessage(context.App.process)) {
    if (!context.Panes.ShowsFiles()) outcome.Add(ShowNamedPath(context));
    outcome.Add(ShowNamedMessage(context));
  }
  context.App.process.StartMode = startup::start_mode::None;
  return outcome;
}

}  // namespace velmora::panes
