#include "operations/archive_copy.h"

#include <fmt/core.h>

#include <array>
#include <utility>

#include "base/paths.h"
#include "operations/archive_links.h"
#include "run/summary.h"
#include "store/archive_entries.h"
#include "store/archive_key.h"
#include "store/errors.h"

namespace velmora::operations {
namespace {

using Object = store::Selection::Object;

constexpr std::array<std::string_view, 3> PropertyMasks{"*.ini", "*.srt", "*.wav"};
constexpr std::string_view RuleMask = "*.urt";
// Marks an entry as a copy that was made here; the server takes it from its archive at the next look.
constexpr std::int64_t CopyMark = 1;

// Where an archive's own record stands, also when it was reached over a link.
Result<store::EntryPlace> OwnPlace(store::DvAccount& account, store::DvArchive& archive,
                                   const store::DvArchive* parent) {
  if (parent != nullptr && !archive.IsShortCut())
    return store::EntryPlace{parent->ID(), archive.ID(), archive.DisplayName().value_or("")};
  const auto own = account.GetArchive(archive.ID());
  if (!own) return Fail(own.error());
  const auto around = store::FindParentArchive(account, **own);
  if (!around && around.error().Number != store::store_error::NotFound) return Fail(around.error());
  return store::EntryPlace{around ? (*around)->ID() : "", (*own)->ID(), (*own)->DisplayName().value_or("")};
}

Status SetProperties(store::DvArchive& source, store::DvArchive& made) {
  const auto displayType = source.DisplayType();
  if (!displayType) return Fail(displayType.error());
  if (const Status set = made.SetDisplayType(*displayType); !set) return set;
  const auto hidden = source.Hidden();
  if (!hidden) return Fail(hidden.error());
  if (const Status set = made.SetHidden(*hidden); !set) return set;
  return made.Update();
}

}  // namespace

bool IsRecursiveCopy(std::string_view sourceId, std::string_view targetId) {
  return IsSameOrBelow(NormalizePath(targetId), NormalizePath(sourceId));
}

void TellRecursiveCopy(run::Run& run, std::string_view sourceId, std::string_view targetId) {
  run.frontEnd().prompts.Message(
      "Rekursive Kopie",
      fmt::format("{}\r\n\r\nkann nicht auf oder in sich selbst nach \r\n\r\n{}\r\n\r\nkopiert oder "
                  "verschoben werden",
                  sourceId, targetId),
      run::Icon::Stop);
}

std::string KeepDirectoryName(run::Run& run, std::string_view sourceId, std::string_view targetId) {
  const std::string source = StripBackslash(NormalizePath(sourceId));
  const std::string_view name = FileNameOf(source);
  if (!run.fileSystem().FolderExists(JoinPath(NormalizePath(targetId), name)))
    return fmt::format("{{{}}}", name);
  // "Verzeichnissnamens" is deliberate: users know the text so.
  run.frontEnd().prompts.Message(
      "Doppelter Verzeichnisname",
      "Es existiert bereits ein Archiv mit gleichem Verzeichnisnamen.\r\n"
      "Die Beibehaltung des Verzeichnissnamens wird für dieses Archiv abgeschaltet.",
      run::Icon::Exclamation);
  return {};
}

// --- The run. ---

void RunStoreCopy(const Operation& operation, const StoreCopyOptions& options,
                  const store::Selection& selection, const std::shared_ptr<store::DvArchive>& target) {
  run::Run& run = operation.run;
  if (run.CancelRequested()) return;
  if (operation.ClearErrorLog) run.DeleteErrorLog();
  run.ResetRunCounters();
  const bool isMove = options.Mode == CopyMode::Move;
  run.frontEnd().progress.Show(store::ProgressTitle(options.Mode));
  ArchiveCopy copy(operation, options);
  SameNames names(*target);
  for (const Object& object : selection.Objects) {
    if (run.CheckCancel()) break;
    if (object.kind == Object::Kind::Message) {
      if (!options.EnCopyOnlyArcs) copy.CopyMessage(*selection.CurrentArchive, object.Key, *target);
    } else if (!isMove || operation.session.MayDeleteArchives()) {
      const auto source = OpenMarkedArchive(operation, selection, object);
      if (source) {
        copy.CopyArchiveTree(**source, selection.CurrentArchive.get(), *target, names);
      } else {
        LogStoreFailure(run, object.ArchivePath, CopyVerb, source.error());
      }
    } else {
      LogStoreFailure(run, object.ArchivePath, CopyVerb, store::MayNotDeleteArchives());
    }
  }
  CommitStore(operation);
  run.frontEnd().progress.Close();
  run::ShowRunSummary(run, run::RunKind::ArchiveCopy);
}

void ArchiveCopy::CopyArchiveTree(std::string_view sourcePath, std::string_view targetPath) {
  const auto source = operation_.session.Account->GetArchive(sourcePath);
  if (!source) return LogStoreFailure(operation_.run, sourcePath, CopyVerb, source.error());
  const auto target = operation_.session.Account->GetArchive(targetPath);
  if (!target) return LogStoreFailure(operation_.run, targetPath, CopyVerb, target.error());
  SameNames names(**target);
  CopyArchiveTree(**source, nullptr, **target, names);
}

// --- Archives. ---

void ArchiveCopy::CopyArchiveTree(store::DvArchive& source, const store::DvArchive* parent,
                                  store::DvArchive& target, SameNames& names) {
  if (operation_.run.CheckCancel()) return;
  if (IsRecursiveCopy(source.ID(), target.ID())) {
    TellRecursiveCopy(operation_.run, source.ID(), target.ID());
    return;
  }
  if (source.IsShortCut() && !options_.EnLinkedArcs) {
    if (parent != nullptr) CopyLink(source, *parent, target);
    return;
  }
  NoteTarget(target);
  CopyContent(source, parent, target, names);
}

void ArchiveCopy::CopyContent(store::DvArchive& source, const store::DvArchive* parent,
                              store::DvArchive& target, SameNames& names) {
  run::Run& run = operation_.run;
  const std::string path = source.FullPath();
  if (TakesContent(source)) {
    return run.LogError(path, std::int64_t{0}, "Ziel dieses Laufs, wird nicht in sich selbst kopiert",
                        run::Severity::Warning);
  }
  if (source.IsShortCut()) {
    // What a link leads to may have gone, also earlier in this run.
    const auto linked = operation_.session.Account->GetArchive(source.ID());
    if (!linked) return LogStoreFailure(run, path, CopyVerb, linked.error());
  }
  if (!path_.Enter(source.ID())) {
    return LogStoreFailure(run, path, CopyVerb,
                           {store::store_error::Damaged, "Der Archivbaum führt auf sich selbst zurück"});
  }
  ++run.counters.Archives;
  const std::string name = source.DisplayName().value_or("");
  run.frontEnd().progress.SetArchiveText(path);

  Made made{options_.EnDblArcNames ? names.FindSameNameArchive(name) : nullptr};
  if (!made.Archive) {
    made = MakeTarget(source, parent, name, target);
    if (made.Archive) names.Add(name, made.Archive);
  }
  if (made.Archive && store::ArchiveKey(made.Archive->ID()) == store::ArchiveKey(source.ID())) {
    run.LogError(path, std::int64_t{0}, "Quelle und Ziel sind dasselbe Archiv", run::Severity::Warning);
  } else if (made.Archive) {
    NoteTarget(*made.Archive);
    if (!options_.EnCopyOnlyArcs) CopyEntries(source, *made.Archive);
    if (!run.CheckCancel()) CopySubArchives(source, *made.Archive);
    if (DeletesSources()) {
      if (made.IsWhole) {
        DeleteMoved(source);
      } else {
        run.LogError(path, std::int64_t{0},
                     "Nicht alle Eigenschaften, Dateien und Regeln sind übertragen; das Archiv bleibt stehen",
                     run::Severity::Warning);
      }
    }
  }
  path_.Leave();
}

void ArchiveCopy::CopySubArchives(store::DvArchive& source, store::DvArchive& target) {
  run::Run& run = operation_.run;
  const auto subArchives = source.SubArchives();
  if (!subArchives) return LogStoreFailure(run, source.FullPath(), CopyVerb, subArchives.error());
  if (subArchives->empty()) return;
  SameNames names(target);
  for (const ArchivePointer& sub : *subArchives) {
    if (run.CheckCancel()) return;
    const bool isLink = sub->IsShortCut();
    if (isLink && !options_.EnLinkedArcs) {
      CopyLink(*sub, source, target);
    } else if (!store::IsCircularReference(sub->ID(), source.ID(), isLink) && !path_.Contains(sub->ID())) {
      CopyContent(*sub, &source, target, names);
    }
  }
}

ArchiveCopy::Made ArchiveCopy::MakeTarget(store::DvArchive& source, const store::DvArchive* parent,
                                          std::string_view name, store::DvArchive& target) {
  const std::string directory =
      options_.EnSaveOrgArcs ? KeepDirectoryName(operation_.run, source.ID(), target.ID()) : "";
  auto made = target.CreateSubArchive(std::string(name) + directory);
  if (!made) {
    LogStoreFailure(operation_.run, source.FullPath() + "->" + target.FullPath(), CopyVerb, made.error());
    return {};
  }
  // Braces in a name were taken for a directory's.
  if ((*made)->DisplayName().value_or("") != name) {
    Status named = (*made)->SetDisplayName(name);
    if (named) named = (*made)->Update();
    if (!named) LogStoreFailure(operation_.run, source.FullPath(), CopyVerb, named.error());
  }
  bool isWhole = true;
  if (options_.EnCpyProp) isWhole = CopyProperties(source, parent, **made, target);
  if (options_.EnRoutings) isWhole = CopyFiles(source, **made, RuleMask) && isWhole;
  return {std::move(*made), isWhole};
}

bool ArchiveCopy::CopyProperties(store::DvArchive& source, const store::DvArchive* parent,
                                 store::DvArchive& made, const store::DvArchive& target) {
  const Status set = SetProperties(source, made);
  if (!set) LogStoreFailure(operation_.run, source.FullPath(), CopyVerb, set.error());
  bool isWhole = set.has_value();
  for (const std::string_view mask : PropertyMasks) isWhole = CopyFiles(source, made, mask) && isWhole;
  const auto place = OwnPlace(*operation_.session.Account, source, parent);
  if (!place) LogStoreFailure(operation_.run, source.FullPath(), CopyVerb, place.error());
  const store::EntryPlace madePlace{target.ID(), made.ID(), ""};
  return place && store::RepairArchiveDirRecord(operation_.run, *place, madePlace) && isWhole;
}

// A failure is not logged; a move then leaves the source, and says so.
bool ArchiveCopy::CopyFiles(store::DvArchive& source, store::DvArchive& made, std::string_view mask) {
  platform::FileSystem& files = operation_.run.fileSystem();
  const std::string from = NormalizePath(source.ID()), to = NormalizePath(made.ID());
  const auto found = files.List(from, mask, platform::ListWhat::Files);
  bool isWhole = found.has_value();
  for (const platform::FileEntry& file : found.value_or(std::vector<platform::FileEntry>())) {
    const std::string copy = JoinPath(to, file.Name);
    if (files.CopyFile(JoinPath(from, file.Name), copy)) continue;
    isWhole = false;
    (void)files.DeleteFile(copy, true);  // half a file would pass for a damaged one
  }
  return isWhole;
}

void ArchiveCopy::DeleteMoved(store::DvArchive& source) {
  // The store refuses an archive that still holds something: what was not moved stays.
  const Status deleted = source.Delete();
  if (!deleted) LogStoreFailure(operation_.run, source.FullPath(), DeleteVerb, deleted.error());
}

bool ArchiveCopy::DeletesSources() const {
  return options_.Mode == CopyMode::Move && options_.EnDelArchives &&
         operation_.session.MayDeleteArchives() && !operation_.run.CancelRequested();
}

bool ArchiveCopy::TakesContent(const store::DvArchive& archive) const {
  return targets_.contains(store::ArchiveKey(archive.ID()));
}

void ArchiveCopy::NoteTarget(const store::DvArchive& archive) {
  targets_.insert(store::ArchiveKey(archive.ID()));
}

// --- Links. ---

void ArchiveCopy::CopyLink(store::DvArchive& link, const store::DvArchive& parent, store::DvArchive& target) {
  run::Run& run = operation_.run;
  const store::EntryPlace place{parent.ID(), link.ID(), link.DisplayName().value_or("")};
  if (!store::CopyLinkEntry(run, place, target)) return;
  ++run.counters.Links;
  if (DeletesSources()) DeleteMoved(link);
}

// --- Entries. ---

void ArchiveCopy::CopyMessage(store::DvArchive& source, store::EntryKey key, store::DvArchive& target) {
  const auto entry = source.GetEntry(key);
  if (!entry) return LogStoreFailure(operation_.run, source.FullPath(), CopyVerb, entry.error());
  CopyEntry(**entry, target, source.FullPath());
}

void ArchiveCopy::CopyEntries(store::DvArchive& source, store::DvArchive& target) {
  const std::string path = source.FullPath();
  VisitEntries(operation_, source, Order::Forward, CopyVerb,
               [&](store::DvItem& entry) { CopyEntry(entry, target, path); });
}

void ArchiveCopy::CopyEntry(store::DvItem& entry, store::DvArchive& target, std::string_view logPath) {
  run::Run& run = operation_.run;
  ++run.counters.Entries;
  const std::string title = TitleOf(entry);
  run.frontEnd().progress.SetItemText(title);
  // An entry without the mark is as good.
  (void)entry.Fields().Set(store::tag::CopyMarker, CopyMark);
  const Status copied = entry.CopyTo(target, options_.Mode == CopyMode::Move);
  if (copied) {
    ++run.counters.Messages;
  } else if (operation_.session.IsAdministrator()) {
    LogStoreFailure(run, fmt::format("{}/{}->{}", logPath, title, target.FullPath()), CopyVerb,
                    copied.error());
  } else {
    ++run.counters.Errors;
  }
}

}  // namespace velmora::operations
