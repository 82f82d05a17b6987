#include "base/line_ends.h"

#include "base/text.h"

namespace velmora {

std::string WithCrLf(std::string_view text) {
  std::string lines;
  lines.reserve(text.size() + text.size() / 32);
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\r' && text[i] != '\n') {
      lines.push_back(text[i]);
      continue;
    }
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
    lines.append(CrLf);
  }
  return lines;
}

std::string CleanLines(std::string_view text) {
  auto lines = Split(WithCrLf(text), CrLf);
  for (auto& line : lines) line = BlankControlCharacters(line);
  return Join(lines, CrLf);
}

}  // namespace velmora
