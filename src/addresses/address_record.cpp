#include "addresses/address_record.h"

#include <algorithm>
#include <utility>

#include "base/text.h"

namespace velmora::addresses {
namespace {

using store::AddressProperty;

constexpr int CategoryCount = 16;

// A column of a file is the address property of the same number.
constexpr AddressProperty PropertyOf(std::size_t column) { return static_cast<AddressProperty>(column); }
static_assert(PropertyOf(field::DisplayName) == AddressProperty::DisplayName);
static_assert(PropertyOf(field::Birthday) == AddressProperty::Birthday);
static_assert(PropertyOf(field::WebSite) == AddressProperty::WebAddress);
static_assert(PropertyOf(field::Notes) == AddressProperty::Notes);
static_assert(PropertyOf(field::Categories) == AddressProperty::Categories);
static_assert(PropertyOf(field::PdaCategory) == AddressProperty::PdaCategory);
static_assert(store::AddressProperties.size() > field::PdaCategory);

// Every control character would break a line of some format; CR LF is one line break and so one blank.
std::string OneLine(std::string_view text) { return BlankControlCharacters(ReplaceAll(text, "\r\n", " ")); }

}  // namespace

std::string CategoryMaskToText(std::uint32_t categories) {
  std::string text;
  for (int bit = 0; bit < CategoryCount; ++bit) {
    if (bit > 0) text += ',';
    text += (categories >> bit & 1U) != 0 ? '1' : '0';
  }
  return text;
}

Result<AddressRecord> ReadAddressRecord(store::DvAddressItem& address) {
  AddressRecord record;
  for (std::size_t column = 0; column < FieldCount; ++column) {
    auto value = address.Get(PropertyOf(column));
    if (!value) return Fail(value.error());
    if (column == field::Categories) {
      record.Categories = static_cast<std::uint32_t>(store::FieldNumber(*value));
      record.Fields[column] = CategoryMaskToText(record.Categories);
      continue;
    }
    std::string text = store::FieldText(*value);
    record.Fields[column] = OneLine(text);
    if (column == field::Notes) record.Notes = std::move(text);
  }
  const auto defaultAddress = address.Get(AddressProperty::DefaultAddress);
  if (!defaultAddress) return Fail(defaultAddress.error());
  record.DefaultAddress = static_cast<int>(store::FieldNumber(*defaultAddress));
  const auto subject = address.Item().Fields().Get(store::tag::Subject);
  if (!subject) return Fail(subject.error());
  record.Subject = OneLine(store::FieldText(*subject));
  return record;
}

}  // namespace velmora::addresses
