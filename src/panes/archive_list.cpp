#include "panes/archive_list.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

#include "base/paths.h"
#include "base/text.h"
#include "panes/sort_by.h"
#include "store/display_type.h"
#include "store/filter.h"
#include "store/vocabulary.h"

namespace velmora::panes {
namespace {

std::string Normalised(std::string_view id) { return StripBackslash(NormalizePath(id)); }

template <typename Content>
void Append(ArchiveList& list, Content content) {
  const auto index = static_cast<std::uint32_t>(list.Rows.size());
  auto& row = list.Rows.emplace_back();
  row.UnsortedIndex = index;
  row.Content.emplace<Content>(std::move(content));
}

// --- Sorting. ---

// The text by which a message or rule is sorted.
const std::string& SortText(const MessageRow& row, int mode) {
  switch (mode) {
    case sort_mode::From:
      return row.From;
    case sort_mode::To:
      return row.To;
    case sort_mode::Attachments:
      return row.Attachments;
    default:
      return row.Subject;
  }
}

const std::string& SortText(const RoutingRow& row, int mode) {
  static const std::string enabled = "1", disabled = "0";
  switch (mode) {
    case sort_mode::Condition:
      return row.FirstCondition;
    case sort_mode::Destination:
      return row.FirstDestination;
    case sort_mode::Enabled:
      return row.IsEnabled ? enabled : disabled;
    default:
      return row.Name;
  }
}

template <typename Row>
void SortByText(std::span<ListRow> rows, int mode, bool ascending) {
  SortBy(rows, ascending,
         [mode](const ListRow& row) { return FoldCase(SortText(std::get<Row>(row.Content), mode)); });
}

void SortContent(std::span<ListRow> rows, const SortState& sorting) {
  if (rows.empty()) return;
  if (std::holds_alternative<RoutingRow>(rows.front().Content)) {
    SortByText<RoutingRow>(rows, EffectiveSortMode(RuleColumns, sorting.Mode), sorting.Ascending);
    return;
  }
  const int mode = EffectiveSortMode(MessageColumns, sorting.Mode);
  if (mode != sort_mode::Date) return SortByText<MessageRow>(rows, mode, sorting.Ascending);
  SortBy(rows, sorting.Ascending,
         [](const ListRow& row) { return std::get<MessageRow>(row.Content).StatusTime; });
}

// --- Rows. ---

Result<ArchiveRow> MakeArchiveRow(store::DvArchive& archive, std::string_view parentId,
                                  const ArchiveIcons& icons, platform::FileSystem& fileSystem,
                                  const ListingOptions& options) {
  auto name = archive.DisplayName();
  if (!name) return Fail(name.error());
  ArchiveRow row{.DisplayName = std::move(*name), .ID = archive.ID(), .IsShortCut = archive.IsShortCut()};
  row.Icon = icons.IconOf(row.ID, row.IsShortCut, fileSystem);
  row.IsHidden = options.MarkHidden && archive.Hidden().value_or(false);
  row.IsCircular =
      options.MarkCircular && row.IsShortCut && IsSameOrBelow(Normalised(parentId), Normalised(row.ID));
  return row;
}

RoutingRow MakeRoutingRow(const store::DvRuleData& rule, int number) {
  RoutingRow row{.Name = rule.Name, .Number = number, .Mode = RoutingMode(rule), .IsEnabled = rule.Enabled};
  if (!rule.Conditions.empty()) row.FirstCondition = ConditionText(rule.Conditions.front().Value);
  if (!rule.Destinations.empty()) row.FirstDestination = rule.Destinations.front();
  return row;
}

Status AppendMessages(ArchiveList& list, store::DvEntries& entries, Breather& breather, bool inhibitItems) {
  constexpr int rowsAtOnce = 512;  // some milliseconds
  const int count = entries.Count();
  std::vector<store::DvEntryRow> read;
  for (int first = 0; first < count; first += rowsAtOnce) {
    read.clear();
    auto done = entries.ReadRows(first, std::min(rowsAtOnce, count - first), read);
    for (auto& entry : read) {
      if (!store::PassesInhibition(entry.Flags, inhibitItems)) continue;
      Append(list, MakeMessageRow(std::move(entry)));
      ++list.MessageRows;
    }
    if (!done) return done;
    (void)breather.Breathe();  // a fill goes on to its end
  }
  return {};
}

}  // namespace

bool IsArchiveVisible(std::string_view id, std::string_view currentId, bool showAll) {
  if (showAll) return true;
  const auto path = Normalised(id), current = Normalised(currentId);
  return IsSameOrBelow(path, current) || IsSameOrBelow(current, path);
}

bool IsSessionRoot(const store::Session& session, const store::DvArchive& archive) {
  return session.DefaultArchive != nullptr &&
         EqualsFold(Normalised(archive.ID()), Normalised(session.DefaultArchive->ID()));
}

Status ListArchives(ArchiveList& list, PaneContext& context, const ArchiveIcons& icons,
                    store::DvArchive& archive, const ListingOptions& options) {
  list = {};
  if (!IsSessionRoot(context.session, archive)) {
    Append(list, ControlRow{});
    ++list.ArchiveRows;
  }
  const auto subArchives = archive.SubArchives();
  if (!subArchives) return Fail(subArchives.error());
  const std::string id = archive.ID();
  Breather breather(context.watcher, context.run.clock());
  Status done;
  for (const auto& sub : *subArchives) {
    if (!IsArchiveVisible(sub->ID(), id, ShowAllArchives)) continue;
    auto row = MakeArchiveRow(*sub, id, icons, context.run.fileSystem(), options);
    if (!row) {
      done = Fail(row.error());
      break;
    }
    Append(list, std::move(*row));
    ++list.ArchiveRows;
    (void)breather.Breathe();  // a fill goes on to its end
  }
  SortArchiveList(list, options.Sorting);
  return done;
}

Status ListMessages(ArchiveList& list, PaneContext& context, store::DvArchive& archive,
                    const ListingOptions& options) {
  const auto entries = archive.GetEntries(options.Filter);
  if (!entries) return Fail(entries.error());
  const int count = (*entries)->Count();
  if (options.SizeCheck >= 1 && count >= options.SizeCheck) list.HiddenTotal = count;
  if (list.HiddenTotal > 0 && options.IsHiding) return {};
  list.Rows.reserve(list.Rows.size() + static_cast<std::size_t>(count));
  Breather breather(context.watcher, context.run.clock());
  auto done = AppendMessages(list, **entries, breather, options.InhibitItems);
  SortArchiveList(list, options.Sorting);
  return done;
}

Status ListRoutingEntries(ArchiveList& list, PaneContext& context, store::DvArchive& archive,
                          const ListingOptions& options) {
  auto& rules = archive.Rules();
  const auto count = rules.Count();
  if (!count) return Fail(count.error());
  Breather breather(context.watcher, context.run.clock());
  Status done;
  for (int number = 0; number < *count; ++number) {
    const auto rule = rules.Item(number);
    if (!rule) {
      done = Fail(rule.error());
      break;
    }
    Append(list, MakeRoutingRow((*rule)->Data(), number));
    ++list.MessageRows;
    (void)breather.Breathe();  // a fill goes on to its end
  }
  SortArchiveList(list, options.Sorting);
  return done;
}

void SortArchiveList(ArchiveList& list, const SortState& sorting) {
  const std::span rows(list.Rows);
  const auto archives = static_cast<std::size_t>(list.ArchiveRows);
  const bool hasControl = !rows.empty() && std::holds_alternative<ControlRow>(rows.front().Content);
  SortBy(rows.first(archives).subspan(hasControl ? 1 : 0), sorting.Ascending,
         [](const ListRow& row) { return FoldCase(std::get<ArchiveRow>(row.Content).DisplayName); });
  SortContent(rows.subspan(archives), sorting);
}

MessageRow MakeMessageRow(store::DvEntryRow entry) {
  MessageRow row{.RecNo = entry.Key, .ItemType = entry.Type, .StatusTime = entry.StatusTime};
  row.DisplayType = store::DisplayTypeOf({.ItemType = entry.Type,
                                          .Flags = entry.Flags,
                                          .MailFlags = entry.MailFlags,
                                          .SendStatus = entry.SendStatus,
                                          .DisplayVariant = entry.DisplayVariant,
                                          .DocumentFlags = entry.DocumentFlags});
  row.Subject = std::move(entry.Subject);
  if (row.Subject.empty()) row.Subject = entry.SenderAddress;
  if (row.Subject.empty()) row.Subject = entry.RecipientAddress;
  row.From = std::move(entry.SenderAddress);
  row.To = std::move(entry.FirstRecipient);
  if (row.To.empty()) row.To = std::move(entry.RecipientText);
  if (row.To.empty()) row.To = std::move(entry.RecipientAddress);
  if (entry.Type == store::item_type::Link) {
    row.Attachments = std::move(entry.Link);
  } else {
    row.AttachmentCount = static_cast<int>(entry.AttachmentNames.size());
    row.Attachments = Join(entry.AttachmentNames, ";");
  }
  return row;
}

int RoutingMode(const store::DvRuleData& rule) {
  const std::pair<bool, int> tests[] = {{rule.Forward, 1},
                                        {rule.AutoReply, 2},
                                        {rule.NewMessage, 3},
                                        {rule.Miscellaneous, 4},
                                        {rule.RouteAlways, 6}};
  int mode = 0;
  for (const auto& [isSet, value] : tests) mode = isSet ? value : mode;
  return mode;
}

std::string ConditionText(std::string_view value) {
  static constexpr auto texts = std::to_array<std::pair<std::string_view, std::string_view>>(
      {{"1", "Fax"}, {"2", "EMail"}, {"3", "TMail"}, {"7", "SMS"}, {"4", "VoiceMail"}});
  for (const auto& [number, text] : texts) {
    if (number == value) return std::string(text);
  }
  return std::string(value);
}

}  // namespace velmora::panes
