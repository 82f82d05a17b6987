#include <fmt/core.h>

#include <cstdint>
#include <string>

#include "base/text.h"
#include "cli/exit_status.h"
#include "cli/output.h"
#include "cli/store_access.h"
#include "cli/store_commands.h"
#include "platform/clock.h"
#include "store/embedded/store_check.h"

namespace velmora::cli {

int RunStoreCheck(const CheckOptions& options) {
  const auto access = SignOnAsAdministrator(options.Store, "Den Speicher prüft nur ein Administrator");
  if (!access) return access.error();
  std::int64_t findings = 0, notes = 0;
  const auto archives = store::embedded::CheckStore(
      *access->FileSystem, platform::SystemClock(), access->Location, [&](const auto& finding) {
        ++(finding.IsNote ? notes : findings);
        PrintLine(BlankControlCharacters(
            fmt::format("{}{}: {}", finding.IsNote ? "Hinweis: " : "", finding.Subject, finding.Text)));
      });
  const auto noteCount = notes == 0 ? std::string() : fmt::format(", {} Hinweis(e)", notes);
  PrintLine(fmt::format("{} Archiv(e) geprüft, {} Fehler{}", archives, findings, noteCount));
  return findings == 0 ? exit_status::Done : exit_status::DoneWithErrors;
}

}  // namespace velmora::cli
