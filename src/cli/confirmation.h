// Asking before something is deleted.
#pragma once

#include <string_view>

#include "run/front_ends.h"

namespace velmora::cli {

// Whether somebody can be asked, or has answered with --yes. Otherwise the user is told to say so.
bool CanConfirm(bool yes);
// The answer; no when nothing is typed. A refusal is acknowledged.
bool Confirm(run::Prompts& prompts, bool yes, std::string_view title, std::string_view question);

}  // namespace velmora::cli
