#include "store/embedded/mail_item.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/text.h"
#include "store/embedded/content_decoder.h"
#include "store/errors.h"
#include "store/vocabulary.h"

namespace velmora::store::embedded {
namespace {

constexpr std::array MailTypes = {item_type::EMail, item_type::SMS, item_type::TMail, item_type::Video,
                                  item_type::Audio};

// What the indicator says of an HTML mail.
constexpr std::string_view HtmlMail = "HTML";

// The view of an entry that has no typed one.
class PlainView : public DvItemView {
 public:
  explicit PlainView(std::unique_ptr<MessageItem> item) : item_(std::move(item)) {}
  int Type() override { return item_->Type(); }
  DvItem& Item() override { return *item_; }

 private:
  std::unique_ptr<MessageItem> item_;
};

std::string OneLine(std::string_view text) { return BlankControlCharacters(MakeValidUtf8(text)); }

}  // namespace

bool IsMailType(int type) { return std::ranges::find(MailTypes, type) != MailTypes.end(); }

std::unique_ptr<DvItemView> MakeItemView(std::unique_ptr<MessageItem> item, const SubmitHandler& handler) {
  if (IsMailType(item->Type())) return std::make_unique<MailItem>(std::move(item), handler);
  return std::make_unique<PlainView>(std::move(item));
}

Result<std::string> MailItem::Subject() { return FieldText(item_->Value(Column::Subject)); }

Result<DvRecipient> MailItem::Sender() {
  return DvRecipient{FieldText(item_->Value(Column::SenderName)),
                     FieldText(item_->Value(Column::SenderAddress))};
}

Result<std::string> MailItem::RecipientText() {
  auto recipients = To();
  if (!recipients) return Fail(recipients.error());
  std::erase_if(*recipients, [](const DvRecipient& recipient) { return recipient.Address.empty(); });
  return JoinRecipients(*recipients);
}

Result<std::string> MailItem::OtherRecipientText() {
  auto recipients = To();
  if (!recipients) return Fail(recipients.error());
  std::erase_if(*recipients, [](const DvRecipient& recipient) { return !recipient.Address.empty(); });
  return JoinRecipients(*recipients);
}

Result<DateTime> MailItem::Date() { return FieldDate(item_->Value(Column::StatusTime)); }

Result<int> MailItem::SendStatus() { return static_cast<int>(FieldNumber(item_->Value(Column::SendStatus))); }

Result<std::string> MailItem::Text() { return item_->Text(tag::PlainText); }

Result<std::string> MailItem::HtmlIndicator() {
  const auto hasHtml = item_->HasText(tag::HtmlText);
  if (!hasHtml) return Fail(hasHtml.error());
  return std::string(*hasHtml ? HtmlMail : "");
}

Result<std::vector<DvRecipient>> MailItem::To() { return RecipientsOf(RecipientRole::To); }
Result<std::vector<DvRecipient>> MailItem::Cc() { return RecipientsOf(RecipientRole::Cc); }
Result<std::vector<DvRecipient>> MailItem::Bcc() { return RecipientsOf(RecipientRole::Bcc); }

Result<std::vector<DvRecipient>> MailItem::RecipientsOf(RecipientRole role) {
  const auto recipients = item_->Recipients();
  if (!recipients) return Fail(recipients.error());
  std::vector<DvRecipient> found;
  for (const auto& record : *recipients) {
    if (record.Role == role) found.push_back(record.Recipient);
  }
  return found;
}

Status MailItem::AddTo(DvRecipient recipient) {
  return AddRecipient(RecipientRole::To, std::move(recipient));
}
Status MailItem::AddCc(DvRecipient recipient) {
  return AddRecipient(RecipientRole::Cc, std::move(recipient));
}
Status MailItem::AddBcc(DvRecipient recipient) {
  return AddRecipient(RecipientRole::Bcc, std::move(recipient));
}

Status MailItem::AddRecipient(RecipientRole role, DvRecipient recipient) {
  auto recipients = item_->Recipients();
  if (!recipients) return Fail(recipients.error());
  recipients->push_back(
      {role, {OneLine(recipient.Name), OneLine(recipient.Address), OneLine(recipient.Kind)}});
  item_->SetRecipients(std::move(*recipients));
  if (role != RecipientRole::To) return {};
  const auto all = To();
  if (!all) return Fail(all.error());
  item_->SetValue(Column::RecipientText, JoinRecipients(*all));
  return {};
}

Status MailItem::SetSender(std::string_view address) {
  const auto senders = ParseAddresses(address);
  const auto sender = senders.empty() ? DvRecipient{std::string(address), ""} : senders.front();
  item_->SetValue(Column::SenderName, sender.Name);
  item_->SetValue(Column::SenderAddress, sender.Address.empty() ? sender.Name : sender.Address);
  return {};
}

Status MailItem::SetSubject(std::string_view subject) {
  item_->SetValue(Column::Subject, std::string(subject));
  return {};
}

Status MailItem::SetText(std::string_view text) {
  item_->SetText(tag::PlainText, WithCrLf(text));
  return {};
}

Status MailItem::SetTextFormat(int format) {
  if (format == 0) return {};
  return Fail(store_error::WrongKind, "Neue Nachrichten haben nur reinen Text");
}

Status MailItem::Submit(int) {
  if (const auto stored = item_->Update(); !stored) return stored;
  return handler_ ? handler_(*this, item_->Key()) : Status{};
}

}  // namespace velmora::store::embedded
