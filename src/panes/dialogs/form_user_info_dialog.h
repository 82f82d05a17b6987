// The dialog "Benutzerinformationen": the two texts that go into every page of a mail archive.
#pragma once

#include <string>
#include <string_view>

#include "settings/options.h"

namespace velmora::panes {

namespace form_user_info_text {
inline constexpr std::string_view Title = "Benutzerinformationen";
inline constexpr std::string_view ArcFormCopyRight = "Copyright :", ArcFormComment = "Kommentar :",
                                  CancelButton = "Abbrechen";
inline constexpr std::string_view ArcFormCopyRightTip =
    "Copyright zum Eintrag in die Archivformulare. Wird an die Stelle der Variable %VELMORA_COPYRIGHT% in "
    "der Formularvorlage gesetzt.";
inline constexpr std::string_view ArcFormCommentTip =
    "Kommentar zum Eintrag in die Archivformulare. Wird an die Stelle der Variable %VELMORA_COMMENT% in der "
    "Formularvorlage gesetzt.";
}  // namespace form_user_info_text

// The texts of the runs to come: they start as those of the settings, and setting the marker of a directory
// by hand changes them for the session alone.
struct FormUserTexts {
  std::string CopyRight, Comment;
  static FormUserTexts Of(const settings::Options& options) {
    return {options.ArchiveFormCopyRight, options.ArchiveFormComment};
  }
};

// Opens with the settings' texts. Cancel needs no call: it changes nothing.
class FormUserInfoDialog {
 public:
  FormUserInfoDialog(settings::Options& options, FormUserTexts& runTexts)
      : options_(options), runTexts_(runTexts), texts_(FormUserTexts::Of(options)) {}

  const std::string& ArcFormCopyRight() const { return texts_.CopyRight; }
  const std::string& ArcFormComment() const { return texts_.Comment; }
  void SetArcFormCopyRight(std::string_view text) { texts_.CopyRight = text; }
  void SetArcFormComment(std::string_view text) { texts_.Comment = text; }

  // OKButton: into the settings and the texts of the runs.
  void Ok() {
    options_.ArchiveFormCopyRight = texts_.CopyRight;
    options_.ArchiveFormComment = texts_.Comment;
    runTexts_ = texts_;
  }

 private:
  settings::Options& options_;
  FormUserTexts& runTexts_;
  FormUserTexts texts_;
};

}  // namespace velmora::panes
