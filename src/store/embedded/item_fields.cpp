#include "store/embedded/item_fields.h"

#include <fmt/core.h>

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "store/embedded/field_table.h"
#include "store/embedded/html_rendition.h"
#include "store/embedded/message_item.h"
#include "store/errors.h"

namespace velmora::store::embedded {
namespace {

class ReadField : public DvField {
 public:
  ReadField(DvFields& fields, FieldTag tag, std::string name)
      : fields_(fields), tag_(tag), name_(std::move(name)) {}

  FieldTag Tag() const override { return tag_; }
  std::string Name() const override { return name_; }
  Result<FieldValue> Value() override { return tag_ != 0 ? fields_.Get(tag_) : fields_.Get(name_); }

 private:
  DvFields& fields_;
  FieldTag tag_;
  std::string name_;
};

bool IsNothing(const FieldValue& value) { return std::holds_alternative<std::monostate>(value); }

tl::unexpected<Error> NoSuchField(int index) {
  return Fail(store_error::NotFound, fmt::format("Der Eintrag hat kein Feld mit der Nummer {}", index));
}

std::string NameOfTag(FieldTag tag) { return fmt::format("0x{:08X}", tag); }

}  // namespace

Result<FieldValue> ItemFields::Get(FieldTag tag) {
  const auto* const field = FindField(tag);
  return field != nullptr ? GetKnown(*field) : item_.OtherValue(false, tag, "");
}

Result<FieldValue> ItemFields::Get(std::string_view name) {
  const auto* const field = FindField(name);
  return field != nullptr ? GetKnown(*field) : item_.OtherValue(false, 0, name);
}

Status ItemFields::Set(FieldTag tag, FieldValue value) {
  if (const auto* const field = FindField(tag)) return SetKnown(*field, std::move(value));
  item_.SetOther({false, tag, NameOfTag(tag), std::move(value)});
  return {};
}

Status ItemFields::Set(std::string_view name, FieldValue value) {
  if (const auto* const field = FindField(name)) return SetKnown(*field, std::move(value));
  item_.SetOther({false, 0, std::string(name), std::move(value)});
  return {};
}

Result<FieldValue> ItemFields::GetKnown(const FieldInfo& field) {
  switch (field.Place) {
    case FieldPlace::Column: {
      auto value = item_.Value(field.Where);
      // The type that the entry was made with, unless the field was written.
      if (field.Tag == tag::ItemType && IsNothing(value)) return std::int64_t{item_.Type()};
      return value;
    }
    case FieldPlace::FlagBit:
      return (FieldNumber(item_.Value(field.Where)) & field.Bit) != 0;
    case FieldPlace::Text: {
      auto text = item_.Text(field.Tag);
      if (!text) return Fail(text.error());
      return text->empty() ? FieldValue{} : FieldValue(std::move(*text));
    }
    case FieldPlace::Key:
      return item_.IsDraft() ? FieldValue{} : std::int64_t{item_.Key()};
    case FieldPlace::Location:
      return item_.IsDraft() ? FieldValue{} : EntryStore::Location(item_.Directory(), item_.Key());
    case FieldPlace::HtmlRendition:
      return Rendition();
    case FieldPlace::Recipients:
      return RecipientTexts(field.Role);
    case FieldPlace::AttachmentCount:
      return item_.Row().AttachmentCount > 0 ? FieldValue(std::int64_t{item_.Row().AttachmentCount})
                                             : FieldValue{};
  }
  return FieldValue{};
}

Status ItemFields::SetKnown(const FieldInfo& field, FieldValue value) {
  if (field.IsReadOnly()) {
    return Fail(store_error::ReadOnlyField,
                fmt::format("Das Feld {} kann nicht geändert werden", field.Name));
  }
  if (field.Place == FieldPlace::Recipients) return SetRecipientTexts(field.Role, value);
  if (field.Place == FieldPlace::Text) {
    item_.SetText(field.Tag, FieldText(value));
  } else if (field.Place == FieldPlace::FlagBit) {
    const auto flags = FieldNumber(item_.Value(field.Where));
    const std::int64_t bit = field.Bit;
    item_.SetValue(field.Where, FieldBool(value) ? flags | bit : flags & ~bit);
  } else {
    item_.SetValue(field.Where, std::move(value));
  }
  return {};
}

Result<FieldValue> ItemFields::Rendition() {
  const auto html = item_.Text(tag::HtmlText);
  if (!html) return Fail(html.error());
  if (html->empty()) return FieldValue{};
  const auto attachments = item_.AttachmentList();
  if (!attachments) return Fail(attachments.error());
  std::unordered_map<std::string, int> positions;
  int position = 0;
  for (const auto& attachment : **attachments) {
    ++position;
    // Of parts with one id the first is meant.
    if (!attachment.ContentId.empty()) positions.emplace(attachment.ContentId, position);
  }
  const auto findPart = [&](std::string_view contentId) -> std::optional<int> {
    const auto found = positions.find(std::string(contentId));
    return found == positions.end() ? std::nullopt : std::optional(found->second);
  };
  return MakeHtmlRendition(*html, EntryStore::Location(item_.Directory(), item_.Key()), findPart);
}

Result<FieldValue> ItemFields::RecipientTexts(RecipientRole wanted) {
  const auto recipients = item_.Recipients();
  if (!recipients) return Fail(recipients.error());
  std::vector<std::string> texts;
  for (const auto& [role, recipient] : *recipients) {
    if (role != wanted) continue;
    texts.push_back(recipient.Address.empty() ? recipient.Name : recipient.Address);
  }
  return texts.empty() ? FieldValue{} : FieldValue(std::move(texts));
}

Status ItemFields::SetRecipientTexts(RecipientRole role, const FieldValue& value) {
  auto recipients = item_.Recipients();
  if (!recipients) return Fail(recipients.error());
  std::erase_if(*recipients, [role](const RecipientRecord& record) { return record.Role == role; });
  std::vector<std::string> texts;
  if (const auto* const array = std::get_if<std::vector<std::string>>(&value)) {
    texts = *array;
  } else if (!IsNothing(value)) {
    texts.push_back(FieldText(value));
  }
  for (auto& text : texts) recipients->push_back({role, {"", std::move(text)}});
  item_.SetRecipients(std::move(*recipients));
  return {};
}

Result<bool> ItemFields::HasValue(const FieldInfo& field) {
  // Asked without reading the text, which may be big.
  if (field.Place == FieldPlace::Text) return item_.HasText(field.Tag);
  if (field.Place == FieldPlace::HtmlRendition) return item_.HasText(tag::HtmlText);
  const auto value = GetKnown(field);
  if (!value) return Fail(value.error());
  return !IsNothing(*value);
}

Result<std::vector<ItemFields::Present>> ItemFields::PresentFields() {
  std::vector<Present> fields;
  for (const auto& field : KnownFields()) {
    const auto hasValue = HasValue(field);
    if (!hasValue) return Fail(hasValue.error());
    if (*hasValue) fields.push_back({field.Tag, std::string(field.Name)});
  }
  auto others = item_.Others(false);
  if (!others) return Fail(others.error());
  for (auto& field : *others) fields.push_back({field.Tag, std::move(field.Name)});
  std::ranges::stable_sort(fields, {}, &Present::Tag);
  return fields;
}

Result<int> ItemFields::Count() {
  const auto fields = PresentFields();
  if (!fields) return Fail(fields.error());
  return static_cast<int>(fields->size());
}

Result<std::unique_ptr<DvField>> ItemFields::Item(int index) {
  auto fields = PresentFields();
  if (!fields) return Fail(fields.error());
  if (index < 0 || static_cast<std::size_t>(index) >= fields->size()) return NoSuchField(index);
  auto& field = (*fields)[static_cast<std::size_t>(index)];
  return std::make_unique<ReadField>(*this, field.Tag, std::move(field.Name));
}

Result<FieldValue> ItemUserFields::Get(FieldTag) { return FieldValue{}; }

Result<FieldValue> ItemUserFields::Get(std::string_view name) { return item_.OtherValue(true, 0, name); }

Status ItemUserFields::Set(FieldTag tag, FieldValue) {
  return Fail(store_error::WrongKind, fmt::format("Ein Benutzerfeld hat keine Nummer: {}", NameOfTag(tag)));
}

Status ItemUserFields::Set(std::string_view name, FieldValue value) {
  item_.SetOther({true, 0, std::string(name), std::move(value)});
  return {};
}

Result<int> ItemUserFields::Count() {
  const auto fields = item_.Others(true);
  if (!fields) return Fail(fields.error());
  return static_cast<int>(fields->size());
}

Result<std::unique_ptr<DvField>> ItemUserFields::Item(int index) {
  auto fields = item_.Others(true);
  if (!fields) return Fail(fields.error());
  if (index < 0 || static_cast<std::size_t>(index) >= fields->size()) return NoSuchField(index);
  return std::make_unique<ReadField>(*this, 0, std::move((*fields)[static_cast<std::size_t>(index)].Name));
}

}  // namespace velmora::store::embedded
