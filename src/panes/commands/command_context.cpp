#include "panes/commands/command_context.h"

#include <algorithm>

#include "base/paths.h"
#include "base/text.h"
#include "store/special_archives.h"

namespace velmora::panes {
namespace {

bool IsWayUp(const Pane& pane, std::size_t row) {
  const RowKind kind = RowKindOf(pane.View(), pane.EntryType(row));
  return kind == RowKind::None || kind == RowKind::Control || kind == RowKind::DirBack;
}

// What the row under the cursor is.
void AddRow(Situation& situation, const CommandContext& context, std::size_t row) {
  const Pane& pane = context.Panes.Active();
  situation.Row = RowKindOf(pane.View(), pane.EntryType(row));
  if (situation.Row != RowKind::Archive) return;
  const ArchiveRow& archive = *context.Panes.Archives(pane.View()).Archive(row);
  situation.IsShortCut = archive.IsShortCut;
  // Only a trash is worth the question whose it is.
  const std::string trash = "\\" + std::string(store::special_path::Trash);
  situation.IsTrash = FoldCase(StripBackslash(NormalizePath(archive.ID))).ends_with(FoldCase(trash));
  situation.IsInUserRoot = situation.IsTrash && context.App.session.Account != nullptr &&
                           store::IsUserArchive(*context.App.session.Account, archive.ID);
}

}  // namespace

std::vector<std::size_t> RowsToHandle(const Pane& pane, const ViewMarks& marks) {
  std::vector<std::size_t> rows;
  for (std::size_t row = 0; row < std::min(pane.RowCount(), marks.Selection.size()); ++row) {
    if (marks.Selection[row] && !IsWayUp(pane, row)) rows.push_back(row);
  }
  if (rows.empty() && marks.CurrentRow && *marks.CurrentRow < pane.RowCount() &&
      !IsWayUp(pane, *marks.CurrentRow)) {
    rows.push_back(*marks.CurrentRow);
  }
  return rows;
}

store::Selection MarkedObjects(const ArchivePane& pane, const ViewMarks& marks) {
  using Object = store::Selection::Object;
  store::Selection selection;
  selection.CurrentArchive = pane.CurrentArchive();
  for (const std::size_t row : RowsToHandle(pane, marks)) {
    if (const MessageRow* message = pane.Message(row)) {
      selection.Objects.push_back({Object::Kind::Message, message->RecNo, "", false});
    } else if (const ArchiveRow* archive = pane.Archive(row)) {
      selection.Objects.push_back(
          {Object::Kind::Archive, 0, archive->ID, archive->IsShortCut, archive->DisplayName});
    }
  }
  return selection;
}

operations::RuleSelection MarkedRules(const ArchivePane& pane, const ViewMarks& marks) {
  operations::RuleSelection selection;
  selection.Archive = pane.CurrentArchive();
  for (const std::size_t row : RowsToHandle(pane, marks)) {
    if (const RoutingRow* rule = pane.Rule(row)) selection.Rules.push_back({rule->Number, rule->Name});
  }
  return selection;
}

operations::FileSelection MarkedFiles(const FilePane& pane, const ViewMarks& marks) {
  operations::FileSelection selection;
  selection.Directory = pane.CurrentPath();
  for (const std::size_t row : RowsToHandle(pane, marks)) {
    selection.Items.push_back({pane.Name(row), pane.EntryType(row) == entry_type::DirEntry});
  }
  return selection;
}

Situation SituationOf(const CommandContext& context, const ViewMarks& marks) {
  const settings::Options& options = context.App.options;
  Situation situation;
  situation.UserRights = RightsOf(context.App.session.Trustees);
  situation.ActiveView = context.Panes.ActiveView();
  situation.ShowsFiles = context.Panes.ShowsFiles();
  situation.LeftRuleView = options.LZEBViewModeRouting != 0;
  situation.RightRuleView = options.RZEBViewModeRouting != 0;
  situation.LeftPropertyView = options.LZEBViewMode != 0;
  situation.RightPropertyView = options.RZEBViewMode != 0;
  situation.ShowsTabs = options.ViewTabs;
  situation.HidesHelperFiles = options.HideMailArcHelperFiles;
  situation.TabDisplayMode = options.RestoreViewTabsMode != 0;
  situation.MailArc = context.Panes.Files().MailArc().Kind;
  situation.IsBusy = context.Busy.IsBusy();
  situation.ErrorLogExists = context.App.run.ErrorLogExists();
  if (marks.CurrentRow && *marks.CurrentRow < context.Panes.Active().RowCount()) {
    AddRow(situation, context, *marks.CurrentRow);
  }
  return situation;
}

}  // namespace velmora::panes
