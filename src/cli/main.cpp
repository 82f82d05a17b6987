// velmoractl: the command line of Velmora.

#include <CLI/CLI.hpp>
#include <array>
#include <clocale>
#include <memory>
#include <string>
#include <string_view>

#include "cli/commands.h"
#include "cli/exit_status.h"
#include "cli/output.h"

namespace velmora::cli {
namespace {

struct ParseErrorText {
  std::string_view Name;
  std::string_view Text;
};
constexpr std::array<ParseErrorText, 6> ParseErrorTexts{{
    {"RequiredError", "Es fehlt eine Angabe"},
    {"ExtrasError", "Unbekannte Angabe"},
    {"ArgumentMismatch", "Falsche Anzahl von Werten"},
    {"ConversionError", "Ungültiger Wert"},
    {"ValidationError", "Ungültiger Wert"},
    {"ExcludesError", "Angaben schließen einander aus"},
}};

std::string_view GermanText(const CLI::ParseError& error) {
  for (const auto& [name, text] : ParseErrorTexts) {
    if (error.get_name() == name) return text;
  }
  return "Falscher Aufruf";
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
  formatter->column_width(36);
  app.formatter(formatter);
  // Commands made from here on inherit the group.
  app.option_defaults()->group("Optionen");
  app.set_help_flag("-h,--help", "Diese Hilfe zeigen")->group("Optionen");
}

int Run(int argc, char** argv) {
  CLI::App app("velmoractl - Velmora auf der Kommandozeile");
  SetGermanLabels(app);
  app.require_subcommand(1);
  Action action;
  AddStoreCommands(app, action);
  AddRunCommand(app, action);
  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp& help) {
    return app.exit(help);
  } catch (const CLI::ParseError& error) {
    PrintError(GermanText(error));
    PrintError("Hilfe zeigt: velmoractl --help, velmoractl store BEFEHL --help");
    return exit_status::WrongUsage;
  }
  return action ? action() : exit_status::WrongUsage;
}

}  // namespace
}  // namespace velmora::cli

int main(int argc, char** argv) {
  // Names of files are UTF-8 whatever the locale says; numbers and dates have a form of their own.
  std::setlocale(LC_CTYPE, "C.UTF-8");
  return velmora::cli::Run(argc, argv);
}
