// The typed views of an entry.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "store/embedded/message_item.h"
#include "store/embedded/message_store.h"

namespace velmora::store::embedded {

// Whether items of the type are seen as a mail.
bool IsMailType(int type);

// The view that fits the item's type. `handler` is what Submit calls, kept by the store.
std::unique_ptr<DvItemView> MakeItemView(std::unique_ptr<MessageItem> item, const SubmitHandler& handler);

class MailItem : public DvMailItem {
 public:
  MailItem(std::unique_ptr<MessageItem> item, const SubmitHandler& handler)
      : item_(std::move(item)), handler_(handler) {}

  int Type() override { return item_->Type(); }
  DvItem& Item() override { return *item_; }

  Result<std::string> Subject() override;
  Result<DvRecipient> Sender() override;
  Result<std::string> RecipientText() override;
  Result<std::string> OtherRecipientText() override;
  Result<DateTime> Date() override;
  Result<int> SendStatus() override;
  Result<std::string> Text() override;
  Result<std::string> HtmlIndicator() override;
  Result<std::vector<DvRecipient>> To() override;
  Result<std::vector<DvRecipient>> Cc() override;
  Result<std::vector<DvRecipient>> Bcc() override;

  Status AddTo(DvRecipient recipient) override;
  Status AddCc(DvRecipient recipient) override;
  Status AddBcc(DvRecipient recipient) override;
  Status SetSender(std::string_view address) override;
  Status SetSubject(std::string_view subject) override;
  Status SetText(std::string_view text) override;
  Status SetTextFormat(int format) override;
  Status Submit(int flag) override;

 private:
  Result<std::vector<DvRecipient>> RecipientsOf(RecipientRole role);
  Status AddRecipient(RecipientRole role, DvRecipient recipient);

  std::unique_ptr<MessageItem> item_;
  const SubmitHandler& handler_;
};

}  // namespace velmora::store::embedded
