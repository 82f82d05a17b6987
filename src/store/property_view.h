// Typed views whose properties are a fixed list: addresses, appointments, tasks, links, TV programs. Each
// kind's header holds its list as a table, from which commands, lists and backends derive what they need.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "base/result.h"
#include "store/fields.h"
#include "store/item.h"

namespace velmora::store {

enum class PropertyKind { Text, Number, Flag, Date };

// One property: the name is also that of the field under which DvItem::Fields shows it.
template <typename Property>
struct PropertyInfo {
  Property Which;
  std::string_view Name;
  PropertyKind Kind;
  std::string_view Label;  // German, as the readable list of properties shows it
};

// Whether row i of a table is that of the property with the value i, so that a property is its own index.
template <typename Property, std::size_t Count>
constexpr bool IsInOrder(const std::array<PropertyInfo<Property>, Count>& table) {
  for (std::size_t i = 0; i < Count; ++i) {
    if (table[i].Which != static_cast<Property>(i)) return false;
  }
  return true;
}

// The property's row in its table.
template <typename Property, std::size_t Count>
constexpr const PropertyInfo<Property>& InfoOf(const std::array<PropertyInfo<Property>, Count>& table,
                                               Property property) {
  return table[static_cast<std::size_t>(property)];
}

template <typename Property>
class DvPropertyView : public DvItemView {
 public:
  using PropertyType = Property;

  // Monostate for a property without a value.
  virtual Result<FieldValue> Get(Property property) = 0;
  // Changes the entry in memory; Item().Update() commits. A value of another kind is converted.
  virtual Status Set(Property property, FieldValue value) = 0;

  Result<std::string> Text(Property property) {
    const auto value = Get(property);
    if (!value) return Fail(value.error());
    return FieldText(*value);
  }
};

}  // namespace velmora::store
