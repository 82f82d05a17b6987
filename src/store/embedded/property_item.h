// The typed views of the entries whose properties are a fixed list. Each property stands in the entry's field
// of that name.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <utility>

#include "store/address_item.h"
#include "store/embedded/message_item.h"
#include "store/property_view.h"

namespace velmora::store::embedded {

// A value as a property of that kind keeps it. Texts are valid UTF-8, their lines ended by CR LF, without
// other control characters. What is empty or names no number or date is no value.
FieldValue ToProperty(FieldValue value, PropertyKind kind);

// `Interface`: one of the interfaces made of DvPropertyView; `Properties`: its table.
template <typename Interface, const auto& Properties>
class PropertyItem : public Interface {
 public:
  using Property = typename Interface::PropertyType;

  explicit PropertyItem(std::unique_ptr<MessageItem> item) : item_(std::move(item)) {}

  int Type() override { return item_->Type(); }
  DvItem& Item() override { return *item_; }
  Result<FieldValue> Get(Property property) override {
    return item_->Fields().Get(InfoOf(Properties, property).Name);
  }
  Status Set(Property property, FieldValue value) override {
    const auto& info = InfoOf(Properties, property);
    return item_->Fields().Set(info.Name, ToProperty(std::move(value), info.Kind));
  }

 private:
  static_assert(IsInOrder(Properties));

  std::unique_ptr<MessageItem> item_;
};

class AddressItem final : public PropertyItem<DvAddressItem, AddressProperties> {
 public:
  using PropertyItem::PropertyItem;
  // The row of an address in its archive shows the display name, unless it was given a subject of its own.
  Status Set(AddressProperty property, FieldValue value) override;
};

}  // namespace velmora::store::embedded
