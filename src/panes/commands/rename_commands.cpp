// The label of a row has got a new text: what that does to an archive, a message, a rule, a file.

#include <fmt/format.h>

#include "base/paths.h"
#include "base/text.h"
#include "mailarchive/entry_operations.h"
#include "mailarchive/format/descriptor.h"
#include "operations/archive_links.h"
#include "operations/rule_copy.h"
#include "panes/commands/dispatch.h"
#include "panes/commands/pane_changes.h"

namespace velmora::panes {
namespace {

constexpr std::size_t RuleNameLength = 30;
constexpr std::string_view RenameTitle = "Umbenennen";

// --- In an archive pane. ---

Status RenameMessage(store::DvArchive& archive, store::EntryKey key, std::string_view subject) {
  const auto item = archive.GetEntry(key);
  if (!item) return Fail(item.error());
  const Status set = (*item)->Fields().Set(store::tag::Subject, std::string(subject));
  return set ? (*item)->Update() : set;
}

Status SetName(store::DvArchive& archive, std::string_view name) {
  const Status set = archive.SetDisplayName(name);
  return set ? archive.Update() : set;
}

Status RenameArchive(store::DvAccount& account, store::DvArchive& parent, const ArchiveRow& row,
                     std::string_view name) {
  // A short-cut is its record in the parent's list: the archive that it leads to keeps its name.
  const auto archive =
      row.IsShortCut ? operations::FindLink(parent, row.ID, row.DisplayName) : account.GetArchive(row.ID);
  return archive ? SetName(**archive, name) : Fail(archive.error());
}

Status RenameRule(store::DvArchive& archive, const RoutingRow& row, std::string_view name) {
  const auto rule = operations::FindMarkedRule(archive, {row.Number, row.Name});
  if (!rule) return Fail(rule.error());
  (*rule)->Data().Name = LeftCharacters(name, RuleNameLength);
  return (*rule)->Update();
}

Status RenameStoreObject(CommandContext& context, const ArchivePane& pane, std::size_t row,
                         std::string_view name) {
  store::DvAccount& account = *context.App.session.Account;
  store::DvArchive& archive = *pane.CurrentArchive();
  Status renamed;
  if (const MessageRow* message = pane.Message(row)) {
    renamed = RenameMessage(archive, message->RecNo, name);
  } else if (const ArchiveRow* sub = pane.Archive(row)) {
    renamed = RenameArchive(account, archive, *sub, name);
  } else if (const RoutingRow* rule = pane.Rule(row)) {
    renamed = RenameRule(archive, *rule, name);
  }
  return renamed ? account.Commit() : renamed;
}

Outcome RenameInArchive(CommandContext& context, std::size_t row, std::string_view name) {
  ArchivePane& pane = context.Panes.Archives(context.Panes.ActiveView());
  const std::string tag = pane.Tag(row);
  const bool wasShortCut = pane.Archive(row) != nullptr && pane.Archive(row)->IsShortCut;
  const Status renamed = RenameStoreObject(context, pane, row, name);
  if (!renamed) ReportStoreFailure(context.App.run, pane.Name(row), renamed.error());
  (void)pane.Refresh();  // a failure has been reported, the old list stands
  Outcome outcome;
  NoteChange(outcome, pane.View());
  outcome.ErrorLogChanged = !renamed;
  // The sort may have moved the row; an archive may stand beside a short-cut to itself.
  for (std::size_t place = 0; place < pane.RowCount(); ++place) {
    const ArchiveRow* const archive = pane.Archive(place);
    const bool isShortCut = archive != nullptr && archive->IsShortCut;
    if (EqualsFold(pane.Tag(place), tag) && isShortCut == wasShortCut) outcome.CurrentRow = place;
  }
  return outcome;
}

// --- In the file view. ---

bool MayRenameDirectory(CommandContext& context, const std::string& path) {
  if (context.App.session.Account == nullptr) return true;
  const auto archive = context.App.session.Account->GetArchive(path);
  if (!archive) return true;
  const std::string name = (*archive)->DisplayName().value_or("");
  return context.prompts().Question(
             RenameTitle,
             fmt::format("Das Verzeichnis\r\n{}\r\nist als {} in das ZEB integriert. Trotzdem umbenennen ?",
                         path, name),
             run::Buttons::YesNo, run::Answer::No) == run::Answer::Yes;
}

void TellFailure(CommandContext& context) {
  context.prompts().Message(
      "Fehler", "Unzulässiger Verzeichnisname oder ein gleichnamiges Verzeichnis existiert bereits.",
      run::Icon::Stop);
}

// The file that is overwritten goes only when the other one stands in its place.
Status ReplaceByMove(platform::FileSystem& files, const std::string& source, const std::string& target) {
  const std::string aside =
      JoinPath(DirectoryOf(target),
               files.UniqueFileName(StripBackslash(DirectoryOf(target)), std::string(FileNameOf(target))));
  if (const Status moved = files.MoveFile(target, aside); !moved) return moved;
  const Status moved = files.MoveFile(source, target);
  if (moved) return files.DeleteFile(aside, true);
  (void)files.MoveFile(aside, target);  // the first failure is what is told
  return moved;
}

// False when the user keeps the old name.
bool RenameFile(CommandContext& context, const std::string& source, const std::string& target) {
  platform::FileSystem& files = context.files();
  const bool isTaken = files.FileExists(target) && !EqualsFold(source, target);
  if (isTaken &&
      context.prompts().Question(RenameTitle, fmt::format("{} existiert bereits. Überschreiben ?", target),
                                 run::Buttons::YesNo, run::Answer::No) != run::Answer::Yes) {
    return false;
  }
  const Status renamed = isTaken ? ReplaceByMove(files, source, target) : files.MoveFile(source, target);
  if (!renamed) TellFailure(context);
  return renamed.has_value();
}

bool RenameFolder(CommandContext& context, const std::string& source, const std::string& target) {
  if (!MayRenameDirectory(context, source)) return false;
  const Status renamed = context.files().MoveFile(source, target);
  if (!renamed) TellFailure(context);
  return renamed.has_value();
}

// A page with its descriptor is renamed with all that belongs to it, or not at all.
bool IsArchivedEntry(CommandContext& context, const std::string& page) {
  const FilePane& pane = context.Panes.Files();
  return pane.MailArc().CanHoldContent && context.App.options.HideMailArcHelperFiles &&
         ContainsFold(page, ".htm") &&
         mailarchive::ReadEntryFields(context.files(), pane.CurrentPath(), page).has_value();
}

bool RenameEntry(CommandContext& context, const std::string& page, std::string_view name) {
  const bool renamed =
      mailarchive::RenameMailArcEntry(context.files(), context.Panes.Files().CurrentPath(), page, name);
  if (!renamed) TellFailure(context);
  return renamed;
}

Outcome RenameInFiles(CommandContext& context, std::size_t row, std::string_view name) {
  FilePane& pane = context.Panes.Files();
  const std::string oldName = pane.Name(row);
  const std::string source = JoinPath(pane.CurrentPath(), oldName);
  const std::string target = JoinPath(pane.CurrentPath(), name);
  bool renamed = false;
  if (name.find_first_of("\\/") != std::string_view::npos || !IsSafeRelativePath(name)) {
    TellFailure(context);
  } else if (pane.EntryType(row) == entry_type::DirEntry) {
    renamed = RenameFolder(context, source, target);
  } else if (IsArchivedEntry(context, oldName)) {
    renamed = RenameEntry(context, oldName, name);
  } else {
    renamed = RenameFile(context, source, target);
  }
  (void)pane.Refresh();  // a failure has been reported, the old list stands
  Outcome outcome;
  outcome.FilesChanged = true;
  const int place = FindByDisplayName(pane, ToLower(renamed ? name : std::string_view(oldName)));
  if (place >= 0) outcome.CurrentRow = static_cast<std::size_t>(place);
  return outcome;
}

}  // namespace

Outcome RunRename(CommandContext& context, std::size_t row, std::string_view newName) {
  const BusyScope busy(context.Busy);
  const Pane& pane = context.Panes.Active();
  if (!busy.Entered() || row >= pane.RowCount()) return {};
  const std::string name(Trim(newName));
  if (name.empty() || name == pane.Name(row)) return {};
  const RowKind kind = RowKindOf(pane.View(), pane.EntryType(row));
  if (kind == RowKind::None || kind == RowKind::Control || kind == RowKind::DirBack) return {};
  return pane.View() == PaneView::RFSView ? RenameInFiles(context, row, name)
                                          : RenameInArchive(context, row, name);
}

}  // namespace velmora::panes
