#include "startup/file_types.h"

#include <string>
#include <vector>

#include "platform/host.h"

namespace velmora::startup {
namespace {

std::vector<std::string> Extensions() { return {".smtp", ".add", ".vla", ".vlw"}; }

}  // namespace

void RegisterFileTypes(Context& context) {
  if (!context.process.BatchMode) {
    (void)platform::RegisterFileTypes(context.process.Directories, Extensions(), platform::ExecutablePath());
  }
}

void UnregisterFileTypes(Context& context) {
  (void)platform::UnregisterFileTypes(context.process.Directories, Extensions());
}

}  // namespace velmora::startup
