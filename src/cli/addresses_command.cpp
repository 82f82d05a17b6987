// `velmoractl addresses`: the export of addresses that the dialog "Adressen exportieren" offers.

#include <fmt/core.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "addresses/address_export.h"
#include "cli/commands.h"
#include "cli/exit_status.h"
#include "cli/output.h"
#include "cli/store_access.h"
#include "cli/unattended_command.h"
#include "mailarchive/format/forms.h"
#include "run/summary.h"

namespace velmora::cli {
namespace {

using addresses::AddressFormat;
using addresses::AddressSource;

struct ExportCommandOptions {
  std::string Store;
  std::string Archive;
  bool Public = false, Personal = false;
  std::string Format, Separator;  // "": that of the settings
  bool Overwrite = false, SubArchives = false;
  std::string Target;  // "": directory and name of the settings
};

struct NamedFormat {
  std::string_view Name;
  AddressFormat Format;
};
constexpr std::array<NamedFormat, 4> Formats{{
    {"csv", AddressFormat::Delimited},
    {"xls", AddressFormat::Excel},
    {"nab", AddressFormat::GroupWise},
    {"vcf", AddressFormat::VCard},
}};

struct NamedSeparator {
  std::string_view Name, Separator;
};
constexpr std::array<NamedSeparator, 3> Separators{{{";", ";"}, {",", ","}, {"tab", "\t"}}};

// The names of a table, for the option that chooses from it.
template <typename Table>
CLI::Validator OneOf(const Table& table) {
  std::vector<std::string> names;
  for (const auto& row : table) names.emplace_back(row.Name);
  CLI::Validator validator = CLI::IsMember(names);
  validator.description("");  // the option's own text names them
  return validator;
}

AddressFormat FormatOf(const ExportCommandOptions& options, const settings::Options& settings) {
  const auto found = std::ranges::find(Formats, options.Format, &NamedFormat::Name);
  return found == Formats.end() ? addresses::FormatOfSetting(settings.AddressExportFormat) : found->Format;
}

// The typed target in Windows form; a name without a directory lies where the shell is.
std::string TargetPath(platform::FileSystem& fileSystem, const std::string& text) {
  if (text.empty() || text.find('\\') != std::string::npos) return text;
  const std::string path = fileSystem.FromUserPath(text);
  return path == text ? WindowsPath(fileSystem, text) : path;
}

addresses::AddressExportRequest RequestOf(startup::Context& context, const ExportCommandOptions& options) {
  const settings::Options& settings = context.options;
  mailarchive::DesignSet designs(context.fileSystem, settings.DesignPath, settings.ArchiveDesign);
  (void)designs.LoadDesignSet();  // without a readable design file the template has its default name
  const AddressFormat format = FormatOf(options, settings);

  addresses::AddressExportRequest request;
  request.Source = options.Public     ? AddressSource::PublicAddresses
                   : options.Personal ? AddressSource::PersonalAddresses
                                      : AddressSource::CurrentArchive;
  request.ArchivePath = options.Archive;
  request.Options = addresses::OptionsFromSettings(settings, format,
                                                   designs.FormPath(mailarchive::Form::ExcelAddressSheet));
  // What would replace a file is said on the command line and nowhere else.
  request.Options.Overwrite = options.Overwrite;
  request.Options.WithSubArchives = options.SubArchives;
  request.Options.Target =
      addresses::ParseTarget(context.fileSystem, settings, format,
                             TargetPath(context.fileSystem, options.Target), options.SubArchives);
  const auto separator = std::ranges::find(Separators, options.Separator, &NamedSeparator::Name);
  if (separator != Separators.end()) request.Options.Files.CsvSeparator = separator->Separator;
  request.Options.ClearErrorLog = false;  // an unattended run has done so
  request.Options.ShowSummary = false;
  return request;
}

startup::BatchOutcome Export(startup::Context& context, const ExportCommandOptions& options) {
  run::Run& run = context.run;
  addresses::RunAddressExport(run, context.session, RequestOf(context, options));
  return OutcomeOf(
      run.counters.Errors,
      run::RunSummaryText(run::RunKind::MailArchiveExport, run.counters, run.ElapsedSeconds()) + "\r\n");
}

int RunExport(const ExportCommandOptions& options) {
  const int sources =
      (options.Archive.empty() ? 0 : 1) + (options.Public ? 1 : 0) + (options.Personal ? 1 : 0);
  if (sources != 1) {
    PrintError("Erwartet wird genau eine Quelle: ARCHIV, --public oder --personal");
    return exit_status::WrongUsage;
  }
  if (!options.Separator.empty() && !options.Format.empty() && options.Format != "csv") {
    PrintError("--separator gilt nur für das Format csv");
    return exit_status::WrongUsage;
  }
  return RunUnattendedCommand(options.Store,
                              [&](startup::Context& context) { return Export(context, options); });
}

void AddExport(CLI::App& group, Action& action) {
  auto options = std::make_shared<ExportCommandOptions>();
  CLI::App* command = AddSubcommand(group, "export", "Adressen eines Archivs in Dateien schreiben");
  AddStoreOption(*command, options->Store);
  command->add_option("ARCHIV", options->Archive, "Archiv, dessen Adressen exportiert werden")->type_name("");
  command->add_flag("--public", options->Public, "Das allgemeine Adressbuch exportieren");
  command->add_flag("--personal", options->Personal, "Das persönliche Adressbuch exportieren");
  command
      ->add_option("--format", options->Format,
                   "csv, xls, nab (GroupWise) oder vcf (vCards); sonst das zuletzt benutzte")
      ->check(OneOf(Formats))
      ->type_name("FORMAT");
  command->add_option("--separator", options->Separator, "Trennzeichen von csv: \";\", \",\" oder tab")
      ->check(OneOf(Separators))
      ->type_name("ZEICHEN");
  command->add_flag("--overwrite", options->Overwrite,
                    "Vorhandene Adressdateien überschreiben; sonst wird angehängt");
  command->add_flag("--sub-archives", options->SubArchives,
                    "Subarchive mit exportieren, jedes in ein Verzeichnis");
  command
      ->add_option("--target", options->Target,
                   "Verzeichnis oder Datei; sonst das Verzeichnis aus den Einstellungen")
      ->type_name("ZIEL");
  command->callback([options, &action] { action = [options] { return RunExport(*options); }; });
}

}  // namespace

void AddAddressCommands(CLI::App& app, Action& action) {
  auto* group = AddSubcommand(app, "addresses", "Adressen exportieren");
  group->require_subcommand(1);
  AddExport(*group, action);
}

}  // namespace velmora::cli
