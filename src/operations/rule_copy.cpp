#include "operations/rule_copy.h"

#include <fmt/core.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "base/sort_rows.h"
#include "base/text.h"
#include "run/summary.h"
#include "store/errors.h"

namespace velmora::operations {
namespace {

using store::DvRuleData;

// --- Properties. ---

// What a copy takes over, in this order. RouteOnlySubject is not among them: a copied rule has its default.
void CopyProperties(const DvRuleData& from, DvRuleData& to) {
  to.RouteAsCopy = from.RouteAsCopy;
  to.AutoReply = from.AutoReply;
  to.ColorMark = from.ColorMark;
  to.DeleteMessage = from.DeleteMessage;
  to.Enabled = from.Enabled;
  to.ExcludeAttachments = from.ExcludeAttachments;
  to.Forward = from.Forward;
  to.ForwardAs = from.ForwardAs;
  to.ForwardTo = from.ForwardTo;
  to.IncludeAfter = from.IncludeAfter;
  to.IncludeBefore = from.IncludeBefore;
  to.Miscellaneous = from.Miscellaneous;
  to.NewMessage = from.NewMessage;
  to.OnlySubject = from.OnlySubject;
  to.ReplacedSender = from.ReplacedSender;
  to.RouteAlways = from.RouteAlways;
  to.Symbol = from.Symbol;
  to.ValidFrom = from.ValidFrom;
  to.ValidUntil = from.ValidUntil;
}

void CopyConditions(const DvRuleData& from, DvRuleData& to) {
  for (store::DvCondition condition : from.Conditions) {
    // A condition that names no field compares what such a rule compares by default.
    if (condition.object == 0) condition.object = store::tag::ConditionObject;
    to.Conditions.push_back(std::move(condition));
  }
}

bool Distributes(const DvRuleData& rule) {
  return !rule.Forward && !rule.AutoReply && !rule.Miscellaneous && !rule.NewMessage;
}

// --- Targets. ---

bool IsThere(const Operation& operation, const std::string& path) {
  return !path.empty() && operation.session.Account->GetArchive(path).has_value();
}

// The last one left is cleared, not dropped: the list keeps a place.
void DropLostTargets(const Operation& operation, std::vector<std::string>& targets) {
  if (targets.empty()) return;
  std::erase_if(targets, [&](const std::string& path) { return !IsThere(operation, path); });
  if (targets.empty()) targets.emplace_back();
}

// The path with the source's replaced by the target's; a path outside of the source's branch as it is. Up to
// a "/": "/Archive/Anna" is no part of "/Archive/Annabell".
std::string InTargetBranch(std::string_view path, std::string_view source, std::string_view target) {
  std::size_t end = 0;
  do {
    end = std::min(path.find('/', end + 1), path.size());
    if (EqualsFold(path.substr(0, end), source)) return std::string(target) + std::string(path.substr(end));
  } while (end < path.size());
  return std::string(path);
}

std::vector<std::string> TargetsOf(const Operation& operation, const RuleCopyOptions& options,
                                   store::DvArchive& source, store::DvArchive& target,
                                   const DvRuleData& rule) {
  std::vector<std::string> targets = rule.Destinations;
  if (options.EnDelLostArcs) DropLostTargets(operation, targets);
  if (!options.EnUpdRouteArcs) return targets;
  const std::string from = source.FullPath(), to = target.FullPath();
  for (std::string& path : targets) {
    if (path.empty()) continue;
    const auto adapted = AdaptRuleTarget(operation, options, InTargetBranch(path, from, to), rule.Name);
    path = adapted ? adapted->FullPath() : "";
  }
  return targets;
}

// --- One rule. ---

void LogRuleFailure(run::Run& run, std::string_view ruleName, const Error& error) {
  run.LogError(error.Text, std::int64_t{error.Number}, std::string(ruleName), run::Severity::Error);
}

Status CopyRule(const Operation& operation, const RuleCopyOptions& options, store::DvArchive& source,
                store::DvArchive& target, store::DvRule& rule) {
  const DvRuleData& from = rule.Data();
  auto made = target.Rules().Add(from.Name);
  if (!made) return Fail(made.error());
  DvRuleData& to = (*made)->Data();
  CopyProperties(from, to);
  if (Distributes(from)) {
    std::vector<std::string> targets = TargetsOf(operation, options, source, target, from);
    if (targets.empty() || !IsThere(operation, targets.front()))
      return Fail(0, "Regel hat kein Zielarchiv und wird nicht kopiert");
    to.Destinations = std::move(targets);
  }
  CopyConditions(from, to);
  if (const Status stored = (*made)->Update(); !stored) return stored;
  return options.Mode == CopyMode::Move ? rule.Delete() : Status{};
}

// From the highest position down, so that taking one rule away leaves the places of those to come.
std::vector<MarkedRule> FromTheHighest(const std::vector<MarkedRule>& rules) {
  std::vector<int> positions;
  std::ranges::transform(rules, std::back_inserter(positions), &MarkedRule::Position);
  const std::vector<std::uint32_t> ascending = SortRows(positions, true);
  std::vector<MarkedRule> ordered;
  for (auto place = ascending.rbegin(); place != ascending.rend(); ++place) {
    if (ordered.empty() || ordered.back().Position != rules[*place].Position)
      ordered.push_back(rules[*place]);
  }
  return ordered;
}

// Calls `handle` for each marked rule until a cancel, and logs what failed.
template <typename Handle>
void VisitRules(const Operation& operation, store::DvArchive& archive, const std::vector<MarkedRule>& marked,
                Handle handle) {
  run::Run& run = operation.run;
  run.frontEnd().progress.SetArchiveText(archive.FullPath());
  const std::vector<MarkedRule> rules = FromTheHighest(marked);
  std::int64_t done = 0;
  for (const MarkedRule& one : rules) {
    if (run.CheckCancel()) return;
    ++run.counters.Rules;
    run.frontEnd().progress.SetItemText(one.Name);
    run.frontEnd().progress.SetBar(done++, static_cast<std::int64_t>(rules.size()));
    const auto rule = FindMarkedRule(archive, one);
    const Status handled = rule ? handle(**rule) : Fail(rule.error());
    if (!handled) LogRuleFailure(run, one.Name, handled.error());
  }
  run.frontEnd().progress.SetBar(done, done);
}

}  // namespace

Result<std::unique_ptr<store::DvRule>> FindMarkedRule(store::DvArchive& archive, const MarkedRule& marked) {
  auto rule = archive.Rules().Item(marked.Position);
  if (rule && (*rule)->Data().Name != marked.Name) {
    return Fail(store::store_error::NotFound,
                fmt::format("An dieser Stelle steht inzwischen die Regel \"{}\"", (*rule)->Data().Name));
  }
  return rule;
}

bool IsSameArchiveBranch(std::string_view source, std::string_view target) {
  return IsRecursiveCopy(source, target);
}

std::shared_ptr<store::DvArchive> AdaptRuleTarget(const Operation& operation, const RuleCopyOptions& options,
                                                  std::string_view rulePath, std::string_view ruleName) {
  store::DvAccount& account = *operation.session.Account;
  // Archives that only lead on need no rights when the last one can be had.
  if (auto whole = account.GetArchive(rulePath)) return *whole;
  std::shared_ptr<store::DvArchive> reached;
  std::string walked;
  for (const std::string& component : Split(Trim(rulePath), "/")) {
    if (component.empty()) continue;
    walked += "/" + component;
    auto next = account.GetArchive(walked);
    const bool isMissing = !next && next.error().Number == store::store_error::NotFound;
    if (isMissing && reached && options.EnCreateArcs) {
      next = reached->CreateSubArchive(component);
      if (!next) LogRuleFailure(operation.run, ruleName, next.error());
    }
    if (!next) return nullptr;
    reached = std::move(*next);
  }
  return reached;
}

void CopyRules(const Operation& operation, const RuleCopyOptions& options, store::DvArchive& source,
               store::DvArchive& target, const std::vector<MarkedRule>& rules) {
  VisitRules(operation, source, rules,
             [&](store::DvRule& rule) { return CopyRule(operation, options, source, target, rule); });
}

// --- The runs. ---

void RunRuleCopy(const Operation& operation, const RuleCopyOptions& options, const RuleSelection& selection,
                 const std::shared_ptr<store::DvArchive>& target) {
  run::Run& run = operation.run;
  if (run.CancelRequested()) return;
  if (operation.ClearErrorLog) run.DeleteErrorLog();
  run.ResetRunCounters();
  const std::string source = selection.Archive->ID();
  if (IsSameArchiveBranch(source, target->ID()) && IsSameArchiveBranch(target->ID(), source)) {
    TellRecursiveCopy(run, source, target->ID());
    return;
  }
  const bool isMove = options.Mode == CopyMode::Move;
  run.frontEnd().progress.Show(isMove ? "Regeln verschieben" : "Regeln kopieren");
  if (!isMove || operation.session.MayDeleteArchives()) {
    CopyRules(operation, options, *selection.Archive, *target, selection.Rules);
  } else {
    LogStoreFailure(run, selection.Archive->FullPath(), DeleteVerb,
                    {store::store_error::NoAccess, "Das Recht zum Löschen fehlt"});
  }
  CommitStore(operation);
  run.frontEnd().progress.Close();
  run::ShowRunSummary(run, run::RunKind::RuleCopy);
}

void RunDeleteRules(const Operation& operation, const RuleSelection& selection) {
  run::Run& run = operation.run;
  if (run.CancelRequested()) return;
  if (operation.ClearErrorLog) run.DeleteErrorLog();
  run.ResetRunCounters();
  run.frontEnd().progress.Show("Regeln löschen");
  if (operation.session.MayDeleteArchives()) {
    VisitRules(operation, *selection.Archive, selection.Rules,
               [](store::DvRule& rule) { return rule.Delete(); });
  } else {
    LogStoreFailure(run, selection.Archive->FullPath(), DeleteVerb,
                    {store::store_error::NoAccess, "Das Recht zum Löschen fehlt"});
  }
  CommitStore(operation);
  run.frontEnd().progress.Close();
  TellDeletionErrors(run);
}

}  // namespace velmora::operations
