// `velmoractl copy`, `move` and `delete`: what the window does to marked archives and messages.

#include <fmt/core.h>

#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "base/text.h"
#include "cli/commands.h"
#include "cli/confirmation.h"
#include "cli/exit_status.h"
#include "cli/output.h"
#include "cli/unattended_command.h"
#include "operations/archive_copy.h"
#include "operations/archive_deletion.h"
#include "run/summary.h"
#include "store/errors.h"

namespace velmora::cli {
namespace {

using operations::CopyMode;
using operations::Operation;
using store::DvArchive;
using store::Selection;
using Object = Selection::Object;
using ArchivePointer = std::shared_ptr<DvArchive>;

struct ArchiveCommandOptions {
  std::string Store;
  std::vector<std::string> Sources;
  std::string Target;  // of a copy or move: the last one of those that were named
  std::vector<store::EntryKey> Keys;
  bool Messages = false;
  bool Yes = false;
  operations::StoreCopyOptions Copy;
  operations::StoreDeleteOptions Delete;
};

// --- What is named. ---

// The archives of the command line: nothing runs unless all of them are there.
class NamedArchives {
 public:
  NamedArchives(startup::Context& context, const std::vector<std::string>& paths) : context_(context) {
    for (const std::string& path : paths) Open(path);
  }
  bool AreThere() const { return areThere_; }
  const std::vector<ArchivePointer>& All() const { return archives_; }

 private:
  void Open(const std::string& path) {
    auto archive = context_.session.Account->GetArchive(path);
    if (archive) return archives_.push_back(*std::move(archive));
    areThere_ = false;
    Report(context_, path, archive.error());
  }

