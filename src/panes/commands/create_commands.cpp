#include "panes/commands/create_commands.h"

#include <fmt/format.h>

#include "base/paths.h"
#include "base/text.h"
#include "panes/commands/dispatch.h"
#include "panes/commands/pane_changes.h"

namespace velmora::panes {
namespace {

// The directory that a request names, in its field or in braces in the name.
std::string DirectoryIn(const NewArchiveRequest& request) {
  if (!request.Directory.empty()) return request.Directory;
  const std::size_t open = request.Name.find('{');
  const std::size_t close = request.Name.find('}', open == std::string::npos ? 0 : open);
  if (open == std::string::npos || close == std::string::npos) return "";
  return request.Name.substr(open + 1, close - open - 1);
}

// The name of the archive that holds the directory already; nothing when it is free.
std::optional<std::string> HolderOf(store::DvAccount& account, const store::DvArchive& parent,
                                    const std::string& directory) {
  if (directory.empty()) return std::nullopt;
  const auto holder = account.GetArchive(JoinPath(parent.ID(), directory));
  if (!holder) return std::nullopt;
  return (*holder)->DisplayName().value_or(directory);
}

// The same archive may stand on both sides.
void ListBoth(CommandContext& context, ArchivePane& pane, Outcome& outcome) {
  ListAnew(pane);
  NoteChange(outcome, pane.View());
  ArchivePane& other = pane.View() == PaneView::LZEBView ? context.Panes.Right() : context.Panes.Left();
  const bool isShown = other.View() == PaneView::LZEBView || !context.Panes.ShowsFiles();
  if (isShown && other.CurrentArchive() != nullptr &&
      EqualsFold(other.CurrentArchive()->ID(), pane.CurrentArchive()->ID())) {
    ListAnew(other);
    NoteChange(outcome, other.View());
  }
}

}  // namespace

Outcome CreateNewDirectory(CommandContext& context) {
  const auto answer =
      context.prompts().InputLine("Neues Verzeichnis anlegen", "Verzeichnisname :", "Neues Verzeichnis");
  const std::string name(answer ? Trim(*answer) : std::string_view());
  if (name.empty()) return {};
  FilePane& files = context.Panes.Files();
  // A name with a path in it would go elsewhere.
  const bool isPlain = name.find_first_of("\\/") == std::string::npos && IsSafeRelativePath(name);
  if (!isPlain || !context.files().CreateFolder(JoinPath(files.CurrentPath(), name))) {
    context.prompts().Message("Fehler", "Fehler bei Anlegen des Verzeichnisses " + name, run::Icon::Stop);
    return {};
  }
  (void)files.Refresh();  // a failure has been reported, the old list stands
  Outcome outcome;
  outcome.FilesChanged = true;
  if (const int row = FindByDisplayName(files, ToLower(name)); row >= 0) {
    outcome.CurrentRow = static_cast<std::size_t>(row);
  }
  return outcome;
}

Outcome RunNewArchive(CommandContext& context, const NewArchiveRequest& request) {
  const BusyScope busy(context.Busy);
  if (!busy.Entered() || context.Panes.ActiveView() == PaneView::RFSView) return {};
  ArchivePane& pane = context.Panes.Archives(context.Panes.ActiveView());
  const auto parent = pane.CurrentArchive();
  if (parent == nullptr) return {};
  if (const auto holder = HolderOf(*context.App.session.Account, *parent, DirectoryIn(request))) {
    // "angebene" is deliberate: users know the text so.
    context.prompts().Message(
        "Fehler", fmt::format("Das Archiv\r\n{}\r\nbelegt bereits das angebene Verzeichnis.", *holder),
        run::Icon::Stop);
    return {};
  }
  const auto made = parent->CreateSubArchive(request.StoreName());
  if (!made) {
    context.App.run.LogError(parent->FullPath(), made.error().Number, "DvISE-Error " + made.error().Text,
                             run::Severity::Error);
    context.prompts().Message("Fehler", "Fehler bei Anlegen des Archives " + request.Name, run::Icon::Stop);
    Outcome failed;
    failed.ErrorLogChanged = true;
    return failed;
  }
  Outcome outcome;
  ListBoth(context, pane, outcome);
  if (const int row = FindByTag(pane, (*made)->ID()); row >= 0) {
    outcome.CurrentRow = static_cast<std::size_t>(row);
  }
  return outcome;
}

}  // namespace velmora::panes
