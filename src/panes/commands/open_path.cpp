#include "panes/commands/open_path.h"

#include <fmt/format.h>

#include "base/paths.h"
#include "base/text.h"
#include "panes/commands/pane_changes.h"
#include "store/errors.h"

namespace velmora::panes {
namespace {

struct SplitPath {
  std::string Directory, FileName;
};

// A part behind the last "\" that holds a "." is a file.
SplitPath SplitFile(std::string_view path) {
  const std::string_view last = FileNameOf(path);
  if (last.find('.') == std::string_view::npos) return {StripBackslash(path), ""};
  return {StripBackslash(DirectoryOf(path)), std::string(last)};
}

void TellNoArchive(CommandContext& context, const std::string& directory) {
  context.prompts().Message("Unbekanntes Verzeichnis",
                            fmt::format("Das Verzeichnis \r\n{}\r\n ist kein ZEB-Archiv.", directory),
                            run::Icon::Exclamation);
}

void TellNoAccess(CommandContext& context, const std::string& directory) {
  context.prompts().Message(
      "Keine Zugriffsrechte",
      fmt::format("Auf das Verzeichnis \r\n{}\r\n bestehen keine Zugriffsrechte.", directory),
      run::Icon::Exclamation);
}

void TellNoEntry(CommandContext& context, const std::string& fileName) {
  context.prompts().Message(
      "Unbekannte Datei",
      fmt::format("Die Datei {} hat keinen ZEB-Eintrag oder der ausgewählte ZEB-Eintrag ist ein Eintrag ohne "
                  "zugehörigen Dateiverweis.",
                  fileName),
      run::Icon::Exclamation);
}

// The row of the entry that the file belongs to: its name up to the "." is the last part of the location.
std::optional<std::size_t> FindEntry(const ArchivePane& pane, std::string_view fileName) {
  const std::string base = FoldCase(fileName.substr(0, fileName.find('.')));
  store::DvArchive& archive = *pane.CurrentArchive();
  for (std::size_t row = 0; row < pane.RowCount(); ++row) {
    const MessageRow* const message = pane.Message(row);
    if (message == nullptr) continue;
    const auto item = archive.GetEntry(message->RecNo);
    if (!item) continue;
    const auto location = (*item)->Fields().Get(store::tag::Location);
    if (location && FoldCase(FileNameOf(store::FieldText(*location))) == base) return row;
  }
  return std::nullopt;
}

}  // namespace

Outcome OpenPathInPane(CommandContext& context, std::string_view path, bool withItem) {
  store::Session& session = context.App.session;
  const SplitPath split = SplitFile(context.files().FromUserPath(path));
  const auto archive =
      session.Account->GetArchive(MapToDavidRoot(split.Directory, session.Account->DavidRoot()));
  if (!archive) {
    if (archive.error().Number == store::store_error::NoAccess) {
      TellNoAccess(context, split.Directory);
    } else {
      TellNoArchive(context, split.Directory);
    }
    return {};
  }
  ArchivePane& left = context.Panes.Left();
  if (!left.ShowArchive(*archive)) return {};
  Outcome outcome;
  outcome.LeftChanged = true;
  if (context.Panes.ShowsFiles() && context.Panes.Files().ShowDirectory(NormalizePath((*archive)->ID()))) {
    outcome.FilesChanged = true;
  }
  if (!withItem || split.FileName.empty()) return outcome;
  if (const auto row = FindEntry(left, split.FileName)) {
    context.Panes.SetActiveView(PaneView::LZEBView);
    outcome.ActiveViewChanged = true;
    outcome.CurrentRow = *row;
  } else {
    TellNoEntry(context, split.FileName);
  }
  return outcome;
}

}  // namespace velmora::panes
