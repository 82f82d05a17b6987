// Signing on to a server, and changing it.
#pragma once

#include <string>
#include <string_view>

#include "startup/process.h"

namespace velmora::startup {

// The server of the last session; "" before the first.
std::string LastUsedServer(Context& context);
// The server to sign on to: the one that was named for this process, else the last used one.
void ChooseServer(Context& context);

// A session with the server ServerName ("" for the default one): account, rights, roots. False when there is
// none, or when the user is not registered with it: a box says why, of an unattended run an entry of the log.
// A last used server that cannot be reached is never replaced by another one: the archives of a run, and what
// a move deletes, would be those of the wrong server.
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
