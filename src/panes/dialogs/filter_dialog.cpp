#include "panes/dialogs/filter_dialog.h"

#include "base/numbers.h"

namespace velmora::panes {

FilterDialog::FilterDialog(settings::Options& options, bool isAdministrator)
    : options_(options),
      isAdministrator_(isAdministrator),
      mask_(static_cast<std::uint32_t>(options.DvItemFilter)) {}

bool FilterDialog::IsChecked(const store::FilterBox& box) const {
  return ((mask_ & box.Bit) == box.Bit) != box.Excludes;
}

std::string FilterDialog::FltValue() const { return FormatHex(mask_); }

void FilterDialog::SetBox(const store::FilterBox& box, bool checked) {
  changed_ = true;
  mask_ = checked != box.Excludes ? mask_ | box.Bit : mask_ & ~box.Bit;
}

void FilterDialog::SetFltHidden(bool checked) {
  changed_ = true;
  options_.DvInhibitItems = checked;
}

void FilterDialog::StdFltChange(std::uint32_t mask) {
  changed_ = true;
  mask_ = mask;
}

void FilterDialog::FltReset(run::Prompts& prompts) {
  if (prompts.Question("Reset Filter", "Alle Filterbedingungen auf Standard setzen?", run::Buttons::YesNo,
                       run::Answer::No) != run::Answer::Yes) {
    return;
  }
  StdFltChange(store::filter_preset::None);
  SetFltHidden(true);
}

bool FilterDialog::Ok() {
  options_.DvItemFilter = static_cast<std::int32_t>(mask_);
  return changed_;
}

}  // namespace velmora::panes
