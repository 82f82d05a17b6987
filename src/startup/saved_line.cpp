#include "startup/saved_line.h"

#include <fmt/format.h>

#include "base/code_page.h"
#include "base/paths.h"
#include "base/text.h"
#include "settings/options_table.h"
#include "startup/command_line.h"
#include "startup/settings_session.h"

namespace velmora::startup {
namespace {

constexpr std::string_view SavedLineName = "VelmoraLine.txt";

void StoreMode(Context& context, int mode) {
  // Values stored beside the version record of another version, or beside none, are wiped by the next start.
  if (!VersionUnchanged(context)) {
    (void)ClearSettings(context);  // no run follows that would have to know
    StoreVersionInfo(context);
  }
  context.options.SaveCmdLineMode = mode;
  // A mode that cannot be stored has no effect at the next start, which then shows it.
  (void)context.settingsStore.SetUserSetting(settings::section::GlobalSettings,
                                             settings::name::SaveCmdLineInFile, std::int32_t{mode});
}

int LoadMode(Context& context) {
  const settings::Value stored = context.settingsStore.GetUserSetting(
      settings::section::GlobalSettings, settings::name::SaveCmdLineInFile, std::string("0"));
  return settings::ToNumber(stored).value_or(save_mode::Never);
}

void SetMode(Context& context, int mode, const std::string& text) {
  context.prompts().Message("Hinweis", text, run::Icon::Information);
  StoreMode(context, mode);
}

void ShowMode(Context& context, int mode) {
  std::string text = "Das Speichern der Kommandozeile ist deaktiviert.";
  if (mode == save_mode::Once) {
    text = "Das einmalige Speichern der Kommandozeile beim nächsten Programmstart ist aktiviert.";
  } else if (mode == save_mode::Always) {
    text = "Das Speichern der Kommandozeile bei jedem Start ist aktiviert.";
  }
  context.prompts().Message("Status", text, run::Icon::Information);
}

// Handles the options that end the process; false for any other.
bool ApplyEndingOption(Context& context, LineOption option) {
  const std::string path = SavedLinePath(context);
  switch (option) {
    case LineOption::SaveOff:
      SetMode(context, save_mode::Never, "Das Speichern der Kommandozeile ist deaktiviert.");
      return true;
    case LineOption::SaveOnce:
      SetMode(context, save_mode::Once,
              fmt::format("Beim nächsten Programmstart wird die Kommandozeile in {} einmalig gespeichert.",
                          path));
      return true;
    case LineOption::SaveAlways:
      SetMode(context, save_mode::Always,
              fmt::format("Die Kommandozeile wird bei jedem Programmstart in {} gespeichert.\r\n"
                          "Die Deaktivierung ist mit \"-w0\" möglich.",
                          path));
      return true;
    case LineOption::SaveStatus:
      ShowMode(context, LoadMode(context));
      return true;
    default:
      return false;
  }
}

void SaveLine(Context& context, int mode, const std::string& line) {
  platform::WriteOptions options;
  options.OwnerOnly = true;
  // A line that cannot be saved is used all the same.
  (void)context.fileSystem.ReplaceFile(SavedLinePath(context), ToCodePage(line) + "\r\n", options);
  if (mode == save_mode::Once) {
    StoreMode(context, save_mode::Never);
  }
}

// The saved line if it is to be used, else "".
std::string OfferSavedLine(Context& context, bool ask) {
  const std::string path = SavedLinePath(context);
  const Result<std::string> bytes = context.fileSystem.ReadFile(path);
  if (!bytes) {
    return "";
  }
  const std::string line(Trim(FromCodePage(Split(*bytes, "\n", 2).front())));
  if (!ask) {
    return line;
  }
  const std::string text = fmt::format(
      "Es existiert eine gespeicherte Kommandozeile ({}):\r\nKommandozeile= {}\r\n"
      "Soll diese beim Start verwendet werden?",
      path, line);
  const run::Answer answer =
      context.prompts().Question("Kommandozeile", text, run::Buttons::YesNo, run::Answer::No);
  return answer == run::Answer::Yes ? line : "";
}

}  // namespace

std::string SavedLinePath(const Context& context) {
  return AddBackslash(context.process.ProgramDirectory) + std::string(SavedLineName);
}

SavedLineResult ApplySavedLine(Context& context, std::string line) {
  const LineOption option = DecodeSaveOption(line);
  if (ApplyEndingOption(context, option)) {
    return {"", true};
  }
  const bool ignoreSaved = option == LineOption::IgnoreSaved;
  const bool useSaved = option == LineOption::UseSaved;
  if (ignoreSaved || useSaved) {
    line.clear();
  }
  const int mode = LoadMode(context);
  if (mode > save_mode::Never && !line.empty()) {
    SaveLine(context, mode, line);
  }
  if (line.empty() && !ignoreSaved) {
    line = OfferSavedLine(context, !useSaved);
  }
  return {line, false};
}

}  // namespace velmora::startup
