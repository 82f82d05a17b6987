// What commands work with.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "mailarchive/format/forms.h"
#include "operations/archive_copy.h"
#include "operations/file_deletion.h"
#include "operations/rule_copy.h"
#include "panes/commands/busy_state.h"
#include "panes/commands/visibility.h"
#include "panes/dialogs/form_user_info_dialog.h"
#include "panes/dialogs/pattern_dialog.h"
#include "panes/selection.h"
#include "panes/two_panes.h"
#include "startup/process.h"

namespace velmora::panes {

struct CommandContext {
  startup::Context& App;
  TwoPanes& Panes;
  mailarchive::DesignSet& Designs;
  BusyState& Busy;
  FormUserTexts& FormTexts;  // of the runs of this session
  LastPatterns& Patterns;
  operations::StoreCopyOptions StoreChoices{};  // the boxes as the last copy of this session left them

  run::Prompts& prompts() const { return App.prompts(); }
  platform::FileSystem& files() const { return App.fileSystem; }
};

// Where the cursor stands in the active view, and what is marked there.
struct ViewMarks {
  std::optional<std::size_t> CurrentRow;
  SelectionSet Selection;  // empty: nothing marked
};

// The rows that a command acts on, in the order of the list: the marked ones, else the one under the cursor.
// The way up is never among them.
std::vector<std::size_t> RowsToHandle(const Pane& pane, const ViewMarks& marks);
// The messages and archives among them, the rules, and what is marked in the file view.
store::Selection MarkedObjects(const ArchivePane& pane, const ViewMarks& marks);
operations::RuleSelection MarkedRules(const ArchivePane& pane, const ViewMarks& marks);
operations::FileSelection MarkedFiles(const FilePane& pane, const ViewMarks& marks);

// For visibility.h: what the window shows now.
Situation SituationOf(const CommandContext& context, const ViewMarks& marks);

}  // namespace velmora::panes
