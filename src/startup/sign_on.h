// Signing on to a server, and changing it.
#pragma once

#include <string_view>

#include "startup/process.h"

namespace velmora::startup {

// A session with the server ServerName ("" for the default one): account, rights, roots. False with a message
// when there is none, or when the user is not registered with it.
bool SignOn(Context& context);
// Takes all that belongs to the account off the session and ends it.
void SignOff(Context& context);

enum class ServerChange {
  None,     // an empty name
  Changed,  // the session is the new server's, the late start has run
  Failed,   // the session is the default server's
  Ended,    // there is no session any more: the process ends
};
ServerChange ChangeServer(Context& context, std::string_view name);

}  // namespace velmora::startup
