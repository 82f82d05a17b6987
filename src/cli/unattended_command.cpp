#include "cli/unattended_command.h"

#include <fmt/core.h>

#include <cstdio>

#include "base/text.h"
#include "cli/exit_status.h"
#include "cli/output.h"
#include "embedded_program.h"
#include "platform/clock.h"
#include "run/console_front_end.h"
#include "startup/sign_on.h"
#include "startup/start_archives.h"

namespace velmora::cli {
namespace {

std::string LogHostPath(startup::Context& context) {
  const std::string path = context.run.ErrorLogPath();
  return context.fileSystem.HostPath(path).value_or(path);
}

}  // namespace

int RunUnattendedCommand(const std::string& storeOption,
                         const std::function<startup::BatchOutcome(startup::Context&)>& work) {
  run::ConsoleFrontEnd console(platform::SystemClock(), stdin, stderr,
                               run::ConsoleFrontEnd::IsTerminal(stdin, stderr));
  EmbeddedProgram program(storeOption, "", console.Set());
  startup::Context& context = program.GetContext();
  context.process.BatchMode = context.run.BatchMode = true;
  startup::ChooseServer(context);
  if (!startup::SignOn(context)) {
    PrintError(fmt::format("Anmeldung fehlgeschlagen, siehe {}", LogHostPath(context)));
    return exit_status::NoSignOn;
  }
  startup::ScanDavidShare(context);
  startup::LoadSession(context);
  const startup::BatchOutcome outcome = startup::RunUnattended(context, [&] { return work(context); });
  std::fputs(ReplaceAll(outcome.Summary, "\r\n", "\n").c_str(), stdout);
  if (outcome.ExitStatus != startup::exit_status::Done && context.run.ErrorLogExists()) {
    PrintError(fmt::format("Es sind Fehler aufgetreten, siehe {}", LogHostPath(context)));
  }
  return outcome.ExitStatus;
}

}  // namespace velmora::cli
