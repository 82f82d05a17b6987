#include "store/embedded/property_item.h"

#include <optional>
#include <string>

#include "base/date_time.h"
#include "base/line_ends.h"
#include "base/numbers.h"
#include "base/text.h"

namespace velmora::store::embedded {
namespace {

template <typename Value>
FieldValue OrNothing(std::optional<Value> value) {
  return value ? FieldValue(*value) : FieldValue{};
}

FieldValue ToDate(const FieldValue& value) {
  const auto* const text = std::get_if<std::string>(&value);
  const auto date = text != nullptr ? ParseDateTime(Trim(*text)) : std::optional(FieldDate(value));
  return date && !date->IsNull() ? FieldValue(*date) : FieldValue{};
}

}  // namespace

FieldValue ToProperty(FieldValue value, PropertyKind kind) {
  if (std::holds_alternative<std::monostate>(value)) return value;
  const auto* const text = std::get_if<std::string>(&value);
  if (text != nullptr && text->empty()) return FieldValue{};
  switch (kind) {
    case PropertyKind::Text:
      return CleanLines(MakeValidUtf8(FieldText(value)));
    case PropertyKind::Number:
      return text != nullptr ? OrNothing(ParseInteger(*text)) : FieldValue(FieldNumber(value));
    case PropertyKind::Flag:
      return FieldBool(value);
    case PropertyKind::Date:
      return ToDate(value);
  }
  return FieldValue{};
}

Status AddressItem::Set(AddressProperty property, FieldValue value) {
  if (property != AddressProperty::DisplayName) return PropertyItem::Set(property, std::move(value));
  const auto subject = Item().Fields().Get(tag::Subject);
  if (!subject) return Fail(subject.error());
  const auto before = Text(property);
  if (!before) return Fail(before.error());
  const std::string shown = FieldText(*subject);
  const bool isOwnSubject = !shown.empty() && shown != *before;
  if (const auto set = PropertyItem::Set(property, value); !set || isOwnSubject) return set;
  return Item().Fields().Set(tag::Subject, std::move(value));
}

}  // namespace velmora::store::embedded
