// The attachments of an item object.
#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "store/embedded/entry_store.h"
#include "store/item.h"

namespace velmora::store::embedded {

class MessageItem;

class ItemAttachments : public DvAttachments {
 public:
  explicit ItemAttachments(MessageItem& item) : item_(item) {}

  Result<int> Count() override;
  Result<std::unique_ptr<DvAttachment>> Item(int index) override;
  Status Add(std::string_view path, std::uint32_t flags) override;

 private:
  MessageItem& item_;
};

// Gives the decoded content piece by piece. FileNotFound when the content file is gone, Damaged when it is
// shorter than it was; a failure of `take` ends it.
Status ReadAttachment(EntryStore& store, std::string_view directory, EntryKey key,
                      const AttachmentRecord& attachment,
                      const std::function<Status(std::string_view piece)>& take);

}  // namespace velmora::store::embedded
