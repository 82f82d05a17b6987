#include "cli/output.h"

#include <fmt/core.h>

#include <cstdio>
#include <string>

#include "base/text.h"

namespace velmora::cli {
namespace {

// A loss is kept in the stream's own state.
void Write(std::FILE* stream, std::string_view text) {
  (void)std::fwrite(text.data(), 1, text.size(), stream);
}

}  // namespace

void PrintLine(std::string_view text) { Write(stdout, std::string(text) + '\n'); }

void PrintText(std::string_view text) { Write(stdout, text); }

bool IsOutputLost() { return std::ferror(stdout) != 0; }

bool FlushOutput() { return std::fflush(stdout) == 0 && !IsOutputLost(); }

// Names of files and archives come from outside: what would steer the terminal is blanked.
void PrintError(std::string_view text) {
  Write(stderr, "velmoractl: " + BlankControlCharacters(MakeValidUtf8(text)) + '\n');
}

void PrintError(std::string_view subject, const Error& error) {
  PrintError(fmt::format("{}: {}", subject, error.Text));
}

}  // namespace velmora::cli
