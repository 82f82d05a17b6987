// The whole command line: German where the option parser is English, and the command that it names.

#include <fmt/core.h>

#include <CLI/CLI.hpp>
#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "cli/commands.h"
#include "cli/exit_status.h"
#include "cli/output.h"

namespace velmora::cli {
namespace {

struct ParseErrorText {
  CLI::ExitCodes Code;
  std::string_view Text;
};
constexpr std::array<ParseErrorText, 6> ParseErrorTexts{{
    {CLI::ExitCodes::RequiredError, "Es fehlt eine Angabe"},
    {CLI::ExitCodes::ExtrasError, "Unbekannte Angabe"},
    {CLI::ExitCodes::ArgumentMismatch, "Falsche Anzahl von Werten"},
    {CLI::ExitCodes::ConversionError, "Ungültiger Wert"},
    {CLI::ExitCodes::ValidationError, "Ungültiger Wert"},
    {CLI::ExitCodes::ExcludesError, "Die Angabe schließt eine andere aus"},
}};

std::string_view GermanText(const CLI::ParseError& error) {
  for (const auto& [code, text] : ParseErrorTexts) {
    if (error.get_exit_code() == static_cast<int>(code)) return text;
  }
  return "Falscher Aufruf";
}

// The library's own text is English and begins with the option concerned: "--server is required".
std::string_view SubjectOf(const CLI::ParseError& error) {
  constexpr std::string_view Conversion = "Could not convert: ";
  std::string_view text = error.what();
  if (text.starts_with(Conversion)) text.remove_prefix(Conversion.size());
  return text.starts_with("A subcommand") ? "BEFEHL" : text.substr(0, text.find_first_of(" :"));
}

std::string ExplainParseError(const CLI::App& app, const CLI::ParseError& error) {
  // An unknown command is reported as a missing one: what was not understood says more.
  if (const std::vector<std::string> unknown = app.remaining(true); !unknown.empty()) {
    return fmt::format("Unbekannte Angabe: {}", Join(unknown, " "));
  }
  return fmt::format("{}: {}", GermanText(error), SubjectOf(error));
}

void SetGermanLabels(CLI::App& app) {
  const auto formatter = std::make_shared<CLI::Formatter>();
  formatter->label("Usage", "Aufruf");
  formatter->label("Positionals", "Angaben");
  formatter->label("OPTIONS", "OPTIONEN");
  formatter->label("Options", "Optionen");
  formatter->label("SUBCOMMAND", "BEFEHL");
  formatter->label("SUBCOMMANDS", "BEFEHLE");
  formatter->label("Subcommand", "Befehl");
  formatter->label("Subcommands", "Befehle");
  formatter->label("REQUIRED", "(Pflicht)");
  formatter->label("Excludes", "schließt aus");
  formatter->column_width(36);
  app.formatter(formatter);
  // Commands made from here on inherit both.
  app.option_defaults()->group("Optionen");
  app.set_help_flag("-h,--help", "Diese Hilfe zeigen")->group("Optionen");
}

// The library puts the help option of each command into a group of its own.
void GroupHelpOptions(CLI::App& app) {
  app.get_help_ptr()->group("Optionen");
  for (CLI::App* command : app.get_subcommands({})) GroupHelpOptions(*command);
}

// The arguments as the parser takes them, the last one first. It would take what follows a bare "--name=" for
// the value, so that becomes a name and an empty value.
std::vector<std::string> Arguments(int argc, char** argv) {
  std::vector<std::string> arguments;
  for (int i = argc - 1; i > 0; --i) {
    std::string argument = argv[i];
    if (argument.starts_with("--") && argument.find('=') == argument.size() - 1) {
      argument.pop_back();
      arguments.emplace_back();
    }
    arguments.push_back(std::move(argument));
  }
  return arguments;
}

}  // namespace

CLI::App* AddSubcommand(CLI::App& group, const char* name, const char* description) {
  return group.add_subcommand(name, description)->group("Befehle");
}

int RunCommandLine(int argc, char** argv) {
  CLI::App app("velmoractl - Velmora auf der Kommandozeile");
  SetGermanLabels(app);
  app.require_subcommand(1);
  Action action;
  AddStoreCommands(app, action);
  AddArchiveCommands(app, action);
  AddRuleCommands(app, action);
  AddTreeCommands(app, action);
  AddRunCommand(app, action);
  AddAddressCommands(app, action);
  GroupHelpOptions(app);
  try {
    app.name(argv[0]);
    app.parse(Arguments(argc, argv));
  } catch (const CLI::CallForHelp& help) {
    return app.exit(help);
  } catch (const CLI::ParseError& error) {
    PrintError(ExplainParseError(app, error));
    PrintError(
        "Hilfe zeigen velmoractl --help, velmoractl run --help, velmoractl store BEFEHL --help, "
        "velmoractl copy --help, velmoractl rules BEFEHL --help, velmoractl tree BEFEHL --help, "
        "velmoractl addresses BEFEHL --help");
    return exit_status::WrongUsage;
  }
  return action ? action() : exit_status::WrongUsage;
}

}  // namespace velmora::cli
