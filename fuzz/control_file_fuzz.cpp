// Any bytes as a control file, and its texts with placeholders replaced.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "base/text.h"
#include "require.h"
#include "startup/control_file.h"
#include "startup/text_replacement.h"

using velmora::fuzz::Require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace velmora;
  using namespace velmora::startup;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const MomentTexts moment = {"31.12.2026", "23:59:00", "SRV"};
  const ControlFile file = ParseControlFile(bytes, {}, moment);
  Require(!file.StoppedAtCommand || file.Command == BatchCommand::None);
  Require(IsValidUtf8(file.Mail.Body) && IsValidUtf8(file.Export.Comment) && IsValidUtf8(file.DstDirectory));
  for (const std::string& archive : file.Archives) {
    Require(archive == Trim(archive) && archive.find('\n') == std::string::npos);
  }
  // Without a placeholder nothing changes.
  Require(ReplacePlaceholders(file.Mail.Body, {}) == file.Mail.Body);
  const std::string body = ReplacePlaceholders(file.Mail.Body, MomentReplacements(moment));
  Require(body.find("%1") == std::string::npos || file.Mail.Body.find('%') != std::string::npos);
  return 0;
}
