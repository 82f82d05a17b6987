// What an archive's database holds of one entry.
#pragma once

#include <array>
#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "store/embedded/mail_parser.h"
#include "store/fields.h"
#include "store/item.h"

namespace velmora::store::embedded {

// The narrow columns of an entry: all that a list row, a filter and an export's decisions need.
enum class Column : std::size_t {
  Flags,
  ItemType,
  MailFlags,
  MailOptions,
  Owner,
  Creator,
  Priority,
  StatusTime,
  RecipientAddress,
  SenderAddress,
  SenderName,
  Subject,
  RecipientText,
  DisplayVariant,
  CopyMarker,
  SendStatus,
  DocumentFlags,
  Pages,
  HasSource,  // content file 1 was stored with the entry: a mail's source, a fax's image, a voice message's
              // sound
};
inline constexpr std::size_t ColumnCount = 19;

enum class ColumnKind { Number, Text, Date };

struct ColumnInfo {
  std::string_view Name;
  ColumnKind Kind;
};

// In the order of Column.
inline constexpr std::array<ColumnInfo, ColumnCount> Columns = {{
    {"flags", ColumnKind::Number},           {"item_type", ColumnKind::Number},
    {"mail_flags", ColumnKind::Number},      {"mail_options", ColumnKind::Number},
    {"owner", ColumnKind::Number},           {"creator", ColumnKind::Number},
    {"priority", ColumnKind::Number},        {"status_time", ColumnKind::Date},
    {"recipient_address", ColumnKind::Text}, {"sender_address", ColumnKind::Text},
    {"sender_name", ColumnKind::Text},       {"subject", ColumnKind::Text},
    {"recipient_text", ColumnKind::Text},    {"display_variant", ColumnKind::Number},
    {"copy_marker", ColumnKind::Number},     {"send_status", ColumnKind::Number},
    {"document_flags", ColumnKind::Number},  {"pages", ColumnKind::Number},
    {"has_source", ColumnKind::Number},
}};

// The row of an entry. A column without a value is monostate.
struct EntryRow {
  EntryKey Key = 0;
  int Type = 0;
  int AttachmentCount = 0;
  std::array<FieldValue, ColumnCount> Values;

  FieldValue& operator[](Column column) { return Values[static_cast<std::size_t>(column)]; }
  const FieldValue& operator[](Column column) const { return Values[static_cast<std::size_t>(column)]; }
};

enum class RecipientRole { To, Cc, Bcc };

struct RecipientRecord {
  RecipientRole Role = RecipientRole::To;
  DvRecipient Recipient;
};

// A field that has no column: a user field, or a tag or name that the store does not know.
struct OtherField {
  bool IsUserField = false;
  FieldTag Tag = 0;
  std::string Name;
  FieldValue Value;
};

// The big texts of an entry.
inline constexpr std::array<FieldTag, 4> TextTags = {tag::HtmlText, tag::SmtpHeader, tag::Comment,
                                                     tag::PlainText};

// What an entry has beside its row; of the big texts only which there are.
struct EntryParts {
  std::vector<RecipientRecord> Recipients;
  std::vector<AttachmentRecord> Attachments;
  std::vector<OtherField> Others;
  std::vector<FieldTag> Texts;
};

// The whole of an entry, as it is inserted and copied.
struct EntryRecord {
  EntryRow Row;
  std::vector<RecipientRecord> Recipients;
  std::map<FieldTag, std::string> Texts;  // by TextTags
  std::vector<AttachmentRecord> Attachments;
  std::vector<OtherField> Others;
};

}  // namespace velmora::store::embedded
