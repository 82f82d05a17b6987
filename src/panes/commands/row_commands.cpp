#include "panes/commands/row_commands.h"

#include <chrono>

#include "base/paths.h"
#include "base/text.h"
#include "panes/commands/dispatch.h"
#include "panes/commands/external_program.h"
#include "panes/commands/open_path.h"
#include "panes/commands/pane_changes.h"
#include "platform/process.h"
#include "store/user_directory.h"

namespace velmora::panes {
namespace {

// The row under the cursor; nothing where there is none.
std::optional<std::size_t> RowOf(const CommandContext& context, const ViewMarks& marks) {
  const bool isThere = marks.CurrentRow && *marks.CurrentRow < context.Panes.Active().RowCount();
  return isThere ? marks.CurrentRow : std::nullopt;
}

ArchivePane& ActiveArchives(CommandContext& context) {
  return context.Panes.Archives(context.Panes.ActiveView());
}

bool InFileView(const CommandContext& context) { return context.Panes.ActiveView() == PaneView::RFSView; }

Outcome RequestOf(const ArchivePane& pane, std::size_t row) {
  Outcome outcome;
  if (const MessageRow* message = pane.Message(row)) {
    outcome.Message = MessageRequest{pane.CurrentArchive(), message->RecNo};
  }
  return outcome;
}

void OpenFileOf(CommandContext& context, std::size_t row) {
  const FilePane& files = context.Panes.Files();
  context.App.run.frontEnd().viewers.OpenDocument(JoinPath(files.CurrentPath(), files.Name(row)));
}

// A directory in the file view, which comes up and is active; the cursor on that file, if it is there.
Outcome ShowInFiles(CommandContext& context, const std::string& directory, std::string_view fileName) {
  FilePane& files = context.Panes.Files();
  if (!files.ShowDirectory(NormalizePath(directory))) return {};
  Outcome outcome;
  outcome.LayoutChanged = !context.Panes.ShowsFiles();
  context.Panes.SetViewMode(view_mode::FileSystem);
  context.Panes.SetActiveView(PaneView::RFSView);
  outcome.FilesChanged = outcome.ActiveViewChanged = true;
  const int row = fileName.empty() ? -1 : FindByDisplayName(files, ToLower(fileName));
  outcome.CurrentRow = row < 0 ? files.CursorRow() : static_cast<std::size_t>(row);
  return outcome;
}

// The first file of an entry in its archive's directory; "" for one without a file.
std::string FileOfMessage(store::DvArchive& archive, store::EntryKey key) {
  const auto item = archive.GetEntry(key);
  if (!item) return "";
  const auto location = (*item)->Fields().Get(store::tag::Location);
  const std::string base(location ? FileNameOf(store::FieldText(*location)) : std::string_view());
  return base.empty() ? "" : base + ".001";
}

Outcome Select(const CommandContext& context, SelectionSet selection) {
  Outcome outcome;
  NoteChange(outcome, context.Panes.ActiveView());
  outcome.Selection = std::move(selection);
  return outcome;
}

// A path of the panes as the host's programs know it.
std::string HostForm(CommandContext& context, const std::string& path) {
  return context.files().HostPath(StripBackslash(path)).value_or(path);
}

std::string PhysicalPath(const ArchivePane& pane) {
  return pane.CurrentArchive() == nullptr ? "" : NormalizePath(pane.CurrentArchive()->ID());
}

}  // namespace

Outcome OpenRow(CommandContext& context, const ViewMarks& marks) {
  const auto row = RowOf(context, marks);
  if (!row) return {};
  switch (context.Panes.Active().Enter(*row)) {
    case EnterResult::Entered:
      return WentTo(context);
    case EnterResult::Message:
      return RequestOf(ActiveArchives(context), *row);
    case EnterResult::File:
      OpenFileOf(context, *row);
      break;
    case EnterResult::Nothing:
    case EnterResult::Failed:
      break;
  }
  return {};
}

Outcome ShowMessage(CommandContext& context, const ViewMarks& marks) {
  const auto row = RowOf(context, marks);
  return row && !InFileView(context) ? RequestOf(ActiveArchives(context), *row) : Outcome();
}

Outcome OpenFile(CommandContext& context, const ViewMarks& marks) {
  const auto row = RowOf(context, marks);
  if (row && InFileView(context) && context.Panes.Active().EntryType(*row) == entry_type::FileEntry) {
    OpenFileOf(context, *row);
  }
  return {};
}

Outcome ShowRowSize(CommandContext& context, const ViewMarks& marks) {
  Outcome outcome;
  const auto row = RowOf(context, marks);
  if (row && context.Panes.Active().ShowSize(*row)) NoteChange(outcome, context.Panes.ActiveView());
  return outcome;
}

Outcome ShowPhysical(CommandContext& context, const ViewMarks& marks) {
  const auto row = RowOf(context, marks);
  if (!row || InFileView(context)) return {};
  const ArchivePane& pane = ActiveArchives(context);
  if (const ArchiveRow* archive = pane.Archive(*row)) return ShowInFiles(context, archive->ID, "");
  const MessageRow* const message = pane.Message(*row);
  if (message == nullptr) return {};
  const std::string directory = pane.CurrentArchive()->ID();
  return ShowInFiles(context, directory, FileOfMessage(*pane.CurrentArchive(), message->RecNo));
}

Outcome ShowArchiveOfDirectory(CommandContext& context, const ViewMarks& marks) {
  const auto row = RowOf(context, marks);
  if (!row || !InFileView(context)) return {};
  return OpenPathInPane(context, AddBackslash(context.Panes.Files().Row(*row).FullPath), false);
}

Outcome ShowEntryOfFile(CommandContext& context, const ViewMarks& marks) {
  const auto row = RowOf(context, marks);
  if (!row || !InFileView(context)) return {};
  const FilePane& files = context.Panes.Files();
  return OpenPathInPane(context, JoinPath(files.CurrentPath(), files.Name(*row)), true);
}

Outcome ShowUserArchives(CommandContext& context) {
  store::DvAccount& account = *context.App.session.Account;
  constexpr std::string_view Title = "Schnellzugriff auf Benutzerarchive";
  const auto users = account.Users();
  const auto roots = account.GetSpecialArchive(store::special::UserRoots);
  if (!users || !roots) {
    ReportStoreFailure(context.App.run, Title, users ? roots.error() : users.error());
    Outcome failed;
    failed.ErrorLogChanged = true;
    return failed;
  }
  const auto chosen = context.App.run.frontEnd().choosers.ChooseUser(Title);
  if (!chosen) return {};
  for (const auto& user : *users) {
    if (user->Name() != *chosen) continue;
    const std::string directory = JoinPath((*roots)->ID(), store::UserDirName(user->UserID()));
    if (InFileView(context)) context.Panes.SetActiveView(PaneView::LZEBView);
    if (!ActiveArchives(context).ShowArchive(std::string_view(directory))) return {};
    Outcome outcome = WentTo(context);
    outcome.ActiveViewChanged = true;
    return outcome;
  }
  return {};
}

Outcome FlipSelection(CommandContext& context, const ViewMarks& marks) {
  const auto row = RowOf(context, marks);
  if (!row) return {};
  const Pane& pane = context.Panes.Active();
  SelectionSet selection = marks.Selection;
  selection.resize(pane.RowCount(), false);
  selection[*row] = !selection[*row] && pane.EntryType(*row) != entry_type::ControlEntry;
  Outcome outcome = Select(context, std::move(selection));
  outcome.CurrentRow = std::min(*row + 1, pane.RowCount() - 1);
  return outcome;
}

Outcome SetSelection(CommandContext& context, bool on) {
  return Select(context, SelectAll(context.Panes.Active(), on));
}

Outcome NegateSelection(CommandContext& context, const ViewMarks& marks) {
  return Select(context, NegSelectAll(context.Panes.Active(), marks.Selection));
}

Outcome AskForPattern(CommandContext& context, bool extend) {
  Outcome outcome;
  outcome.Dialog = DialogKind::Pattern;
  outcome.PatternAction = ActionOf(context.Panes.ActiveView(), extend);
  return outcome;
}

Outcome RunPattern(CommandContext& context, SelectionAction action, std::string_view pattern,
                   const ViewMarks& marks) {
  const Pane& pane = context.Panes.Active();
  SelectionSet selection = ItemSelection(pane, marks.Selection, marks.CurrentRow, pattern, Extends(action));
  std::optional<std::size_t> first;
  for (std::size_t row = 0; row < selection.size() && !first; ++row) {
    if (selection[row]) first = row;
  }
  Outcome outcome = Select(context, std::move(selection));
  if (InFileView(context)) outcome.CurrentRow = first;  // the view scrolls to the selection
  return outcome;
}

Outcome StartExternalProgram(CommandContext& context) {
  TwoPanes& panes = context.Panes;
  PanePaths paths;
  paths.Left = HostForm(context, PhysicalPath(panes.Left()));
  paths.Right =
      HostForm(context, panes.ShowsFiles() ? panes.Files().CurrentPath() : PhysicalPath(panes.Right()));
  paths.Active = panes.ActiveView() == PaneView::LZEBView ? paths.Left : paths.Right;
  std::vector<std::string> arguments = ExternalArguments(context.App.options.ExternalApplication, paths);
  if (arguments.empty()) return {};
  // A program named by its Windows path.
  if (arguments.front().find('\\') != std::string::npos) {
    arguments.front() = context.files().HostPath(arguments.front()).value_or(arguments.front());
  }
  // Deliberately without a word when it fails: the desktop or the program itself tells.
  (void)platform::StartProcess(arguments, std::chrono::milliseconds(0));
  return {};
}

}  // namespace velmora::panes
