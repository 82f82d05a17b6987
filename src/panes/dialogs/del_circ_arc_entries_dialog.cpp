#include "panes/dialogs/del_circ_arc_entries_dialog.h"

#include <fmt/format.h>

#include "maintenance/entry_removal.h"
#include "panes/dialogs/repair_texts.h"

namespace velmora::panes {
namespace {

constexpr std::string_view ReportWait = "Reportprofil wird generiert";

// The wait box, closed again on every way out.
class Wait {
 public:
  Wait(run::Run& run, std::string_view text) : status_(run.frontEnd().status) { status_.ShowWait(text); }
  Wait(const Wait&) = delete;
  Wait& operator=(const Wait&) = delete;
  ~Wait() { status_.EndWait(); }
  void Show(std::string_view text) {
    status_.EndWait();
    status_.ShowWait(text);
  }

 private:
  run::StatusDisplay& status_;
};

std::string ReportOf(const std::vector<maintenance::CircularEntry>& entries) {
  std::string report;
  for (const maintenance::CircularEntry& entry : entries)
    report += fmt::format("+Parent:{}\r\n  ---Child: {}\r\n", entry.Parent, entry.Child);
  return report;
}

}  // namespace

std::optional<DelCircArcEntriesDialog> DelCircArcEntriesDialog::Open(run::Run& run, store::DvAccount& account,
                                                                     const ArchiveRow& row,
                                                                     maintenance::Visibility isVisible) {
  const auto archive = maintenance::FetchArchive(run, account, row.ID);
  if (!archive) return std::nullopt;
  run::Prompts& prompts = run.frontEnd().prompts;
  DelCircArcEntriesDialog dialog(run, account, std::move(isVisible));
  {
    run.ResetCancel();
    Wait wait(run, "Zirkulare Referenzen suchen");
    const auto found = maintenance::FindCircularEntries(run, *archive, dialog.isVisible_);
    if (run.CancelRequested()) return std::nullopt;
    wait.Show(ReportWait);
    dialog.count_ = found.size();
    dialog.report_ = ReportOf(found);
  }
  if (dialog.count_ == 0) {
    prompts.Message("Keine zirkularen Referenzen",
                    "Das ausgewählte Archiv und alle Unterarchive enthalten keine zirkularen Referenzen.",
                    run::Icon::Information);
    return std::nullopt;
  }
  if (row.IsShortCut) {
    TellShortCutIsLeft(prompts);
    return std::nullopt;
  }
  dialog.id_ = row.ID;
  dialog.path_ = (*archive)->FullPath();
  return dialog;
}

DelCircArcEntriesDialog::End DelCircArcEntriesDialog::Ok() {
  run::Prompts& prompts = run_.frontEnd().prompts;
  const auto archive = account_.GetArchive(id_);
  if (!archive || (*archive)->IsShortCut()) {
    prompts.Message(
        "Abbruch",
        fmt::format("Das Archiv \r\n{}\r\n ist ein Link oder es liegt ein Zugriffsfehler vor.", path_),
        run::Icon::Stop);
    return End::Closes;
  }
  const std::string question = fmt::format("Alle zirkularen Referenzen im Archiv \r\n{}\r\nlöschen?", path_);
  if (prompts.Question("Löschen", question, run::Buttons::YesNo, run::Answer::No) != run::Answer::Yes)
    return End::Stays;
  int removed = 0;
  {
    run_.ResetCancel();
    Wait wait(run_, "Zirkulare Referenzen löschen");
    removed = maintenance::RemoveCircularEntries(run_, *archive, isVisible_);
    wait.Show(ReportWait);
  }
  prompts.Message("Fertig",
                  fmt::format("Es wurden {} zirkulare Eintr{} aus \"Archive.dir\" von\r\n{} entfernt.",
                              removed, removed == 1 ? "ag" : "äge", path_),
                  run::Icon::Information);
  return End::ClosesChanged;
}

}  // namespace velmora::panes
