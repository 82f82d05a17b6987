#include "startup/settings_session.h"

#include <algorithm>
#include <string>
#include <vector>

#include "base/paths.h"
#include "settings/options_store.h"
#include "settings/options_table.h"
#include "settings/server_list.h"
#include "startup/start_archives.h"
#include "startup/temp_dir.h"

namespace velmora::startup {
namespace {

using settings::Change;
using settings::Scope;
using settings::Values;

constexpr std::string_view DesignFolder = "Designs";
constexpr std::string_view PreviousSuffix = ".previous";

settings::Options ReadOptions(Context& context, const Values& stored) {
  const settings::DefaultPlaces places = {context.process.PersonalDir,
                                          JoinPath(context.process.DataDirectory, DesignFolder),
                                          context.session.DefaultArchive->FullPath()};
  const settings::Options defaults = settings::DefaultOptions(places, context.process.Version);
  settings::Options options = settings::LoadOptions(stored, context.session.ServerName, defaults);
  // Who edits the file by hand may name paths of the host.
  options.LastUsedPath = NormalizePath(context.fileSystem.FromUserPath(options.LastUsedPath));
  options.DesignPath = context.fileSystem.FromUserPath(options.DesignPath);
  options.DvServer = settings::LoadServerList(stored);
  if (!context.fileSystem.FolderExists(StripBackslash(options.DesignPath))) {
    options.DesignPath = defaults.DesignPath;
  }
  if (!context.session.MayDeleteArchives()) {
    options.DeleteArchive = false;
  }
  return options;
}

// A file of a dialog whose folder is gone is forgotten.
void CheckLastFiles(Context& context) {
  for (const settings::Setting& setting : settings::LastFilesTable()) {
    const std::string path = settings::ToText(settings::ValueOf(context.options, setting));
    if (!path.empty() && !context.fileSystem.FolderExists(StripBackslash(DirectoryOf(path)))) {
      settings::SetValueOf(context.options, setting, settings::Value(std::string()));
    }
  }
}

void SetCurrentPath(Context& context) {
  ProcessFields& process = context.process;
  process.CurrentPath = process.StartMode == start_mode::Path ? std::string(DirectoryOf(process.StartPathArg))
                                                              : AddBackslash(context.options.LastUsedPath);
}

void CheckCurrentPath(Context& context) {
  if (!context.fileSystem.FolderExists(StripBackslash(context.process.CurrentPath))) {
    context.process.CurrentPath = context.process.PersonalDir;
  }
}

// What the session has become since the settings were loaded.
void TakeFromSession(Context& context) {
  settings::Options& options = context.options;
  const store::Session& session = context.session;
  options.LastUsedServer = session.ServerName;
  options.LastUserRights = static_cast<std::int32_t>(session.Trustees);
  options.LastUsedPath = AddBackslash(context.process.CurrentPath);
  if (session.LeftArchive != nullptr) {
    options.LastUsedCArchive = session.LeftArchive->FullPath();
  }
  if (session.RightArchive != nullptr) {
    options.LastUsedDArchive = session.RightArchive->FullPath();
  }
}

bool MayWriteMachineSettings(const Context& context) {
  return context.session.WasAdministrator() && context.process.IsOsAdministrator;
}

// Whether any value but the version record is stored that the changes touch.
bool HasAnyOf(const Values& stored, const std::vector<Change>& changes) {
  return std::any_of(changes.begin(), changes.end(), [&](const Change& change) {
    return change.Section != settings::section::Information &&
           settings::FindValue(stored, change.Section, change.Name) != nullptr;
  });
}

// For who had set values by hand.
void KeepPreviousSettings(Context& context) {
  const std::string path = context.settingsStore.FilePath(Scope::User);
  platform::WriteOptions options;
  options.OwnerOnly = true;
  // Without the copy they are gone, as a new version wants it.
  (void)context.fileSystem.CopyFile(path, path + std::string(PreviousSuffix), options);
}

void Append(std::vector<Change>& changes, std::vector<Change> more) {
  changes.insert(changes.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

}  // namespace

void LoadSettings(Context& context) {
  context.options = ReadOptions(context, context.settingsStore.Read(Scope::User));
  SetCurrentPath(context);
  MakeTempDir(context, context.options.TempDirPath);
  if (context.process.StartMode == start_mode::Archive) {
    ApplyStartArchives(context);
  } else {
    RestoreLastArchives(context);
  }
  CheckCurrentPath(context);
  CheckLastFiles(context);
  context.loadedOptions = context.options;
  context.process.SettingsLoaded = true;
}

void SaveSettings(Context& context, bool force) {
  if (!context.process.SettingsLoaded) {
    return;
  }
  TakeFromSession(context);
  if (MayWriteMachineSettings(context)) {
    (void)context.settingsStore.SetMachineSetting(settings::section::Options,
                                                  settings::name::ForceStandardRights,
                                                  settings::FromSwitch(context.session.ForcedRights));
  }
  const bool all = force || context.options.AutoSaveSettings;
  const Status saved = context.settingsStore.Merge(Scope::User, [&](const Values& stored) {
    std::vector<Change> changes = {settings::AutoSaveChange(context.options)};
    Append(changes, settings::VersionChanges(context.process.Version));
    if (all) {
      Append(changes, settings::SaveChanges(stored, context.session.ServerName, context.options,
                                            context.loadedOptions));
      Append(changes, settings::ServerListChanges(stored, context.session.ServerName));
    }
    return changes;
  });
  if (saved && all) {
    context.loadedOptions = context.options;
  }
}

bool ClearSettings(Context& context) {
  const std::vector<Change> changes = settings::ClearChanges(context.session.ServerName);
  const bool hadValues = HasAnyOf(context.settingsStore.Read(Scope::User), changes);
  if (hadValues) {
    KeepPreviousSettings(context);
  }
  // Values that cannot be removed are used further.
  (void)context.settingsStore.Merge(Scope::User, [&](const Values&) { return changes; });
  if (MayWriteMachineSettings(context)) {
    (void)context.settingsStore.DeleteMachineSetting(settings::section::Options,
                                                     settings::name::ForceStandardRights);
  }
  return hadValues;
}

bool VersionUnchanged(Context& context) {
  return settings::VersionUnchanged(context.settingsStore.Read(Scope::User), context.process.Version);
}

void StoreVersionInfo(Context& context) {
  // A version that cannot be stored looks like a new one at the next start.
  (void)context.settingsStore.Merge(
      Scope::User, [&](const Values&) { return settings::VersionChanges(context.process.Version); });
}

void SaveServerList(Context& context) {
  // The list is a convenience; signing on does not depend on it.
  (void)context.settingsStore.Merge(Scope::User, [&](const Values& stored) {
    return settings::ServerListChanges(stored, context.session.ServerName);
  });
}

void ApplyForcedRights(Context& context) {
  store::Session& session = context.session;
  session.ForcedRights = settings::ToSwitch(context.settingsStore.GetMachineSetting(
      settings::section::Options, settings::name::ForceStandardRights, std::string("0")));
  LimitRights(session);
}

void LimitRights(store::Session& session) {
  session.Trustees = session.ServerTrustees;
  if (session.ForcedRights) {
    session.Trustees &= ~(store::trustee::Administrator | store::trustee::DeleteArchives);
    session.Trustees |= store::trustee::MoveArchives;
  }
}

}  // namespace velmora::startup
