#include "operations/archive_deletion.h"

#include <fmt/core.h>

#include "operations/archive_links.h"
#include "operations/physical_erase.h"
#include "store/archive_entries.h"
#include "store/errors.h"

namespace velmora::operations {
namespace {

using Object = store::Selection::Object;

}  // namespace

void RunStoreDelete(const Operation& operation, const StoreDeleteOptions& options,
                    const store::Selection& selection) {
  run::Run& run = operation.run;
  if (run.CancelRequested()) return;
  if (operation.ClearErrorLog) run.DeleteErrorLog();
  run.ResetRunCounters();
  run.frontEnd().progress.Show("Archive/Messages löschen");
  ArchiveDeletion deletion(operation, options);
  for (const Object& object : selection.Objects) {
    if (run.CheckCancel()) break;
    if (object.kind == Object::Kind::Message) {
      deletion.DeleteMessage(*selection.CurrentArchive, object.Key);
    } else if (operation.session.MayDeleteArchives()) {
      const auto archive = OpenMarkedArchive(operation, selection, object);
      if (archive) {
        deletion.DeleteArchiveTree(**archive, selection.CurrentArchive.get());
      } else {
        LogStoreFailure(run, object.ArchivePath, DeleteVerb, archive.error());
      }
    } else {
      LogStoreFailure(run, object.ArchivePath, DeleteVerb, store::MayNotDeleteArchives());
    }
  }
  CommitStore(operation);
  run.frontEnd().progress.Close();
  TellDeletionErrors(run);
}

void ArchiveDeletion::DeleteMessage(store::DvArchive& archive, store::EntryKey key) {
  const auto entry = archive.GetEntry(key);
  if (!entry) return LogStoreFailure(operation_.run, archive.FullPath(), DeleteVerb, entry.error());
  DeleteEntry(**entry, archive.FullPath());
}

void ArchiveDeletion::DeleteArchiveTree(store::DvArchive& archive, const store::DvArchive* parent) {
  if (operation_.run.CheckCancel()) return;
  if (archive.IsShortCut() && !options_.EnLinkedArcs) {
    if (parent != nullptr) RemoveLink(archive, *parent);
    return;
  }
  const bool hasFilter = store::IsFilterActive(operation_.Scope.ItemFilter, operation_.Scope.InhibitItems);
  // The archive that a link leads to keeps its directory: its own record stands elsewhere.
  if (options_.EnPhysErase && options_.EnDelArchives && !hasFilter && !archive.IsShortCut()) {
    ErasePhysically(archive, parent);
  } else {
    DeleteContent(archive);
  }
}

void ArchiveDeletion::DeleteContent(store::DvArchive& archive) {
  run::Run& run = operation_.run;
  const std::string path = archive.FullPath();
  if (!path_.Enter(archive.ID())) {
    return LogStoreFailure(run, path, DeleteVerb,
                           {store::store_error::Damaged, "Der Archivbaum führt auf sich selbst zurück"});
  }
  run.frontEnd().progress.SetArchiveText(path);
  VisitEntries(operation_, archive, Order::Backward, DeleteVerb,
               [&](store::DvItem& entry) { DeleteEntry(entry, path); });
  if (!run.CheckCancel()) DeleteSubArchives(archive);
  path_.Leave();
  if (run.CheckCancel()) return;
  ++run.counters.Archives;
  if (options_.EnDelArchives) DeleteArchive(archive);
}

void ArchiveDeletion::DeleteSubArchives(store::DvArchive& archive) {
  run::Run& run = operation_.run;
  const auto subArchives = archive.SubArchives();
  if (!subArchives) return LogStoreFailure(run, archive.FullPath(), DeleteVerb, subArchives.error());
  // From the last to the first: no record that is still to go gets another number.
  for (auto sub = subArchives->rbegin(); sub != subArchives->rend() && !run.CheckCancel(); ++sub) {
    const bool isLink = (*sub)->IsShortCut();
    if (isLink && !options_.EnLinkedArcs) {
      if (!options_.EnDelArchives) continue;
      RemoveLink(**sub, archive);
    } else if (store::IsCircularReference((*sub)->ID(), archive.ID(), isLink) ||
               path_.Contains((*sub)->ID())) {
      TellCircle(archive, **sub);
    } else {
      DeleteContent(**sub);
    }
  }
}

void ArchiveDeletion::DeleteEntry(store::DvItem& entry, std::string_view logPath) {
  run::Run& run = operation_.run;
  ++run.counters.Entries;
  const std::string title = TitleOf(entry);
  run.frontEnd().progress.SetItemText(title);
  const Status deleted = entry.Delete();
  if (deleted) {
    ++run.counters.Messages;
  } else if (deleted.error().Number != store::store_error::NotFound) {
    LogStoreFailure(run, fmt::format("{}/{}", logPath, title), DeleteVerb, deleted.error());
  }
}

void ArchiveDeletion::DeleteArchive(store::DvArchive& archive) {
  const Status deleted = archive.Delete();
  if (!deleted) LogStoreFailure(operation_.run, archive.FullPath(), DeleteVerb, deleted.error());
}

void ArchiveDeletion::RemoveLink(store::DvArchive& link, const store::DvArchive& parent) {
  run::Run& run = operation_.run;
  const store::EntryPlace place{parent.ID(), link.ID(), link.DisplayName().value_or("")};
  if (store::RemoveLinkEntry(run, place)) ++run.counters.Links;
}

void ArchiveDeletion::ErasePhysically(store::DvArchive& archive, const store::DvArchive* parent) {
  run::Run& run = operation_.run;
  const std::string path = archive.FullPath();
  run.frontEnd().progress.SetArchiveText(path);
  const Status erased = EraseArchiveDirectories(operation_, archive, parent);
  if (erased) {
    ++run.counters.Archives;
  } else {
    LogStoreFailure(run, path, DeleteVerb, erased.error());
  }
}

void ArchiveDeletion::TellCircle(const store::DvArchive& archive, store::DvArchive& sub) {
  const auto answer = operation_.run.frontEnd().prompts.Question(
      "Zirkulare Referenz",
      fmt::format("Das Subarchive \"{}\" enthält die zirkulare Referenz \"{}\"\r\n"
                  "Bitte entfernen sie diese mit der Funktion \"Zirkulare Archiveinträge entfernen\"\r\n"
                  "im Kontextmenü oder unter \"Extras\" und wiederholen sie die Operation.",
                  archive.FullPath(), sub.DisplayName().value_or("")),
      run::Buttons::OkCancel, run::Answer::Ok);
  if (answer == run::Answer::Cancel) operation_.run.RequestCancel();
}

}  // namespace velmora::operations
