// `velmoractl rules`: the routing rules of archives.

#include <fmt/core.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/text.h"
#include "cli/commands.h"
#include "cli/confirmation.h"
#include "cli/exit_status.h"
#include "cli/output.h"
#include "cli/unattended_command.h"
#include "operations/rule_copy.h"
#include "run/summary.h"
#include "store/errors.h"

namespace velmora::cli {
namespace {

using operations::CopyMode;
using operations::MarkedRule;
using operations::RuleSelection;
using ArchivePointer = std::shared_ptr<store::DvArchive>;

struct RulesOptions {
  std::string Store;
  std::string Source, Target;
  std::vector<std::string> Rules;  // numbers from 1 or names; empty: all
  bool Yes = false;
  operations::RuleCopyOptions Copy;
};

ArchivePointer OpenArchive(startup::Context& context, const std::string& path) {
  auto archive = context.session.Account->GetArchive(path);
  // Rules belong to the archive that a link leads to.
  if (archive && (*archive)->IsShortCut()) archive = context.session.Account->GetArchive((*archive)->ID());
  if (archive) return *archive;
  Report(context, path, archive.error());
  return nullptr;
}

// The rules of an archive as they are listed; nothing, once it is told, when the user may not see them.
std::optional<std::vector<MarkedRule>> ListRules(startup::Context& context, store::DvArchive& archive) {
  if ((context.session.Trustees & store::trustee::Expert) == 0) {
    Report(context, archive.FullPath(),
           {store::store_error::NoAccess, "Das Recht auf die Regelansicht fehlt"});
    return std::nullopt;
  }
  const auto count = archive.Rules().Count();
  std::vector<MarkedRule> rules;
  for (int i = 0; count && i < *count; ++i) {
    const auto rule = archive.Rules().Item(i);
    if (!rule) {
      Report(context, archive.FullPath(), rule.error());
      return std::nullopt;
    }
    rules.push_back({i, (*rule)->Data().Name});
  }
  if (count) return rules;
  Report(context, archive.FullPath(), count.error());
  return std::nullopt;
}

// What one --rule names: the rules of that name, else the one with that number.
std::vector<MarkedRule> Find(const std::vector<MarkedRule>& rules, const std::string& text) {
  std::vector<MarkedRule> found;
  std::ranges::copy_if(rules, std::back_inserter(found),
                       [&](const MarkedRule& rule) { return rule.Name == text; });
  std::size_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool isNumber = error == std::errc() && end == text.data() + text.size();
  if (found.empty() && isNumber && number >= 1 && number <= rules.size()) found.push_back(rules[number - 1]);
  return found;
}

// The rules that the command line names; nothing, once it is told, when one of them is not there.
std::optional<RuleSelection> SelectRules(startup::Context& context, const RulesOptions& options) {
  RuleSelection selection{OpenArchive(context, options.Source), {}};
  if (!selection.Archive) return std::nullopt;
  auto rules = ListRules(context, *selection.Archive);
  if (!rules) return std::nullopt;
  if (options.Rules.empty()) {
    selection.Rules = *std::move(rules);
    return selection;
  }
  for (const std::string& text : options.Rules) {
    const auto found = Find(*rules, text);
    if (found.empty()) {
      Report(context, text, {store::store_error::NotFound, "Diese Regel gibt es in dem Archiv nicht"});
      return std::nullopt;
    }
    selection.Rules.insert(selection.Rules.end(), found.begin(), found.end());
  }
  return selection;
}

std::string RulesText(const RuleSelection& selection) {
  std::string text = fmt::format("{} Regel(n) aus {}", selection.Rules.size(), selection.Archive->FullPath());
  for (const MarkedRule& rule : selection.Rules) text += "\r\n" + BlankControlCharacters(rule.Name);
  return text;
}

// --- The commands. ---

startup::BatchOutcome PrintRules(startup::Context& context, const RulesOptions& options) {
  const ArchivePointer archive = OpenArchive(context, options.Source);
  if (!archive) return NotBegun();
  const auto rules = ListRules(context, *archive);
  if (!rules) return NotBegun();
  for (const MarkedRule& rule : *rules)
    PrintLine(BlankControlCharacters(fmt::format("{:>4}  {}", rule.Position + 1, rule.Name)));
  return OutcomeOf(context.run.counters.Errors + (FlushOutput() ? 0 : 1), "");
}

startup::BatchOutcome CopyOrMove(startup::Context& context, const RulesOptions& options) {
  const auto selection = SelectRules(context, options);
  const ArchivePointer target = selection ? OpenArchive(context, options.Target) : nullptr;
  if (!target) return NotBegun();
  if (EqualsFold(target->ID(), selection->Archive->ID())) {
    Report(context, options.Target, {store::store_error::Failed, "Quelle und Ziel sind dasselbe Archiv"});
    return NotBegun();
  }
  if (options.Copy.Mode == CopyMode::Move &&
      !Confirm(context.prompts(), options.Yes, "Verschieben", RulesText(*selection) + "\r\nverschieben?"))
    return NotBegun();
  operations::RunRuleCopy(OperationIn(context), options.Copy, *selection, target);
  return OutcomeOf(
      context.run.counters.Errors,
      run::RunSummaryText(run::RunKind::RuleCopy, context.run.counters, context.run.ElapsedSeconds()) +
          "\r\n");
}

startup::BatchOutcome Delete(startup::Context& context, const RulesOptions& options) {
  const auto selection = SelectRules(context, options);
  if (!selection ||
      !Confirm(context.prompts(), options.Yes, "Löschen", RulesText(*selection) + "\r\nwirklich löschen?"))
    return NotBegun();
  operations::RunDeleteRules(OperationIn(context), *selection);
  return OutcomeOf(context.run.counters.Errors,
                   fmt::format("{}mit {} Fehler(n) gelöscht\r\n",
                               run::SummaryCounts(run::RunKind::RuleCopy, context.run.counters),
                               context.run.counters.Errors));
}

using Work = startup::BatchOutcome (*)(startup::Context&, const RulesOptions&);

// `asks`: whether the command asks before it does something.
std::shared_ptr<RulesOptions> AddCommand(CLI::App& group, Action& action, const char* name,
                                         const char* description, Work work, bool asks, CLI::App*& command) {
  auto options = std::make_shared<RulesOptions>();
  command = AddSubcommand(group, name, description);
  command->callback([options, &action, work, asks] {
    action = [options, work, asks] {
      if (asks && !CanConfirm(options->Yes)) return exit_status::WrongUsage;
      return RunUnattendedCommand(options->Store,
                                  [&](startup::Context& context) { return work(context, *options); });
    };
  });
  AddStoreOption(*command, options->Store);
  command->add_option("QUELLE", options->Source, "Archiv, dessen Regeln gemeint sind")
      ->required()
      ->type_name("");
  if (asks) command->add_flag("--yes", options->Yes, "Nicht nachfragen");
  return options;
}

void AddRuleOption(CLI::App& command, RulesOptions& options) {
  command
      .add_option("--rule", options.Rules,
                  "Name oder Nummer einer Regel (siehe rules list), mehrfach möglich; sonst alle")
      ->type_name("REGEL")
      ->allow_extra_args(false);
}

void AddRuleTransfer(CLI::App& group, Action& action, CopyMode mode) {
  const bool isMove = mode == CopyMode::Move;
  CLI::App* command = nullptr;
  const auto options = AddCommand(
      group, action, isMove ? "move" : "copy",
      isMove ? "Regeln in ein anderes Archiv verschieben" : "Regeln in ein anderes Archiv kopieren",
      CopyOrMove, isMove, command);
  options->Copy.Mode = mode;
  command->add_option("ZIEL", options->Target, "Archiv, in das die Regeln kommen")->required()->type_name("");
  AddRuleOption(*command, *options);
  auto* adapt = command->add_flag("--adapt", options->Copy.EnUpdRouteArcs,
                                  "Verteilungsziele an die Umgebung des Zielarchivs anpassen");
  command
      ->add_flag("--create-archives", options->Copy.EnCreateArcs,
                 "Mit --adapt: fehlende Verteilungsziele anlegen")
      ->needs(adapt);
  command->add_flag("--drop-lost", options->Copy.EnDelLostArcs,
                    "Verteilungsziele, die es nicht gibt, weglassen");
}

}  // namespace

void AddRuleCommands(CLI::App& app, Action& action) {
  auto* group = AddSubcommand(app, "rules", "Die Verteilerregeln von Archiven");
  group->require_subcommand(1);
  CLI::App* command = nullptr;
  (void)AddCommand(*group, action, "list", "Regeln mit ihren Nummern zeigen", PrintRules, false,
                   command);  // nothing more to ask for
  AddRuleTransfer(*group, action, CopyMode::Copy);
  AddRuleTransfer(*group, action, CopyMode::Move);
  const auto options = AddCommand(*group, action, "delete", "Regeln löschen", Delete, true, command);
  AddRuleOption(*command, *options);
}

}  // namespace velmora::cli
