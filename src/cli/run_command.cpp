// `velmoractl run`: an unattended run with progress on the terminal and its summary on standard output.

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "base/text.h"
#include "cli/commands.h"
#include "cli/exit_status.h"
#include "cli/output.h"
#include "cli/store_access.h"
#include "cli/unattended_command.h"

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

startup::BatchOutcome RunWith(startup::Context& context, const RunOptions& options) {
  const std::string file = FileOf(context, options);
  return file.empty() ? startup::RunControlLines(context, LinesOf(options.Arguments), LinesName)
                      : startup::RunControlFile(context, file);
}

int RunControl(const RunOptions& options) {
  const bool areKeys = std::all_of(options.Arguments.begin(), options.Arguments.end(), IsKey);
  const bool isFile = options.Arguments.size() == 1 && !Trim(options.Arguments.front()).empty();
  if (!isFile && !areKeys) {
    PrintError("Erwartet wird eine Steuerdatei oder eine Folge von SCHLÜSSEL=WERT");
    return exit_status::WrongUsage;
  }
  return RunUnattendedCommand(options.Store,
                              [&](startup::Context& context) { return RunWith(context, options); });
}

}  // namespace

void AddRunCommand(CLI::App& app, Action& action) {
  auto options = std::make_shared<RunOptions>();
  CLI::App* command = AddSubcommand(app, "run", "Steuerdatei oder einzelne Schlüssel davon ausführen");
  AddStoreOption(*command, options->Store);
  command->add_option("DATEI|SCHLÜSSEL=WERT", options->Arguments, "Steuerdatei oder Schlüssel mit Werten")
      ->required()
      ->type_name("");
  command->callback([options, &action] { action = [options] { return RunControl(*options); }; });
}

}  // namespace velmora::cli
