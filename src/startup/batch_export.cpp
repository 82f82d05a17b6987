#include "startup/batch_export.h"

#include <fmt/format.h>

#include <memory>
#include <string>

#include "base/paths.h"
#include "mailarchive/content_index.h"
#include "mailarchive/export_place.h"
#include "mailarchive/export_run.h"
#include "run/summary.h"
#include "startup/target_directory.h"
#include "store/errors.h"

namespace velmora::startup {
namespace {

using mailarchive::CopyMode;

std::string_view ModeName(const ControlFile& file) {
  return file.Export.Mode == CopyMode::Move ? "Move" : "Copy";
}

class ArchiveCopyMove {
 public:
  ArchiveCopyMove(BatchRun& batch, std::string target)
      : batch_(batch),
        context_(batch.GetContext()),
        target_(std::move(target)),
        designs_(context_.fileSystem, context_.options.DesignPath, context_.options.ArchiveDesign),
        export_{context_.run,        context_.session,         designs_,
                batch.File().Export, context_.process.TempDir, context_.process.DataDirectory} {
    // Without a readable design file its forms have their default names.
    (void)designs_.LoadDesignSet();
  }

  // All archives of the file; false when none of them could be opened.
  bool Run() {
    context_.run.frontEnd().progress.Show(store::ProgressTitle(batch_.File().Export.Mode));
    bool anyRan = false;
    for (const std::string& path : batch_.File().Archives) {
      if (context_.run.CancelRequested()) {
        break;
      }
      anyRan = RunOne(StripSlash(StripBackslash(path))) || anyRan;
    }
    context_.run.frontEnd().progress.Close();
    return anyRan;
  }
  const std::string& Summary() const { return summary_; }

 private:
  bool RunOne(const std::string& path) {
    const Result<std::shared_ptr<store::DvArchive>> archive = context_.session.Account->GetArchive(path);
    const mailarchive::ExportOptions& options = batch_.File().Export;
    const bool isIndexed = options.MakeIndex && !options.AnyOnly();
    if (!archive) {
      batch_.LogStoreFailure(path, archive.error());
      // Killed between the deletion of its archives and the index, a move leaves the index to its repetition.
      const bool isGone = archive.error().Number == store::store_error::NotFound;
      if (isGone && isIndexed && !indexed_ && options.Mode == CopyMode::Move && options.DeleteArchives) {
        BuildIndex("");
      }
      return false;
    }
    batch_.ResetRunCounters();
    // Asked before a move takes the archive away.
    const std::string displayName = (*archive)->DisplayName().value_or("");
    if (isIndexed) {
      mailarchive::WriteRootMarker(export_, target_, **archive);
    }
    // An archive that is named is meant, also when it is a link.
    mailarchive::ExportArchiveTree(export_, path, target_, false, *archive);
    Summarize(path);
    if (isIndexed && !context_.run.CheckCancel()) {
      BuildIndex(displayName);
    }
    return true;
  }

  void Summarize(const std::string& path) {
    const run::Counters& counters = context_.run.counters;
    summary_ += fmt::format("{} {}\r\n{}{} Fehler(n)\r\n", ModeName(batch_.File()), path,
                            run::SummaryCounts(run::RunKind::MailArchiveExport, counters), counters.Errors);
  }

  // The first time everything below the target; later only what the archive has changed: its own directory,
  // and the target that lists it.
  void BuildIndex(const std::string& displayName) {
    const mailarchive::ExportOptions& options = batch_.File().Export;
    mailarchive::IndexContext index{context_.run, designs_, options.CreateAutorunInf,
                                    context_.process.DataDirectory};
    const std::string own = JoinPath(target_, mailarchive::ExportDirectoryName(options, displayName, ""));
    const bool onlyOwn = indexed_ && !displayName.empty() && context_.fileSystem.FolderExists(own);
    if (onlyOwn) {
      mailarchive::BuildContentIndex(index, own, true, false, options.DateIndexSortedUp);
    }
    mailarchive::BuildContentIndex(index, target_, !onlyOwn, false, options.DateIndexSortedUp);
    indexed_ = true;
  }

  BatchRun& batch_;
  Context& context_;
  std::string target_;
  mailarchive::DesignSet designs_;
  mailarchive::ExportContext export_;
  std::string summary_;
  bool indexed_ = false;
};

// The target without "\" at its end; "" with an entry in the log when the run must not begin.
std::string CheckedTarget(BatchRun& batch) {
  Context& context = batch.GetContext();
  const ControlFile& file = batch.File();
  const bool isNamed = !file.DstDirectory.empty();
  const std::string target = StripBackslash(isNamed ? context.fileSystem.FromUserPath(file.DstDirectory)
                                                    : context.process.CurrentPath);
  if (!context.fileSystem.FolderExists(target)) {
    batch.LogFailure(target, platform::file_error::PathNotFound,
                     "Das Zielverzeichnis existiert nicht oder es bestehen keine Zugriffsrechte");
    return "";
  }
  if (file.Archives.empty()) {
    batch.LogFailure(batch.Name(), batch_error::NoArchive, "Die Steuerdatei nennt kein Quellarchiv");
    return "";
  }
  if (file.Export.Mode == CopyMode::Move && !context.session.MayDeleteArchives()) {
    batch.LogFailure(target, batch_error::NoRight, "Zum Verschieben fehlt das Recht, Archive zu löschen");
    return "";
  }
  if (const Status writable = RequireWritable(context, target); !writable) {
    batch.LogFailure(target, writable.error().Number,
                     "In das Zielverzeichnis kann nicht geschrieben werden, " + writable.error().Text);
    return "";
  }
  if (file.DeleteDst) {
    const std::string reason = isNamed ? ReasonNotToEmpty(context, target, batch.Path())
                                       : "Zum Leeren muss das Zielverzeichnis angegeben sein";
    if (!reason.empty()) {
      batch.LogFailure(target, batch_error::BadTarget, "Das Zielverzeichnis wird nicht geleert. " + reason);
      return "";
    }
  }
  return target;
}

std::string LinesOf(const std::vector<std::string>& texts) {
  std::string lines;
  for (const std::string& text : texts) {
    lines += text + "\r\n";
  }
  return lines;
}

}  // namespace

BatchOutcome RunArchiveCopyMove(BatchRun& batch) {
  const std::string target = CheckedTarget(batch);
  if (target.empty()) {
    return {};
  }
  const ControlFile& file = batch.File();
  if (file.DeleteDst) {
    EmptyTarget(batch.GetContext(), target);
  }
  ArchiveCopyMove run(batch, target);
  const bool anyRan = run.Run();
  batch.SendMail({{"%5", LinesOf(file.Archives)},
                  {"%6", target},
                  {"%7", batch.Name()},
                  {"%8", std::string(ModeName(file))},
                  {"%9", run.Summary()}},
                 "");
  if (!anyRan) {
    return {};
  }
  return {batch.HadErrors() ? exit_status::DoneWithErrors : exit_status::Done, run.Summary()};
}

}  // namespace velmora::startup
