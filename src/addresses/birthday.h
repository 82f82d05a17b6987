// Birthdays, which an address holds as a person wrote them.
#pragma once

#include <optional>
#include <string_view>

#include "base/date_time.h"

namespace velmora::addresses {

// "5.8.70", "05.08.1970" or "1970-08-05", each also with a time behind it; nothing for any other text and for
// days that do not exist. Years of two digits lie from 1930 to 2029.
std::optional<DateTime> ParseBirthday(std::string_view text);

}  // namespace velmora::addresses
