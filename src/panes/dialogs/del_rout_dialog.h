// The dialog DelRoutDialogBox: the rules that are marked in a rule view are deleted.
#pragma once

#include <optional>
#include <string>

#include "operations/rule_copy.h"
#include "run/front_ends.h"

namespace velmora::panes {

class DelRoutDialog {
 public:
  // `mayDelete`: the right to move and delete.
  DelRoutDialog(operations::RuleSelection selection, bool mayDelete);

  // The text under "Fehler" when nothing is marked that this user may delete; "" otherwise.
  std::string NothingMarked() const;
  // "2 Regel(n) löschen aus", the archive, and each rule on a line.
  std::string SourceText() const;

  // The arguments of operations::RunDeleteRules; nothing, after a message, when nothing is marked.
  std::optional<operations::RuleSelection> Ok(run::Prompts& prompts) const;

 private:
  operations::RuleSelection selection_;
  bool mayDelete_;
};

}  // namespace velmora::panes
