// Copying, moving and deleting the routing rules of archives.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "operations/archive_copy.h"
#include "operations/operation.h"

namespace velmora::operations {

// The names are those of the dialog's check boxes.
struct RuleCopyOptions {
  CopyMode Mode = CopyMode::Copy;
  bool EnUpdRouteArcs = false;  // targets within the source's branch become those of the target's branch
  bool EnCreateArcs = false;    // with EnUpdRouteArcs: missing ones are made
  bool EnDelLostArcs = false;   // targets that no archive stands for are left out
};

struct MarkedRule {
  int Position = 0;  // in DvRules, from 0
  // As it was listed: what stands at the position by now may be another rule, which is then left alone.
  std::string Name;
};

// The rule at its position; NotFound when another one stands there by now.
Result<std::unique_ptr<store::DvRule>> FindMarkedRule(store::DvArchive& archive, const MarkedRule& marked);

// Rules as a pane lists them. The archive itself, not its path: another archive may bear the same path.
struct RuleSelection {
  std::shared_ptr<store::DvArchive> Archive;
  std::vector<MarkedRule> Rules;
};

// The whole run on marked rules: log, progress, rules, summary. A target that is the source itself is refused
// with a box.
void RunRuleCopy(const Operation& operation, const RuleCopyOptions& options, const RuleSelection& selection,
                 const std::shared_ptr<store::DvArchive>& target);

// Rebuilds the rules in the target, from the highest position down: there they stand in reversed order. A
// move takes each rule out of the source once the new one is stored. A rule that distributes into archives
// and has no target left is logged and not copied.
void CopyRules(const Operation& operation, const RuleCopyOptions& options, store::DvArchive& source,
               store::DvArchive& target, const std::vector<MarkedRule>& rules);

// The archive under a path of the tree; with EnCreateArcs what is missing on the way is made. Null when there
// is none, failures of making one are logged under the name of the rule.
std::shared_ptr<store::DvArchive> AdaptRuleTarget(const Operation& operation, const RuleCopyOptions& options,
                                                  std::string_view rulePath, std::string_view ruleName);

// Whether the archive with the ID `target` is the one with the ID `source` or lies below it.
bool IsSameArchiveBranch(std::string_view source, std::string_view target);

// The whole run that deletes marked rules, from the highest position down; a box tells of failures.
void RunDeleteRules(const Operation& operation, const RuleSelection& selection);

}  // namespace velmora::operations
