// What a list shows of an entry, read field by field: slow, and what a store's ReadRows must equal. The link
// of a link item, which only its typed view has, is left out.
#pragma once

#include "store/item.h"

namespace velmora::test {

inline Result<store::DvEntryRow> ReadEntryRow(store::DvItem& item) {
  namespace tag = store::tag;
  store::DvEntryRow row;
  row.Key = item.Key();
  row.Type = item.Type();
  Status failure;
  const auto get = [&](store::FieldTag field) {
    auto value = item.Fields().Get(field);
    if (value) return std::move(*value);
    failure = Fail(value.error());
    return store::FieldValue{};
  };
  const auto word = [&](store::FieldTag field) {
    return static_cast<std::uint32_t>(store::FieldNumber(get(field)));
  };
  row.Flags = word(tag::Flags);
  row.MailFlags = word(tag::MailFlags);
  row.SendStatus = word(tag::SendStatus);
  row.DocumentFlags = word(tag::DocumentFlags);
  row.DisplayVariant = store::FieldNumber(get(tag::DisplayVariant));
  row.StatusTime = store::FieldDate(get(tag::StatusTime));
  row.Subject = store::FieldText(get(tag::Subject));
  row.SenderAddress = store::FieldText(get(tag::SenderAddress));
  row.RecipientAddress = store::FieldText(get(tag::RecipientAddress));
  row.RecipientText = store::FieldText(get(tag::RecipientText));
  row.Location = store::FieldText(get(tag::Location));
  const auto recipients = get(tag::Recipients);
  if (const auto* const texts = std::get_if<std::vector<std::string>>(&recipients);
      texts && !texts->empty()) {
    row.FirstRecipient = texts->front();
  }
  if (!failure) return Fail(failure.error());
  const auto count = item.Attachments().Count();
  if (!count) return Fail(count.error());
  for (int i = 0; i < *count; ++i) {
    const auto attachment = item.Attachments().Item(i);
    if (!attachment) return Fail(attachment.error());
    row.AttachmentNames.push_back((*attachment)->Name());
  }
  return row;
}

}  // namespace velmora::test
