// What both panes show at the start: the archives of the command line, the last used ones, or the default
// archive.
#pragma once

#include "startup/process.h"

namespace velmora::startup {

// By StartArgKind; an archive that cannot be opened is replaced by the default archive.
void ApplyStartArchives(Context& context);
// The archives of the last session, if the user's rights are still the same and he may open them.
void RestoreLastArchives(Context& context);
// Which drive, if any, maps the server's share: sets DavidDrive and DavidShare.
void ScanDavidShare(Context& context);

}  // namespace velmora::startup
