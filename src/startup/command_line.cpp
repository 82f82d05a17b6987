#include "startup/command_line.h"

#include <algorithm>
#include <array>

#include "base/paths.h"
#include "base/text.h"
#include "platform/host.h"
#include "run/run.h"
#include "settings/options_table.h"
#include "startup/file_types.h"
#include "startup/hand_over.h"
#include "startup/main_sequence.h"
#include "startup/saved_line.h"
#include "startup/settings_session.h"

namespace velmora::startup {
namespace {

struct Prefix {
  std::string_view Text;
  LineOption Option;
};

constexpr std::array SavePrefixes = {
    Prefix{"-w0", LineOption::SaveOff},     Prefix{"-w1", LineOption::SaveOnce},
    Prefix{"-w2", LineOption::SaveAlways},  Prefix{"-w?", LineOption::SaveStatus},
    Prefix{"-wi", LineOption::IgnoreSaved}, Prefix{"-wa", LineOption::UseSaved},
};

constexpr std::array StartPrefixes = {
    Prefix{"-c", LineOption::Archive},        Prefix{"-e", LineOption::Message},
    Prefix{"-i", LineOption::Integrate},      Prefix{"-u", LineOption::Disintegrate},
    Prefix{"-r", LineOption::ForgetArchives}, Prefix{"-b", LineOption::Batch},
    Prefix{"-?", LineOption::Help},           Prefix{"-h", LineOption::Help},
};

constexpr std::array HelpLines = {
    "Kommandozeile:",
    "-b:<Steuerdatei> Batchfähiger Start, Parameterübergabe mit Steuerdatei",
    "-c <Archiv>  Aufruf aus VJQ Archiv-Kontextmenü",
    "-e <Message>  Aufruf aus VJQ Message-Kontextmenü",
    "-i  VJQ Integration aktivieren",
    "-u  VJQ Integration deaktivieren",
    "-r  Zuletzt gespeicherte Archive ignorieren",
    "-w0 Speichern der Kommandozeile in Datei deaktivieren",
    "-w1 Einmaliges Speichern der Kommandozeile in Datei beim nächsten Start aktivieren",
    "-w2 Speichern der Kommandozeile in Datei aktivieren bis zum Abschalten mit \"-w0\"",
    "-wi Gespeicherte Kommandozeile beim Start ignorieren",
    "-wa Gespeicherte Kommandozeile ohne Nachfragen benutzen",
    "-w? Status Kommandozeilenspeicherung abfragen",
};

// Every option is ASCII, so bytes are characters here.
template <std::size_t Count>
LineOption Decode(const std::array<Prefix, Count>& prefixes, std::string_view line, LineOption otherwise) {
  const auto found = std::find_if(prefixes.begin(), prefixes.end(),
                                  [&](const Prefix& prefix) { return StartsWithFold(line, prefix.Text); });
  return found == prefixes.end() ? otherwise : found->Option;
}

void ResetStart(ProcessFields& process) {
  process.StartMode = start_mode::None;
  process.StartArgKind = start_arg::None;
  process.StartArchiveArg.clear();
  process.StartPathArg.clear();
  process.IgnoreLastArchives = false;
}

void TakeArchiveArgument(ProcessFields& process, int kind, std::string_view line) {
  process.StartArgKind = kind;
  process.StartArchiveArg = ArgumentOf(line);
  if (!process.StartArchiveArg.empty()) {
    process.StartMode = start_mode::Archive;
  }
}

int SwitchIntegration(Context& context, bool on) {
  StoreVersionInfo(context);
  // A switch that cannot be stored has no effect; the next start shows it.
  (void)context.settingsStore.SetUserSetting(settings::section::Options, settings::name::TICIntegration,
                                             settings::FromSwitch(on));
  if (!on) {
    UnregisterFileTypes(context);
    context.run.DeleteErrorLog();
    // Read-only files are left alone.
    (void)context.fileSystem.DeleteFile(SavedLinePath(context), false);
  }
  return exit_status::Done;
}

void TakePath(Context& context, std::string_view line) {
  ProcessFields& process = context.process;
  process.StartArgKind = start_arg::Path;
  const std::string_view typed = Trim(line);
  process.StartPathArg = context.fileSystem.FromUserPath(typed);
  if (typed.ends_with('/')) {
    process.StartPathArg = AddBackslash(process.StartPathArg);  // what is named is a directory
  }
  if (!process.StartPathArg.empty()) {
    process.StartMode = start_mode::Path;
  }
}

std::optional<int> DecodeLine(Context& context, std::string_view line, LineSource source) {
  ProcessFields& process = context.process;
  ResetStart(process);
  switch (DecodeStartOption(line)) {
    case LineOption::Archive:
      TakeArchiveArgument(process, start_arg::Archive, line);
      break;
    case LineOption::Message:
      TakeArchiveArgument(process, start_arg::Message, line);
      break;
    case LineOption::Integrate:
      return SwitchIntegration(context, true);
    case LineOption::Disintegrate:
      return SwitchIntegration(context, false);
    case LineOption::ForgetArchives:
      process.IgnoreLastArchives = true;
      break;
    case LineOption::Batch:
      if (const std::optional<std::string> file = ControlFileOf(line);
          file && source == LineSource::Arguments) {
        process.ControlFile = *file;
        process.BatchMode = context.run.BatchMode = true;
      }
      break;
    case LineOption::Help:
      context.prompts().Message("Hilfe", HelpText(), run::Icon::None);
      Shutdown(context);
      return exit_status::Done;
    case LineOption::Path:
      TakePath(context, line);
      break;
    default:
      break;
  }
  return std::nullopt;
}

}  // namespace

LineOption DecodeSaveOption(std::string_view line) { return Decode(SavePrefixes, line, LineOption::None); }

LineOption DecodeStartOption(std::string_view line) {
  return line.empty() ? LineOption::None : Decode(StartPrefixes, line, LineOption::Path);
}

bool IsMigration(std::string_view commandLine) { return ToLower(Trim(commandLine)) == "-migrate"; }

bool IsUnattended(std::string_view commandLine) { return StartsWithFold(Trim(commandLine), "-b:"); }

std::optional<std::string> ControlFileOf(std::string_view line) {
  const std::vector<std::string> pieces = Split(line, ":", 2);
  return pieces.size() == 2 ? std::optional(pieces[1]) : std::nullopt;
}

std::string ArgumentOf(std::string_view line) {
  return std::string(Trim(line.substr(LeftCharacters(line, 3).size())));
}

std::string HelpText() {
  std::string text;
  for (const std::string_view line : HelpLines) {
    text += line;
    text += "\r\n";
  }
  return text;
}

std::optional<int> ReadCommandLine(Context& context, LineSource source) {
  std::string line = source == LineSource::HandOver ? ReadHandOverFile(context)
                                                    : std::string(Trim(context.process.CommandLine));
  if (source == LineSource::HandOver) {
    DeleteHandOverFile(context);
  }
  const SavedLineResult saved = ApplySavedLine(context, line);
  if (saved.Ends) {
    Shutdown(context);
    return exit_status::Done;
  }
  return DecodeLine(context, saved.Line, source);
}

}  // namespace velmora::startup
