// The command line of `velmoractl store put-...`.
#include <CLI/CLI.hpp>
#include <memory>

#include "cli/commands.h"
#include "cli/put_kinds.h"
#include "cli/store_commands.h"
#include "store/vocabulary.h"

namespace velmora::cli {
namespace {

using store::PropertyKind;

const char* TypeName(PropertyKind kind) {
  if (kind == PropertyKind::Number) return "ZAHL";
  return kind == PropertyKind::Date ? "DATUM" : "TEXT";
}

void AddFiles(CLI::App& command, PutOptions& options) {
  if (options.Kind->Files == PutFiles::Content) {
    const char* const text = options.Kind->Type == store::item_type::Fax ? "TIFF-Dateien" : "Wave-Dateien";
    command.add_option("DATEI", options.Files, text)->required()->type_name("");
  } else if (options.Kind->Files == PutFiles::Cards) {
    command
        .add_option("DATEI", options.Files,
                    "Dateien mit vCards; die Angaben gelten für jede Karte, ohne Datei für eine Adresse")
        ->type_name("");
  }
}

void AddFields(CLI::App& command, PutOptions& options) {
  for (const auto& field : options.Kind->Fields()) {
    const std::string label(field.Label);
    if (field.Kind == PropertyKind::Flag) {
      command.add_flag(field.Option, options.Switches[field.Option], label);
    } else {
      command.add_option(field.Option, options.Values[field.Option], label)->type_name(TypeName(field.Kind));
    }
  }
  for (const auto& flag : FlagOptions()) {
    command.add_flag(flag.Option, options.Switches[flag.Option], flag.Label);
  }
}

}  // namespace

void AddPutCommands(CLI::App& group, Action& action) {
  for (const auto& kind : PutKinds()) {
    const auto options = std::make_shared<PutOptions>();
    options->Kind = &kind;
    auto* const command = AddSubcommand(group, kind.Command, kind.Description);
    AddStoreOption(*command, options->Store);
    command->add_option("--archive", options->Archive, "Zielarchiv; fehlende Archive werden angelegt")
        ->required()
        ->type_name("PFAD");
    AddFields(*command, *options);
    AddFiles(*command, *options);
    command->callback([&action, options] { action = [options] { return RunStorePut(*options); }; });
  }
}

}  // namespace velmora::cli
