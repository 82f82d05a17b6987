#include "maintenance/tree_check.h"

#include <fmt/format.h>

#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "maintenance/entry_removal.h"
#include "maintenance/tree_traversal.h"
#include "store/archive_entries.h"
#include "store/archive_files.h"
#include "store/archive_key.h"

namespace velmora::maintenance {
namespace {

using ArchivePointer = std::shared_ptr<store::DvArchive>;

// Where the list stands that has an archive first.
struct FirstPlace {
  std::string Key, Path;
};

class Check {
 public:
  explicit Check(run::Run& run) : run_(run) {}

  TreeReport From(const ArchivePointer& start) {
    LookAtList(start);
    Traversal traversal;
    traversal.Visit = [this](const ArchivePointer& parent, const ArchivePointer& sub, Encounter encounter) {
      return Meet(parent, sub, encounter);
    };
    traversal.Unreadable = [this](store::DvArchive& archive, const Error& error) {
      TreeFinding finding;
      finding.Fault = TreeFault::Unreadable;
      finding.ID = archive.ID();
      finding.Name = archive.FullPath();
      finding.Text = error.Text;
      report_.Findings.push_back(std::move(finding));
    };
    TraverseTree(run_, start, traversal);
    return std::move(report_);
  }

 private:
  void LookAtList(const ArchivePointer& archive) {
    ++report_.Archives;
    if (store::IsListInterrupted(run_.fileSystem(), archive->ID()))
      report_.Findings.push_back({TreeFault::Interrupted, archive, archive->ID(), "", false, "", false, ""});
  }

  bool Meet(const ArchivePointer& parent, const ArchivePointer& sub, Encounter encounter) {
    ++report_.Entries;
    TreeFinding finding;
    finding.Parent = parent;
    finding.ID = sub->ID();
    finding.Name = sub->DisplayName().value_or("");
    finding.IsShortCut = encounter == Encounter::ShortCut;
    switch (encounter) {
      case Encounter::OnPath:
        finding.Fault = TreeFault::Circular;
        break;
      case Encounter::Again: {
        const FirstPlace& first = first_[store::ArchiveKey(finding.ID)];
        finding.Fault = TreeFault::Doubled;
        finding.First = first.Path;
        finding.IsFirstHere = first.Key == store::ArchiveKey(parent->ID());
        break;
      }
      case Encounter::New:
        first_[store::ArchiveKey(finding.ID)] = {store::ArchiveKey(parent->ID()), parent->FullPath()};
        [[fallthrough]];
      case Encounter::ShortCut:
        switch (store::LookForDirectory(run_.fileSystem(), finding.ID)) {
          case store::DirectoryState::There:
            if (encounter == Encounter::New) LookAtList(sub);
            return true;
          case store::DirectoryState::Gone:
            finding.Fault = TreeFault::Dangling;
            break;
          case store::DirectoryState::Unknown:
            finding.Fault = TreeFault::Unreadable;
            finding.Text =
                fmt::format("Das Verzeichnis {} von \"{}\" ist nicht erreichbar", finding.ID, finding.Name);
            break;
        }
        break;
    }
    report_.Findings.push_back(std::move(finding));
    return false;
  }

  run::Run& run_;
  TreeReport report_;
  std::unordered_map<std::string, FirstPlace> first_;
};

// What is to go from one list.
struct Doomed {
  ArchivePointer Parent;
  std::unordered_set<std::string> Circular, Dangling, DanglingShortCuts;
  std::unordered_map<std::string, bool> Doubled;  // whether the first one stands in this list
};

class Repair {
 public:
  Repair(run::Run& run, const RepairOptions& options) : run_(run), options_(options) {}

  TreeRepair Of(const TreeReport& report) {
    for (const TreeFinding& finding : report.Findings) Note(finding);
    for (const std::string& key : order_) Clean(lists_[key]);
    return repair_;
  }

 private:
  void Note(const TreeFinding& finding) {
    if (finding.Fault == TreeFault::Unreadable) return;
    if (finding.Fault == TreeFault::Interrupted) return Recover(finding.ID);
    const std::string listKey = store::ArchiveKey(finding.Parent->ID());
    const auto [place, isNew] = lists_.try_emplace(listKey);
    if (isNew) order_.push_back(listKey);
    Doomed& doomed = place->second;
    doomed.Parent = finding.Parent;
    const std::string key = store::ArchiveKey(finding.ID);
    if (finding.Fault == TreeFault::Circular) doomed.Circular.insert(key);
    if (finding.Fault == TreeFault::Doubled) doomed.Doubled.try_emplace(key, finding.IsFirstHere);
    if (finding.Fault == TreeFault::Dangling && options_.Dangling)
      (finding.IsShortCut ? doomed.DanglingShortCuts : doomed.Dangling).insert(key);
  }

