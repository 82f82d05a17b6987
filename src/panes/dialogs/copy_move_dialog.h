// The dialog CopyMoveDialogBox: what is marked in the left pane goes as a mail archive into a directory.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "mailarchive/export_options.h"
#include "mailarchive/export_run.h"
#include "panes/dialogs/form_user_info_dialog.h"
#include "platform/file_system.h"
#include "run/front_ends.h"
#include "settings/options.h"

namespace velmora::panes {

// The check boxes, in the dialog's order.
enum class CopyMoveBox {
  EnSavAtt,
  EnOnlyAtt,
  EnSavEml,
  EnOnlyEml,
  EnSaveSMTP,
  EnSavCmt,
  EnOnlyCmt,
  EnMakeIndex,
  EnDstNum,
  EnLinkedArcs,
  EnDelArchives,
  EnWithErr,
};
inline constexpr std::size_t CopyMoveBoxCount = 12;

struct CopyMoveBoxText {
  CopyMoveBox Box;
  std::string_view Control, Caption, Tip;
};
// EnWithErr has a caption of its own for each mode: CopyMoveDialog::CaptionOf.
inline constexpr std::array<CopyMoveBoxText, CopyMoveBoxCount> CopyMoveBoxes = {{
    {CopyMoveBox::EnSavAtt, "EnSavAtt", "Attachments mit speichern",
     "Die Attachments von Nachrichten werden mit gespeichert."},
    {CopyMoveBox::EnOnlyAtt, "EnOnlyAtt", "Nur Attachments speichern",
     "Es werden nur die Attachments in das Zielverzeichnis kopiert.\r\n"
     "Es wird keine Sortierung in Unterverzeichnisse vorgenommen."},
    {CopyMoveBox::EnSavEml, "EnSavEml", "Original-EMails mit speichern",
     "EMails werden zusätzlich als *.eml-Dateien (MIME) in \\EML gespeichert."},
    {CopyMoveBox::EnOnlyEml, "EnOnlyEml", "Nur Originale speichern",
     "EMails und Faxe werden nur als *.eml bzw. *.tif-Dateien gespeichert. Es wird keine HTML-Archivstruktur "
     "erzeugt"},
    {CopyMoveBox::EnSaveSMTP, "EnSaveSMTP", "SMTP-Header speichern",
     "Speichern des SMTP-Headers in einer separaten *.smtp-Datei in \\EML"},
    {CopyMoveBox::EnSavCmt, "EnSavCmt", "Kommentare mit speichern",
     "Kommentare werden als *.txt-Dateien in \\COMMENTS gespeichert"},
    {CopyMoveBox::EnOnlyCmt, "EnOnlyCmt", "Nur Kommentare speichern",
     "Es werden nur die Kommentare als *.txt-Dateien gespeichert. Es wird keine HTML-Archivstruktur erzeugt"},
    {CopyMoveBox::EnMakeIndex, "EnMakeIndex", "Inhaltsverzeichnis anlegen",
     "Inhaltsverzeichnis in jedem Mail-Archiv anlegen bzw. aktualisieren"},
    {CopyMoveBox::EnDstNum, "EnDstNum", "Doppelte Dateinamen verhindern",
     "Doppelte Dateinamen auf grund gleichen Betreffs werden durch Nummerierung ausgeschlossen"},
    {CopyMoveBox::EnLinkedArcs, "EnLinkedArcs", "Verknüpfte Archive einschließen",
     "Verknüpfte Archive mit kopieren/verschieben"},
    {CopyMoveBox::EnDelArchives, "EnDelArchives", "Archivstruktur löschen",
     "Beim Verschieben wird die Quellarchiv-Struktur gelöscht. Bei deaktivierter Option werden nur die "
     "Nachrichten verschoben."},
    {CopyMoveBox::EnWithErr, "EnWithErr", "",
     "Messages mit Fehlerstatus beim Kopieren/Verschieben berücksichtigen"},
}};

namespace copy_move_text {
inline constexpr std::string_view CMDstTip = "Zielverzeichnis des Mail-Archivs";
inline constexpr std::string_view SrcDirTip = "Anderes Zielverzeichnis suchen",
                                  SrcDirTitle = "Zielverzeichnis";
inline constexpr std::string_view ButtonUsrInfo = "Benutzer-Info", CancelButton = "Abbrechen";
}  // namespace copy_move_text

// What OK asks for: the arguments of mailarchive::RunExport.
struct CopyMoveRequest {
  mailarchive::ExportOptions Options;
  mailarchive::ExportSelection Selection;
  std::string TargetDirectory;  // with "\" at its end
};

class CopyMoveDialog {
 public:
  struct Parts {
    platform::FileSystem& fileSystem;
    settings::Options& options;
    FormUserTexts& runTexts;
    bool MayDeleteArchives = false;
    mailarchive::CopyMode Mode = mailarchive::CopyMode::Copy;
    mailarchive::ExportSelection Selection;
    std::string CurrentPath;  // of the file pane: the target at first
  };
  explicit CopyMoveDialog(const Parts& parts);

  // "Es sind keine Objekte zum Kopieren markiert", under "Fehler", when nothing is marked: then the dialog is
  // not shown. "" otherwise.
  std::string NothingMarked() const;

  // --- What the controls hold. ---
  std::string_view Title() const;  // "Kopieren" or "Verschieben", also the caption of OkButton
  std::string SourceText() const;  // "2 Archiv(e), 1 Message(s) kopieren von", the archive, "nach"
  std::string_view CaptionOf(CopyMoveBox box) const;
  bool IsChecked(CopyMoveBox box) const { return checked_[Index(box)]; }
  bool IsEnabled(CopyMoveBox box) const;
  const std::string& CMDst() const { return target_; }

  // --- What the user does; the view fills its boxes anew after each. ---
  void SetBox(CopyMoveBox box, bool checked);  // of a disabled box: nothing happens
  void SetCMDst(std::string_view directory) { target_ = directory; }
  void SrcDir(run::Choosers& choosers);  // the folder picker

  // The run for the caller; nothing, after a message, when the target does not exist: the dialog stays.
  std::optional<CopyMoveRequest> Ok(run::Prompts& prompts);

 private:
  static constexpr std::size_t Index(CopyMoveBox box) { return static_cast<std::size_t>(box); }
  bool IsMove() const { return parts_.Mode == mailarchive::CopyMode::Move; }
  mailarchive::ExportOptions ChosenOptions() const;

  Parts parts_;
  std::array<bool, CopyMoveBoxCount> checked_{};
  std::string target_;
};

}  // namespace velmora::panes
