// What the operating system tells of the machine, the user and itself, and what it does for the program.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "platform/file_system.h"

namespace velmora::platform {

// The machine's name, at most 16 characters; "" on failure.
std::string ComputerName();
// The operating system's user: login name and full name (the login name where none is set).
std::string UserLoginName();
std::string UserFullName();
// Whether the operating system counts the user as an administrator (the root user).
bool IsOsAdministrator();
std::optional<std::string> EnvironmentVariable(const std::string& name);

// Host directories of the process. Each follows the XDG base directories and is overridable by the
// environment variable named; none is created here.
struct HostDirectories {
  std::string Config;         // VELMORA_CONFIG_DIR, else $XDG_CONFIG_HOME/velmora
  std::string MachineConfig;  // VELMORA_MACHINE_CONFIG_DIR, else /etc/velmora
  std::string State;          // VELMORA_STATE_DIR, else $XDG_STATE_HOME/velmora: log and saved command line
  std::string Data;           // VELMORA_DATA_DIR, else $XDG_DATA_HOME/velmora
  std::string UserData;       // $XDG_DATA_HOME: MIME types, desktop entries
  std::string Temporary;  // VELMORA_TEMP_DIR, else a folder of this user below the system's temporary folder
  std::string Documents;  // the personal-documents folder
  std::string Program;  // read-only data (Designs): VELMORA_PROGRAM_DIR, else beside or above the executable
};
HostDirectories FindHostDirectories();

// Opens a document with the program that the desktop has for it. Error 31 when none is associated.
Status OpenDocument(FileSystem& fileSystem, std::string_view path);

struct ProcessResult {
  int ExitStatus = 0;
  std::string Output;  // standard output and error
};
// Runs a program with an argument list, never through a shell, feeding `input` to it. Fails when it cannot be
// started.
Result<ProcessResult> RunProcess(const std::vector<std::string>& arguments, std::string_view input);

// A lock that one process at a time holds; released when destroyed or when the process dies.
class InstanceLock {
 public:
  virtual ~InstanceLock() = default;
};
// The lock file at the host path, made if missing. Null when another process holds it.
Result<std::unique_ptr<InstanceLock>> TryInstanceLock(const std::string& hostPath);

// Registers `<extension>` (with the point) as a MIME type with the program as its handler, in the user's data
// directory. Compares first: writes nothing that stands already. Unregister removes the same entries.
Status RegisterFileTypes(const HostDirectories& directories, const std::vector<std::string>& extensions,
                         const std::string& programHostPath);
Status UnregisterFileTypes(const HostDirectories& directories, const std::vector<std::string>& extensions);
// The host path of the running executable.
std::string ExecutablePath();

}  // namespace velmora::platform
