// The mail that tells of an unattended run.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "store/session.h"

namespace velmora::startup {

// Sends a plain text mail through the outgoing archive. `to` and `attachments` (Windows paths) are separated
// by commas; an empty `from` leaves the store's default. Fails when there is no recipient, and when the
// store tells that a recipient was not reached.
Status SendResultMail(store::Session& session, std::string_view to, std::string_view from,
                      std::string_view subject, std::string_view body, std::string_view attachments);

}  // namespace velmora::startup
