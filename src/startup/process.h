// The state of the process, and what every step of start and end works with. Created once in main and handed
// down by reference.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/date_time.h"
#include "platform/clock.h"
#include "platform/file_system.h"
#include "platform/host.h"
#include "run/run.h"
#include "settings/options.h"
#include "settings/product.h"
#include "settings/store.h"
#include "startup/window_factory.h"
#include "store/session.h"

namespace velmora::startup {

// Values of StartMode.
namespace start_mode {
inline constexpr int None = 0;
inline constexpr int Archive = 1;  // -c or -e with an argument
inline constexpr int Path = 2;     // a bare path
}  // namespace start_mode

// Values of StartArgKind.
namespace start_arg {
inline constexpr int None = 0;
inline constexpr int Message = 1;  // -e
inline constexpr int Archive = 2;  // -c
inline constexpr int Path = 3;
}  // namespace start_arg

// Exit statuses of the program.
namespace exit_status {
inline constexpr int Done = 0;
inline constexpr int DoneWithErrors = 1;
inline constexpr int NothingRan = 2;
}  // namespace exit_status

struct ProcessFields {
  // --- From the command line. ---
  int StartMode = start_mode::None;
  int StartArgKind = start_arg::None;
  std::string StartArchiveArg, StartPathArg;
  bool IgnoreLastArchives = false;
  bool BatchMode = false;
  std::string ControlFile;

  // --- Directories, in Windows form with "\" at the end. ---
  std::string CurrentPath;       // where the file-system pane starts
  std::string TempDir;           // "" before LoadSettings
  std::string PersonalDir;       // the user's documents
  std::string ProgramDirectory;  // the log and the saved command line; of this user, writable
  std::string DataDirectory;     // what is installed with the program: Designs, shellexec.exe
  bool TempDirIsOwn = false;     // made by this program: removed whole at the end
  platform::HostDirectories Directories;

  // --- Of the process. ---
  std::string CommandLine;  // the arguments, joined by blanks
  std::string NamedServer;  // the server whose store was named for this process; "" for the last used one
  DateTime StartedAt;
  std::int64_t ProcessId = 0;
  settings::ProductVersion Version;
  bool ServerChanging = false;  // a change of server runs the late start again
  bool MainInitDone = false;
  bool SettingsLoaded = false;  // nothing is saved before
  bool SettingsWiped = false;   // this start found values of another version and removed them
  std::vector<settings::Scope> DamagedSettings;  // files that could not be read when the process started
  bool IsOsAdministrator = false;  // of the operating system; may write the settings of the machine
};

// Makes the root object of the backend, anew for each sign-on.
using ApiMaker = std::function<Result<std::shared_ptr<store::DvISEAPI>>()>;

struct Context {
  platform::FileSystem& fileSystem;
  platform::Clock& clock;
  settings::Store& settingsStore;
  run::Run& run;
  ProcessFields& process;
  store::Session& session;
  settings::Options& options;
  settings::Options& loadedOptions;  // as LoadSettings read them, or SaveSettings wrote them
  ApiMaker makeApi;
  WindowFactory* windows = nullptr;  // null in a build without a window

  run::Prompts& prompts() { return run.frontEnd().prompts; }
};

}  // namespace velmora::startup
