// The statements of a message database that read what lists show: a few per run of entries, none per entry.
#include <algorithm>
#include <optional>

#include "store/embedded/message_database.h"
#include "store/embedded/message_query.h"
#include "store/vocabulary.h"

namespace velmora::store::embedded {
namespace {

// Keys that rise by no more than this are read as one run: passing over the entries between them costs less
// than another search.
constexpr EntryKey LargestGap = 16;

std::size_t RunLength(std::span<const EntryKey> keys) {
  const auto end =
      std::ranges::adjacent_find(keys, [](EntryKey a, EntryKey b) { return b <= a || b - a > LargestGap; });
  return end == keys.end() ? keys.size() : static_cast<std::size_t>(end - keys.begin()) + 1;
}

}  // namespace

Status MessageDatabase::ReadListRows(std::span<const EntryKey> keys, std::vector<DvEntryRow>& rows) {
  return InOneReading([&]() -> Status {
    while (!keys.empty()) {
      const auto length = RunLength(keys);
      if (auto read = ReadRun(keys.first(length), rows); !read) return read;
      keys = keys.subspan(length);
    }
    return {};
  });
}

Status MessageDatabase::ReadRun(std::span<const EntryKey> keys, std::vector<DvEntryRow>& rows) {
  const auto first = rows.size();
  auto read = ReadColumns(keys, rows);
  if (read) read = ReadParts(std::span(rows).subspan(first));
  if (!read) rows.resize(first);  // half a row is none
  return read;
}

// Both the keys and the found rows rise, so that each is walked once.
Status MessageDatabase::ReadColumns(std::span<const EntryKey> keys, std::vector<DvEntryRow>& rows) {
  auto query = Prepare(
      "SELECT key, type, flags, mail_flags, send_status, document_flags, display_variant, status_time,"
      " subject, sender_address, recipient_address, recipient_text"
      " FROM entries WHERE key BETWEEN ? AND ? ORDER BY key");
  if (!query) return Fail(query.error());
  query->With(keys.front(), keys.back());
  const auto word = [&](int column) { return static_cast<std::uint32_t>(query->Number(column)); };
  auto wanted = keys.begin();
  while (true) {
    const auto found = query->Step();
    if (!found) return Fail(found.error());
    if (!*found) return {};
    const auto key = static_cast<EntryKey>(query->Number(0));
    wanted = std::find_if(wanted, keys.end(), [key](EntryKey other) { return other >= key; });
    if (wanted == keys.end()) return {};
    if (*wanted != key) continue;
    auto& row = rows.emplace_back();
    row.Key = key;
    row.Type = static_cast<int>(query->Number(1));
    row.Flags = word(2);
    row.MailFlags = word(3);
    row.SendStatus = word(4);
    row.DocumentFlags = word(5);
    row.DisplayVariant = query->Number(6);
    row.StatusTime = DateTime::FromSeconds(query->Number(7));
    row.Subject = query->Text(8);
    row.SenderAddress = query->Text(9);
    row.RecipientAddress = query->Text(10);
    row.RecipientText = query->Text(11);
  }
}

// `sql` gives the entry's key, between two keys, rising, in its first column.
template <typename Take>
Status MessageDatabase::JoinParts(const char* sql, std::span<DvEntryRow> rows, Take take) {
  auto query = Prepare(sql);
  if (!query) return Fail(query.error());
  query->With(rows.front().Key, rows.back().Key);
  auto row = rows.begin();
  while (true) {
    const auto found = query->Step();
    if (!found) return Fail(found.error());
    if (!*found) return {};
    const auto key = static_cast<EntryKey>(query->Number(0));
    row = std::find_if(row, rows.end(), [key](const DvEntryRow& other) { return other.Key >= key; });
    if (row == rows.end()) return {};
    if (row->Key == key) take(*row, *query);
  }
}

Status MessageDatabase::ReadParts(std::span<DvEntryRow> rows) {
  if (rows.empty()) return {};
  std::optional<EntryKey> last;
  auto joined = JoinParts(
      "SELECT entry, name, address FROM recipients WHERE entry BETWEEN ? AND ? AND role = 0"
      " ORDER BY entry, position",
      rows, [&last](DvEntryRow& row, const Query& query) {
        if (last == row.Key) return;
        last = row.Key;
        row.FirstRecipient = query.Text(2).empty() ? query.Text(1) : query.Text(2);
      });
  if (!joined) return joined;
  joined = JoinParts(
      "SELECT entry, name FROM attachments WHERE entry BETWEEN ? AND ? ORDER BY entry, position", rows,
      [](DvEntryRow& row, const Query& query) { row.AttachmentNames.push_back(query.Text(1)); });
  const auto isLink = [](const DvEntryRow& row) { return row.Type == item_type::Link; };
  if (!joined || std::ranges::none_of(rows, isLink)) return joined;
  return JoinParts(
      "SELECT entry, kind, value FROM other_fields WHERE entry BETWEEN ? AND ? AND is_user_field = 0"
      " AND tag = 0 AND name = 'Link' ORDER BY entry",
      rows, [&isLink](DvEntryRow& row, const Query& query) {
        if (isLink(row)) row.Link = FieldText(query.CodedField(1));
      });
}

}  // namespace velmora::store::embedded
