#include "startup/hand_over.h"

#include "base/code_page.h"
#include "base/paths.h"
#include "base/text.h"
#include "startup/command_line.h"
#include "startup/start_archives.h"

namespace velmora::startup {
namespace {

constexpr std::string_view HandOverName = "VelmoraDisplayParms.zeb";
// No desktop starts a program with more: what is longer was not written by an instance.
constexpr std::size_t LongestLine = 32 * 1024;

std::string HandOverPath(const Context& context) { return JoinPath(context.process.TempDir, HandOverName); }

}  // namespace

bool HandOverFileExists(Context& context) {
  return !context.process.TempDir.empty() && context.fileSystem.FileExists(HandOverPath(context));
}

std::string HandOverLine(std::string_view bytes) {
  const std::string_view line = bytes.substr(0, bytes.find('\n'));
  return line.size() > LongestLine ? "" : std::string(Trim(FromCodePage(line)));
}

std::string ReadHandOverFile(Context& context) {
  return HandOverLine(context.fileSystem.ReadFile(HandOverPath(context)).value_or(""));
}

void WriteHandOverFile(Context& context) {
  if (context.process.TempDir.empty()) {
    return;
  }
  platform::WriteOptions options;
  options.OwnerOnly = true;
  const std::string line = ToCodePage(Trim(context.process.CommandLine)) + "\r\n";
  // The running instance polls for the file: it must appear whole. An error means that it does not appear.
  (void)context.fileSystem.ReplaceFile(HandOverPath(context), line, options);
}

void DeleteHandOverFile(Context& context) {
  // What cannot be deleted is read again at the next tick; nothing else could be done about it.
  (void)context.fileSystem.DeleteFile(HandOverPath(context), false);
}

void DeleteStaleHandOver(Context& context) {
  if (!HandOverFileExists(context)) {
    return;
  }
  const Result<platform::FileEntry> entry = context.fileSystem.GetEntry(HandOverPath(context));
  if (entry && entry->Modified < context.process.StartedAt) {
    DeleteHandOverFile(context);
  }
}

HandOverTick PollHandOver(Context& context) {
  HandOverTick tick;
  if (!HandOverFileExists(context)) {
    return tick;
  }
  tick.HandedOver = true;
  tick.ExitStatus = ReadCommandLine(context, LineSource::HandOver);
  if (!tick.ExitStatus) {
    ApplyStartArchives(context);
    tick.ShowMessage = context.process.StartMode == start_mode::Archive &&
                       context.process.StartArgKind == start_arg::Message;
  }
  return tick;
}

}  // namespace velmora::startup
