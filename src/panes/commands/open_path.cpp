#include "panes/commands/open_path.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <vector>

#include "base/paths.h"
#include "base/text.h"
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

// The entry that the file belongs to: its name up to the "." is the last part of the location.
std::optional<store::EntryKey> FindEntry(store::DvArchive& archive, std::uint32_t filter,
                                         std::string_view fileName) {
  constexpr int rowsAtOnce = 4096;
  const std::string base = FoldCase(fileName.substr(0, fileName.find('.')));
  const auto entries = archive.GetEntries(filter);
  const int count = entries ? (*entries)->Count() : 0;
  std::vector<store::DvEntryRow> rows;
  for (int first = 0; first < count; first += rowsAtOnce) {
    rows.clear();
    // Behind what cannot be read there may be more.
    (void)(*entries)->ReadRows(first, std::min(rowsAtOnce, count - first), rows);
    const auto found = std::ranges::find_if(
        rows, [&](const store::DvEntryRow& row) { return FoldCase(FileNameOf(row.Location)) == base; });
    if (found != rows.end()) return found->Key;
  }
  return std::nullopt;
}

// The row of that entry, where the pane shows it.
std::optional<std::size_t> FindRow(const ArchivePane& pane, std::optional<store::EntryKey> key) {
  for (std::size_t row = 0; key && row < pane.RowCount(); ++row) {
    const MessageRow* const message = pane.Message(row);
    if (message != nullptr && message->RecNo == *key) return row;
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
  const auto filter = static_cast<std::uint32_t>(context.App.options.DvItemFilter);
  if (const auto row = FindRow(left, FindEntry(**archive, filter, split.FileName))) {
    context.Panes.SetActiveView(PaneView::LZEBView);
    outcome.ActiveViewChanged = true;
    outcome.CurrentRow = *row;
  } else {
    TellNoEntry(context, split.FileName);
  }
  return outcome;
}

}  // namespace velmora::panes
