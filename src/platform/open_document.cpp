// Opening a document with the desktop's program for it.

#include <chrono>
#include <optional>
#include <string>

#include "platform/file_errors.h"
#include "platform/host.h"
#include "platform/process.h"

namespace velmora::platform {
namespace {

constexpr int NoProgramAssociated = 31;
// Finding that there is no program takes the desktop less. Some desktops run the viewer itself as the opener,
// which then goes on for as long as the viewer.
constexpr std::chrono::milliseconds LongestOpening{1500};

tl::unexpected<Error> FailWithoutProgram() {
  return Fail(NoProgramAssociated, "Mit dieser Datei ist kein Programm verknüpft");
}

}  // namespace

Status OpenDocument(FileSystem& fileSystem, std::string_view path) {
  if (!fileSystem.FileExists(path) && !fileSystem.FolderExists(path)) {
    return FailWith(file_error::FileNotFound);
  }
  const Result<std::string> hostPath = fileSystem.HostPath(path);
  if (!hostPath) return Fail(hostPath.error());
  const Result<std::optional<int>> opened = StartProcess({"xdg-open", *hostPath}, LongestOpening);
  if (!opened || opened->value_or(0) != 0) return FailWithoutProgram();
  return {};
}

}  // namespace velmora::platform
