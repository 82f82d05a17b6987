#include "store/embedded/message_view.h"

#include "base/text.h"
#include "store/embedded/mail_parser.h"

namespace velmora::store::embedded {
namespace {

std::string CleanText(std::string_view text) { return BlankControlCharacters(MakeValidUtf8(text)); }

}  // namespace

template <typename Interface>
Result<std::string> MessageView<Interface>::Subject() {
  return FieldText(item_->Value(Column::Subject));
}

template <typename Interface>
Result<DvRecipient> MessageView<Interface>::Sender() {
  return DvRecipient{FieldText(item_->Value(Column::SenderName)),
                     FieldText(item_->Value(Column::SenderAddress))};
}

template <typename Interface>
Result<std::string> MessageView<Interface>::RecipientText() {
  auto recipients = To();
  if (!recipients) return Fail(recipients.error());
  std::erase_if(*recipients, [](const DvRecipient& recipient) { return recipient.Address.empty(); });
  return JoinRecipients(*recipients);
}

template <typename Interface>
Result<std::string> MessageView<Interface>::OtherRecipientText() {
  auto recipients = To();
  if (!recipients) return Fail(recipients.error());
  std::erase_if(*recipients, [](const DvRecipient& recipient) { return !recipient.Address.empty(); });
  return JoinRecipients(*recipients);
}

template <typename Interface>
Result<DateTime> MessageView<Interface>::Date() {
  return FieldDate(item_->Value(Column::StatusTime));
}

template <typename Interface>
Result<int> MessageView<Interface>::SendStatus() {
  return static_cast<int>(FieldNumber(item_->Value(Column::SendStatus)));
}

template <typename Interface>
Result<std::vector<DvRecipient>> MessageView<Interface>::RecipientsOf(RecipientRole role) {
  const auto recipients = item_->Recipients();
  if (!recipients) return Fail(recipients.error());
  std::vector<DvRecipient> found;
  for (const auto& record : *recipients) {
    if (record.Role == role) found.push_back(record.Recipient);
  }
  return found;
}

template <typename Interface>
Status MessageView<Interface>::AddRecipient(RecipientRole role, DvRecipient recipient) {
  auto recipients = item_->Recipients();
  if (!recipients) return Fail(recipients.error());
  recipients->push_back(
      {role, {CleanText(recipient.Name), CleanText(recipient.Address), CleanText(recipient.Kind)}});
  item_->SetRecipients(std::move(*recipients));
  if (role != RecipientRole::To) return {};
  const auto all = To();
  if (!all) return Fail(all.error());
  item_->SetValue(Column::RecipientText, JoinRecipients(*all));
  return {};
}

template <typename Interface>
Status MessageView<Interface>::SetSender(std::string_view address) {
  const auto senders = ParseAddresses(address);
  const auto sender = senders.empty() ? DvRecipient{std::string(address), ""} : senders.front();
  item_->SetValue(Column::SenderName, sender.Name);
  item_->SetValue(Column::SenderAddress, sender.Address.empty() ? sender.Name : sender.Address);
  return {};
}

template <typename Interface>
Status MessageView<Interface>::SetSubject(std::string_view subject) {
  item_->SetValue(Column::Subject, std::string(subject));
  return {};
}

template class MessageView<DvMailItem>;
template class MessageView<DvFaxItem>;
template class MessageView<DvVoiceItem>;

}  // namespace velmora::store::embedded