  startup::Context& context_;
  std::vector<ArchivePointer> archives_;
  bool areThere_ = true;
};

bool IsRoot(startup::Context& context, const DvArchive& archive) {
  const auto root = context.session.Account->GetSpecialArchive(store::special::ArchiveRoot);
  return root && EqualsFold((*root)->ID(), archive.ID());
}

// The selection of a pane that shows the list in which a link stands. Without that list nothing is selected:
// an archive that a link leads to must never be taken for the link.
Selection LinkSelection(startup::Context& context, DvArchive& link) {
  const std::string path = link.FullPath();
  auto parent = context.session.Account->GetArchive(path.substr(0, path.rfind('/')));
  if (!parent) {
    Report(context, path, parent.error());
    return {};
  }
  return {*std::move(parent), {{Object::Kind::Archive, 0, link.ID(), true, link.DisplayName().value_or("")}}};
}

Selection MessageSelection(const Operation& operation, const ArchivePointer& archive) {
  Selection selection{archive, {}};
  operations::VisitEntries(operation, *archive, operations::Order::Forward, "", [&](store::DvItem& entry) {
    selection.Objects.push_back({Object::Kind::Message, entry.Key(), "", false});
  });
  return selection;
}

// One selection per list in which something is marked: archives that stand for themselves in one.
std::vector<Selection> SelectionsOf(startup::Context& context, const Operation& operation,
                                    const ArchiveCommandOptions& options,
                                    const std::vector<ArchivePointer>& sources) {
  std::vector<Selection> selections;
  Selection archives;
  for (const ArchivePointer& source : sources) {
    if (!options.Keys.empty()) {
      Selection entries{source, {}};
      for (const store::EntryKey key : options.Keys)
        entries.Objects.push_back({Object::Kind::Message, key, "", false});
      selections.push_back(std::move(entries));
    } else if (options.Messages) {
      selections.push_back(MessageSelection(operation, source));
    } else if (source->IsShortCut()) {
      selections.push_back(LinkSelection(context, *source));
    } else {
      archives.Objects.push_back({Object::Kind::Archive, 0, source->ID(), false});
    }
  }
  if (!archives.Objects.empty()) selections.push_back(std::move(archives));
  return selections;
}

// --- The runs. ---

// Runs the selections one after the other and adds up what they counted.
template <typename RunOne>
run::Counters RunAll(startup::Context& context, const std::vector<Selection>& selections, RunOne runOne) {
  run::Counters total = context.run.counters;
  for (const Selection& selection : selections) {
    runOne(selection);
    const run::Counters& counters = context.run.counters;
    total.Archives += counters.Archives;
    total.Messages += counters.Messages;
    total.Entries += counters.Entries;
    total.Links += counters.Links;
    total.Errors += counters.Errors;
    if (context.run.CancelRequested()) break;
  }
  return total;
}

std::string PathsText(const std::vector<ArchivePointer>& archives) {
  std::vector<std::string> paths;
  for (const ArchivePointer& archive : archives)
    paths.push_back(BlankControlCharacters(archive->FullPath()) +
                    (archive->IsShortCut() ? " (Verknüpfung)" : ""));
  return Join(paths, "\r\n");
}

// Sources that are told and stop the command: the root, and links whose messages are meant.
bool AreSources(startup::Context& context, const ArchiveCommandOptions& options, bool followsLinks,
                const std::vector<ArchivePointer>& sources) {
  const bool wantsMessages = options.Messages || !options.Keys.empty();
  for (const ArchivePointer& source : sources) {
    if (IsRoot(context, *source)) {
      Report(context, source->FullPath(),
             {store::store_error::Protected, "Die Wurzel des Archivbaums ist keine Quelle"});
      return false;
    }
    if (wantsMessages && source->IsShortCut() && !followsLinks) {
      Report(context, source->FullPath(),
             {store::store_error::WrongKind,
              "Das ist eine Verknüpfung; --follow-links meint das Archiv, auf das sie zeigt"});
      return false;
    }
  }
  return true;
}

startup::BatchOutcome CopyOrMove(startup::Context& context, const ArchiveCommandOptions& options) {
  const NamedArchives named(context, options.Sources), targets(context, {options.Target});
  const std::vector<ArchivePointer>& sources = named.All();
  if (!named.AreThere() || !targets.AreThere() ||
      !AreSources(context, options, options.Copy.EnLinkedArcs, sources))
    return NotBegun();
  ArchivePointer target = targets.All().front();
  if (target->IsShortCut()) {
    // What goes into a link goes into the archive that it leads to.
    const auto behind = context.session.Account->GetArchive(target->ID());
    if (behind) target = *behind;
  }
  const bool deletes = options.Copy.Mode == CopyMode::Move && options.Copy.EnDelArchives;
  if (deletes && !Confirm(context.prompts(), options.Yes, "Verschieben",
                          PathsText(sources) + "\r\nmit der Archivstruktur verschieben?"))
    return NotBegun();

  const Operation operation = OperationIn(context);
  const std::int64_t start = context.clock.SteadyMilliseconds();
  run::Counters total =
      RunAll(context, SelectionsOf(context, operation, options, sources), [&](const Selection& selection) {
        operations::RunStoreCopy(operation, options.Copy, selection, target);
      });
  // A refused copy into itself is told in a box, not counted.
  for (const ArchivePointer& source : sources) {
    const bool isContent = !source->IsShortCut() || options.Copy.EnLinkedArcs;
    if (options.Keys.empty() && !options.Messages && isContent &&
        operations::IsRecursiveCopy(source->ID(), target->ID()))
      ++total.Errors;
  }
  const std::int64_t seconds = (context.clock.SteadyMilliseconds() - start) / 1000;
  return OutcomeOf(total.Errors, run::RunSummaryText(run::RunKind::ArchiveCopy, total, seconds) + "\r\n");
}

startup::BatchOutcome Delete(startup::Context& context, const ArchiveCommandOptions& options) {
  const NamedArchives named(context, options.Sources);
  if (!named.AreThere() || !AreSources(context, options, options.Delete.EnLinkedArcs, named.All()))
    return NotBegun();
  const std::string what = !options.Keys.empty() ? fmt::format("{} Einträge aus ", options.Keys.size())
                           : options.Messages    ? "Alle Nachrichten aus "
                           : options.Delete.EnDelArchives
                               ? "Mit Inhalt und Unterarchiven: "
                               : "Alle Nachrichten, auch die der Unterarchive, aus ";
  const std::string links = options.Delete.EnLinkedArcs ? "\r\nauch aus verknüpften Archiven" : "";
  if (!Confirm(context.prompts(), options.Yes, "Löschen",
               what + "\r\n" + PathsText(named.All()) + links + "\r\nwirklich löschen?"))
    return NotBegun();

  const Operation operation = OperationIn(context);
  const run::Counters total = RunAll(
      context, SelectionsOf(context, operation, options, named.All()),
      [&](const Selection& selection) { operations::RunStoreDelete(operation, options.Delete, selection); });
  return OutcomeOf(total.Errors,
                   fmt::format("{}mit {} Fehler(n) gelöscht\r\n",
                               run::SummaryCounts(run::RunKind::ArchiveCopy, total), total.Errors));
}

// --- The command line. ---

bool CheckKeys(const ArchiveCommandOptions& options) {
  if (options.Keys.empty() || (options.Sources.size() == 1 && !options.Messages)) return true;
  PrintError("--key gilt für genau ein Archiv und nicht zusammen mit --messages");
  return false;
}

int RunCopyOrMove(ArchiveCommandOptions options) {
  if (options.Sources.size() < 2) {
    PrintError("Es fehlt eine Angabe: Erwartet werden Quellen und das Zielarchiv");
    return exit_status::WrongUsage;
  }
  options.Target = std::move(options.Sources.back());
  options.Sources.pop_back();
  if (!CheckKeys(options)) return exit_status::WrongUsage;
  const bool asks = options.Copy.Mode == CopyMode::Move && options.Copy.EnDelArchives;
  if (asks && !CanConfirm(options.Yes)) return exit_status::WrongUsage;
  return RunUnattendedCommand(options.Store,
                              [&](startup::Context& context) { return CopyOrMove(context, options); });
}

int RunDelete(ArchiveCommandOptions options) {
  if (!CheckKeys(options)) return exit_status::WrongUsage;
  if (options.Delete.EnPhysErase && !options.Delete.EnDelArchives) {
    PrintError("--physical gilt nur zusammen mit --delete-archives");
    return exit_status::WrongUsage;
  }
  if (!CanConfirm(options.Yes)) return exit_status::WrongUsage;
  return RunUnattendedCommand(options.Store,
                              [&](startup::Context& context) { return Delete(context, options); });
}

// The options that all three have.
std::shared_ptr<ArchiveCommandOptions> AddCommand(CLI::App& app, Action& action, const char* name,
                                                  const char* description, const char* sources,
                                                  const char* sourcesText, int (*run)(ArchiveCommandOptions),
                                                  CLI::App*& command) {
  auto options = std::make_shared<ArchiveCommandOptions>();
  command = AddSubcommand(app, name, description);
  command->callback([options, &action, run] { action = [options, run] { return run(*options); }; });
  AddStoreOption(*command, options->Store);
  command->add_option(sources, options->Sources, sourcesText)->required()->type_name("");
  command->add_flag("--messages", options->Messages,
                    "Nur die Nachrichten der Archive selbst, nicht die Archive");
  command->add_option("--key", options->Keys, "Nur der Eintrag mit diesem Schlüssel; mehrfach möglich")
      ->type_name("NUMMER")
      ->allow_extra_args(false);
  return options;
}

void AddArchiveTransfer(CLI::App& app, Action& action, CopyMode mode) {
  const bool isMove = mode == CopyMode::Move;
  CLI::App* command = nullptr;
  const auto options =
      AddCommand(app, action, isMove ? "move" : "copy",
                 isMove ? "Archive und Nachrichten in ein Archiv verschieben"
                        : "Archive und Nachrichten in ein Archiv kopieren",
                 "QUELLE|ZIEL", "Archive oder Verknüpfungen, zuletzt das Zielarchiv", RunCopyOrMove, command);
  operations::StoreCopyOptions& copy = options->Copy;
  copy.Mode = mode;
  command->add_flag("--only-archives", copy.EnCopyOnlyArcs, "Nur die Archivstruktur, keine Nachrichten");
  command->add_flag("--merge", copy.EnDblArcNames,
                    "In ein vorhandenes Archiv mit gleichem Anzeigenamen, statt ein neues anzulegen");
  command->add_flag("--follow-links", copy.EnLinkedArcs,
                    "Den Inhalt verknüpfter Archive statt der Verknüpfungen");
  command->add_flag("--keep-directories", copy.EnSaveOrgArcs, "Verzeichnisnamen der Archive beibehalten");
  command->add_flag("--properties", copy.EnCpyProp, "Eigenschaften der Archive kopieren");
  command->add_flag("--rules", copy.EnRoutings, "Verteilerregeln kopieren, unverändert");
  if (!isMove) return;
  command->add_flag("--delete-archives", copy.EnDelArchives, "Die leeren Quellarchive löschen");
  command->add_flag("--yes", options->Yes, "Nicht nachfragen");
}

void AddDelete(CLI::App& app, Action& action) {
  CLI::App* command = nullptr;
  const auto options = AddCommand(app, action, "delete", "Archive und Nachrichten löschen", "ARCHIV",
                                  "Archive oder Verknüpfungen; ohne weitere Angabe gehen nur die Nachrichten",
                                  RunDelete, command);
  operations::StoreDeleteOptions& deletion = options->Delete;
  command->add_flag("--delete-archives", deletion.EnDelArchives, "Auch die Archive selbst");
  command->add_flag("--physical", deletion.EnPhysErase,
                    "Archive auf Dateiebene löschen; nur bei abgeschaltetem Filter wirksam");
  command->add_flag("--follow-links", deletion.EnLinkedArcs, "Auch den Inhalt verknüpfter Archive");
  command->add_flag("--yes", options->Yes, "Nicht nachfragen");
}

}  // namespace

void AddArchiveCommands(CLI::App& app, Action& action) {
  AddArchiveTransfer(app, action, CopyMode::Copy);
  AddArchiveTransfer(app, action, CopyMode::Move);
  AddDelete(app, action);
}

}  // namespace velmora::cli
