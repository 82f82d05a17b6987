// The list of servers used: ten entries, the most recently added first.
#pragma once

#include <string_view>
#include <vector>

#include "settings/options.h"
#include "settings/toml_text.h"
#include "settings/values.h"

namespace velmora::settings {

ServerList LoadServerList(const Values& stored);
// What saving the list writes for the server of the session: a new server becomes the first entry and the
// last one drops out, a known one leaves the order as it is. Entries are written trimmed and in upper case.
std::vector<Change> ServerListChanges(const Values& stored, std::string_view server);

}  // namespace velmora::settings
