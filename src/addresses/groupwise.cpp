#include "addresses/groupwise.h"

#include <fmt/format.h>

#include "addresses/delimited_text.h"

namespace velmora::addresses {
namespace {

// The type of a record is a column like the others, but its value is quoted here and has no field.
constexpr std::string_view TypeColumn = ":::TAGMAP:::0FFE0003:***";
constexpr std::string_view UserType = "\"U\"";

std::string ColumnValue(const AddressRecord& address, const TagField& column) {
  if (column.Field == NoField) return "";
  const std::string& value = address.Fields[column.Field];
  if (column.Field == field::Notes) {
    return fmt::format("{}\r\nGeburtstag {}\r\nVoiceBox {}", value, address.Fields[field::Birthday],
                       address.Fields[field::VoiceBox]);
  }
  return column.Joined == NoField ? value : value + "," + address.Fields[column.Joined];
}

}  // namespace

std::string GroupWiseTagMap(std::string_view separator) {
  std::string line(TypeColumn);
  for (const TagField& column : TagFieldTable) {
    line += fmt::format("{}{}:{}", separator, column.Tag, column.Label);
  }
  return line;
}

std::string GroupWiseLine(const AddressRecord& address, std::string_view separator) {
  std::string line(UserType);
  line += separator;
  for (const TagField& column : TagFieldTable) {
    line += QuoteField(ColumnValue(address, column), &column != &TagFieldTable.back(), separator);
  }
  return line;
}

}  // namespace velmora::addresses
