#include "store/embedded/item_view.h"

#include <algorithm>
#include <array>
#include <utility>

#include "store/calendar_item.h"
#include "store/embedded/file_items.h"
#include "store/embedded/mail_item.h"
#include "store/embedded/property_item.h"
#include "store/link_item.h"
#include "store/task_item.h"
#include "store/tv_program_item.h"
#include "store/vocabulary.h"

namespace velmora::store::embedded {
namespace {

using ItemPointer = std::unique_ptr<MessageItem>;
using View = std::unique_ptr<DvItemView>;

// The view of an entry that has no typed one.
class PlainView final : public DvItemView {
 public:
  explicit PlainView(ItemPointer item) : item_(std::move(item)) {}
  int Type() override { return item_->Type(); }
  DvItem& Item() override { return *item_; }

 private:
  ItemPointer item_;
};

View MakeMail(ItemPointer item, const SubmitHandler& handler) {
  return std::make_unique<MailItem>(std::move(item), handler);
}

template <typename ItemView>
View Make(ItemPointer item, const SubmitHandler&) {
  return std::make_unique<ItemView>(std::move(item));
}

struct ViewRow {
  int Type;
  View (*Make)(ItemPointer, const SubmitHandler&);
};

constexpr auto Views = std::to_array<ViewRow>({
    {item_type::Address, Make<AddressItem>},
    {item_type::EMail, MakeMail},
    {item_type::Fax, Make<FaxItem>},
    {item_type::SMS, MakeMail},
    {item_type::Voice, Make<VoiceItem>},
    {item_type::TMail, MakeMail},
    {item_type::Video, MakeMail},
    {item_type::Audio, MakeMail},
    {item_type::Calendar, Make<PropertyItem<DvCalendarItem, CalendarProperties>>},
    {item_type::Link, Make<PropertyItem<DvLinkItem, LinkProperties>>},
    {item_type::TVProgram, Make<PropertyItem<DvTvProgramItem, TvProgramProperties>>},
    {item_type::Task, Make<PropertyItem<DvTaskItem, TaskProperties>>},
});

}  // namespace

std::unique_ptr<DvItemView> MakeItemView(std::unique_ptr<MessageItem> item, const SubmitHandler& handler) {
  const auto* const row = std::ranges::find(Views, item->Type(), &ViewRow::Type);
  return row != Views.end() ? row->Make(std::move(item), handler)
                            : std::make_unique<PlainView>(std::move(item));
}

}  // namespace velmora::store::embedded
