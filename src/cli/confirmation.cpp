#include "cli/confirmation.h"

#include <cstdio>

#include "cli/output.h"
#include "run/console_front_end.h"

namespace velmora::cli {

bool CanConfirm(bool yes) {
  if (yes || run::ConsoleFrontEnd::IsTerminal(stdin, stderr)) return true;
  PrintError("Ohne Terminal kann niemand gefragt werden: --yes angeben");
  return false;
}

bool Confirm(run::Prompts& prompts, bool yes, std::string_view title, std::string_view question) {
  if (yes || prompts.Question(title, question, run::Buttons::YesNo, run::Answer::No) == run::Answer::Yes)
    return true;
  PrintLine("Nichts geändert");
  return false;
}

}  // namespace velmora::cli
