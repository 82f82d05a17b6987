// The typed view that fits an entry.
#pragma once

#include <memory>

#include "store/embedded/message_item.h"
#include "store/embedded/message_store.h"
#include "store/item.h"

namespace velmora::store::embedded {

// By the item's type; an entry of a type without a typed view gets a plain one. `handler` is what Submit
// calls, kept by the store.
std::unique_ptr<DvItemView> MakeItemView(std::unique_ptr<MessageItem> item, const SubmitHandler& handler);

}  // namespace velmora::store::embedded
