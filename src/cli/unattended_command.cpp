#include "cli/unattended_command.h"

#include <fmt/core.h>

#include <cstdio>
#include <utility>

#include "base/text.h"
#include "cli/exit_status.h"
#include "cli/output.h"
#include "embedded_program.h"
#include "operations/operation_settings.h"
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
  PrintText(ReplaceAll(outcome.Summary, "\r\n", "\n"));
  if (outcome.ExitStatus != startup::exit_status::Done && context.run.ErrorLogExists()) {
    PrintError(fmt::format("Es sind Fehler aufgetreten, siehe {}", LogHostPath(context)));
  }
  return outcome.ExitStatus;
}

void Report(startup::Context& context, const std::string& subject, const Error& error) {
  PrintError(subject, error);
  context.run.LogError(subject, error);
}

startup::BatchOutcome NotBegun() { return {startup::exit_status::DoneWithErrors, ""}; }

startup::BatchOutcome OutcomeOf(std::int64_t errors, std::string summary) {
  return {errors == 0 ? startup::exit_status::Done : startup::exit_status::DoneWithErrors,
          std::move(summary)};
}

operations::Operation OperationIn(startup::Context& context) {
  operations::Operation operation = operations::OperationOf(context.run, context.session, context.options);
  operation.ClearErrorLog = false;
  return operation;
}

}  // namespace velmora::cli
