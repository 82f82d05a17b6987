// Loading and saving the settings of the session.
#pragma once

#include "startup/process.h"

namespace velmora::startup {

// All settings into the options, and what follows from them: CurrentPath, TempDir, the archives of both
// panes.
void LoadSettings(Context& context);
// Writes AutoSaveSettings and the version record; all other settings with `force` or while AutoSaveSettings
// is on. Does nothing before LoadSettings has run. What cannot be written is dropped.
void SaveSettings(Context& context, bool force);
// A new version of the program begins with the defaults. Whether there was any value to remove (the
// version record counts for none); then the file is kept as settings.toml.previous.
bool ClearSettings(Context& context);
bool VersionUnchanged(Context& context);
void StoreVersionInfo(Context& context);
// Adds the server of the session to the list of servers.
void SaveServerList(Context& context);
// Reads ForceStandardRights of this machine and cuts the rights of the session.
void ApplyForcedRights(Context& context);
// The current rights from those of the server: cut to a standard user's while ForcedRights is on.
void LimitRights(store::Session& session);

}  // namespace velmora::startup
