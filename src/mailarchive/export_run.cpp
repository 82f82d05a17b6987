#include "mailarchive/export_run.h"

#include "mailarchive/content_index.h"
#include "mailarchive/export_walk.h"
#include "run/summary.h"

namespace velmora::mailarchive {

namespace {

using Object = ExportSelection::Object;

bool MayExportArchives(const ExportContext& context) {
  return context.options.Mode == CopyMode::Copy || context.session.MayDeleteArchives();
}

void ExportObjects(const ExportContext& context, const ExportSelection& selection,
                   std::string_view targetDirectory) {
  ExportWalk walk(context);
  ExportPlace place(context, *selection.CurrentArchive, targetDirectory);
  for (const Object& object : selection.Objects) {
    if (object.kind == Object::Kind::Message) {
      walk.ExportMessage(place, object.Key);
    } else if (MayExportArchives(context)) {
      walk.ExportTree(object.ArchivePath, targetDirectory, object.IsLink, selection.CurrentArchive.get());
    }
    if (context.run.CheckCancel()) break;
  }
  walk.Complete(place);
  walk.Commit();
}

}  // namespace

void RunExport(ExportContext& context, const ExportSelection& selection, std::string_view targetDirectory) {
  run::Run& run = context.run;
  const ExportOptions& options = context.options;
  if (run.CancelRequested()) return;
  if (options.ClearErrorLog) run.DeleteErrorLog();
  context.designs.ForgetTexts();
  run::Progress& progress = run.frontEnd().progress;
  run.ResetRunCounters();
  progress.Show(store::ProgressTitle(options.Mode));
  if (!options.AnyOnly()) WriteRootMarker(context, targetDirectory, *selection.CurrentArchive);
  ExportObjects(context, selection, targetDirectory);
  if (options.MakeIndex && !options.AnyOnly() && !run.CheckCancel()) {
    IndexContext index{run, context.designs, options.CreateAutorunInf, context.ProgramDirectory};
    BuildContentIndex(index, targetDirectory, true, false, options.DateIndexSortedUp);
  }
  progress.Close();
  run::ShowRunSummary(run, run::RunKind::MailArchiveExport);
}

void WriteRootMarker(const ExportContext& context, std::string_view targetDirectory,
                     store::DvArchive& archive) {
  MarkDirectory(context, targetDirectory, MailArcKind::Root, archive);
}

void ExportArchiveTree(ExportContext& context, std::string_view archivePath, std::string_view targetDirectory,
                       bool isLink, std::shared_ptr<store::DvArchive> currentArchive) {
  if (!MayExportArchives(context)) {
    context.run.LogError(archivePath, store::MayNotDeleteArchives());
    return;
  }
  context.designs.ForgetTexts();
  ExportWalk walk(context);
  walk.ExportTree(archivePath, targetDirectory, isLink, currentArchive.get());
  walk.Commit();
}

}  // namespace velmora::mailarchive
