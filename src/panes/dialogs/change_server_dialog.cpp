#include "panes/dialogs/change_server_dialog.h"

#include "base/text.h"

namespace velmora::panes {

ChangeServerDialog::ChangeServerDialog(const settings::ServerList& servers, std::string_view currentServer,
                                       bool isFirstStart)
    : name_(currentServer), isFirstStart_(isFirstStart) {
  for (const std::string& server : servers) {
    if (!server.empty()) servers_.push_back(server);
  }
}

std::optional<std::string> ChangeServerDialog::Ok() const {
  const std::string_view name = Trim(name_);
  if (name.empty()) return std::nullopt;
  return std::string(name);
}

}  // namespace velmora::panes
