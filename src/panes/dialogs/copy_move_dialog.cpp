#include "panes/dialogs/copy_move_dialog.h"

#include <algorithm>

#include "base/paths.h"
#include "base/text.h"
#include "mailarchive/export_settings.h"
#include "panes/dialogs/selection_text.h"

namespace velmora::panes {

CopyMoveDialog::CopyMoveDialog(const Parts& parts) : parts_(parts), target_(parts.CurrentPath) {
  for (const CopyMoveBox box : {CopyMoveBox::EnSavAtt, CopyMoveBox::EnSavEml, CopyMoveBox::EnSavCmt}) {
    checked_[Index(box)] = true;
  }
  const settings::Options& options = parts_.options;
  checked_[Index(CopyMoveBox::EnMakeIndex)] = options.MakeIndex;
  checked_[Index(CopyMoveBox::EnDstNum)] = options.NoDuplicateFiles;
  checked_[Index(CopyMoveBox::EnDelArchives)] =
      options.DeleteArchive && IsEnabled(CopyMoveBox::EnDelArchives);
}

std::string CopyMoveDialog::NothingMarked() const {
  if (!parts_.Selection.Objects.empty()) return "";
  return NothingToTransfer(parts_.Mode);
}

std::string_view CopyMoveDialog::Title() const { return TitleOf(parts_.Mode); }

std::string CopyMoveDialog::SourceText() const {
  return TransferText(CountText(parts_.Selection), parts_.Mode, parts_.Selection.CurrentArchive->FullPath());
}

std::string_view CopyMoveDialog::CaptionOf(CopyMoveBox box) const {
  if (box == CopyMoveBox::EnWithErr) {
    return IsMove() ? "Messages mit Fehler verschieben" : "Messages mit Fehler kopieren";
  }
  return CopyMoveBoxes[Index(box)].Caption;
}

bool CopyMoveDialog::IsEnabled(CopyMoveBox box) const {
  switch (box) {
    case CopyMoveBox::EnOnlyAtt:
      return IsChecked(CopyMoveBox::EnSavAtt);
    case CopyMoveBox::EnOnlyEml:
    case CopyMoveBox::EnSaveSMTP:
      return IsChecked(CopyMoveBox::EnSavEml);
    case CopyMoveBox::EnOnlyCmt:
      return IsChecked(CopyMoveBox::EnSavCmt);
    case CopyMoveBox::EnMakeIndex:
      return !IsChecked(CopyMoveBox::EnOnlyAtt) && !IsChecked(CopyMoveBox::EnOnlyCmt) &&
             !IsChecked(CopyMoveBox::EnOnlyEml);
    case CopyMoveBox::EnDelArchives:
      return IsMove() && parts_.MayDeleteArchives;
    default:
      return true;
  }
}

void CopyMoveDialog::SetBox(CopyMoveBox box, bool checked) {
  if (!IsEnabled(box)) return;
  checked_[Index(box)] = checked;
  if (checked) return;
  // A header is written beside an original only, but its box keeps its mark for the next original.
  if (box == CopyMoveBox::EnSavAtt) checked_[Index(CopyMoveBox::EnOnlyAtt)] = false;
  if (box == CopyMoveBox::EnSavEml) checked_[Index(CopyMoveBox::EnOnlyEml)] = false;
  if (box == CopyMoveBox::EnSavCmt) checked_[Index(CopyMoveBox::EnOnlyCmt)] = false;
}

void CopyMoveDialog::SrcDir(run::Choosers& choosers) {
  if (const auto folder = choosers.ChooseFolder(copy_move_text::SrcDirTitle, target_)) target_ = *folder;
}

mailarchive::ExportOptions CopyMoveDialog::ChosenOptions() const {
  mailarchive::ExportOptions options = mailarchive::ExportOptionsOf(parts_.options);
  const auto isChosen = [&](CopyMoveBox box) { return IsEnabled(box) && IsChecked(box); };
  options.SaveAttachments = isChosen(CopyMoveBox::EnSavAtt);
  options.OnlyAttachments = isChosen(CopyMoveBox::EnOnlyAtt);
  options.SaveOriginals = isChosen(CopyMoveBox::EnSavEml);
  options.OnlyOriginals = isChosen(CopyMoveBox::EnOnlyEml);
  options.SaveSmtpHeader = isChosen(CopyMoveBox::EnSaveSMTP);
  options.SaveComments = isChosen(CopyMoveBox::EnSavCmt);
  options.OnlyComments = isChosen(CopyMoveBox::EnOnlyCmt);
  options.MakeIndex = isChosen(CopyMoveBox::EnMakeIndex);
  options.NoDuplicates = isChosen(CopyMoveBox::EnDstNum);
  options.LinkedArchives = isChosen(CopyMoveBox::EnLinkedArcs);
  options.DeleteArchives = isChosen(CopyMoveBox::EnDelArchives);
  options.WithErrors = isChosen(CopyMoveBox::EnWithErr);
  options.Mode = parts_.Mode;
  options.ClearErrorLog = parts_.options.ClearErrorLog;
  options.CopyRight = parts_.runTexts.CopyRight;
  options.Comment = parts_.runTexts.Comment;
  return options;
}

std::optional<CopyMoveRequest> CopyMoveDialog::Ok(run::Prompts& prompts) {
  const std::string typed(Trim(target_));
  const std::string target = StripBackslash(NormalizePath(parts_.fileSystem.FromUserPath(typed)));
  if (typed.empty() || !parts_.fileSystem.FolderExists(target)) {
    prompts.Message("Falsches Zielverzeichnis",
                    "Das ausgewählte Zielverzeichnis existiert nicht oder es bestehen keine Zugriffsrechte.",
                    run::Icon::Stop);
    return std::nullopt;
  }
  return CopyMoveRequest{ChosenOptions(), parts_.Selection, AddBackslash(target)};
}

}  // namespace velmora::panes
