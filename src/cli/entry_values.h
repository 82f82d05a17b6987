// Values of entries as a user types them.
#pragma once

#include <optional>
#include <string_view>

#include "base/date_time.h"
#include "base/result.h"
#include "store/fields.h"
#include "store/property_view.h"

namespace velmora::cli {

// "31.12.2026" or "2026-12-31", each with an optional " 23:59" or " 23:59:00"; the second also with "T"
// before the time.
std::optional<DateTime> ParseDateOption(std::string_view text);

// The value of that kind; fails with a German text that says what the text is not.
Result<store::FieldValue> ParseValue(std::string_view text, store::PropertyKind kind);

}  // namespace velmora::cli
