// The dialog "Filter" without its view. It works on a copy of the mask, which OK makes the program's; the box
// for hidden entries is no part of the mask and takes effect at once, so that it survives a cancel.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "run/front_ends.h"
#include "settings/options.h"
#include "store/filter.h"

namespace velmora::panes {

// Captions and tool tips, for the view. The boxes and presets have theirs in store::FilterBoxes and
// store::FilterPresets.
namespace filter_text {
inline constexpr std::string_view Title = "Filter";
inline constexpr std::string_view F_Standard = " Standard Filter ", F_Status = " Status ",
                                  F_Type = " Dokumententyp ";
inline constexpr std::string_view F_StatusTip = "Message Status", F_TypeTip = "Message Type";
inline constexpr std::string_view FltHidden = "Ausgeblendete Einträge",
                                  FltHiddenTip = "Zusatzbedingung zu Filtern. Gehört nicht zur Filtermaske.";
inline constexpr std::string_view L_FltValue = "Filtermaske", FltValueTip = "Filtermaske hexadezimal";
inline constexpr std::string_view FltReset = "Reset", CancelButton = "Abbrechen";
}  // namespace filter_text

class FilterDialog {
 public:
  FilterDialog(settings::Options& options, bool isAdministrator);

  // --- What the controls hold. ---
  bool IsChecked(const store::FilterBox& box) const;
  bool IsOn(const store::FilterPreset& preset) const { return mask_ == preset.Mask; }
  bool FltHidden() const { return options_.DvInhibitItems; }
  std::string FltValue() const;                              // upper-case hexadecimal; shown only
  bool FltValueVisible() const { return isAdministrator_; }  // of the field and its label
  std::uint32_t Mask() const { return mask_; }
  // Whether anything was clicked: then the messages are listed anew after OK.
  bool Changed() const { return changed_; }

  // --- What the user does; the view fills its controls anew after each. ---
  void SetBox(const store::FilterBox& box, bool checked);
  void SetFltHidden(bool checked);
  void StdFltChange(std::uint32_t mask);  // a preset
  void FltReset(run::Prompts& prompts);   // after a question

  // OK: true when the active messages are to be listed anew. The warning of the window is set anew in any
  // case.
  bool Ok();

 private:
  settings::Options& options_;
  bool isAdministrator_;
  std::uint32_t mask_;
  bool changed_ = false;
};

}  // namespace velmora::panes
