// Host directories of the process, by the XDG base directories and user directories.

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>

#include "base/text.h"
#include "platform/host.h"
#include "platform/host_names.h"

namespace velmora::platform {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view ProgramName = "velmora";
constexpr std::string_view DesignsFolder = "Designs";

// A variable that is set and not empty; as XDG has it, a relative directory counts as not set.
std::optional<std::string> DirectoryFrom(const std::string& variable) {
  std::optional<std::string> value = EnvironmentVariable(variable);
  if (!value || !value->starts_with('/')) return std::nullopt;
  while (value->size() > 1 && value->ends_with('/')) value->pop_back();
  return value;
}

std::string HomeDirectory() {
  if (const auto home = DirectoryFrom("HOME")) return *home;
  std::array<char, 16'384> buffer{};
  struct passwd record {};
  struct passwd* found = nullptr;
  const bool isFound =
      getpwuid_r(geteuid(), &record, buffer.data(), buffer.size(), &found) == 0 && found != nullptr;
  return isFound && found->pw_dir != nullptr ? found->pw_dir : "/";
}

// The line XDG_DOCUMENTS_DIR="$HOME/Dokumente" of user-dirs.dirs.
std::optional<std::string> ConfiguredDocuments(const std::string& configHome, const std::string& home) {
  constexpr std::string_view Key = "XDG_DOCUMENTS_DIR=";
  constexpr std::string_view Home = "$HOME";
  std::ifstream file(JoinHostPath(configHome, "user-dirs.dirs"));
  std::optional<std::string> found;
  for (std::string line; std::getline(file, line);) {
    std::string_view value = Trim(line);
    if (!value.starts_with(Key)) continue;
    value.remove_prefix(Key.size());
    if (value.size() < 2 || value.front() != '"' || value.back() != '"') continue;
    value = value.substr(1, value.size() - 2);
    if (value == Home || value.starts_with("$HOME/")) {
      found = home + std::string(value.substr(Home.size()));
    } else if (value.starts_with('/')) {
      found = value;
    }
  }
  while (found && found->size() > 1 && found->ends_with('/')) found->pop_back();
  return found;
}

std::string FindDocuments(const std::string& configHome, const std::string& home) {
  if (const auto configured = ConfiguredDocuments(configHome, home)) return *configured;
  std::error_code error;
  const std::string usual = JoinHostPath(home, "Documents");
  return fs::is_directory(usual, error) ? usual : home;
}

// The first of the places that an installation or a build tree uses which holds the designs.
std::string FindProgramData() {
  if (const auto chosen = DirectoryFrom("VELMORA_PROGRAM_DIR")) return *chosen;
  const fs::path beside = fs::path(ExecutablePath()).parent_path();
  const fs::path above = beside.parent_path();
  for (const fs::path& place : {beside, above, above / "share" / ProgramName}) {
    std::error_code error;
    if (fs::is_directory(place / DesignsFolder, error)) return place.string();
  }
  return beside.string();
}

}  // namespace

std::string ExecutablePath() {
  std::error_code error;
  const fs::path path = fs::read_symlink("/proc/self/exe", error);
  return error ? "" : path.string();
}

HostDirectories FindHostDirectories() {
  const std::string home = HomeDirectory();
  const auto baseDirectory = [&](const std::string& variable, std::string_view fallback) {
    return DirectoryFrom(variable).value_or(JoinHostPath(home, fallback));
  };
  const std::string configHome = baseDirectory("XDG_CONFIG_HOME", ".config");
  const std::string stateHome = baseDirectory("XDG_STATE_HOME", ".local/state");
  const std::string dataHome = baseDirectory("XDG_DATA_HOME", ".local/share");
  const std::string temporary = DirectoryFrom("TMPDIR").value_or("/tmp");

  HostDirectories directories;
  directories.Config = DirectoryFrom("VELMORA_CONFIG_DIR").value_or(JoinHostPath(configHome, ProgramName));
  directories.MachineConfig = DirectoryFrom("VELMORA_MACHINE_CONFIG_DIR").value_or("/etc/velmora");
  directories.State = DirectoryFrom("VELMORA_STATE_DIR").value_or(JoinHostPath(stateHome, ProgramName));
  directories.Data = DirectoryFrom("VELMORA_DATA_DIR").value_or(JoinHostPath(dataHome, ProgramName));
  directories.UserData = dataHome;
  directories.Temporary = DirectoryFrom("VELMORA_TEMP_DIR")
                              .value_or(JoinHostPath(temporary, "velmora-" + std::to_string(geteuid())));
  directories.Documents = FindDocuments(configHome, home);
  directories.Program = FindProgramData();
  return directories;
}

}  // namespace velmora::platform
