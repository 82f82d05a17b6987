#include "mailarchive/export_walk.h"

#include "base/paths.h"
#include "store/errors.h"

namespace velmora::mailarchive {

namespace {

constexpr int EntriesPerCommit = 1000;  // of a move, whose notes grow until then

}  // namespace

ExportWalk::ExportWalk(const ExportContext& context) : context_(context), messages_(context) {}

void ExportWalk::ExportTree(std::string_view archivePath, std::string_view targetDirectory, bool isLink,
                            store::DvArchive* currentArchive) {
  run::Run& run = context_.run;
  if (run.CheckCancel()) return;
  const auto archive = context_.session.Account->GetArchive(archivePath);
  // A path that leads nowhere is passed over; an archive that cannot be read is not.
  if (!archive && archive.error().Number != store::store_error::NotFound)
    LogStoreFailure(archivePath, archive.error());
  if (!archive || (isLink && !context_.options.LinkedArchives)) return;

  const std::string directory = ExportArchive(**archive, targetDirectory, Order::Forward);
  if (!run.CheckCancel()) {
    store::WalkPath path;
    ExportSubArchives((*archive)->ID(), directory, path);
  }
  if (currentArchive != nullptr) DeleteIfMoved(*currentArchive);
  run.frontEnd().status.SetStatusText("");
}

void ExportWalk::ExportSubArchives(std::string_view archiveId, std::string_view targetDirectory,
                                   store::WalkPath& path) {
  run::Run& run = context_.run;
  if (run.CheckCancel()) return;
  const auto archive = context_.session.Account->GetArchive(archiveId);
  if (!archive) return LogStoreFailure(archiveId, archive.error());
  const auto subArchives = (*archive)->SubArchives();
  if (!subArchives) return LogStoreFailure((*archive)->FullPath(), subArchives.error());
  if (!path.Enter(archiveId)) {
    return LogStoreFailure(archiveId,
                           {store::store_error::Damaged, "Der Archivbaum ist zu tief verschachtelt"});
  }

  for (const std::shared_ptr<store::DvArchive>& sub : *subArchives) {
    if (run.CheckCancel()) break;
    const std::string subId = sub->ID();
    const bool isLink = sub->IsShortCut();
    if (isLink && !context_.options.LinkedArchives) continue;
    if (store::IsCircularReference(subId, archiveId, isLink) || path.Contains(subId)) continue;
    // Backwards, so that a move can delete while it walks.
    const std::string directory = ExportArchive(*sub, targetDirectory, Order::Backward);
    if (run.CheckCancel()) break;
    ExportSubArchives(subId, directory, path);
    DeleteIfMoved(*sub);
  }
  if (subArchives->empty()) DeleteIfMoved(**archive);
  path.Leave();
}

std::string ExportWalk::ExportArchive(store::DvArchive& archive, std::string_view targetDirectory,
                                      Order order) {
  run::Run& run = context_.run;
  const std::string path = archive.FullPath();
  const std::string displayName = archive.DisplayName().value_or("");
  ++run.counters.Archives;
  run.frontEnd().progress.SetArchiveText(path);
  const auto entries = archive.GetEntries(context_.options.ItemFilter);
  if (!entries) LogStoreFailure(path, entries.error());

  const std::string directory = MakeDirectory(archive, displayName, targetDirectory);
  run.frontEnd().status.SetStatusText(path);
  if (context_.options.KeepsNotes()) noted_.insert(directory);
  if (entries && (*entries)->Count() > 0) {
    ExportPlace place(context_, archive, directory);
    ExportEntries(place, **entries, order);
    Complete(place);
  }
  return directory;
}

void ExportWalk::Complete(ExportPlace& place) {
  place.Finish();
  if (place.Notes() != nullptr) noted_.insert(place.Directory());
}

bool ExportWalk::CommitStore() {
  sinceCommit_ = 0;
  const Status committed = context_.session.Account->Commit();
  if (!committed) LogStoreFailure(context_.session.ServerName, committed.error());
  return committed.has_value();
}

void ExportWalk::ExportMessage(ExportPlace& place, store::EntryKey key) {
  messages_.ExportMessage(place, key);
  if (place.Notes() == nullptr || ++sinceCommit_ < EntriesPerCommit) return;
  if (CommitStore()) place.Notes()->Settle();
}

void ExportWalk::Commit() {
  if (!CommitStore()) return;
  platform::FileSystem& files = context_.run.fileSystem();
  for (const std::string& directory : noted_) {
    // Notes that stay tell of entries that are gone, which nothing follows from.
    (void)files.DeleteFile(MoveNotes::PathIn(directory), true);
  }
  noted_.clear();
}

void ExportWalk::ExportEntries(ExportPlace& place, store::DvEntries& entries, Order order) {
  run::Run& run = context_.run;
  const int count = entries.Count();
  for (int done = 0; done < count; ++done) {
    if (run.CheckCancel()) return;
    run.frontEnd().progress.SetBar(done, count);
    const int index = order == Order::Forward ? done : count - 1 - done;
    ExportMessage(place, entries.Key(index));
  }
  run.frontEnd().progress.SetBar(count, count);
}

std::string ExportWalk::MakeDirectory(store::DvArchive& archive, std::string_view displayName,
                                      std::string_view targetDirectory) {
  const std::string directory =
      JoinPath(targetDirectory, ExportDirectoryName(context_.options, displayName, archive.ID()));
  // Without a directory each entry logs its own failure, and an existing one is as good.
  (void)context_.run.fileSystem().CreateFolder(directory);
  MarkDirectory(context_, directory, MailArcKind::Sub, archive);
  return directory;
}

void ExportWalk::DeleteIfMoved(store::DvArchive& archive) {
  const bool allowed = context_.options.Mode == CopyMode::Move && context_.options.DeleteArchives &&
                       context_.session.MayDeleteArchives() && !context_.run.CancelRequested();
  if (!allowed) return;
  // No later run comes to the directory of an archive that is gone.
  if (!noted_.empty()) Commit();
  // The store refuses an archive that still holds something, which is what protects what was not exported.
  (void)archive.Delete();
}

void ExportWalk::LogStoreFailure(std::string_view path, const Error& error) {
  context_.run.LogError(path, error.Number, "DvISE-Error " + error.Text, run::Severity::Error);
}

void MarkDirectory(const ExportContext& context, std::string_view directory, MailArcKind kind,
                   store::DvArchive& archive) {
  MarkerTexts texts;
  texts.DisplayName = archive.DisplayName().value_or("");
  texts.FullPath = texts.DisplayName.empty() ? archive.ID() : archive.FullPath();
  texts.DirName = NormalizePath(archive.ID());
  texts.Comment = context.options.Comment;
  texts.CopyRight = context.options.CopyRight;
  // A missing marker shows when the index is built; the messages do not depend on it.
  (void)WriteArchiveMarker(context.run.fileSystem(), directory, kind, texts, false);
}

}  // namespace velmora::mailarchive
