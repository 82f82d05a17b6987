#include "panes/rows.h"

#include <fmt/core.h>

#include <array>

#include "base/numbers.h"
#include "base/overloaded.h"

namespace velmora::panes {
namespace {

using ArchiveSlots = std::array<SlotValue, ArchiveSlotCount>;

constexpr std::string_view UpTag = "..";

std::string RecordTag(std::int64_t number) { return fmt::format("R{}", number); }

SlotValue DateSlot(DateTime date) { return date.IsNull() ? SlotValue{} : SlotValue(date); }

ArchiveSlots SlotsOf(const ListRow& row) {
  const std::int64_t type = EntryTypeOf(row);
  return std::visit(
      Overloaded{[&](const ControlRow&) {
                   return ArchiveSlots{std::string(ControlText), std::string(UpTag), {}, type, {}, {}, {},
                                       DescriptorOf(row)};
                 },
                 [&](const ArchiveRow& archive) {
                   return ArchiveSlots{archive.DisplayName,        archive.ID,         {}, type,
                                       std::int64_t{archive.Icon}, archive.IsShortCut, {}, DescriptorOf(row)};
                 },
                 [&](const MessageRow& message) {
                   return ArchiveSlots{message.Subject,
                                       RecordTag(message.RecNo),
                                       DateSlot(message.StatusTime),
                                       type,
                                       message.From,
                                       message.To,
                                       message.Attachments,
                                       DescriptorOf(row)};
                 },
                 [&](const RoutingRow& rule) {
                   return ArchiveSlots{rule.Name,
                                       RecordTag(rule.Number),
                                       std::int64_t{rule.Mode},
                                       type,
                                       rule.FirstCondition,
                                       rule.FirstDestination,
                                       std::string(rule.IsEnabled ? "1" : "0"),
                                       DescriptorOf(row)};
                 }},
      row.Content);
}

}  // namespace

int EntryTypeOf(const ListRow& row) { return static_cast<int>(row.Content.index()) + 1; }

SlotValue SlotOf(const ListRow& row, int slot) {
  if (slot < 0 || slot >= ArchiveSlotCount) return {};
  return SlotsOf(row)[static_cast<std::size_t>(slot)];
}

std::string DescriptorOf(const ListRow& row) {
  if (const auto* const message = std::get_if<MessageRow>(&row.Content)) {
    return fmt::format("T{}I{}", message->DisplayType, row.UnsortedIndex);
  }
  const bool isRule = std::holds_alternative<RoutingRow>(row.Content);
  return fmt::format("{}{}", isRule ? "T0R" : "I", row.UnsortedIndex);
}

std::string KeyOf(const ListRow& row, std::size_t index) {
  const auto* const archive = std::get_if<ArchiveRow>(&row.Content);
  const std::string_view kind = archive == nullptr ? "" : archive->IsShortCut ? "S" : "A";
  return fmt::format("T{}{}I{}", EntryTypeOf(row), kind, index);
}

std::string TagOf(const ListRow& row) {
  return std::visit(Overloaded{[](const ControlRow&) { return std::string(UpTag); },
                               [](const ArchiveRow& archive) { return archive.ID; },
                               [](const MessageRow& message) { return RecordTag(message.RecNo); },
                               [](const RoutingRow& rule) { return RecordTag(rule.Number); }},
                    row.Content);
}

SlotValue SlotOf(const FileRow& row, int slot) {
  const bool isUp = row.EntryType == entry_type::DirBackEntry;
  switch (slot) {
    case 0:
      return row.Name;
    case 1:
      return isUp ? std::string(UpTag) : FormatDateTime(row.Modified);
    case 2:
      if (isUp) return {};
      if (row.EntryType == entry_type::DirEntry) return row.FullPath;
      return FormatNumber(static_cast<double>(row.Size), "#,#0");
    case 3:
      return DescriptorOf(row);
    default:
      return {};
  }
}

std::string DescriptorOf(const FileRow& row) {
  return fmt::format("T{}I{}", row.EntryType, row.UnsortedIndex);
}

std::string KeyOf(const FileRow& row) {
  if (row.EntryType == entry_type::DirBackEntry) return std::string(UpTag);
  return row.EntryType == entry_type::DirEntry ? row.FullPath : row.Name;
}

int RowEntryType(std::string_view key) {
  if (key.size() < 2 || key[0] != 'T') return entry_type::None;
  const int type = key[1] - '0';
  return type >= entry_type::ControlEntry && type <= entry_type::RoutingEntry ? type : entry_type::None;
}

bool IsShortCutKey(std::string_view key) {
  return RowEntryType(key) == entry_type::ArchiveEntry && key.substr(2, 1) == "S";
}

int RowIndex(std::string_view key) {
  const auto mark = key.rfind('I');
  if (mark == std::string_view::npos) return -1;
  const auto index = ParseInteger(key.substr(mark + 1));
  return index && *index >= 0 ? static_cast<int>(*index) : -1;
}

}  // namespace velmora::panes
