// The export run: archives and messages of the store into a target directory as a mail archive. A move
// deletes what was exported, entry by entry, after its files are safe.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "mailarchive/export_options.h"
#include "mailarchive/format/forms.h"
#include "run/run.h"
#include "store/selection.h"
#include "store/session.h"

namespace velmora::mailarchive {

using ExportSelection = store::Selection;

// All that an export works with; the caller owns each part.
struct ExportContext {
  run::Run& run;
  store::Session& session;
  DesignSet& designs;
  const ExportOptions& options;
  std::string TempDir;           // with "\" at its end
  std::string ProgramDirectory;  // where the launcher of the autorun file lies
};

// The whole run on a selection of the window: log, root marker, objects, index, summary.
void RunExport(ExportContext& context, const ExportSelection& selection, std::string_view targetDirectory);

// Marks the target directory as the root of a mail archive that comes from `archive`; an existing marker
// stays. RunExport does so itself.
void WriteRootMarker(const ExportContext& context, std::string_view targetDirectory,
                     store::DvArchive& archive);

// One archive and what lies below it, into a sub-directory of the target. A path that does not lead to an
// archive ends the call silently. On a move that deletes archives, `currentArchive` (may be null) is asked to
// delete itself at the end; the store refuses while anything is left in it.
void ExportArchiveTree(ExportContext& context, std::string_view archivePath, std::string_view targetDirectory,
                       bool isLink, std::shared_ptr<store::DvArchive> currentArchive);

}  // namespace velmora::mailarchive
