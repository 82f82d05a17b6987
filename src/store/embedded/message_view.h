// What the typed views of all messages do alike, whatever carried them.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "store/embedded/message_item.h"
#include "store/item.h"

namespace velmora::store::embedded {

// `Interface`: DvMailItem, DvFaxItem or DvVoiceItem.
template <typename Interface>
class MessageView : public Interface {
 public:
  explicit MessageView(std::unique_ptr<MessageItem> item) : item_(std::move(item)) {}

  int Type() override { return item_->Type(); }
  DvItem& Item() override { return *item_; }

  Result<std::string> Subject() override;
  Result<DvRecipient> Sender() override;
  Result<std::string> RecipientText() override;
  Result<std::string> OtherRecipientText() override;
  Result<DateTime> Date() override;
  Result<int> SendStatus() override;
  Result<std::vector<DvRecipient>> To() override { return RecipientsOf(RecipientRole::To); }
  Result<std::vector<DvRecipient>> Cc() override { return RecipientsOf(RecipientRole::Cc); }
  Result<std::vector<DvRecipient>> Bcc() override { return RecipientsOf(RecipientRole::Bcc); }

  Status AddTo(DvRecipient recipient) override {
    return AddRecipient(RecipientRole::To, std::move(recipient));
  }
  Status AddCc(DvRecipient recipient) override {
    return AddRecipient(RecipientRole::Cc, std::move(recipient));
  }
  Status AddBcc(DvRecipient recipient) override {
    return AddRecipient(RecipientRole::Bcc, std::move(recipient));
  }
  Status SetSender(std::string_view address) override;
  Status SetSubject(std::string_view subject) override;

 protected:
  MessageItem& Message() { return *item_; }

 private:
  Result<std::vector<DvRecipient>> RecipientsOf(RecipientRole role);
  Status AddRecipient(RecipientRole role, DvRecipient recipient);

  std::unique_ptr<MessageItem> item_;
};

extern template class MessageView<DvMailItem>;
extern template class MessageView<DvFaxItem>;
extern template class MessageView<DvVoiceItem>;

}  // namespace velmora::store::embedded
