// The vCard of an address (version 2.1 as this program has always written it).
#pragma once

#include <string>

#include "addresses/address_record.h"
#include "base/date_time.h"

namespace velmora::addresses {

// The card as UTF-8 text, each line ended by CR LF. `now`: local time, for REV.
std::string FormatVCard(const AddressRecord& address, DateTime now);

}  // namespace velmora::addresses
