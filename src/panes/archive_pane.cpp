#include "panes/archive_pane.h"

#include <utility>

#include "base/paths.h"
#include "base/text.h"
#include "panes/display_text.h"
#include "panes/row_icons.h"
#include "panes/selection.h"
#include "store/archive_files.h"
#include "store/errors.h"
#include "store/icon_keys.h"

namespace velmora::panes {

using settings::Options;
using store::Session;

struct ArchivePane::OptionMembers {
  std::shared_ptr<store::DvArchive> Session::*Archive;
  std::int32_t Options::*ViewModeRouting;
  std::int32_t Options::*ViewMode;
  bool Options::*FullPath;
  struct Pair {
    std::int32_t Options::*Mode;
    bool Options::*Direction;
  } Messages, Rules;
};

namespace {

constexpr std::string_view HidingOn = "Nachrichtenausblendung aktiv",
                           HidingOff = "Nachrichtenausblendung deaktiviert";

std::string Items(int count) { return std::to_string(count) + (count == 1 ? " Item" : " Items"); }

// A message's or rule's text in a column behind the first.
std::string ColumnText(const MessageRow& row, std::size_t column) {
  switch (column) {
    case 1:
      return row.StatusTime.IsNull() ? std::string() : FormatDateTime(row.StatusTime);
    case 2:
      return row.From;
    case 3:
      return row.Attachments;
    case 4:
      return row.To;
    default:
      return {};
  }
}

std::string ColumnText(const RoutingRow& row, std::size_t column) {
  if (column == 2) return row.FirstCondition;
  return column == 3 ? row.FirstDestination : std::string();
}

template <typename Row>
const Row* RowAs(const ArchiveList& list, std::size_t row) {
  return row < list.Rows.size() ? std::get_if<Row>(&list.Rows[row].Content) : nullptr;
}

}  // namespace

ArchivePane::ArchivePane(PaneView view, PaneContext& context, const ArchiveIcons& icons)
    : view_(view), context_(context), icons_(icons) {}

const ArchivePane::OptionMembers& ArchivePane::Members() const {
  static constexpr OptionMembers left = {
      &Session::LeftArchive,
      &Options::LZEBViewModeRouting,
      &Options::LZEBViewMode,
      &Options::DisplayLZEBArchiveFullPath,
      {&Options::LZEBSortingMode, &Options::LZEBSortingDirection},
      {&Options::LZEBRoutingSortingMode, &Options::LZEBRoutingSortingDirection}};
  static constexpr OptionMembers right = {
      &Session::RightArchive,
      &Options::RZEBViewModeRouting,
      &Options::RZEBViewMode,
      &Options::DisplayRZEBArchiveFullPath,
      {&Options::RZEBSortingMode, &Options::RZEBSortingDirection},
      {&Options::RZEBRoutingSortingMode, &Options::RZEBRoutingSortingDirection}};
  return view_ == PaneView::RZEBView ? right : left;
}

std::shared_ptr<store::DvArchive>& ArchivePane::Current() const {
  return context_.session.*Members().Archive;
}

// --- Rows. ---

const ArchiveRow* ArchivePane::Archive(std::size_t row) const { return RowAs<ArchiveRow>(list_, row); }
const MessageRow* ArchivePane::Message(std::size_t row) const { return RowAs<MessageRow>(list_, row); }
const RoutingRow* ArchivePane::Rule(std::size_t row) const { return RowAs<RoutingRow>(list_, row); }

int ArchivePane::EntryType(std::size_t row) const {
  return row < RowCount() ? EntryTypeOf(list_.Rows[row]) : entry_type::None;
}

std::uint32_t ArchivePane::UnsortedIndex(std::size_t row) const { return list_.Rows[row].UnsortedIndex; }

std::string ArchivePane::Key(std::size_t row) const { return KeyOf(list_.Rows[row], row); }

std::string ArchivePane::Tag(std::size_t row) const { return TagOf(list_.Rows[row]); }

std::string ArchivePane::Name(std::size_t row) const {
  if (const auto* const archive = Archive(row)) return archive->DisplayName;
  if (const auto* const message = Message(row)) return message->Subject;
  if (const auto* const rule = Rule(row)) return rule->Name;
  return std::string(ControlText);
}

std::string ArchivePane::Text(std::size_t row, std::size_t column) const {
  if (column == 0) return DisplayText(Name(row));
  if (const auto* const message = Message(row)) return DisplayText(ColumnText(*message, column));
  if (const auto* const rule = Rule(row)) return DisplayText(ColumnText(*rule, column));
  const auto size = sizes_.find(UnsortedIndex(row));
  if (size == sizes_.end() || column > 2) return {};
  return column == 1 ? size->second.Counts : size->second.Bytes;
}

RowIcon ArchivePane::Icon(std::size_t row) const {
  if (const auto* const archive = Archive(row)) {
    return {std::string(store::ListImageKeys[static_cast<std::size_t>(archive->Icon)])};
  }
  if (const auto* const message = Message(row))
    return MessageIcon(*message, context_.options.DisplayFileIcons);
  if (const auto* const rule = Rule(row)) return {std::string(RoutingModeIcon(rule->Mode))};
  return {std::string(FolderBackKey)};
}

std::string_view ArchivePane::ColumnIcon(std::size_t row, std::size_t column) const {
  const auto* const rule = Rule(row);
  if (rule == nullptr || column != 1) return {};
  return rule->IsEnabled ? RuleEnabledKey : RuleDisabledKey;
}

RowMarks ArchivePane::MarksOf(std::size_t row) const {
  const auto* const archive = Archive(row);
  return archive == nullptr ? RowMarks() : RowMarks{archive->IsHidden, archive->IsCircular};
}

// --- Columns and order. ---

// Those of the rows that there are: while another view is filled, the window still paints these.
std::span<const Column> ArchivePane::Columns() const {
  if (list_.HoldsRules) return RuleColumns;
  return MessageColumns;
}

SortState ArchivePane::SortingOf(bool ofRules) const {
  const auto& pair = ofRules ? Members().Rules : Members().Messages;
  return {context_.options.*pair.Mode, context_.options.*pair.Direction};
}

SortState ArchivePane::Sorting() const { return SortingOf(list_.HoldsRules); }

void ArchivePane::SetSorting(const SortState& state) {
  const auto& pair = list_.HoldsRules ? Members().Rules : Members().Messages;
  context_.options.*pair.Mode = state.Mode;
  context_.options.*pair.Direction = state.Ascending;
  SortArchiveList(list_, state);
  Changed();
}

// --- The place. ---

std::shared_ptr<store::DvArchive> ArchivePane::CurrentArchive() const { return Current(); }

ListingOptions ArchivePane::Listing() const {
  const auto& options = context_.options;
  return {.Sorting = SortingOf(IsRuleView()),
          .Filter = static_cast<std::uint32_t>(options.DvItemFilter),
          .InhibitItems = options.DvInhibitItems,
          .SizeCheck = options.SizeCheck,
          .IsHiding = isHiding_,
          .MarkHidden = options.DisplayHiddenChar,
          .MarkCircular = options.DisplayCircularReferences};
}

bool ArchivePane::Show(std::shared_ptr<store::DvArchive> archive) {
  // The old list stands until the new one is whole: the window is repainted meanwhile.
  const auto options = Listing();
  ArchiveList list;
  auto listed = ListArchives(list, context_, icons_, *archive, options);
  const bool hasNothing = list.Rows.empty() || (list.Rows.size() == 1 && list.ArchiveRows == 1 &&
                                                EntryTypeOf(list.Rows[0]) == entry_type::ControlEntry);
  if (!listed && hasNothing) {
    ReportStoreFailure(context_.run, archive->FullPath(), listed.error());
    return false;
  }
  if (listed) {
    listed = IsRuleView() ? ListRoutingEntries(list, context_, *archive, options)
                          : ListMessages(list, context_, *archive, options);
  }
  list.HoldsRules = IsRuleView();
  const auto previous = std::exchange(Current(), std::move(archive));
  const auto& current = *Current();
  shownPath_ = current.FullPath();
  list_ = std::move(list);
  sizes_.clear();
  if (previous != nullptr && !EqualsFold(previous->ID(), current.ID())) {
    const int row = FindByTag(*this, previous->ID());
    SetCursorRow(row < 0 ? 0 : static_cast<std::size_t>(row));
  }
  History().Visit(current.ID());
  Changed();
  if (!listed) ReportStoreFailure(context_.run, current.FullPath(), listed.error());
  return true;
}

Result<std::shared_ptr<store::DvArchive>> ArchivePane::Fetch(std::string_view path) const {
  if (context_.session.Account == nullptr) {
    return Fail(store::store_error::NotFound, "Es besteht keine Anmeldung an einem Server");
  }
  return context_.session.Account->GetArchive(path);
}

bool ArchivePane::ShowArchive(std::shared_ptr<store::DvArchive> archive) {
  return archive != nullptr && Show(std::move(archive));
}

bool ArchivePane::ShowArchive(std::string_view path) {
  auto archive = Fetch(path);
  if (archive) return Show(*std::move(archive));
  ReportStoreFailure(context_.run, path, archive.error());
  return false;
}

bool ArchivePane::ShowPlace(const std::string& place) { return ShowArchive(std::string_view(place)); }

bool ArchivePane::ShowMessage(store::EntryKey key) {
  for (std::size_t row = 0; row < RowCount(); ++row) {
    const auto* const message = Message(row);
    if (message == nullptr || message->RecNo != key) continue;
    SetCursorRow(row);
    Changed();
    return true;
  }
  return false;
}

bool ArchivePane::Refresh() {
  const auto& current = Current();
  return current != nullptr && ShowArchive(std::string_view(current->ID()));
}

// The list above an archive still tells of it when its directory is gone.
bool ArchivePane::IsGone(const Result<std::shared_ptr<store::DvArchive>>& archive) const {
  if (!archive) return archive.error().Number == store::store_error::NotFound;
  return store::LookForDirectory(context_.run.fileSystem(), (*archive)->ID()) == store::DirectoryState::Gone;
}

bool ArchivePane::RefreshNearest() {
  const auto gone = Current();
  if (gone == nullptr) return false;
  auto there = Fetch(gone->ID());
  if (!IsGone(there)) return Refresh();
  std::string id = gone->ID(), path = shownPath_;
  const auto isThere = [&] { return there && !IsGone(there); };
  for (auto cut = path.find_last_of("/\\"); !isThere() && cut != 0 && cut != std::string::npos;
       cut = path.find_last_of("/\\")) {
    there = ParentOf(id, path);
    id = StripBackslash(DirectoryOf(id));
    path.resize(cut);
  }
  return (isThere() && Show(*std::move(there))) || GoToRoot();
}

EnterResult ArchivePane::Enter(std::size_t row) {
  const int type = EntryType(row);
  if (type == entry_type::MessageEntry) return EnterResult::Message;
  if (type == entry_type::ControlEntry) return GoUp() ? EnterResult::Entered : EnterResult::Failed;
  const auto* const archive = Archive(row);
  if (archive == nullptr) return EnterResult::Nothing;
  // Of a short-cut this is the target itself.
  const std::string id = archive->ID;
  return ShowArchive(std::string_view(id)) ? EnterResult::Entered : EnterResult::Failed;
}

// Names may be equal, and then a path finds the first. Most archives lie in their parent's directory, which
// tells for certain; those that do not are found by their path.
Result<std::shared_ptr<store::DvArchive>> ArchivePane::ParentOf(std::string_view id,
                                                                std::string_view path) const {
  const std::string_view parentPath = path.substr(0, path.find_last_of("/\\"));
  auto holder = Fetch(StripBackslash(DirectoryOf(id)));
  if (holder && EqualsFold((*holder)->FullPath(), parentPath)) return holder;
  return Fetch(parentPath);
}

bool ArchivePane::GoUp() {
  const auto& current = Current();
  if (current == nullptr || IsSessionRoot(context_.session, *current)) return false;
  const auto nameStart = current->FullPath().find_last_of("/\\");
  if (nameStart == 0 || nameStart == std::string::npos) return false;  // the root of the tree
  auto parent = ParentOf(current->ID(), current->FullPath());
  if (parent) return Show(*std::move(parent));
  ReportStoreFailure(context_.run, current->FullPath(), parent.error());
  return false;
}

bool ArchivePane::GoToRoot() { return ShowArchive(context_.session.DefaultArchive); }

bool ArchivePane::GoToUserRoot() {
  if (context_.session.Account == nullptr) return false;
  auto root = context_.session.Account->GetSpecialArchive(store::special::OwnRoot);
  if (root) return Show(*std::move(root));
  ReportStoreFailure(context_.run, context_.session.Account->User().Name(), root.error());
  return false;
}

std::string ArchivePane::PathText() const {
  const auto& current = Current();
  if (current == nullptr) return {};
  if (context_.options.*Members().FullPath) return DisplayText(current->FullPath());
  return DisplayText(current->DisplayName().value_or(current->FullPath()));
}

// --- View modes. ---

bool ArchivePane::IsRuleView() const { return context_.options.*Members().ViewModeRouting != 0; }

bool ArchivePane::IsPropertyView() const { return context_.options.*Members().ViewMode != 0; }

bool ArchivePane::SetRuleView(bool on) {
  if (on == IsRuleView()) return true;
  auto& mode = context_.options.*Members().ViewModeRouting;
  mode = on ? 1 : 0;
  if (Refresh()) return true;
  mode = on ? 0 : 1;  // the rows that stay are of the other kind
  return false;
}

// --- Hiding and status bar. ---

bool ArchivePane::ToggleHiding() {
  if (context_.options.SizeCheck < 1) return false;
  isHiding_ = !isHiding_;
  return Refresh();
}

std::string_view ArchivePane::HidingToolTip() const {
  if (context_.options.SizeCheck < 1 || !HidingStruck()) return {};
  return isHiding_ ? HidingOn : HidingOff;
}

std::string ArchivePane::StatusText(std::size_t selectedRows) const {
  const auto total = std::to_string(list_.HiddenTotal);
  const bool isHidden = HidingStruck() && isHiding_;
  if (selectedRows > 0 && list_.ArchiveRows > 0) {
    return std::to_string(selectedRows) + "/" +
           (isHidden ? "(" + total + ")" : std::to_string(list_.MessageRows));
  }
  if (isHidden) return "(" + total + ")" + (list_.HiddenTotal == 1 ? " Item" : " Items");
  return Items(HidingStruck() ? list_.HiddenTotal : list_.MessageRows);
}

bool ArchivePane::ShowSize(std::size_t row) {
  const auto* const counted = Archive(row);
  if (counted == nullptr) return false;
  const auto archive = Fetch(counted->ID);
  if (!archive) {
    ReportStoreFailure(context_.run, counted->ID, archive.error());
    return false;
  }
  Breather breather(context_.watcher, context_.run.clock());
  const auto count = CountAll(*CounterOf(*archive), breather);
  if (count.FirstError) context_.run.LogError(counted->ID, *count.FirstError);
  if (count.IsStopped) return false;
  PutSize(UnsortedIndex(row), count);
  return true;
}

std::unique_ptr<SizeCounter> ArchivePane::CounterOf(std::shared_ptr<store::DvArchive> archive) const {
  return CountArchive(std::move(archive), static_cast<std::uint32_t>(context_.options.DvItemFilter),
                      context_.run.fileSystem());
}

std::unique_ptr<SizeCounter> ArchivePane::CountSize(std::size_t row) {
  const auto* const counted = Archive(row);
  if (counted == nullptr || sizes_.contains(UnsortedIndex(row))) return nullptr;
  const auto archive = Fetch(counted->ID);
  return archive ? CounterOf(*archive) : nullptr;
}

void ArchivePane::PutSize(std::uint32_t unsortedIndex, const SizeCount& count) {
  sizes_[unsortedIndex] = ArchiveSizeTexts(count);
}

void ArchivePane::Swap(ArchivePane& other) {
  auto& options = context_.options;
  const auto& mine = Members();
  const auto& theirs = other.Members();
  std::swap(Current(), other.Current());
  std::swap(list_, other.list_);
  std::swap(shownPath_, other.shownPath_);
  std::swap(sizes_, other.sizes_);
  std::swap(isHiding_, other.isHiding_);
  std::swap(options.*mine.ViewModeRouting, options.*theirs.ViewModeRouting);
  std::swap(options.*mine.ViewMode, options.*theirs.ViewMode);
  for (const auto pair : {&OptionMembers::Messages, &OptionMembers::Rules}) {
    std::swap(options.*(mine.*pair).Mode, options.*(theirs.*pair).Mode);
    std::swap(options.*(mine.*pair).Direction, options.*(theirs.*pair).Direction);
  }
  SwapBase(other);
}

}  // namespace velmora::panes
