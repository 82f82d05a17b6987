#include "startup/temp_dir.h"

#include <fmt/format.h>

#include <array>

#include "base/paths.h"
#include "platform/make_folders.h"

namespace velmora::startup {
namespace {

constexpr std::string_view DefaultName = "$$Velmora";
// The names that the program gives to its temporary files.
constexpr std::array OwnFileMasks = {"VelmoraDisplayParms.zeb", "Velmora*.eml"};

std::string DefaultTempDir(Context& context) {
  std::string name(DefaultName);
  if (context.process.BatchMode) {
    name += fmt::format(".{}", context.process.ProcessId);
  }
  return JoinPath(context.fileSystem.FromHostPath(context.process.Directories.Temporary), name);
}

}  // namespace

void MakeTempDir(Context& context, std::string_view value) {
  ProcessFields& process = context.process;
  process.TempDirIsOwn = value.empty();
  const std::string directory =
      value.empty() ? DefaultTempDir(context) : context.fileSystem.FromUserPath(value);
  // Without it every later write into it fails and is reported there.
  (void)platform::MakeFolders(context.fileSystem, directory, true);
  process.TempDir = AddBackslash(directory);
}

void RemoveTempDir(Context& context) {
  const ProcessFields& process = context.process;
  if (process.TempDir.empty() || !context.fileSystem.FolderExists(StripBackslash(process.TempDir))) {
    return;
  }
  run::StatusDisplay& status = context.run.frontEnd().status;
  status.ShowWait("Temporäre Dateien werden gelöscht");
  // What cannot be deleted stays: the next end of the program tries again.
  if (process.TempDirIsOwn) {
    (void)context.fileSystem.DeleteFolder(StripBackslash(process.TempDir), false);
  } else {
    for (const std::string_view mask : OwnFileMasks) {
      (void)context.fileSystem.DeleteFile(JoinPath(process.TempDir, mask), false);
    }
  }
  status.EndWait();
}

}  // namespace velmora::startup
