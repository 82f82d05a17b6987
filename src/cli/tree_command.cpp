// `velmoractl tree`: doubled, circular and dangling entries of the tree of archives.

#include <fmt/core.h>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <memory>
#include <string>

#include "base/text.h"
#include "cli/commands.h"
#include "cli/confirmation.h"
#include "cli/exit_status.h"
#include "cli/output.h"
#include "cli/store_access.h"
#include "maintenance/tree_check.h"
#include "platform/clock.h"
#include "platform/host.h"
#include "platform/make_folders.h"
#include "run/console_front_end.h"
#include "run/run.h"

namespace velmora::cli {
namespace {

using maintenance::TreeFault;

struct TreeOptions {
  std::string Store;
  std::string Archive;  // "": the whole tree
  bool Dangling = false;
  bool Yes = false;
};

// A tree that was signed on to and read.
struct CheckedTree {
  SignedOnStore Access;
  std::shared_ptr<store::DvArchive> Start;
};

tl::expected<CheckedTree, int> OpenTree(const TreeOptions& options, std::string_view refusal) {
  auto access = SignOnAsAdministrator(options.Store, refusal);
  if (!access) return tl::unexpected(access.error());
  auto start = options.Archive.empty() ? access->Account->GetSpecialArchive(store::special::ArchiveRoot)
                                       : access->Account->GetArchive(options.Archive);
  if (!start) {
    PrintError(options.Archive.empty() ? "Archivbaum" : options.Archive, start.error());
    return tl::unexpected(exit_status::DoneWithErrors);
  }
  return CheckedTree{*std::move(access), *std::move(start)};
}

int CountOf(const maintenance::TreeReport& report, TreeFault fault) {
  int count = 0;
  for (const auto& finding : report.Findings) count += finding.Fault == fault ? 1 : 0;
  return count;
}

maintenance::TreeReport ReadAndPrint(run::Run& run, const CheckedTree& tree) {
  auto report = maintenance::CheckTree(run, tree.Start);
  for (const auto& finding : report.Findings)
    PrintLine(BlankControlCharacters(maintenance::Describe(finding)));
  PrintLine(fmt::format(
      "{} Archiv(e) geprüft: {} doppelte, {} zirkulare, {} verwaiste Einträge, {} unterbrochene, {} nicht "
      "lesbare Listen",
      report.Archives, CountOf(report, TreeFault::Doubled), CountOf(report, TreeFault::Circular),
      CountOf(report, TreeFault::Dangling), CountOf(report, TreeFault::Interrupted),
      CountOf(report, TreeFault::Unreadable)));
  return report;
}

// The log of what a repair could not do goes where the other programs write theirs.
run::Run MakeRun(const CheckedTree& tree, run::ConsoleFrontEnd& console) {
  platform::FileSystem& fileSystem = *tree.Access.FileSystem;
  const std::string log = WindowsPath(fileSystem, platform::FindHostDirectories().State);
  (void)platform::MakeFolders(fileSystem, log, true);  // a log that cannot be written loses its entries
  return {fileSystem, platform::SystemClock(), console.Set(), log};
}

int RunTreeCheck(const TreeOptions& options) {
  const auto tree = OpenTree(options, "Den Archivbaum prüft nur ein Administrator");
  if (!tree) return tree.error();
  run::ConsoleFrontEnd console(platform::SystemClock(), stdin, stderr, false);
  run::Run run = MakeRun(*tree, console);
  const auto report = ReadAndPrint(run, *tree);
  return report.Findings.empty() ? exit_status::Done : exit_status::DoneWithErrors;
}

// What a repair would do to the findings; 0 when there is nothing for it.
int CountRepairable(const maintenance::TreeReport& report, const TreeOptions& options) {
  return CountOf(report, TreeFault::Doubled) + CountOf(report, TreeFault::Circular) +
         CountOf(report, TreeFault::Interrupted) +
         (options.Dangling ? CountOf(report, TreeFault::Dangling) : 0);
}

int RunTreeRepair(const TreeOptions& options) {
  if (!CanConfirm(options.Yes)) return exit_status::WrongUsage;
  const auto tree = OpenTree(options, "Den Archivbaum repariert nur ein Administrator");
  if (!tree) return tree.error();
  run::ConsoleFrontEnd console(platform::SystemClock(), stdin, stderr,
                               run::ConsoleFrontEnd::IsTerminal(stdin, stderr));
  run::Run run = MakeRun(*tree, console);
  const auto report = ReadAndPrint(run, *tree);
  const int repairable = CountRepairable(report, options);
  if (repairable > 0 &&
      !Confirm(console.Set().prompts, options.Yes, "Archivbaum reparieren",
               fmt::format("{} Befund(e) beheben? Die Verzeichnisse der Archive bleiben, wie sie sind.",
                           repairable)))
    return exit_status::DoneWithErrors;
  const auto repair = maintenance::RepairTree(run, report, {.Dangling = options.Dangling});
  PrintLine(
      fmt::format("Entfernt: {} doppelte, {} zirkulare, {} verwaiste Einträge; {} Liste(n) wiederhergestellt",
                  repair.Doubled, repair.Circular, repair.Dangling, repair.Recovered));
  if (repair.Failed > 0)
    PrintError(fmt::format(
        "{} Archivliste(n) konnten nicht oder nicht ganz repariert werden, siehe {}", repair.Failed,
        tree->Access.FileSystem->HostPath(run.ErrorLogPath()).value_or(run.ErrorLogPath())));
  const bool isSound = repair.Failed == 0 && repairable == static_cast<int>(report.Findings.size());
  return isSound ? exit_status::Done : exit_status::DoneWithErrors;
}

std::shared_ptr<TreeOptions> AddTreeCommand(CLI::App& group, Action& action, const char* name,
                                            const char* description, int (*run)(const TreeOptions&),
                                            CLI::App*& command) {
  auto options = std::make_shared<TreeOptions>();
  command = AddSubcommand(group, name, description);
  command->callback([&action, options, run] { action = [options, run] { return run(*options); }; });
  AddStoreOption(*command, options->Store);
  command->add_option("--archive", options->Archive, "Archiv, unter dem geprüft wird; sonst der ganze Baum")
      ->type_name("PFAD");
  return options;
}

}  // namespace

void AddTreeCommands(CLI::App& app, Action& action) {
  auto* group = AddSubcommand(app, "tree", "Die Einträge des Archivbaums prüfen und reparieren");
  group->require_subcommand(1);
  CLI::App* command = nullptr;
  (void)AddTreeCommand(*group, action, "check",
                       "Doppelte, zirkulare und verwaiste Einträge melden, ohne etwas zu ändern",
                       RunTreeCheck, command);  // nothing more to ask for
  const auto options = AddTreeCommand(*group, action, "repair", "Doppelte und zirkulare Einträge entfernen",
                                      RunTreeRepair, command);
  command->add_flag("--dangling", options->Dangling, "Auch Einträge entfernen, deren Verzeichnis fehlt");
  command->add_flag("--yes", options->Yes, "Nicht fragen");
}

}  // namespace velmora::cli