  // Any change of a list begins with this; here nothing else follows.
  void Recover(const std::string& id) {
    const Status recovered =
        store::ChangeArchiveList(run_.fileSystem(), id, [](std::string&) -> Status { return {}; });
    if (recovered) {
      ++repair_.Recovered;
    } else {
      ++repair_.Failed;
      run_.LogError(id, recovered.error());
    }
  }

  void Clean(const Doomed& doomed) {
    const auto entries = store::ReadListedEntries(run_.fileSystem(), *doomed.Parent);
    if (!entries) {
      ++repair_.Failed;
      return run_.LogError(doomed.Parent->FullPath(), entries.error());
    }
    std::vector<store::NumberedRecord> records;
    std::unordered_set<std::string> kept;  // doubled ones whose first entry has been passed
    TreeRepair counts;
    for (const store::ListedEntry& entry : *entries) {
      int* const count = FaultCount(doomed, *entry.Archive, kept, counts);
      if (count == nullptr) continue;
      ++*count;
      records.push_back(entry.Record);
    }
    if (records.empty()) return;
    const int removed = RemoveArchiveRecords(run_, doomed.Parent->ID(), records);
    if (removed != static_cast<int>(records.size())) {
      ++repair_.Failed;
      if (removed == 0) return;
    }
    repair_.Doubled += counts.Doubled;
    repair_.Circular += counts.Circular;
    repair_.Dangling += counts.Dangling;
  }

  // What an entry goes for; null when it stays.
  int* FaultCount(const Doomed& doomed, store::DvArchive& archive, std::unordered_set<std::string>& kept,
                  TreeRepair& counts) {
    const std::string id = archive.ID(), key = store::ArchiveKey(id);
    const bool isShortCut = archive.IsShortCut();
    const auto& dangling = isShortCut ? doomed.DanglingShortCuts : doomed.Dangling;
    if (dangling.contains(key) &&
        store::LookForDirectory(run_.fileSystem(), id) == store::DirectoryState::Gone)
      return &counts.Dangling;
    if (isShortCut) return nullptr;
    if (doomed.Circular.contains(key)) return &counts.Circular;
    const auto doubled = doomed.Doubled.find(key);
    if (doubled == doomed.Doubled.end()) return nullptr;
    return doubled->second && kept.insert(key).second ? nullptr : &counts.Doubled;
  }

  run::Run& run_;
  const RepairOptions options_;
  TreeRepair repair_;
  std::unordered_map<std::string, Doomed> lists_;
  std::vector<std::string> order_;
};

}  // namespace

TreeReport CheckTree(run::Run& run, const ArchivePointer& start) { return Check(run).From(start); }

std::string Describe(const TreeFinding& finding) {
  const std::string place = finding.Parent ? finding.Parent->FullPath() : finding.Name;
  switch (finding.Fault) {
    case TreeFault::Doubled:
      return fmt::format("{}: Der Eintrag \"{}\" ({}) ist doppelt; zuerst steht er in der Liste von {}",
                         place, finding.Name, finding.ID, finding.First);
    case TreeFault::Circular:
      return fmt::format("{}: Der Eintrag \"{}\" führt zurück auf {}", place, finding.Name, finding.ID);
    case TreeFault::Dangling:
      return fmt::format("{}: {} \"{}\" nennt das fehlende Verzeichnis {}", place,
                         finding.IsShortCut ? "Die Verknüpfung" : "Der Eintrag", finding.Name, finding.ID);
    case TreeFault::Interrupted:
      return fmt::format(
          "{}: archive.dir fehlt nach einem abgebrochenen Schreibvorgang; es gilt archivedir.bak", place);
    case TreeFault::Unreadable:
      return fmt::format("{}: {}", place, finding.Text);
  }
  return place;
}

TreeRepair RepairTree(run::Run& run, const TreeReport& report, const RepairOptions& options) {
  return Repair(run, options).Of(report);
}

}  // namespace velmora::maintenance
