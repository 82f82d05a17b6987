#include "panes/dialogs/mail_arc_marker_dialog.h"

#include <fmt/format.h>

#include "base/paths.h"
#include "base/text.h"
#include "html/converters.h"

namespace velmora::panes {

using mailarchive::MailArcKind;

MailArcMarkerDialog::MailArcMarkerDialog(platform::FileSystem& fileSystem, const settings::Options& options,
                                         FormUserTexts& runTexts, std::string_view directory)
    : fileSystem_(fileSystem),
      options_(options),
      runTexts_(runTexts),
      directory_(StripBackslash(directory)),
      openedAs_(mailarchive::GetMailArcKind(fileSystem, directory_)),
      kind_(openedAs_) {
  if (const auto marker = mailarchive::ReadArcDescriptor(fileSystem, directory_)) {
    texts_ = {marker->ArchiveDisplayName, marker->ArchiveFullPath, marker->ArchiveDirName,
              html::HtmlToText(marker->ArchiveComment), html::HtmlToText(marker->ArchiveCopyRight)};
  }
  const std::string_view lastName = FileNameOf(directory_);
  for (std::string* text : {&texts_.DisplayName, &texts_.FullPath, &texts_.DirName}) {
    if (Trim(*text).empty()) *text = lastName;  // a marker of an archive without a name holds a blank
  }
}

void MailArcMarkerDialog::CopyUsrInfo() {
  texts_.Comment = options_.ArchiveFormComment;
  texts_.CopyRight = options_.ArchiveFormCopyRight;
}

bool MailArcMarkerDialog::Ok(run::Prompts& prompts) {
  const bool changesKind = openedAs_ != MailArcKind::None && kind_ != openedAs_;
  if (changesKind && prompts.Question("Typwechsel", "Typ des Mail-Archivs wirklich verändern?",
                                      run::Buttons::YesNoCancel, run::Answer::No) != run::Answer::Yes) {
    return false;
  }
  runTexts_ = {texts_.CopyRight, texts_.Comment};
  if (const Status written = mailarchive::WriteArchiveMarker(fileSystem_, directory_, kind_, texts_, true);
      !written) {
    prompts.Message("Fehler",
                    fmt::format("Die Kennung des Verzeichnisses {} kann nicht geschrieben werden: {}",
                                directory_, written.error().Text),
                    run::Icon::Stop);
  }
  return true;
}

}  // namespace velmora::panes
