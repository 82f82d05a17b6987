#include "startup/program.h"

#include <unistd.h>

#include <algorithm>

#include "base/paths.h"
#include "base/text.h"
#include "platform/make_folders.h"
#include "settings/path_mappings.h"

namespace velmora::startup {
namespace {

constexpr std::string_view RootDrive = "Z:";

ProcessFields MakeProcess(const ProgramParts& parts) {
  const auto windowsPath = [&](const std::string& hostPath) {
    return AddBackslash(parts.fileSystem.FromHostPath(hostPath));
  };
  ProcessFields process;
  process.Directories = parts.Directories;
  process.PersonalDir = windowsPath(parts.Directories.Documents);
  process.ProgramDirectory = windowsPath(parts.Directories.State);
  process.DataDirectory = windowsPath(parts.Directories.Program);
  process.CommandLine = parts.CommandLine;
  process.NamedServer = parts.NamedServer;
  process.StartedAt = parts.clock.Now();
  process.ProcessId = getpid();
  process.Version = settings::RunningVersion();
  process.IsOsAdministrator = platform::IsOsAdministrator();
  return process;
}

}  // namespace

std::vector<platform::PathMapping> ReadPathMappings(const platform::HostDirectories& directories) {
  // Read through a file system that knows no mapping but the one that always leads everywhere.
  const auto plain = platform::MakeHostFileSystem({});
  settings::Store store(*plain, plain->FromHostPath(directories.Config),
                        plain->FromHostPath(directories.MachineConfig));
  std::vector<platform::PathMapping> mappings =
      settings::LoadPathMappings(store.Read(settings::Scope::User), store.Read(settings::Scope::Machine));
  const auto isMapped = [&](std::string_view drive) {
    return std::any_of(mappings.begin(), mappings.end(), [&](const platform::PathMapping& mapping) {
      return EqualsFold(mapping.WindowsPrefix, drive);
    });
  };
  if (isMapped(RootDrive)) {
    std::string drive(RootDrive);
    while (drive[0] > 'A' && isMapped(drive)) {
      --drive[0];
    }
    mappings.push_back({drive, "/"});
  }
  return mappings;
}

std::string JoinArguments(int count, const char* const* arguments) {
  std::vector<std::string> pieces;
  for (int i = 1; i < count; ++i) {
    pieces.emplace_back(arguments[i]);
  }
  return Join(pieces, " ");
}

Program::Program(const ProgramParts& parts)
    : process_(MakeProcess(parts)),
      settingsStore_(parts.fileSystem, parts.fileSystem.FromHostPath(parts.Directories.Config),
                     parts.fileSystem.FromHostPath(parts.Directories.MachineConfig)),
      run_(parts.fileSystem, parts.clock, parts.frontEnd, process_.ProgramDirectory),
      context_{parts.fileSystem, parts.clock, settingsStore_, run_,          process_,
               session_,         options_,    loadedOptions_, parts.makeApi, parts.windows} {
  // Asked before anything is written: a damaged file is then kept aside and begun anew.
  for (const settings::Scope scope : {settings::Scope::User, settings::Scope::Machine}) {
    if (settingsStore_.IsDamaged(scope)) {
      process_.DamagedSettings.push_back(scope);
    }
  }
  // What cannot be made is missed, and reported, where it is used.
  (void)platform::MakeFolders(parts.fileSystem, process_.ProgramDirectory, true);
  (void)platform::MakeFolders(parts.fileSystem, process_.PersonalDir);
}

}  // namespace velmora::startup
