// The statements of a message database that read.
#include <fmt/core.h>

#include <algorithm>

#include "base/sort_rows.h"
#include "base/text.h"
#include "store/embedded/field_codec.h"
#include "store/embedded/message_database.h"
#include "store/embedded/message_query.h"
#include "store/errors.h"
#include "store/filter.h"
#include "store/vocabulary.h"

namespace velmora::store::embedded {
namespace {

// The columns in the order of Column, behind the two that every row has.
constexpr const char* SelectRow =
    "SELECT type, attachment_count, flags, item_type, mail_flags, mail_options, owner, creator, priority,"
    " status_time, recipient_address, sender_address, sender_name, subject, recipient_text, display_variant,"
    " copy_marker, send_status, document_flags, pages, has_source FROM entries WHERE key = ?";
constexpr int FirstValueColumn = 2;

}  // namespace

FieldValue MessageDatabase::Query::Field(int column, ColumnKind kind) const {
  if (statement_->IsNull(column)) return {};
  switch (kind) {
    case ColumnKind::Number:
      return Number(column);
    case ColumnKind::Date:
      return DateTime::FromSeconds(Number(column));
    case ColumnKind::Text:
      break;
  }
  return Text(column);
}

FieldValue MessageDatabase::Query::CodedField(int column) const {
  CodedValue coded{.Kind = Number(column), .IsNumber = false, .Number = 0, .Text = {}};
  coded.IsNumber = IsNumberKind(coded.Kind);
  if (coded.IsNumber) {
    coded.Number = Number(column + 1);
  } else {
    coded.Text = Text(column + 1);
  }
  return DecodeValue(coded);
}

Result<int> MessageDatabase::Count() {
  const auto count = Number("SELECT count(*) FROM entries");
  if (!count) return Fail(count.error());
  return static_cast<int>(*count);
}

Result<EntryKey> MessageDatabase::HighestKeyEver() {
  const auto highest = Number("SELECT seq FROM sqlite_sequence WHERE name = 'entries'");
  if (!highest) return Fail(highest.error());
  return static_cast<EntryKey>(*highest);
}

Result<std::int64_t> MessageDatabase::Identity() { return Number("SELECT value FROM identity"); }

Result<std::vector<MessageDatabase::Arrival>> MessageDatabase::Arrivals(std::string_view process) {
  auto query = Prepare("SELECT key, source, identity, source_key FROM arrivals WHERE process = ?");
  if (!query) return Fail(query.error());
  query->With(process);
  std::vector<Arrival> arrivals;
  while (true) {
    const auto row = query->Step();
    if (!row) return Fail(row.error());
    if (!*row) return arrivals;
    arrivals.push_back({static_cast<EntryKey>(query->Number(0)), query->Text(1), query->Number(2),
                        static_cast<EntryKey>(query->Number(3))});
  }
}

Result<std::vector<std::string>> MessageDatabase::ArrivalProcesses() {
  auto query = Prepare("SELECT DISTINCT process FROM arrivals");
  if (!query) return Fail(query.error());
  std::vector<std::string> processes;
  while (true) {
    const auto row = query->Step();
    if (!row) return Fail(row.error());
    if (!*row) return processes;
    processes.push_back(query->Text(0));
  }
}

Result<bool> MessageDatabase::HasEntry(EntryKey key) {
  auto query = Prepare("SELECT 1 FROM entries WHERE key = ?");
  if (!query) return Fail(query.error());
  return query->With(key).Step();
}

Result<std::vector<StrayFile>> MessageDatabase::StrayFiles() {
  auto query = Prepare("SELECT name, inode, modified, doomed FROM stray_files");
  if (!query) return Fail(query.error());
  std::vector<StrayFile> files;
  while (true) {
    const auto row = query->Step();
    if (!row) return Fail(row.error());
    if (!*row) return files;
    files.push_back({query->Text(0), query->Number(1), query->Number(2), query->Number(3) != 0});
  }
}

// All but the last are answered by the index alone.
Result<std::vector<EntryKey>> MessageDatabase::Keys(std::uint32_t filter, EntryOrder order) {
  constexpr const char* indexed =
      "SELECT key, class, flags, send_status, attachment_count, status_time FROM entries";
  constexpr const char* subjects =
      "SELECT key, class, flags, send_status, attachment_count, subject FROM entries ORDER BY key";
  auto query = Prepare(order == EntryOrder::BySubject ? subjects : indexed);
  if (!query) return Fail(query.error());
  std::vector<std::pair<std::int64_t, EntryKey>> found;
  std::vector<std::string> folded;
  while (true) {
    const auto row = query->Step();
    if (!row) return Fail(row.error());
    if (!*row) break;
    EntryTraits traits{.DisplayType = static_cast<int>(query->Number(1)),
                       .Viewed = (query->Number(2) & item_flag::Viewed) != 0,
                       .HasAttachments = query->Number(4) > 0,
                       .SendStatus = std::nullopt};
    if (!query->IsNull(3)) traits.SendStatus = query->Number(3);
    if (!PassesFilter(filter, traits)) continue;
    found.emplace_back(order == EntryOrder::ByDate ? query->Number(5) : 0,
                       static_cast<EntryKey>(query->Number(0)));
    if (order == EntryOrder::BySubject) folded.push_back(FoldCase(query->Text(5)));
  }
  std::vector<EntryKey> keys(found.size());
  if (order == EntryOrder::BySubject) {
    std::ranges::transform(SortRows(folded, true), keys.begin(),
                           [&](std::uint32_t row) { return found[row].second; });
    return keys;
  }
  std::ranges::sort(found);
  std::ranges::transform(found, keys.begin(), &std::pair<std::int64_t, EntryKey>::second);
  return keys;
}

Result<std::vector<EntryKey>> MessageDatabase::AllKeys() {
  return ReadKeys("SELECT key FROM entries ORDER BY key");
}

Result<std::vector<MessageDatabase::ContentNeed>> MessageDatabase::ContentNeeds() {
  // A fax (3) and a voice message (5) are nothing without their file, whoever was to put it there.
  auto query = Prepare(
      "SELECT entry, file, max(size) FROM (SELECT key AS entry, 1 AS file, 0 AS size FROM entries"
      " WHERE has_source = 1 OR type IN (3, 5) UNION ALL SELECT entry, file, offset + length FROM "
      "attachments)"
      " GROUP BY entry, file ORDER BY entry, file");
  if (!query) return Fail(query.error());
  std::vector<ContentNeed> needs;
  while (true) {
    const auto row = query->Step();
    if (!row) return Fail(row.error());
    if (!*row) return needs;
    needs.push_back(
        {static_cast<EntryKey>(query->Number(0)), static_cast<int>(query->Number(1)), query->Number(2)});
  }
}

Result<std::vector<EntryKey>> MessageDatabase::ReadKeys(const char* sql) {
  auto query = Prepare(sql);
  if (!query) return Fail(query.error());
  std::vector<EntryKey> keys;
  while (true) {
    const auto row = query->Step();
    if (!row) return Fail(row.error());
    if (!*row) return keys;
    keys.push_back(static_cast<EntryKey>(query->Number(0)));
  }
}

Result<EntryRow> MessageDatabase::ReadRow(EntryKey key) {
  auto query = Prepare(SelectRow);
  if (!query) return Fail(query.error());
  const auto found = query->With(key).Step();
  if (!found) return Fail(found.error());
  if (!*found) {
    return Fail(store_error::NotFound, fmt::format("Der Eintrag {:08X} ist nicht vorhanden: {}", key, path_));
  }
  EntryRow row{.Key = key,
               .Type = static_cast<int>(query->Number(0)),
               .AttachmentCount = static_cast<int>(query->Number(1)),
               .Values = {}};
  for (std::size_t i = 0; i < ColumnCount; ++i) {
    row.Values[i] = query->Field(FirstValueColumn + static_cast<int>(i), Columns[i].Kind);
  }
  return row;
}

Result<std::map<FieldTag, std::string>> MessageDatabase::ReadTexts(EntryKey key) {
  auto query = Prepare("SELECT tag, value FROM texts WHERE entry = ?");
  if (!query) return Fail(query.error());
  query->With(key);
  std::map<FieldTag, std::string> texts;
  while (true) {
    const auto row = query->Step();
    if (!row) return Fail(row.error());
    if (!*row) return texts;
    texts.emplace(static_cast<FieldTag>(query->Number(0)), query->Text(1));
  }
}

Result<std::vector<FieldTag>> MessageDatabase::ReadTextTags(EntryKey key) {
  auto query = Prepare("SELECT tag FROM texts WHERE entry = ?");
  if (!query) return Fail(query.error());
  query->With(key);
  std::vector<FieldTag> tags;
  while (true) {
    const auto row = query->Step();
    if (!row) return Fail(row.error());
    if (!*row) return tags;
    tags.push_back(static_cast<FieldTag>(query->Number(0)));
  }
}

Result<std::vector<RecipientRecord>> MessageDatabase::ReadRecipients(EntryKey key) {
  auto query = Prepare("SELECT role, name, address, kind FROM recipients WHERE entry = ? ORDER BY position");
  if (!query) return Fail(query.error());
  query->With(key);
  std::vector<RecipientRecord> recipients;
  while (true) {
    const auto row = query->Step();
    if (!row) return Fail(row.error());
    if (!*row) return recipients;
    recipients.push_back(
        {static_cast<RecipientRole>(query->Number(0)), {query->Text(1), query->Text(2), query->Text(3)}});
  }
}

Result<std::vector<AttachmentRecord>> MessageDatabase::ReadAttachments(EntryKey key) {
  auto query = Prepare(
      "SELECT name, size, date, flags, content_id, file, offset, length, encoding FROM attachments"
      " WHERE entry = ? ORDER BY position");
  if (!query) return Fail(query.error());
  query->With(key);
  std::vector<AttachmentRecord> attachments;
  while (true) {
    const auto row = query->Step();
    if (!row) return Fail(row.error());
    if (!*row) return attachments;
    attachments.push_back({query->Text(0), query->Number(1), DateTime::FromSeconds(query->Number(2)),
                           static_cast<std::uint32_t>(query->Number(3)), query->Text(4),
                           ContentRange{static_cast<int>(query->Number(5)), query->Number(6),
                                        query->Number(7), query->Text(8)}});
  }
}

Result<std::vector<OtherField>> MessageDatabase::ReadOthers(EntryKey key) {
  auto query = Prepare("SELECT is_user_field, tag, name, kind, value FROM other_fields WHERE entry = ?");
  if (!query) return Fail(query.error());
  query->With(key);
  std::vector<OtherField> fields;
  while (true) {
    const auto row = query->Step();
    if (!row) return Fail(row.error());
    if (!*row) return fields;
    fields.push_back({query->Number(0) != 0, static_cast<FieldTag>(query->Number(1)), query->Text(2),
                      query->CodedField(3)});
  }
}

Result<EntryParts> MessageDatabase::ReadParts(EntryKey key) {
  return InOneReading([&]() -> Result<EntryParts> {
    auto recipients = ReadRecipients(key);
    if (!recipients) return Fail(recipients.error());
    auto attachments = ReadAttachments(key);
    if (!attachments) return Fail(attachments.error());
    auto others = ReadOthers(key);
    if (!others) return Fail(others.error());
    auto texts = ReadTextTags(key);
    if (!texts) return Fail(texts.error());
    return EntryParts{std::move(*recipients), std::move(*attachments), std::move(*others), std::move(*texts)};
  });
}

Result<std::pair<EntryRow, EntryParts>> MessageDatabase::ReadEntry(EntryKey key) {
  return InOneReading([&]() -> Result<std::pair<EntryRow, EntryParts>> {
    auto row = ReadRow(key);
    if (!row) return Fail(row.error());
    auto parts = ReadParts(key);
    if (!parts) return Fail(parts.error());
    return std::pair(std::move(*row), std::move(*parts));
  });
}

Result<EntryRecord> MessageDatabase::ReadRecord(EntryKey key) {
  return InOneReading([&]() -> Result<EntryRecord> {
    auto entry = ReadEntry(key);
    if (!entry) return Fail(entry.error());
    auto texts = ReadTexts(key);
    if (!texts) return Fail(texts.error());
    auto& [row, parts] = *entry;
    return EntryRecord{std::move(row), std::move(parts.Recipients), std::move(*texts),
                       std::move(parts.Attachments), std::move(parts.Others)};
  });
}

}  // namespace velmora::store::embedded
