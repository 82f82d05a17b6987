// Addresses as delimited text: a line of column names, then a line of 26 fields per address.
#pragma once

#include <string>
#include <string_view>

#include "addresses/address_record.h"

namespace velmora::addresses {

// Nothing for an empty value, else the value in double quotes, each double quote in it as an apostrophe: the
// readers of these files know no escape. The separator behind it when `appendSeparator` is true.
std::string QuoteField(std::string_view value, bool appendSeparator, std::string_view separator);

// The lines without their ends, as UTF-8.
std::string DelimitedHeader(std::string_view separator);
std::string DelimitedLine(const AddressRecord& address, std::string_view separator);

}  // namespace velmora::addresses
