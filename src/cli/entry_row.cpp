#include "cli/entry_row.h"

#include <initializer_list>
#include <utility>

#include "store/fields.h"

namespace velmora::cli {
namespace {

using store::DvItem;
namespace tag = store::tag;

Result<std::vector<AttachmentRow>> ReadAttachments(DvItem& item) {
  std::vector<AttachmentRow> rows;
  const auto count = item.Attachments().Count();
  if (!count) return Fail(count.error());
  for (int index = 0; index < *count; ++index) {
    const auto attachment = item.Attachments().Item(index);
    if (!attachment) return Fail(attachment.error());
    rows.push_back({(*attachment)->Name(), (*attachment)->Size(), (*attachment)->Flags()});
  }
  return rows;
}

// The first of the fields that is not empty.
Result<std::string> FirstText(store::DvFields& fields, std::initializer_list<store::FieldTag> tags) {
  for (const auto fieldTag : tags) {
    const auto value = fields.Get(fieldTag);
    if (!value) return Fail(value.error());
    if (auto text = store::FieldText(*value); !text.empty()) return text;
  }
  return std::string();
}

}  // namespace

Result<EntryRow> ReadEntryRow(DvItem& item) {
  EntryRow row;
  row.Key = item.Key();
  row.Type = item.Type();
  auto& fields = item.Fields();
  auto subject = FirstText(fields, {tag::Subject});
  if (!subject) return Fail(subject.error());
  auto from = FirstText(fields, {tag::SenderAddress});
  if (!from) return Fail(from.error());
  auto to = FirstText(fields, {tag::Recipients, tag::RecipientText, tag::RecipientAddress});
  if (!to) return Fail(to.error());
  row.Subject = std::move(*subject);
  row.From = std::move(*from);
  row.To = std::move(*to);
  const auto date = fields.Get(tag::StatusTime);
  if (!date) return Fail(date.error());
  row.Date = store::FieldDate(*date);
  const auto flags = fields.Get(tag::Flags);
  if (!flags) return Fail(flags.error());
  row.Flags = store::FieldNumber(*flags);
  const auto status = fields.Get(tag::SendStatus);
  if (!status) return Fail(status.error());
  row.Status = store::FieldNumber(*status);
  auto attachments = ReadAttachments(item);
  if (!attachments) return Fail(attachments.error());
  row.Attachments = std::move(*attachments);
  return row;
}

}  // namespace velmora::cli
