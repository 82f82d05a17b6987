#include "cli/store_commands.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "cli/commands.h"

namespace velmora::cli {
namespace {

// Adds one command whose options live as long as the command line does.
template <typename Options>
std::shared_ptr<Options> AddCommand(CLI::App& group, Action& action, const char* name,
                                    const char* description, int (*run)(const Options&), CLI::App*& command) {
  auto options = std::make_shared<Options>();
  command = AddSubcommand(group, name, description);
  command->callback([&action, options, run] { action = [options, run] { return run(*options); }; });
  return options;
}

void AddInit(CLI::App& group, Action& action) {
  CLI::App* command = nullptr;
  const auto options =
      AddCommand(group, action, "init", "Einen neuen Speicher anlegen", RunStoreInit, command);
  command->add_option("VERZEICHNIS", options->Directory, "Leeres oder neues Verzeichnis")
      ->required()
      ->type_name("");
  command->add_option("--server", options->Server, "Name des Servers")->required()->type_name("NAME");
  command->add_option("--mail", options->Mail, "Mail-Adresse des Administrators")->type_name("ADRESSE");
  command->add_option("--sendmail", options->Sendmail, "Programm für ausgehende Mails")
      ->type_name("PROGRAMM");
}

void AddAddUser(CLI::App& group, Action& action) {
  CLI::App* command = nullptr;
  const auto options =
      AddCommand(group, action, "add-user", "Einen Benutzer eintragen", RunStoreAddUser, command);
  AddStoreOption(*command, options->Store);
  command->add_option("NAME", options->Name, "Angezeigter Name")->required()->type_name("");
  command->add_option("--login", options->Login, "Anmeldename beim Betriebssystem")
      ->required()
      ->type_name("NAME");
  command->add_option("--mail", options->Mail, "Mail-Adresse")->type_name("ADRESSE");
  command->add_option("--vcard", options->VCard, "Seine Adresse: eine Datei mit einer vCard")
      ->type_name("DATEI");
  auto* administrator = command->add_flag("--admin", options->Administrator, "Mit allen Rechten");
  command->add_flag("--no-rights", options->WithoutRights, "Ohne Rechte: kann sich nicht anmelden")
      ->excludes(administrator);
}

void AddDeliver(CLI::App& group, Action& action) {
  CLI::App* command = nullptr;
  const auto options =
      AddCommand(group, action, "deliver", "Mails in ein Archiv zustellen", RunStoreDeliver, command);
  AddStoreOption(*command, options->Store);
  command->add_option("--archive", options->Archive, "Zielarchiv; fehlende Archive werden angelegt")
      ->required()
      ->type_name("PFAD");
  command->add_option("QUELLE", options->Sources, "Mail-Dateien, mbox-Dateien oder Maildir-Verzeichnisse")
      ->required()
      ->type_name("");
}

void AddList(CLI::App& group, Action& action) {
  CLI::App* command = nullptr;
  const auto options =
      AddCommand(group, action, "list", "Archive oder Einträge auflisten", RunStoreList, command);
  AddStoreOption(*command, options->Store);
  command
      ->add_option("--archive", options->Archive,
                   "Archiv, dessen Einträge gezeigt werden; sonst der Archivbaum")
      ->type_name("PFAD");
  command->add_flag("--json", options->Json, "Ausgabe als JSON");
}

void AddCheck(CLI::App& group, Action& action) {
  CLI::App* command = nullptr;
  const auto options =
      AddCommand(group, action, "check", "Den Speicher prüfen, ohne etwas zu ändern", RunStoreCheck, command);
  AddStoreOption(*command, options->Store);
}

void AddSite(CLI::App& group, Action& action) {
  CLI::App* command = nullptr;
  const auto options =
      AddCommand(group, action, "site", "Standortdaten zeigen oder ändern", RunStoreSite, command);
  AddStoreOption(*command, options->Store);
  command->add_option("NAME=WERT", options->Changes, "Neuer Wert; ohne Angabe werden alle gezeigt")
      ->type_name("");
}

}  // namespace

void AddStoreOption(CLI::App& command, std::string& directory) {
  command
      .add_option("--store", directory,
                  "Verzeichnis des Speichers (sonst VELMORA_STORE oder der Standardserver)")
      ->type_name("VERZEICHNIS");
}

void AddStoreCommands(CLI::App& app, Action& action) {
  auto* group = AddSubcommand(app, "store", "Den eingebauten Speicher pflegen");
  group->require_subcommand(1);
  AddInit(*group, action);
  AddAddUser(*group, action);
  AddDeliver(*group, action);
  AddPutCommands(*group, action);
  AddList(*group, action);
  AddCheck(*group, action);
  AddSite(*group, action);
}

}  // namespace velmora::cli
