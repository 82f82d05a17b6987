// `velmoractl run`: an unattended run with progress on the terminal and its summary on standard output.

#include <fmt/core.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "base/text.h"
#include "cli/commands.h"
#include "cli/exit_status.h"
#include "cli/output.h"
#include "cli/store_access.h"
#include "embedded_program.h"
#include "platform/clock.h"
#include "run/console_front_end.h"
#include "startup/main_sequence.h"
#include "startup/sign_on.h"
#include "startup/start_archives.h"

namespace velmora::cli {
namespace {

constexpr std::string_view LinesName = "velmoractl run";

struct RunOptions {
  std::string Store;
  std::vector<std::string> Arguments;
};

bool IsKey(const std::string& argument) { return argument.find('=') != std::string::npos; }

bool IsHostFile(const std::string& path) {
  std::error_code error;
  return std::filesystem::is_regular_file(path, error);
}

// The control file, as the host path of an existing file or a Windows path; "" when the arguments are keys.
std::string FileOf(startup::Context& context, const RunOptions& options) {
  const std::string& argument = options.Arguments.front();
  if (options.Arguments.size() > 1 || (IsKey(argument) && !IsHostFile(argument))) {
    return "";
  }
  return argument.find('\\') == std::string::npos ? WindowsPath(context.fileSystem, argument) : argument;
}

std::string LinesOf(const std::vector<std::string>& arguments) {
  std::string lines;
  for (const std::string& argument : arguments) {
    lines += BlankControlCharacters(argument) + "\n";
  }
  return lines;
}

std::string LogHostPath(startup::Context& context) {
  const std::string path = context.run.ErrorLogPath();
  return context.fileSystem.HostPath(path).value_or(path);
}

int RunWith(startup::Context& context, const RunOptions& options) {
  context.process.BatchMode = context.run.BatchMode = true;
  startup::ChooseServer(context);
  if (!startup::SignOn(context)) {
    PrintError(fmt::format("Anmeldung fehlgeschlagen, siehe {}", LogHostPath(context)));
    return exit_status::NoSignOn;
  }
  startup::ScanDavidShare(context);
  startup::LoadSession(context);
  const std::string file = FileOf(context, options);
  const startup::BatchOutcome outcome = startup::RunUnattended(context, [&] {
    return file.empty() ? startup::RunControlLines(context, LinesOf(options.Arguments), LinesName)
                        : startup::RunControlFile(context, file);
  });
  std::fputs(ReplaceAll(outcome.Summary, "\r\n", "\n").c_str(), stdout);
  if (outcome.ExitStatus != startup::exit_status::Done) {
    PrintError(fmt::format("Es sind Fehler aufgetreten, siehe {}", LogHostPath(context)));
  }
  return outcome.ExitStatus;
}

int RunControl(const RunOptions& options) {
  const bool areKeys = std::all_of(options.Arguments.begin(), options.Arguments.end(), IsKey);
  const bool isFile = options.Arguments.size() == 1 && !Trim(options.Arguments.front()).empty();
  if (!isFile && !areKeys) {
    PrintError("Erwartet wird eine Steuerdatei oder eine Folge von SCHLÜSSEL=WERT");
    return exit_status::WrongUsage;
  }
  run::ConsoleFrontEnd console(platform::SystemClock(), stdin, stderr,
                               run::ConsoleFrontEnd::IsTerminal(stdin, stderr));
  EmbeddedProgram program(options.Store, "", console.Set());
  return RunWith(program.GetContext(), options);
}

}  // namespace

void AddRunCommand(CLI::App& app, Action& action) {
  auto options = std::make_shared<RunOptions>();
  CLI::App* command =
      app.add_subcommand("run", "Steuerdatei oder einzelne Schlüssel davon ausführen")->group("Befehle");
  AddStoreOption(*command, options->Store);
  command->add_option("DATEI|SCHLÜSSEL=WERT", options->Arguments, "Steuerdatei oder Schlüssel mit Werten")
      ->required()
      ->type_name("");
  command->callback([options, &action] { action = [options] { return RunControl(*options); }; });
}

}  // namespace velmora::cli
