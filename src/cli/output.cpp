#include "cli/output.h"

#include <fmt/core.h>

#include <cstdio>
#include <string>

#include "base/text.h"

namespace velmora::cli {
namespace {

void Write(std::FILE* stream, std::string_view text) {
  const std::string line = std::string(text) + '\n';
  (void)std::fwrite(line.data(), 1, line.size(), stream);
}

}  // namespace

void PrintLine(std::string_view text) { Write(stdout, text); }

// Names of files and archives come from outside: what would steer the terminal is blanked.
void PrintError(std::string_view text) {
  Write(stderr, "velmoractl: " + BlankControlCharacters(MakeValidUtf8(text)));
}

void PrintError(std::string_view subject, const Error& error) {
  PrintError(fmt::format("{}: {}", subject, error.Text));
}

}  // namespace velmora::cli
