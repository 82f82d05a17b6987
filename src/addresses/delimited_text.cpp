#include "addresses/delimited_text.h"

#include "base/text.h"

namespace velmora::addresses {
namespace {

template <typename Values>
std::string QuotedLine(const Values& values, std::string_view separator) {
  std::string line;
  for (std::size_t column = 0; column < values.size(); ++column) {
    line += QuoteField(values[column], column + 1 < values.size(), separator);
  }
  return line;
}

}  // namespace

std::string QuoteField(std::string_view value, bool appendSeparator, std::string_view separator) {
  std::string quoted;
  if (!value.empty()) quoted = '"' + ReplaceAll(value, "\"", "'") + '"';
  if (appendSeparator) quoted += separator;
  return quoted;
}

std::string DelimitedHeader(std::string_view separator) { return QuotedLine(ColumnNames, separator); }

std::string DelimitedLine(const AddressRecord& address, std::string_view separator) {
  return QuotedLine(address.Fields, separator);
}

}  // namespace velmora::addresses
