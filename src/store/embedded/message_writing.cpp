// The statements of a message database that write.
#include <array>

#include "store/display_type.h"
#include "store/embedded/field_codec.h"
#include "store/embedded/message_database.h"
#include "store/embedded/message_query.h"

namespace velmora::store::embedded {
namespace {

// Both in the order of Column, behind four parameters of their own.
constexpr const char* InsertRow =
    "INSERT INTO entries(type, class, attachment_count, key, flags, item_type, mail_flags, mail_options, "
    "owner,"
    " creator, priority, status_time, recipient_address, sender_address, sender_name, subject, "
    "recipient_text,"
    " display_variant, copy_marker, send_status, document_flags, pages, has_source)"
    " VALUES(?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)";
constexpr const char* UpdateRowSql =
    "UPDATE entries SET type=?1, class=?2, attachment_count=?3, flags=?5, item_type=?6, mail_flags=?7,"
    " mail_options=?8, owner=?9, creator=?10, priority=?11, status_time=?12, recipient_address=?13,"
    " sender_address=?14, sender_name=?15, subject=?16, recipient_text=?17, display_variant=?18, "
    "copy_marker=?19,"
    " send_status=?20, document_flags=?21, pages=?22, has_source=?23 WHERE key=?4";
constexpr int FirstValueParameter = 5;

constexpr std::array RemoveStatements = {
    "DELETE FROM entries WHERE key = ?",        "DELETE FROM texts WHERE entry = ?",
    "DELETE FROM recipients WHERE entry = ?",   "DELETE FROM attachments WHERE entry = ?",
    "DELETE FROM other_fields WHERE entry = ?",
};

}  // namespace

int DisplayClass(const EntryRow& row) {
  return DisplayTypeOf(
      {.ItemType = row.Type,
       .Flags = static_cast<std::uint32_t>(FieldNumber(row[Column::Flags])),
       .MailFlags = static_cast<std::uint32_t>(FieldNumber(row[Column::MailFlags])),
       .SendStatus = static_cast<std::uint32_t>(FieldNumber(row[Column::SendStatus])),
       .DisplayVariant = FieldNumber(row[Column::DisplayVariant]),
       .DocumentFlags = static_cast<std::uint32_t>(FieldNumber(row[Column::DocumentFlags]))});
}

void MessageDatabase::Query::BindField(int parameter, const FieldValue& value, ColumnKind kind) {
  if (std::holds_alternative<std::monostate>(value)) {
    statement_->BindNull(parameter);
  } else if (kind == ColumnKind::Text) {
    statement_->Bind(parameter, std::string_view(FieldText(value)));
  } else if (kind == ColumnKind::Date) {
    statement_->Bind(parameter, FieldDate(value).Seconds());
  } else {
    statement_->Bind(parameter, FieldNumber(value));
  }
}

Status MessageDatabase::WriteRow(const char* sql, const EntryRow& row) {
  auto query = Prepare(sql);
  if (!query) return Fail(query.error());
  query->With(row.Type, DisplayClass(row), row.AttachmentCount, row.Key);
  for (std::size_t i = 0; i < ColumnCount; ++i) {
    query->BindField(FirstValueParameter + static_cast<int>(i), row.Values[i], Columns[i].Kind);
  }
  return query->Run();
}

Status MessageDatabase::UpdateRow(const EntryRow& row) { return WriteRow(UpdateRowSql, row); }

Status MessageDatabase::Insert(const EntryRecord& record) {
  const auto key = record.Row.Key;
  if (const auto done = WriteRow(InsertRow, record.Row); !done) return done;
  for (const auto& [textTag, text] : record.Texts) {
    if (const auto done = WriteText(key, textTag, text); !done) return done;
  }
  if (const auto done = InsertRecipients(key, record.Recipients); !done) return done;
  int position = 0;
  for (const auto& attachment : record.Attachments) {
    if (const auto done = AddAttachment(key, position++, attachment); !done) return done;
  }
  for (const auto& field : record.Others) {
    if (const auto done = WriteOther(key, field); !done) return done;
  }
  return {};
}

Status MessageDatabase::WriteText(EntryKey key, FieldTag tag, std::string_view text) {
  if (text.empty()) {
    auto query = Prepare("DELETE FROM texts WHERE entry = ? AND tag = ?");
    return query ? query->With(key, tag).Run() : Fail(query.error());
  }
  auto query = Prepare("INSERT OR REPLACE INTO texts(entry, tag, value) VALUES(?,?,?)");
  return query ? query->With(key, tag, text).Run() : Fail(query.error());
}

Status MessageDatabase::WriteRecipients(EntryKey key, const std::vector<RecipientRecord>& recipients) {
  auto query = Prepare("DELETE FROM recipients WHERE entry = ?");
  if (!query) return Fail(query.error());
  if (const auto done = query->With(key).Run(); !done) return done;
  return InsertRecipients(key, recipients);
}

Status MessageDatabase::InsertRecipients(EntryKey key, const std::vector<RecipientRecord>& recipients) {
  int position = 0;
  for (const auto& [role, recipient] : recipients) {
    auto query =
        Prepare("INSERT INTO recipients(entry, position, role, name, address, kind) VALUES(?,?,?,?,?,?)");
    if (!query) return Fail(query.error());
    query->With(key, position++, static_cast<int>(role), std::string_view(recipient.Name),
                std::string_view(recipient.Address), std::string_view(recipient.Kind));
    if (const auto done = query->Run(); !done) return done;
  }
  return {};
}

Status MessageDatabase::AddAttachment(EntryKey key, int position, const AttachmentRecord& attachment) {
  auto query = Prepare(
      "INSERT INTO attachments(entry, position, name, size, date, flags, content_id, file, offset, length, "
      "encoding)"
      " VALUES(?,?,?,?,?,?,?,?,?,?,?)");
  if (!query) return Fail(query.error());
  const auto& content = attachment.Content;
  return query
      ->With(key, position, std::string_view(attachment.Name), attachment.Size, attachment.Date.Seconds(),
             attachment.Flags, std::string_view(attachment.ContentId), content.File, content.Offset,
             content.Length, std::string_view(content.Encoding))
      .Run();
}

Status MessageDatabase::WriteOther(EntryKey key, const OtherField& field) {
  const int isUserField = field.IsUserField ? 1 : 0;
  if (std::holds_alternative<std::monostate>(field.Value)) {
    auto query =
        Prepare("DELETE FROM other_fields WHERE entry = ? AND is_user_field = ? AND tag = ? AND name = ?");
    return query ? query->With(key, isUserField, field.Tag, std::string_view(field.Name)).Run()
                 : Fail(query.error());
  }
  const auto coded = EncodeValue(field.Value);
  auto query = Prepare(
      "INSERT OR REPLACE INTO other_fields(entry, is_user_field, tag, name, kind, value) "
      "VALUES(?,?,?,?,?,?)");
  if (!query) return Fail(query.error());
  const std::string_view name = field.Name;
  if (coded.IsNumber) {
    query->With(key, isUserField, field.Tag, name, coded.Kind, coded.Number);
  } else {
    query->With(key, isUserField, field.Tag, name, coded.Kind, std::string_view(coded.Text));
  }
  return query->Run();
}

Status MessageDatabase::AddStrayFile(const StrayFile& file) {
  auto query = Prepare("INSERT OR REPLACE INTO stray_files(name, inode, modified, doomed) VALUES(?,?,?,?)");
  if (!query) return Fail(query.error());
  return query->With(std::string_view(file.Name), file.Inode, file.Modified, file.IsDoomed ? 1 : 0).Run();
}

Status MessageDatabase::ForgetDoomedFiles() {
  auto query = Prepare("DELETE FROM stray_files WHERE doomed = 1");
  return query ? query->Run() : Fail(query.error());
}

Status MessageDatabase::AddArrival(std::string_view process, const Arrival& arrival) {
  auto query = Prepare("INSERT INTO arrivals(process, key, source, identity, source_key) VALUES(?,?,?,?,?)");
  if (!query) return Fail(query.error());
  return query
      ->With(process, arrival.Key, std::string_view(arrival.Source), arrival.Identity, arrival.SourceKey)
      .Run();
}

Status MessageDatabase::ForgetArrivals(std::string_view process) {
  auto query = Prepare("DELETE FROM arrivals WHERE process = ?");
  return query ? query->With(process).Run() : Fail(query.error());
}

Status MessageDatabase::ForgetArrivals(std::string_view process, std::string_view source) {
  auto query = Prepare("DELETE FROM arrivals WHERE process = ? AND source = ?");
  return query ? query->With(process, source).Run() : Fail(query.error());
}

Status MessageDatabase::Remove(EntryKey key) {
  for (const char* sql : RemoveStatements) {
    auto query = Prepare(sql);
    if (!query) return Fail(query.error());
    if (const auto done = query->With(key).Run(); !done) return done;
  }
  return {};
}

}  // namespace velmora::store::embedded
