// Between the bytes of a settings file (TOML) and its values. A file may be edited by hand, so that anything
// may stand in it: what is no text and no 32-bit number is passed over, and kept when the file is written
// anew.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/values.h"

namespace velmora::settings {

// One value to be written, or to be removed when it has no new value.
struct Change {
  std::string Section, Name;
  std::optional<Value> NewValue;
};

// Nothing for a damaged file: no TOML, beyond 1 MiB, or nested deeper than any settings file is.
std::optional<Values> ParseSettings(std::string_view bytes);
// The file with the changes made; a damaged file counts as empty. Comments are not kept.
std::string ChangeSettings(std::string_view bytes, const std::vector<Change>& changes);

}  // namespace velmora::settings
