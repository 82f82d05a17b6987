// The dialog "Mailarchiv-Kennung setzen" (SetMailArcDialogBox): the marker of a directory, set by hand.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "mailarchive/format/marker.h"
#include "panes/dialogs/form_user_info_dialog.h"
#include "platform/file_system.h"
#include "run/front_ends.h"

namespace velmora::panes {

namespace mail_arc_marker_text {
inline constexpr std::string_view Title = "Mailarchiv-Kennung setzen";
inline constexpr std::string_view ArcFormDispName = "Anzeigename :", ArcFormFullPath = "Archivpfad :",
                                  ArcFormDirName = "Verzeichnisname :", ArcFormComment = "Kommentar :",
                                  ArcFormCopyRight = "Copyright :";
inline constexpr std::string_view CopyUsrInfo = "Benutzer-Info übernehmen",
                                  SetUsrInfo = "Benutzer-Info ändern", QuitButton = "&Abbrechen";
}  // namespace mail_arc_marker_text

// An option button of the dialog, in the dialog's order. A marker for addresses has none.
struct MarkerChoice {
  mailarchive::MailArcKind Kind;
  std::string_view Control;
  std::string_view Caption;
};
inline constexpr std::array MarkerChoices = {
    MarkerChoice{mailarchive::MailArcKind::None, "SetMailNo", "Kein Mailarchiv"},
    MarkerChoice{mailarchive::MailArcKind::Root, "SetMailRoot", "Mail Rootarchiv"},
    MarkerChoice{mailarchive::MailArcKind::Sub, "SetMailSub", "Mail Subarchiv"},
    MarkerChoice{mailarchive::MailArcKind::Data, "SetMailData", "Mail Datenarchiv"},
};

class MailArcMarkerDialog {
 public:
  // Opens on a directory of the file pane, with what its marker says.
  MailArcMarkerDialog(platform::FileSystem& fileSystem, const settings::Options& options,
                      FormUserTexts& runTexts, std::string_view directory);

  // --- What the controls hold: plain text, the marker's entities decoded. ---
  // The chosen kind; Address lights no option button.
  mailarchive::MailArcKind Kind() const { return kind_; }
  const mailarchive::MarkerTexts& Texts() const { return texts_; }

  // --- What the user does. ---
  void SetKind(mailarchive::MailArcKind kind) { kind_ = kind; }
  void SetArcFormDispName(std::string_view text) { texts_.DisplayName = text; }
  void SetArcFormFullPath(std::string_view text) { texts_.FullPath = text; }
  void SetArcFormDirName(std::string_view text) { texts_.DirName = text; }
  void SetArcFormComment(std::string_view text) { texts_.Comment = text; }
  void SetArcFormCopyRight(std::string_view text) { texts_.CopyRight = text; }
  // CopyUsrInfo: comment and copyright of the settings.
  void CopyUsrInfo();

  // False: the dialog stays. True: the marker is written, the file pane is to be listed anew. Asks before it
  // changes the kind of a directory that has one; a marker that cannot be written gives a message.
  bool Ok(run::Prompts& prompts);

 private:
  platform::FileSystem& fileSystem_;
  const settings::Options& options_;
  FormUserTexts& runTexts_;
  std::string directory_;
  mailarchive::MailArcKind openedAs_, kind_;
  mailarchive::MarkerTexts texts_;
};

}  // namespace velmora::panes
