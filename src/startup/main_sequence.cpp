#include "startup/main_sequence.h"

#include <fmt/format.h>

#include <memory>
#include <optional>

#include "platform/make_folders.h"
#include "settings/options_table.h"
#include "startup/command_line.h"
#include "startup/file_types.h"
#include "startup/hand_over.h"
#include "startup/settings_session.h"
#include "startup/sign_on.h"
#include "startup/start_archives.h"
#include "startup/temp_dir.h"

namespace velmora::startup {
namespace {

constexpr std::string_view LockName = "instance.lock";

using Lock = std::unique_ptr<platform::InstanceLock>;

// What a start finds: the lock, or that another instance holds it. Where no lock can be made nothing is known
// of other instances, and the start goes on.
struct Instance {
  Lock Held;
  bool AnotherRuns = false;
};

Instance TakeInstanceLock(Context& context) {
  const std::string& config = context.process.Directories.Config;
  (void)platform::MakeFolders(context.fileSystem, context.fileSystem.FromHostPath(config), true);
  Result<Lock> lock = platform::TryInstanceLock(fmt::format("{}/{}", config, LockName));
  if (!lock) {
    return {};
  }
  const bool anotherRuns = *lock == nullptr;
  return {*std::move(lock), anotherRuns};
}

int TellThatNoWindowExists(Context& context) {
  context.prompts().Message("Velmora",
                            "Es ist kein Fenster möglich: Diese Version enthält keines, oder es ist keine "
                            "Anzeige erreichbar. Möglich sind unbeaufsichtigte "
                            "Läufe mit \"-b:<Steuerdatei>\"; \"-?\" zeigt alle Optionen.",
                            run::Icon::Stop);
  return exit_status::NothingRan;
}

int Migrate(Context& context) {
  if (context.windows == nullptr) {
    return TellThatNoWindowExists(context);
  }
  const Instance instance = TakeInstanceLock(context);
  if (instance.AnotherRuns) {
    context.prompts().Message("Fehler", "Im Migrationsmode ist der Mehrfachstart nicht erlaubt.",
                              run::Icon::Stop);
    return exit_status::NothingRan;
  }
  context.windows->ShowMigrationDialog(context);
  return exit_status::Done;
}

// Without a session of its own a second instance still hands its line over: the first one has a session.
int HandOver(Context& context) {
  ChooseServer(context);
  if (!SignOn(context)) {
    MakeTempDir(context, settings::ToText(context.settingsStore.GetUserSetting(
                             settings::ServerSection(context.session.ServerName), settings::name::TempDirPath,
                             std::string())));
    WriteHandOverFile(context);
    return exit_status::NothingRan;
  }
  LoadSettings(context);
  WriteHandOverFile(context);
  context.windows->ActivateWindow(BuildMainCaption(context));
  SignOff(context);
  return exit_status::Done;
}

// Whether there was anything to warn of.
bool WarnOfLostSettings(Context& context) {
  const auto warn = [&](settings::Scope scope, std::string_view text) {
    context.run.LogError(fmt::format("{}: {}", text, context.settingsStore.FilePath(scope)), std::int64_t{0},
                         "LoadSettings", run::Severity::Warning);
  };
  for (const settings::Scope scope : context.process.DamagedSettings) {
    warn(scope, "Die Einstellungen sind beschädigt oder nicht lesbar, es gelten die Vorgaben");
  }
  if (context.process.SettingsWiped) {
    warn(settings::Scope::User, "Die Einstellungen einer anderen Version sind durch die Vorgaben ersetzt");
  }
  return context.process.SettingsWiped || !context.process.DamagedSettings.empty();
}

int StartFirst(Context& context) {
  ChooseServer(context);
  const StartOutcome started = StartAfterLogin(context);
  if (!started.CanGoOn) {
    return started.ExitStatus;
  }
  if (context.windows == nullptr) {
    const int status = TellThatNoWindowExists(context);
    Shutdown(context);
    return status;
  }
  DeleteStaleHandOver(context);
  return context.windows->RunMainWindow(context);
}

}  // namespace

int Main(Context& context) {
  ProcessFields& process = context.process;
  if (IsMigration(process.CommandLine)) {
    return Migrate(context);
  }
  if (IsUnattended(process.CommandLine)) {
    // Known before signing on, so that nothing can show a box.
    process.BatchMode = context.run.BatchMode = true;
    return StartFirst(context);
  }
  if (context.windows == nullptr) {
    return StartFirst(context);
  }
  const Instance instance = TakeInstanceLock(context);
  return instance.AnotherRuns ? HandOver(context) : StartFirst(context);
}

StartOutcome StartAfterLogin(Context& context) {
  if (!SignOn(context)) {
    return {};
  }
  ScanDavidShare(context);
  if (const std::optional<int> status = ReadCommandLine(context, LineSource::Arguments)) {
    return {false, *status};
  }
  RegisterFileTypes(context);
  LoadSession(context);
  context.process.ServerChanging = false;
  context.process.MainInitDone = false;
  if (context.process.BatchMode) {
    const BatchOutcome outcome =
        RunUnattended(context, [&] { return RunControlFile(context, context.process.ControlFile); });
    return {false, outcome.ExitStatus};
  }
  return {true, exit_status::Done};
}

void LoadSession(Context& context) {
  if (!VersionUnchanged(context)) {
    context.process.SettingsWiped = ClearSettings(context);
  }
  LoadSettings(context);
}

BatchOutcome RunUnattended(Context& context, const std::function<BatchOutcome()>& work) {
  if (context.options.ClearErrorLog) {
    context.run.DeleteErrorLog();
  }
  const bool warned = WarnOfLostSettings(context);
  BatchOutcome outcome = work();
  if (warned && outcome.ExitStatus == exit_status::Done) {
    outcome.ExitStatus = exit_status::DoneWithErrors;
  }
  if (context.process.TempDirIsOwn) {
    RemoveTempDir(context);
  }
  SignOff(context);
  return outcome;
}

void Shutdown(Context& context) {
  RemoveTempDir(context);
  if (!context.process.ServerChanging) {
    SaveSettings(context, false);
  }
  SignOff(context);
}

bool ConfirmExit(Context& context, bool ask) {
  if (ask && context.prompts().Question("Ende", "Velmora wirklich beenden?", run::Buttons::YesNo,
                                        run::Answer::Yes) != run::Answer::Yes) {
    return false;
  }
  if (context.windows != nullptr) {
    context.windows->UnloadWindows();
  }
  return !context.process.ServerChanging;
}

StartOutcome RestartSession(Context& context) {
  if (context.windows != nullptr) {
    context.windows->UnloadWindows();
  }
  SignOff(context);
  return StartAfterLogin(context);
}

std::string BuildMainCaption(Context& context) {
  store::DvAccount& account = *context.session.Account;
  return fmt::format("{} {}.{} - {} ({}){}", settings::ProductName, context.process.Version.Major,
                     context.process.Version.Minor, account.User().Name(), account.User().Mailaddress(),
                     account.Product() == store::DvProductDavidMobile ? " Mobil Offline" : "");
}

}  // namespace velmora::startup
