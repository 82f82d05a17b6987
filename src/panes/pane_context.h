// What the panes work with. The state of the view has one owner each: the archives stand in the session, the
// directory in the process fields, view modes and sort modes in the settings.
#pragma once

#include <string>

#include "panes/fill_watcher.h"
#include "run/run.h"
#include "settings/options.h"
#include "store/session.h"

namespace velmora::panes {

struct PaneContext {
  store::Session& session;
  settings::Options& options;
  run::Run& run;             // file system, clock, boxes and log
  std::string& CurrentPath;  // directory of the file pane, Windows form with "\" at the end
  FillWatcher& watcher;
};

// Tells the user of a failure of the store, and the log: `what` is the archive or path concerned.
void ReportStoreFailure(run::Run& run, std::string_view what, const Error& error);
void ReportFileFailure(run::Run& run, std::string_view what, const Error& error);

}  // namespace velmora::panes
