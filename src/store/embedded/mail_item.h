// The typed view of a mail, and of what is written and read like one.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "store/embedded/message_store.h"
#include "store/embedded/message_view.h"

namespace velmora::store::embedded {

class MailItem final : public MessageView<DvMailItem> {
 public:
  // `handler` is what Submit calls, kept by the store.
  MailItem(std::unique_ptr<MessageItem> item, const SubmitHandler& handler)
      : MessageView(std::move(item)), handler_(handler) {}

  Result<std::string> Text() override;
  Result<std::string> HtmlIndicator() override;
  Status SetText(std::string_view text) override;
  Status SetTextFormat(int format) override;
  Status Submit(int flag) override;

 private:
  const SubmitHandler& handler_;
};

}  // namespace velmora::store::embedded
