// The dialog "DvISE-Server wechseln" (ChDvServer). The change itself is startup::ChangeServer, which unloads
// all windows: the dialog is closed before.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/options.h"

namespace velmora::panes {

namespace change_server_text {
inline constexpr std::string_view Title = "DvISE-Server wechseln";
inline constexpr std::string_view InpServer = "Servername :", InpServerTip = "Name des David Hosts angeben.",
                                  CancelButton = "Abbrechen";
}  // namespace change_server_text

class ChangeServerDialog {
 public:
  // `currentServer`: the name that the session shows. `isFirstStart`: no session stands yet.
  ChangeServerDialog(const settings::ServerList& servers, std::string_view currentServer,
                     bool isFirstStart = false);

  const std::string& InpServer() const { return name_; }
  void SetInpServer(std::string_view name) { name_ = name; }
  // The servers used so far, the newest first, offered below the text box.
  const std::vector<std::string>& Servers() const { return servers_; }

  // OkButton: the server to sign on to; nothing for an empty name: the dialog closes and nothing happens.
  std::optional<std::string> Ok() const;
  // "Abbrechen" before any session stands ends the program, through ConfirmExit without its question.
  bool CancelEndsProgram() const { return isFirstStart_; }

 private:
  std::string name_;
  std::vector<std::string> servers_;
  bool isFirstStart_;
};

}  // namespace velmora::panes
