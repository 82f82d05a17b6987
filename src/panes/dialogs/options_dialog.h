// The dialog "Einstellungen" (DvVelmoraOptions) without its view. It works on a copy of the settings.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "panes/dialogs/options_table.h"
#include "platform/file_system.h"
#include "run/front_ends.h"
#include "settings/options.h"
#include "store/session.h"

namespace velmora::panes {

namespace options_text {
inline constexpr std::string_view Title = "Einstellungen";
inline constexpr std::string_view OkButton = "OK", SaveButton = "Speichern", CancelButton = "Abbrechen";
inline constexpr std::string_view SaveButtonTip = "Alle Einstellungen übernehmen und sofort speichern";
}  // namespace options_text

// What OK and "Speichern" come to.
struct OptionsAnswer {
  bool Closes = false;         // false: a message was shown, the dialog stays
  bool Saves = false;          // SaveSettings(true) is to run
  bool DesignChanged = false;  // the design set is to be read anew
  bool TextsChanged = false;   // copyright or comment: the texts of the runs follow
  bool AnyChanged = false;     // the panes are to be listed anew
};

class OptionsDialog {
 public:
  // `isOsAdministrator`: of the operating system, who with the console right may change ForceStandardRights.
  OptionsDialog(platform::FileSystem& fileSystem, settings::Options& options, store::Session& session,
                bool isOsAdministrator);

  // --- What the controls hold. ---
  bool IsEnabled(const OptionField& field) const;
  bool SwitchOf(const OptionField& field) const;          // Switch, Forced
  std::int32_t NumberOf(const OptionField& field) const;  // Number, Choice
  std::string TextOf(const OptionField& field) const;     // all others
  // The design sets of the design directory, by name.
  std::vector<std::string> DesignNames() const;

  // --- What the user does. ---
  void SetSwitch(const OptionField& field, bool on);
  void SetNumber(const OptionField& field, std::int32_t number);  // brought into the field's range
  void SetText(const OptionField& field, std::string_view text);
  // The picker behind a Folder or Program field.
  void Browse(const OptionField& field, run::Choosers& choosers);

  OptionsAnswer Ok(run::Prompts& prompts) { return Take(prompts, false); }
  OptionsAnswer Save(run::Prompts& prompts) { return Take(prompts, true); }

 private:
  OptionsAnswer Take(run::Prompts& prompts, bool saves);
  // Why a field cannot be taken, "" when it can.
  std::string ReasonToRefuse(const OptionField& field) const;
  void CleanTexts();

  platform::FileSystem& fileSystem_;
  settings::Options& options_;
  store::Session& session_;
  bool isOsAdministrator_;
  settings::Options edited_;
  bool forcedRights_;
};

}  // namespace velmora::panes
