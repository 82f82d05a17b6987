#include "store/embedded/message_item.h"

#include <fmt/core.h>

#include <algorithm>
#include <utility>

#include "base/paths.h"
#include "base/text.h"
#include "store/archive.h"
#include "store/embedded/attachment_names.h"
#include "store/embedded/content_decoder.h"
#include "store/embedded/content_files.h"
#include "store/embedded/field_table.h"
#include "store/embedded/item_attachments.h"
#include "store/embedded/item_fields.h"
#include "store/errors.h"
#include "store/vocabulary.h"

namespace velmora::store::embedded {
namespace {

// It stands in memory as a whole until the draft is stored.
constexpr std::int64_t LargestContentFile = std::int64_t{1} << 30;

bool IsSameField(const OtherField& a, const OtherField& b) {
  return a.IsUserField == b.IsUserField && a.Tag == b.Tag && EqualsFold(a.Name, b.Name);
}

void Replace(std::vector<OtherField>& fields, const OtherField& field) {
  std::erase_if(fields, [&](const OtherField& other) { return IsSameField(other, field); });
  fields.push_back(field);
}

// A value as its column keeps it: texts are one line, as header fields are.
FieldValue ToColumn(FieldValue value, ColumnKind kind) {
  if (std::holds_alternative<std::monostate>(value)) return value;
  if (kind == ColumnKind::Date) return FieldDate(value);
  if (kind == ColumnKind::Number) return FieldNumber(value);
  return BlankControlCharacters(MakeValidUtf8(FieldText(value)));
}

}  // namespace

MessageItem::MessageItem(EntryStore& store, std::string directory, EntryRow row)
    : store_(store), directory_(std::move(directory)), row_(std::move(row)) {}

MessageItem::MessageItem(EntryStore& store, std::string directory, EntryRow row, EntryParts parts)
    : MessageItem(store, std::move(directory), std::move(row)) {
  Accept(std::move(parts));
}

MessageItem::~MessageItem() = default;

std::unique_ptr<MessageItem> MessageItem::MakeDraft(EntryStore& store, std::string directory, int type) {
  EntryRow row{.Key = 0, .Type = type, .AttachmentCount = 0, .Values = {}};
  row[Column::Flags] = std::int64_t{0};
  row[Column::SendStatus] = std::int64_t{0};
  row[Column::StatusTime] = store.Clock().Now();
  auto item = std::make_unique<MessageItem>(store, std::move(directory), std::move(row));
  item->isDraft_ = true;
  item->recipients_.emplace();
  item->attachments_.emplace();
  item->others_.emplace();
  return item;
}

DvFields& MessageItem::Fields() {
  if (!fields_) fields_ = std::make_unique<ItemFields>(*this);
  return *fields_;
}

DvFields& MessageItem::UserFields() {
  if (!userFields_) userFields_ = std::make_unique<ItemUserFields>(*this);
  return *userFields_;
}

DvAttachments& MessageItem::Attachments() {
  if (!attachmentView_) attachmentView_ = std::make_unique<ItemAttachments>(*this);
  return *attachmentView_;
}

Result<int> MessageItem::Pages() { return static_cast<int>(FieldNumber(row_[Column::Pages])); }

Status MessageItem::SetPages(int pages) {
  SetValue(Column::Pages, std::int64_t{pages});
  return {};
}

Status MessageItem::CopyTo(DvArchive& target, bool move) {
  if (isDraft_) return Fail(store_error::NotFound, "Der Eintrag ist noch nicht gespeichert");
  const auto directory = target.ID();
  const auto key =
      move ? store_.Move(directory_, row_.Key, directory) : store_.Copy(directory_, row_.Key, directory);
  if (!key) return Fail(key.error());
  // What was set on this item since it was read goes with the copy.
  return store_.Update(directory, *key, changes_);
}

Status MessageItem::Update() {
  if (isDraft_) return InsertDraft();
  const auto updated = store_.Update(directory_, row_.Key, changes_);
  if (!updated) return updated;
  changes_ = {};
  ForgetTexts();
  return {};
}

Status MessageItem::UpdateField(FieldTag tag) {
  if (isDraft_) return InsertDraft();
  EntryChanges only = TakeChangesOf(tag);
  const auto updated = store_.Update(directory_, row_.Key, only);
  ForgetTexts();
  if (updated) return {};
  // What could not be written is still to be written.
  changes_.Columns.merge(only.Columns);
  changes_.Texts.merge(only.Texts);
  if (only.Recipients) changes_.Recipients = std::move(only.Recipients);
  std::ranges::move(only.Others, std::back_inserter(changes_.Others));
  return updated;
}

EntryChanges MessageItem::TakeChangesOf(FieldTag tag) {
  EntryChanges taken;
  const auto* const info = FindField(tag);
  if (info == nullptr) {
    const auto others = std::ranges::stable_partition(
        changes_.Others, [tag](const OtherField& field) { return field.IsUserField || field.Tag != tag; });
    taken.Others.assign(others.begin(), others.end());
    changes_.Others.erase(others.begin(), others.end());
  } else if (info->Place == FieldPlace::Text) {
    taken.Texts.insert(changes_.Texts.extract(tag));
  } else if (info->Place == FieldPlace::Recipients) {
    taken.Recipients = std::exchange(changes_.Recipients, std::nullopt);
  } else if (info->Place == FieldPlace::Column || info->Place == FieldPlace::FlagBit) {
    taken.Columns.insert(changes_.Columns.extract(info->Where));
  }
  return taken;
}

Status MessageItem::Delete() {
  if (isDraft_) return Fail(store_error::NotFound, "Der Eintrag ist noch nicht gespeichert");
  return store_.Remove(directory_, row_.Key);
}

void MessageItem::SetValue(Column column, FieldValue value) {
  value = ToColumn(std::move(value), Columns[static_cast<std::size_t>(column)].Kind);
  changes_.Columns[column] = value;
  row_[column] = std::move(value);
}

Result<std::string> MessageItem::Text(FieldTag tag) {
  if (const auto changed = changes_.Texts.find(tag); changed != changes_.Texts.end()) return changed->second;
  if (isDraft_ || (textTags_ && std::ranges::find(*textTags_, tag) == textTags_->end())) return std::string();
  if (!texts_) {
    auto texts = store_.ReadTexts(directory_, row_.Key);
    if (!texts) return Fail(texts.error());
    texts_ = std::move(*texts);
  }
  const auto found = texts_->find(tag);
  return found == texts_->end() ? std::string() : found->second;
}

Result<bool> MessageItem::HasText(FieldTag tag) {
  if (const auto changed = changes_.Texts.find(tag); changed != changes_.Texts.end()) {
    return !changed->second.empty();
  }
  if (isDraft_) return false;
  if (!textTags_) {
    if (const auto loaded = LoadParts(); !loaded) return Fail(loaded.error());
  }
  return std::ranges::find(*textTags_, tag) != textTags_->end();
}

void MessageItem::SetText(FieldTag tag, std::string text) { changes_.Texts[tag] = MakeValidUtf8(text); }

Result<std::vector<RecipientRecord>> MessageItem::Recipients() {
  if (!recipients_) {
    if (const auto loaded = LoadParts(); !loaded) return Fail(loaded.error());
  }
  return *recipients_;
}

void MessageItem::SetRecipients(std::vector<RecipientRecord> recipients) {
  changes_.Recipients = recipients;
  recipients_ = std::move(recipients);
}

Result<const std::vector<AttachmentRecord>*> MessageItem::AttachmentList() {
  if (!attachments_) {
    if (const auto loaded = LoadParts(); !loaded) return Fail(loaded.error());
  }
  return &*attachments_;
}

Status MessageItem::AddAttachment(std::string_view path, std::uint32_t flags) {
  auto bytes = store_.Files().ReadFile(path);
  if (!bytes) return Fail(bytes.error());
  AttachmentRecord attachment;
  attachment.Name = MakeAttachmentName(FileNameOf(path), "");
  attachment.Flags = flags;
  attachment.Size = static_cast<std::int64_t>(bytes->size());
  if (const auto entry = store_.Files().GetEntry(path)) attachment.Date = entry->Modified;
  if (isDraft_) {
    draftParts_.push_back({attachment.Name, std::move(*bytes)});
    attachments_->push_back(std::move(attachment));
  } else {
    const auto added = store_.AddAttachment(directory_, row_.Key, std::move(attachment), *bytes);
    if (!added) return added;
    attachments_.reset();
  }
  ++row_.AttachmentCount;
  return {};
}

std::string MessageItem::ContentFilePath() const {
  return isDraft_ ? std::string() : JoinPath(directory_, ContentFileName(row_.Key, 1));
}

Status MessageItem::SetContentFile(std::string_view path) {
  if (!isDraft_) return Fail(store_error::WrongKind, "Die Datei eines gespeicherten Eintrags bleibt");
  const auto file = store_.Files().GetEntry(path);
  if (!file) return Fail(file.error());
  if (file->Size > LargestContentFile) return Fail(store_error::Failed, fmt::format("{} ist zu groß", path));
  auto bytes = store_.Files().ReadFile(path);
  if (!bytes) return Fail(bytes.error());
  draftContent_ = std::move(*bytes);
  return {};
}

Status MessageItem::LoadParts() {
  auto parts = store_.ReadParts(directory_, row_.Key);
  if (!parts) return Fail(parts.error());
  Accept(std::move(*parts));
  return {};
}

void MessageItem::Accept(EntryParts parts) {
  if (!recipients_) recipients_ = std::move(parts.Recipients);
  if (!attachments_) attachments_ = std::move(parts.Attachments);
  if (!others_) {
    others_ = std::move(parts.Others);
    for (const auto& field : changes_.Others) Replace(*others_, field);
  }
  textTags_ = std::move(parts.Texts);
}

void MessageItem::ForgetTexts() {
  textTags_.reset();
  texts_.reset();
}

Result<FieldValue> MessageItem::OtherValue(bool isUserField, FieldTag tag, std::string_view name) {
  if (!others_) {
    if (const auto loaded = LoadParts(); !loaded) return Fail(loaded.error());
  }
  const auto found = std::ranges::find_if(*others_, [&](const OtherField& field) {
    return field.IsUserField == isUserField && (tag != 0 ? field.Tag == tag : EqualsFold(field.Name, name));
  });
  return found == others_->end() ? FieldValue{} : found->Value;
}

Result<std::vector<OtherField>> MessageItem::Others(bool isUserField) {
  if (!others_) {
    if (const auto loaded = LoadParts(); !loaded) return Fail(loaded.error());
  }
  std::vector<OtherField> fields;
  std::ranges::copy_if(*others_, std::back_inserter(fields), [&](const OtherField& field) {
    return field.IsUserField == isUserField && !std::holds_alternative<std::monostate>(field.Value);
  });
  std::ranges::sort(fields, {},
                    [](const OtherField& field) { return std::pair(field.Tag, FoldCase(field.Name)); });
  return fields;
}

void MessageItem::SetOther(OtherField field) {
  Replace(changes_.Others, field);
  if (others_) Replace(*others_, field);
}

Result<MailContent> MessageItem::Content() {
  MailContent mail;
  const auto recipients = Recipients();
  if (!recipients) return Fail(recipients.error());
  for (const auto& [role, recipient] : *recipients) {
    if (role == RecipientRole::To) mail.To.push_back(recipient);
    if (role == RecipientRole::Cc) mail.Cc.push_back(recipient);
  }
  mail.Sender = {FieldText(row_[Column::SenderName]), FieldText(row_[Column::SenderAddress])};
  mail.Subject = FieldText(row_[Column::Subject]);
  mail.Date = FieldDate(row_[Column::StatusTime]);
  for (const auto& [textTag, text] :
       {std::pair(tag::PlainText, &mail.PlainText), std::pair(tag::HtmlText, &mail.HtmlText)}) {
    auto read = Text(textTag);
    if (!read) return Fail(read.error());
    *text = std::move(*read);
  }
  mail.Attachments = draftParts_;
  if (isDraft_) return mail;
  const auto attachments = AttachmentList();
  if (!attachments) return Fail(attachments.error());
  for (const auto& attachment : **attachments) {
    ComposedPart part{attachment.Name, {}};
    const auto read = ReadAttachment(store_, directory_, row_.Key, attachment, [&](std::string_view piece) {
      part.Bytes.append(piece);
      return Status{};
    });
    if (!read) return Fail(read.error());
    mail.Attachments.push_back(std::move(part));
  }
  return mail;
}

Status MessageItem::InsertDraft() {
  EntryRecord record;
  auto firstFile = draftContent_;
  if (row_.Type == item_type::EMail) {
    const auto content = Content();
    if (!content) return Fail(content.error());
    firstFile = ComposeMail(*content);
    record.Attachments = ParseMail(*firstFile).Attachments;
    // The flags that the caller gave, not those that a reader of the message would guess.
    for (std::size_t i = 0; i < record.Attachments.size() && i < attachments_->size(); ++i) {
      record.Attachments[i].Flags = (*attachments_)[i].Flags;
      record.Attachments[i].Date = (*attachments_)[i].Date;
    }
  }
  record.Row = row_;
  record.Recipients = *recipients_;
  record.Texts = changes_.Texts;
  record.Others = *others_;
  std::erase_if(record.Others,
                [](const OtherField& field) { return std::holds_alternative<std::monostate>(field.Value); });
  const auto key = store_.Insert(directory_, std::move(record), firstFile);
  if (!key) return Fail(key.error());
  // The attachments of a mail stand in its source.
  if (row_.Type != item_type::EMail) {
    if (const auto added = StoreDraftParts(*key); !added) {
      // Half an entry is none. The draft stays whole, and may be stored again.
      (void)store_.Remove(directory_, *key);
      return added;
    }
  }
  isDraft_ = false;
  row_.Key = *key;
  changes_ = {};
  draftContent_.reset();
  draftParts_.clear();
  attachments_.reset();
  return {};
}

Status MessageItem::StoreDraftParts(EntryKey key) {
  for (std::size_t i = 0; i < draftParts_.size(); ++i) {
    const auto added = store_.AddAttachment(directory_, key, (*attachments_)[i], draftParts_[i].Bytes);
    if (!added) return added;
  }
  return {};
}

}  // namespace velmora::store::embedded
