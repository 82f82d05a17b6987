#include "panes/commands/dispatch.h"

#include <algorithm>
#include <array>

#include "base/paths.h"
#include "panes/commands/create_commands.h"
#include "panes/commands/delete_commands.h"
#include "panes/commands/mail_arc_commands.h"
#include "panes/commands/pane_changes.h"
#include "panes/commands/repair_commands.h"
#include "panes/commands/row_commands.h"
#include "panes/commands/session_commands.h"
#include "panes/commands/transfer_commands.h"
#include "run/error_log_view.h"

namespace velmora::panes {
namespace {

using operations::CopyMode;

Outcome Ask(DialogKind dialog) {
  Outcome outcome;
  outcome.Dialog = dialog;
  return outcome;
}

// --- The place of the active pane. ---

Outcome Go(CommandContext& context, bool went) { return went ? WentTo(context) : Outcome(); }

Outcome RefreshActive(CommandContext& context) {
  Outcome outcome;
  const PaneView view = context.Panes.ActiveView();
  const bool isListed = view == PaneView::RFSView ? context.Panes.Files().Refresh()
                                                  : context.Panes.Archives(view).RefreshNearest();
  if (isListed) NoteChange(outcome, view);
  return outcome;
}

Outcome GoToUserRoot(CommandContext& context) {
  if (context.Panes.ActiveView() == PaneView::RFSView) return {};
  return Go(context, context.Panes.Archives(context.Panes.ActiveView()).GoToUserRoot());
}

Outcome SyncDirectory(CommandContext& context) {
  const bool hadFiles = context.Panes.ShowsFiles();
  Outcome outcome;
  outcome.FilesChanged = context.Panes.ArcDirSync();
  outcome.LayoutChanged = context.Panes.ShowsFiles() != hadFiles;
  return outcome;
}

Outcome SyncArchive(CommandContext& context) {
  Outcome outcome;
  outcome.LeftChanged = context.Panes.DirArcSync();
  return outcome;
}

Outcome SwapPanes(CommandContext& context) {
  Outcome outcome;
  outcome.LeftChanged = outcome.RightChanged = context.Panes.Swap();
  return outcome;
}

Outcome TakeOver(CommandContext& context, PaneView into) {
  Outcome outcome;
  if (context.Panes.TakeOver(into)) NoteChange(outcome, into);
  return outcome;
}

// --- What the views show. ---

Outcome ToggleViewMode(CommandContext& context) {
  context.Panes.ToggleViewMode();
  Outcome outcome;
  outcome.LayoutChanged = outcome.ActiveViewChanged = true;
  outcome.RightChanged = outcome.FilesChanged = true;
  return outcome;
}

Outcome ToggleRuleView(CommandContext& context) {
  Outcome outcome;
  if (context.Panes.ActiveView() == PaneView::RFSView) return outcome;
  ArchivePane& pane = context.Panes.Archives(context.Panes.ActiveView());
  if (pane.SetRuleView(!pane.IsRuleView())) {
    NoteChange(outcome, pane.View());
    outcome.LayoutChanged = true;  // columns and sort marks are others
    outcome.CurrentRow = 0;
  }
  return outcome;
}

Outcome ToggleHiding(CommandContext& context) {
  Outcome outcome;
  if (context.Panes.ActiveView() == PaneView::RFSView) return outcome;
  ArchivePane& pane = context.Panes.Archives(context.Panes.ActiveView());
  if (pane.ToggleHiding()) NoteChange(outcome, pane.View());
  return outcome;
}

Outcome ToggleHelperFiles(CommandContext& context) {
  Outcome outcome;
  outcome.FilesChanged = context.Panes.Files().ToggleHelperFiles();
  return outcome;
}

Outcome ActivateOther(CommandContext& context) {
  context.Panes.ActivateOther();
  Outcome outcome;
  outcome.ActiveViewChanged = true;
  return outcome;
}

Outcome AskForFormSize(CommandContext& context, std::string_view question, bool Outcome::*flag) {
  Outcome outcome;
  outcome.*flag = context.prompts().Question("Fenstergröße", question, run::Buttons::YesNo,
                                             run::Answer::Yes) == run::Answer::Yes;
  return outcome;
}

// --- Others. ---

Outcome EditLabel(CommandContext& context, const ViewMarks& marks) {
  Outcome outcome;
  outcome.EditLabel = !RowsToHandle(context.Panes.Active(), {marks.CurrentRow, {}}).empty();
  return outcome;
}

Outcome Create(CommandContext& context) {
  return context.Panes.ActiveView() == PaneView::RFSView ? CreateNewDirectory(context)
                                                         : Ask(DialogKind::NewArchive);
}

Outcome NewDirectory(CommandContext& context) {
  return context.Panes.ShowsFiles() ? CreateNewDirectory(context) : Outcome();
}

Outcome NewArchive(CommandContext& context) {
  return context.Panes.ActiveView() == PaneView::RFSView ? Outcome() : Ask(DialogKind::NewArchive);
}

Outcome ShowHelp(CommandContext& context) {
  const std::string path = JoinPath(context.App.process.DataDirectory, "Handbuch\\index.html");
  if (context.files().FileExists(path)) {
    context.App.run.frontEnd().viewers.OpenDocument(path);
  } else {
    context.prompts().Message("Hilfe", "Das Handbuch ist nicht installiert.", run::Icon::Exclamation);
  }
  return {};
}

// The user's own notes: a text file that the desktop's editor opens.
Outcome OpenNotes(CommandContext& context) {
  const std::string path = JoinPath(context.App.process.PersonalDir, "Velmora-Notizen.txt");
  if (!context.files().FileExists(path)) {
    const platform::WriteOptions isNew = {.Mode = platform::Create::Exclusive, .OwnerOnly = true};
    if (const Status made = context.files().WriteFile(path, "", isNew); !made) {
      context.prompts().Message("Notizblock", path + ": " + made.error().Text, run::Icon::Exclamation);
      return {};
    }
  }
  context.App.run.frontEnd().viewers.OpenDocument(path);
  return {};
}

Outcome Set(bool Outcome::*flag) {
  Outcome outcome;
  outcome.*flag = true;
  return outcome;
}

Outcome ShowErrorLog(CommandContext& context) {
  run::ViewErrorLog(context.App.run);
  Outcome outcome;
  outcome.ErrorLogChanged = true;
  return outcome;
}

using Routine = Outcome (*)(CommandContext&, const ViewMarks&);
struct Row {
  Action Runs;
  Routine Does;
};

constexpr auto Routines = std::to_array<Row>({
    {Action::SaveSettings, [](auto& context, auto&) { return SaveAllSettings(context); }},
    {Action::Exit, [](auto& context, auto&) { return ExitProgram(context, true); }},
    {Action::ExitWithoutAsking, [](auto& context, auto&) { return ExitProgram(context, false); }},
    {Action::Copy, [](auto& context, auto& marks) { return StartTransfer(context, marks, CopyMode::Copy); }},
    {Action::Move, [](auto& context, auto& marks) { return StartTransfer(context, marks, CopyMode::Move); }},
    {Action::Delete, StartDeletion},
    {Action::Rename, EditLabel},
    {Action::NewArchive, [](auto& context, auto&) { return NewArchive(context); }},
    {Action::NewDirectory, [](auto& context, auto&) { return NewDirectory(context); }},
    {Action::Create, [](auto& context, auto&) { return Create(context); }},
    {Action::RemoveDoubleEntries, RemoveDoubleEntries},
    {Action::RemoveCircularEntries, RemoveCircularEntries},
    {Action::RemoveArchiveEntry, RemoveArchiveEntry},
    {Action::Refresh, [](auto& context, auto&) { return RefreshActive(context); }},
    {Action::RefreshAccount, [](auto& context, auto&) { return RefreshAccount(context); }},
    {Action::IndexTree, [](auto& context, auto&) { return CmdIndexTree(context); }},
    {Action::IndexCurrent, [](auto& context, auto&) { return CmdIndexCurrent(context); }},
    {Action::ShowIndex, [](auto& context, auto&) { return ShowIndex(context); }},
    {Action::SetMarker, [](auto&, auto&) { return Ask(DialogKind::SetMarker); }},
    {Action::ShowArchiveDescriptor, [](auto& context, auto&) { return ShowArcDescriptorCommand(context); }},
    {Action::ShowEntryDescriptor, ShowEntryDescriptorCommand},
    {Action::ToggleHelperFiles, [](auto& context, auto&) { return ToggleHelperFiles(context); }},
    {Action::ShowArchiveTree, [](auto&, auto&) { return Ask(DialogKind::ArchiveTree); }},
    {Action::ExportAddresses, [](auto&, auto&) { return Ask(DialogKind::AddressExport); }},
    {Action::ChangeServer, [](auto&, auto&) { return Ask(DialogKind::ChangeServer); }},
    {Action::Filter, [](auto&, auto&) { return Ask(DialogKind::Filter); }},
    {Action::ResetFilter, [](auto& context, auto&) { return ResetFilter(context); }},
    {Action::ToggleHiding, [](auto& context, auto&) { return ToggleHiding(context); }},
    {Action::Options, [](auto&, auto&) { return Ask(DialogKind::Options); }},
    {Action::ResetForm,
     [](auto& context, auto&) {
       return AskForFormSize(context, "Velmora auf Standardgröße zurücksetzen?", &Outcome::ResetFormSize);
     }},
    {Action::LastSavedSize,
     [](auto& context, auto&) {
       return AskForFormSize(context, "Letzte gespeicherte Fenstergröße wieder herstellen?",
                             &Outcome::RestoreFormSize);
     }},
    {Action::ToggleViewMode, [](auto& context, auto&) { return ToggleViewMode(context); }},
    {Action::ToggleRuleView, [](auto& context, auto&) { return ToggleRuleView(context); }},
    {Action::Help, [](auto& context, auto&) { return ShowHelp(context); }},
    {Action::SystemInformation, [](auto&, auto&) { return Ask(DialogKind::SystemInformation); }},
    {Action::About, [](auto&, auto&) { return Ask(DialogKind::About); }},
    {Action::ShowErrorLog, [](auto& context, auto&) { return ShowErrorLog(context); }},
    {Action::NotePad, [](auto& context, auto&) { return OpenNotes(context); }},
    {Action::UserArchives, [](auto& context, auto&) { return ShowUserArchives(context); }},
    {Action::ExternalApplication, [](auto& context, auto&) { return StartExternalProgram(context); }},
    {Action::NextPane, [](auto& context, auto&) { return ActivateOther(context); }},
    {Action::Open, OpenRow},
    {Action::ShowMessage, ShowMessage},
    {Action::ShowPhysicalDirectory, ShowPhysical},
    {Action::ShowPhysicalFile, ShowPhysical},
    {Action::ShowPhysical, ShowPhysical},
    {Action::ShowArchiveOfDirectory, ShowArchiveOfDirectory},
    {Action::ShowEntryOfFile, ShowEntryOfFile},
    {Action::OpenFile, OpenFile},
    {Action::RowSize, ShowRowSize},
    {Action::FlipSelection, FlipSelection},
    {Action::SelectAll, [](auto& context, auto&) { return SetSelection(context, true); }},
    {Action::ClearSelection, [](auto& context, auto&) { return SetSelection(context, false); }},
    {Action::NegateSelection, NegateSelection},
    {Action::ExtendSelection, [](auto& context, auto&) { return AskForPattern(context, true); }},
    {Action::ReduceSelection, [](auto& context, auto&) { return AskForPattern(context, false); }},
    {Action::GoUp, [](auto& context, auto&) { return Go(context, context.Panes.Active().GoUp()); }},
    {Action::GoToRoot, [](auto& context, auto&) { return Go(context, context.Panes.Active().GoToRoot()); }},
    {Action::GoToUserRoot, [](auto& context, auto&) { return GoToUserRoot(context); }},
    {Action::GoBack, [](auto& context, auto&) { return Go(context, context.Panes.Active().GoBack()); }},
    {Action::GoForward, [](auto& context, auto&) { return Go(context, context.Panes.Active().GoForward()); }},
    {Action::EditPath, [](auto&, auto&) { return Set(&Outcome::EditPath); }},
    {Action::ChooseDrive, [](auto&, auto&) { return Set(&Outcome::ChooseDrive); }},
    {Action::ArcDirSync, [](auto& context, auto&) { return SyncDirectory(context); }},
    {Action::DirArcSync, [](auto& context, auto&) { return SyncArchive(context); }},
    {Action::SwapPanes, [](auto& context, auto&) { return SwapPanes(context); }},
    {Action::TakeRightIntoLeft,
     [](auto& context, auto&) { return TakeOver(context, PaneView::LZEBView); }},
    {Action::TakeLeftIntoRight,
     [](auto& context, auto&) { return TakeOver(context, PaneView::RZEBView); }},
});

}  // namespace

bool HasRoutine(Action action) { return std::ranges::find(Routines, action, &Row::Runs) != Routines.end(); }

Outcome RunAction(CommandContext& context, Action action, const ViewMarks& marks) {
  const auto row = std::ranges::find(Routines, action, &Row::Runs);
  if (row == Routines.end() || !MayRun(action, SituationOf(context, marks))) return {};
  const BusyScope busy(context.Busy);
  return row->Does(context, marks);
}

Outcome RunMarkerSet(CommandContext& context) {
  const BusyScope busy(context.Busy);
  if (!busy.Entered()) return {};
  (void)context.Panes.Files().Refresh();  // a failure has been reported, the old list stands
  Outcome outcome;
  outcome.FilesChanged = true;
  return outcome;
}

}  // namespace velmora::panes
