#include "panes/commands/mail_arc_commands.h"

#include <fmt/format.h>

#include "base/paths.h"
#include "mailarchive/content_index.h"
#include "mailarchive/entry_operations.h"
#include "mailarchive/format/file_names.h"

namespace velmora::panes {
namespace {

using mailarchive::MailArcKind;

// The two commands differ in the kind that they want, in their texts and in how far they go.
struct IndexCommand {
  MailArcKind Wanted;
  std::string_view WrongKind, Title, Question, WindowTitle;
  bool IsRecursive;
};
constexpr IndexCommand TreeCommand = {MailArcKind::Root,
                                      "Ein Inhaltsverzeichnisbaum kann nur in einem Mail-Rootarchiv angelegt "
                                      "werden",
                                      "Inhaltsverzeichnisbaum",
                                      "Inhaltsverzeichnis für den gesamten Mailarchivbaum ",
                                      "Inhaltsverzeichnis für Mailarchivbaum",
                                      true};
constexpr IndexCommand CurrentCommand = {MailArcKind::Sub,
                                         "Ein Archiv-Inhaltsverzeichnis kann nur in einem Mail-Subarchiv "
                                         "angelegt werden",
                                         "Inhaltsverzeichnis aktuelles Verzeichnis",
                                         "Inhaltsverzeichnis für aktuelles Archiv ",
                                         "Inhaltsverzeichnis für aktuelles Verzeichnis",
                                         false};

void BuildIndex(CommandContext& context, const IndexCommand& command, const std::string& directory) {
  run::Run& run = context.App.run;
  run::Progress& progress = run.frontEnd().progress;
  run.ResetCancel();
  if (context.App.options.ClearErrorLog) run.DeleteErrorLog();
  run.ResetRunCounters();
  progress.Show(command.WindowTitle);
  progress.SetArchiveText("Mailarchivinhalt zusammenfassen");
  mailarchive::IndexContext index{run, context.Designs, context.App.options.CreateAutorunInf,
                                  context.App.process.DataDirectory};
  index.TotalDirectories =
      command.IsRecursive ? mailarchive::CountIndexDirectories(context.files(), directory) : 1;
  progress.SetArchiveText("Reportprofil wird generiert");
  mailarchive::BuildContentIndex(index, directory, command.IsRecursive, true,
                                 context.App.options.DateIndexSortedUp);
  progress.Close();
}

Outcome RunIndexCommand(CommandContext& context, const IndexCommand& command) {
  const std::string directory = context.Panes.Files().CurrentPath();
  if (mailarchive::GetMailArcKind(context.files(), directory) != command.Wanted) {
    context.prompts().Message("Inhaltsverzeichnis anlegen", command.WrongKind, run::Icon::Exclamation);
    return {};
  }
  if (context.prompts().Question(command.Title,
                                 fmt::format("{}\r\n{}\r\nerstellen ? ", command.Question, directory),
                                 run::Buttons::YesNo, run::Answer::Yes) != run::Answer::Yes) {
    return {};
  }
  BuildIndex(context, command, directory);
  (void)context.Panes.Files().Refresh();  // a failure has been reported, the old list stands
  Outcome outcome;
  outcome.FilesChanged = outcome.ErrorLogChanged = true;
  return outcome;
}

}  // namespace

Outcome CmdIndexTree(CommandContext& context) { return RunIndexCommand(context, TreeCommand); }

Outcome CmdIndexCurrent(CommandContext& context) { return RunIndexCommand(context, CurrentCommand); }

Outcome ShowIndex(CommandContext& context) {
  const std::string path =
      JoinPath(context.Panes.Files().CurrentPath(), mailarchive::directory_file::DateIndex);
  if (context.files().FileExists(path)) {
    context.App.run.frontEnd().viewers.OpenDocument(path);
  } else {
    context.prompts().Message("Inhaltsverzeichnis anzeigen",
                              "Das aktuelle Verzeichnis hat kein Inhaltsverzeichnis.",
                              run::Icon::Exclamation);
  }
  return {};
}

Outcome ShowArcDescriptorCommand(CommandContext& context) {
  mailarchive::ShowArcDescriptor(context.App.run.frontEnd(), context.files(),
                                 context.Panes.Files().CurrentPath());
  return {};
}

Outcome ShowEntryDescriptorCommand(CommandContext& context, const ViewMarks& marks) {
  const FilePane& files = context.Panes.Files();
  const bool isFile = context.Panes.ActiveView() == PaneView::RFSView && marks.CurrentRow &&
                      *marks.CurrentRow < files.RowCount() &&
                      files.EntryType(*marks.CurrentRow) == entry_type::FileEntry;
  mailarchive::ShowEntryDescriptor(context.App.run.frontEnd(), context.files(), files.CurrentPath(),
                                   isFile ? files.Name(*marks.CurrentRow) : "");
  return {};
}

}  // namespace velmora::panes
