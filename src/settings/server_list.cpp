#include "settings/server_list.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/text.h"
#include "settings/options_table.h"

namespace velmora::settings {
namespace {

std::string EntryName(std::size_t index) { return fmt::format("DvServer{}", index); }
std::string Normalized(std::string_view server) { return ToUpper(Trim(server)); }

}  // namespace

ServerList LoadServerList(const Values& stored) {
  ServerList list;
  for (std::size_t i = 0; i < list.size(); ++i) {
    if (const Value* value = FindValue(stored, section::GlobalSettings, EntryName(i))) {
      list[i] = ToText(*value);
    }
  }
  return list;
}

std::vector<Change> ServerListChanges(const Values& stored, std::string_view server) {
  ServerList list = LoadServerList(stored);
  std::transform(list.begin(), list.end(), list.begin(), Normalized);
  const std::string current = Normalized(server);
  if (std::find(list.begin(), list.end(), current) == list.end()) {
    std::rotate(list.begin(), list.end() - 1, list.end());
    list.front() = current;
  }
  std::vector<Change> changes;
  for (std::size_t i = 0; i < list.size(); ++i) {
    changes.push_back({std::string(section::GlobalSettings), EntryName(i), Value(list[i])});
  }
  return changes;
}

}  // namespace velmora::settings
