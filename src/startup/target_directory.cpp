#include "startup/target_directory.h"

#include <fmt/format.h>

#include <array>
#include <filesystem>
#include <vector>

#include "base/paths.h"
#include "platform/host_folders.h"

namespace velmora::startup {

namespace fs = std::filesystem;

std::string ReasonNotToEmpty(Context& context, std::string_view directory, std::string_view controlFile) {
  const fs::path target = platform::CanonicalPath(context.fileSystem, directory);
  if (platform::IsRootPath(directory) || target.empty() || target == target.root_path()) {
    return "Das Zielverzeichnis ist die Wurzel eines Laufwerks oder einer Freigabe";
  }
  for (const platform::Drive& drive : context.fileSystem.Drives()) {
    const fs::path root = platform::CanonicalPath(context.fileSystem, drive.Name + "\\");
    if (!root.empty() && platform::IsSameOrAbove(target, root)) {
      return "Das Zielverzeichnis ist oder enthält die Wurzel eines Laufwerks";
    }
  }
  const std::array storeDirectories = {NormalizePath(context.session.Account->DavidRoot()),
                                       NormalizePath(context.session.DefaultArchive->ID())};
  for (const std::string& storeDirectory : storeDirectories) {
    const fs::path root = platform::CanonicalPath(context.fileSystem, storeDirectory);
    if (!root.empty() && (platform::IsSameOrAbove(target, root) || platform::IsSameOrAbove(root, target))) {
      return "Das Zielverzeichnis enthält den Archivbestand oder liegt darin";
    }
  }
  const ProcessFields& process = context.process;
  const std::array ownDirectories = {
      process.ProgramDirectory,
      process.DataDirectory,
      process.PersonalDir,
      process.TempDir,
      context.fileSystem.FromHostPath(process.Directories.Config),
  };
  for (const std::string& ownDirectory : ownDirectories) {
    const fs::path own = platform::CanonicalPath(context.fileSystem, ownDirectory);
    if (!own.empty() && platform::IsSameOrAbove(target, own)) {
      return "Das Zielverzeichnis enthält Verzeichnisse des Programms oder des Benutzers";
    }
  }
  const fs::path file =
      controlFile.empty() ? fs::path() : platform::CanonicalPath(context.fileSystem, controlFile);
  if (!file.empty() && platform::IsSameOrAbove(target, file)) {
    return "Das Zielverzeichnis enthält die Steuerdatei";
  }
  return "";
}

Status RequireWritable(Context& context, std::string_view directory) {
  const std::string probe = JoinPath(directory, fmt::format("Velmora{}.tmp", context.process.ProcessId));
  platform::WriteOptions options;
  options.Mode = platform::Create::Exclusive;
  if (Status written = context.fileSystem.WriteFile(probe, "", options); !written) {
    // What stands there under this name was written once.
    return written.error().Number == platform::file_error::AlreadyExists ? Status{} : written;
  }
  return context.fileSystem.DeleteFile(probe, false);
}

void EmptyTarget(Context& context, std::string_view directory) {
  const Result<std::vector<platform::FileEntry>> entries =
      context.fileSystem.List(directory, "*.*", platform::ListWhat::All);
  if (!entries) {
    context.run.LogError(directory, entries.error());
    return;
  }
  for (const platform::FileEntry& entry : *entries) {
    const std::string path = JoinPath(directory, entry.Name);
    // A link to a folder is a folder too: the link goes, what it leads to stays.
    const Status deleted = entry.IsFolder ? context.fileSystem.DeleteFolder(path, true)
                                          : context.fileSystem.DeleteFile(path, true);
    if (!deleted) {
      context.run.LogError(path, deleted.error());
    }
  }
}

}  // namespace velmora::startup
