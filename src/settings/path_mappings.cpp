#include "settings/path_mappings.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "base/text.h"
#include "platform/path_map.h"
#include "settings/options_table.h"

namespace velmora::settings {
namespace {

bool IsShare(std::string_view name) {
  if (!name.starts_with("\\\\")) {
    return false;
  }
  const std::vector<std::string> parts = Split(name.substr(2), "\\");
  return parts.size() == 2 && !parts[0].empty() && !parts[1].empty();
}

void AddMappings(std::vector<platform::PathMapping>& mappings, const Values& values) {
  const auto section = values.find(section::PathMappings);
  if (section == values.end()) {
    return;
  }
  for (const auto& [name, value] : section->second) {
    const std::string prefix(name);
    const std::string directory = ToText(value);
    const bool known = std::any_of(mappings.begin(), mappings.end(), [&](const platform::PathMapping& row) {
      return EqualsFold(row.WindowsPrefix, prefix);
    });
    if (!known && directory.starts_with("/") && (platform::IsDriveName(prefix) || IsShare(prefix))) {
      mappings.push_back({prefix, directory});
    }
  }
}

}  // namespace

std::vector<platform::PathMapping> LoadPathMappings(const Values& user, const Values& machine) {
  std::vector<platform::PathMapping> mappings;
  AddMappings(mappings, user);
  AddMappings(mappings, machine);
  return mappings;
}

}  // namespace velmora::settings
