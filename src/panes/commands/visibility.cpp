#include "panes/commands/visibility.h"

#include <algorithm>
#include <array>

#include "panes/rows.h"

namespace velmora::panes {
namespace {

using Rule = bool (*)(const Situation&);

// --- What the rules speak of. ---

bool IsAdministrator(const Situation& s) { return s.UserRights.IsAdministrator; }
bool SeesReports(const Situation& s) {
  return s.UserRights.IsAdministrator || s.UserRights.ObjectProperties || s.UserRights.RuleView;
}
bool InArchiveView(const Situation& s) { return !s.InFileView(); }
bool InFiles(const Situation& s) { return s.InFileView(); }
bool IsAdministratorInFiles(const Situation& s) { return IsAdministrator(s) && s.InFileView(); }
// A row that stands for something: not the way up, not an empty list.
bool IsObject(const Situation& s) {
  return s.Row != RowKind::None && s.Row != RowKind::Control && s.Row != RowKind::DirBack;
}
bool IsArchive(const Situation& s) { return s.Row == RowKind::Archive; }
bool IsMessage(const Situation& s) { return s.Row == RowKind::Message; }
bool IsDirectory(const Situation& s) { return s.Row == RowKind::Directory; }
bool IsFile(const Situation& s) { return s.Row == RowKind::File; }
bool IsStoreObject(const Situation& s) { return IsObject(s) && InArchiveView(s); }
bool IsRuleWork(const Situation& s) { return s.Row == RowKind::Routing || s.InRuleView(); }

// --- What the row under the cursor changes. ---

bool ShowsRename(const Situation& s) {
  return s.InFileView() ? IsObject(s) : IsObject(s) && s.UserRights.ObjectProperties && !s.IsShortCut;
}
bool ShowsProperties(const Situation& s) {
  return IsObject(s) && (s.InFileView() || s.UserRights.ObjectProperties);
}
bool ShowsMove(const Situation& s) { return IsObject(s) && (s.UserRights.MoveAndDelete || IsMessage(s)); }
// Files are the user's own: the rights of the store do not keep them.
bool ShowsDelete(const Situation& s) { return s.InFileView() ? IsObject(s) : ShowsMove(s); }
bool ShowsItemProperties(const Situation& s) {
  return IsAdministrator(s) && IsStoreObject(s) && !IsRuleWork(s);
}
bool ShowsCleaning(const Situation& s) {
  return s.UserRights.ObjectProperties && IsArchive(s) && !s.InRuleView();
}
bool ShowsTrash(const Situation& s) {
  return IsAdministrator(s) && IsArchive(s) && s.IsInUserRoot && s.IsTrash && !s.InRuleView();
}
bool ShowsArchiveTool(const Situation& s) { return IsAdministrator(s) && IsArchive(s); }
bool ShowsEntryTool(const Situation& s) { return ShowsArchiveTool(s) && !s.IsShortCut; }
bool ShowsMigration(const Situation& s) { return IsAdministrator(s) && InArchiveView(s); }
bool ShowsNotifier(const Situation& s) { return IsAdministrator(s) && IsStoreObject(s); }
bool ShowsPhysicalFile(const Situation& s) { return IsAdministrator(s) && IsMessage(s); }
bool InMailArc(const Situation& s) { return s.MailArc != mailarchive::MailArcKind::None; }
bool IsTabTarget(const Situation& s) { return s.ShowsTabs && (IsArchive(s) || IsDirectory(s)); }
bool IsPropertyView(const Situation& s) {
  return s.ActiveView == PaneView::RZEBView ? s.RightPropertyView
                                            : s.ActiveView == PaneView::LZEBView && s.LeftPropertyView;
}
bool IsPlaceView(const Situation& s) { return !IsPropertyView(s); }

struct VisibilityRule {
  std::string_view Id;
  Rule Shows;
};

// An entry that is not named is always visible; all rules of one that is named must hold.
constexpr auto Rules = std::to_array<VisibilityRule>({
    // By the user's mode.
    {"MnSiteInformation", IsAdministrator},
    {"MnUserList", IsAdministrator},
    {"MnBroadcastLists", IsAdministrator},
    {"MnChangeServer", IsAdministrator},
    {"ArcDirSync", IsAdministrator},
    {"DirArcSync", IsAdministrator},
    {"MnDocSiteProp", IsAdministrator},
    {"MnUserListDoc", IsAdministrator},
    {"MnShowLog", IsAdministrator},
    {"MnCleanTrashAll", IsAdministrator},
    {"MnProperties", SeesReports},
    {"MnCxProp", SeesReports},
    {"MnCxStat", SeesReports},
    {"MnCxMsgStat", SeesReports},
    {"MnCxArcCleaning", SeesReports},
    {"MnCxDoc", SeesReports},
    {"MnCxArcTree", SeesReports},
    {"MnCxChgItemProp", IsAdministrator},
    // By the row.
    {"MnCopy", IsObject},
    {"MnMove", ShowsMove},
    {"MnDelete", ShowsDelete},
    {"MnRename", ShowsRename},
    {"MnNewArc", InArchiveView},
    {"MnNewDir", InFiles},
    {"MnMailArcOp", InFiles},
    {"MnMailArcToZeb", InFiles},
    {"MnMakeLinks", InFiles},
    {"MnAddToZEB", InFiles},
    {"MnCopyTreeToZEB", IsAdministratorInFiles},
    {"MnProperties", ShowsProperties},
    {"MnChgItemProp", ShowsItemProperties},
    {"MnArcCleaning", ShowsCleaning},
    {"MnCleanTrash", ShowsTrash},
    {"MnRemAcc", ShowsArchiveTool},
    {"MnDelDblArcEntries", ShowsEntryTool},
    {"MnDelCircArcEntries", ShowsEntryTool},
    {"MnDelArcEntry", ShowsEntryTool},
    {"MnDocCurObj", IsArchive},
    {"MnArcTree", ShowsArchiveTool},
    {"MnMigration", ShowsMigration},
    {"MnReminderCfg", ShowsNotifier},
    // The context menus beyond their twins.
    {"MnCxStat", IsArchive},
    {"MnCxMsgStat", IsStoreObject},
    {"MnCxZEBFileProperties", IsStoreObject},
    {"MnCxPhysDir", ShowsArchiveTool},
    {"MnCxPhysFile", ShowsPhysicalFile},
    {"MnCxZEBACL", ShowsArchiveTool},
    {"MnZEBCxAddTab", IsTabTarget},
    {"MnCxExpertTools", ShowsArchiveTool},
    {"MnCxFsShowArc", IsDirectory},
    {"MnCxFSDispMailArcAsZEB", IsDirectory},
    {"MnCxFsAddMailArcToZEB", IsObject},
    {"MnCxFSArcMailInZEB", IsFile},
    {"MnCxFSAddToZEB", IsDirectory},
    {"MnCxFsDisplayFile", IsFile},
    {"MnCxFsShowItem", IsFile},
    {"MnCxFSACL", IsObject},
    {"MnCxFSAddTab", IsTabTarget},
    {"MnCxSaveViewToTab", IsPlaceView},
    {"MnCxSetTabStd", IsPlaceView},
    {"ZEBCmdArc", InMailArc},
});

bool RulesHold(std::string_view id, const Situation& situation) {
  return std::ranges::all_of(
      Rules, [&](const VisibilityRule& rule) { return rule.Id != id || rule.Shows(situation); });
}

constexpr bool IsMenuPlace(Place place) { return place <= Place::HelpMenu; }
constexpr bool IsContextPlace(Place place) {
  return place == Place::ItemContext || place == Place::FileContext;
}

// The entry of the main menu that runs the same as one of a context menu; null without.
const Command* TwinOf(const Command& command) {
  if (!IsContextPlace(command.Where)) return nullptr;
  const auto commands = Commands();
  const auto twin = std::ranges::find_if(
      commands, [&](const Command& other) { return IsMenuPlace(other.Where) && other.Runs == command.Runs; });
  return twin == commands.end() ? nullptr : &*twin;
}

bool IsVisible(const Command& command, const Situation& situation) {
  if (!RulesHold(command.Id, situation)) return false;
  const Command* const twin = TwinOf(command);
  return twin == nullptr || RulesHold(twin->Id, situation);
}

// --- What is enabled. ---

bool MayUseRules(const Situation& s) { return s.UserRights.RuleView; }
bool MayMove(const Situation& s) { return s.UserRights.MoveAndDelete; }
bool MaySeeProperties(const Situation& s) { return s.UserRights.ObjectProperties; }
bool HasErrorLog(const Situation& s) { return s.ErrorLogExists; }

constexpr auto EnabledRules = std::to_array<VisibilityRule>({
    {"LZEBMsgRoutView", MayUseRules},
    {"RZEBMsgRoutView", MayUseRules},
    {"tbrMove", MayMove},
    {"tbrProperties", MaySeeProperties},
    {"tbrUserHome", IsAdministrator},
    {"tbrErrLog", HasErrorLog},
});

// What is copied or moved comes from an archive: from the file view nothing goes into the store yet.
bool IsAvailable(Action action, const Situation& situation) {
  if (action == Action::Copy || action == Action::Move) return InArchiveView(situation);
  return IsBuilt(action);
}

bool IsEnabled(const Command& command, const Situation& situation) {
  if (situation.IsBusy) return false;
  if (!command.OpensMenu() && !IsAvailable(command.Runs, situation)) return false;
  return std::ranges::all_of(EnabledRules, [&](const VisibilityRule& rule) {
    return rule.Id != command.Id || rule.Shows(situation);
  });
}

struct CheckedRule {
  std::string_view Id;
  Rule IsChecked;
};
constexpr auto CheckedRules = std::to_array<CheckedRule>({
    {"MnEnTabs", [](const Situation& s) { return s.ShowsTabs && IsBuilt(Action::ToggleTabs); }},
    {"MnCxDispMode", [](const Situation& s) { return s.TabDisplayMode; }},
    {"LZEBMsgRoutView", [](const Situation& s) { return s.LeftRuleView; }},
    {"RZEBMsgRoutView", [](const Situation& s) { return s.RightRuleView; }},
    {"LZEBPropView", [](const Situation& s) { return s.LeftPropertyView; }},
    {"RZEBPropView", [](const Situation& s) { return s.RightPropertyView; }},
    {"ZEBFSView", [](const Situation& s) { return s.ShowsFiles; }},
    {"ZEBCmdArc", [](const Situation& s) { return !s.HidesHelperFiles; }},
});

bool IsChecked(const Command& command, const Situation& situation) {
  const auto rule = std::ranges::find(CheckedRules, command.Id, &CheckedRule::Id);
  return rule != CheckedRules.end() && rule->IsChecked(situation);
}

// --- Keys. ---

struct ActionRule {
  Action Runs;
  Rule Allows;
};
constexpr auto KeyRules = std::to_array<ActionRule>({
    {Action::Move, MayMove},
    {Action::ShowMessage, IsMessage},
    {Action::OpenFile, IsFile},
    {Action::ArcDirSync, IsAdministrator},
    {Action::DirArcSync, IsAdministrator},
    {Action::ShowPhysical, IsAdministrator},
    {Action::ShowPhysicalDirectory, ShowsArchiveTool},
    {Action::ShowPhysicalFile, ShowsPhysicalFile},
    {Action::UserArchives, IsAdministrator},
    {Action::ChangeServer, IsAdministrator},
    {Action::ToggleRuleView, MayUseRules},
    {Action::RemoveDoubleEntries, ShowsArchiveTool},
    {Action::RemoveCircularEntries, ShowsArchiveTool},
    {Action::RemoveArchiveEntry, ShowsArchiveTool},
    // A short-cut has no entry in the menu, but its label can be edited.
    {Action::Rename,
     [](const Situation& s) { return IsObject(s) && (s.InFileView() || s.UserRights.ObjectProperties); }},
    {Action::ChooseDrive, [](const Situation& s) { return s.ShowsFiles; }},
    {Action::SwapPanes, [](const Situation& s) { return !s.ShowsFiles; }},
    {Action::TakeLeftIntoRight, [](const Situation& s) { return !s.ShowsFiles; }},
    {Action::TakeRightIntoLeft, [](const Situation& s) { return !s.ShowsFiles; }},
});

}  // namespace

RowKind RowKindOf(PaneView view, int entryType) {
  constexpr std::array InArchives = {RowKind::None, RowKind::Control, RowKind::Archive, RowKind::Message,
                                     RowKind::Routing};
  constexpr std::array InDirectories = {RowKind::None, RowKind::DirBack, RowKind::Directory, RowKind::File};
  const std::span<const RowKind> kinds =
      view == PaneView::RFSView ? std::span<const RowKind>(InDirectories) : InArchives;
  const auto index = static_cast<std::size_t>(entryType);
  return index < kinds.size() ? kinds[index] : RowKind::None;
}

CommandState StateOf(const Command& command, const Situation& situation) {
  return {IsVisible(command, situation), IsEnabled(command, situation), IsChecked(command, situation)};
}

bool IsMenuVisible(const Menu& menu, const Situation& situation) {
  const bool isReportMenu = menu.Holds == Place::DocMenu || menu.Holds == Place::StatisticsMenu;
  return !isReportMenu || SeesReports(situation);
}

bool IsMenuEnabled(const Situation& situation) { return !situation.IsBusy; }

std::string ToolTipOf(const Command& command, const Situation& situation) {
  const CommandState state = StateOf(command, situation);
  if (!command.OpensMenu() && !IsAvailable(command.Runs, situation)) return std::string(NotYetAvailable);
  // A toggle tells what a click brings.
  if (command.Runs == Action::ToggleRuleView) return state.IsChecked ? "Nachrichtenansicht" : "Regelansicht";
  if (command.Runs == Action::TogglePropertyView) {
    return state.IsChecked ? "Archivbrowser-Ansicht" : "Eigenschaften-Ansicht";
  }
  if (command.Runs == Action::ToggleViewMode) return state.IsChecked ? "Archivansicht" : "Dateiansicht";
  if (command.Runs == Action::ToggleHelperFiles && state.IsChecked) {
    return "Hilfsdateien des Mailarchivs ausblenden";
  }
  return ToolTipOf(command);
}

bool MayRun(Action action, const Situation& situation) {
  if (situation.IsBusy || !IsAvailable(action, situation)) return false;
  return std::ranges::all_of(KeyRules, [&](const ActionRule& rule) {
    // A message may be moved without the right that archives need.
    if (action == Action::Move && IsMessage(situation)) return true;
    return rule.Runs != action || rule.Allows(situation);
  });
}

bool MayRunFromKey(Action action, const Situation& situation) {
  if (action == Action::Move && !MayMove(situation)) return false;
  return MayRun(action, situation);
}

}  // namespace velmora::panes
