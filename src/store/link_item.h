// The typed view of a link: a name, and a file or address that it leads to.
#pragma once

#include <array>

#include "store/property_view.h"

namespace velmora::store {

enum class LinkProperty {
  Name,
  Link,
};

// In the order of LinkProperty.
inline constexpr auto LinkProperties = std::to_array<PropertyInfo<LinkProperty>>({
    {LinkProperty::Name, "Subject", PropertyKind::Text, "Betreff"},   // the row of the link in its archive
    {LinkProperty::Link, "Link", PropertyKind::Text, "Verknüpfung"},  // path or address, as it was given
});

class DvLinkItem : public DvPropertyView<LinkProperty> {
 public:
  DvLinkItem* AsLink() override { return this; }
};

}  // namespace velmora::store
