#include "cli/json.h"

#include <fmt/core.h>

#include "base/text.h"

namespace velmora::cli {

std::string JsonText(std::string_view text) {
  std::string json = "\"";
  for (const char c : MakeValidUtf8(text)) {
    if (c == '"' || c == '\\') {
      json += '\\';
      json += c;
    } else if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) {
      json += fmt::format("\\u{:04x}", static_cast<unsigned>(static_cast<unsigned char>(c)));
    } else {
      json += c;
    }
  }
  json += '"';
  return json;
}

}  // namespace velmora::cli
