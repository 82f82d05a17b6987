#include "startup/run_control_file.h"

#include "base/paths.h"
#include "base/text.h"
#include "mailarchive/export_settings.h"
#include "startup/batch_export.h"
#include "startup/batch_logs.h"
#include "startup/batch_run.h"

namespace velmora::startup {
namespace {

constexpr std::int64_t MaximumFileSize = std::int64_t{16} << 20;

std::string ControlFilePath(Context& context, std::string_view path) {
  const std::string typed = context.fileSystem.FromUserPath(path);
  return typed.find('\\') == std::string::npos ? JoinPath(context.process.ProgramDirectory, typed) : typed;
}

Result<std::string> ReadControlFile(Context& context, const std::string& path) {
  const Result<platform::FileEntry> entry = context.fileSystem.GetEntry(path);
  if (entry && entry->Size > MaximumFileSize) {
    return Fail(platform::file_error::DeviceError, "Die Datei ist zu groß für eine Steuerdatei");
  }
  return context.fileSystem.ReadFile(path);
}

BatchOutcome RunStatistics(BatchRun& batch) {
  batch.LogFailure(batch.Name(), batch_error::NoReport,
                   "Das Kommando archivestatistics steht in dieser Version nicht zur Verfügung");
  return {};
}

BatchOutcome RunCommand(BatchRun& batch) {
  const ControlFile& file = batch.File();
  switch (file.Command) {
    case BatchCommand::ArchiveCopyMove:
      return RunArchiveCopyMove(batch);
    case BatchCommand::ArchiveStatistics:
      return RunStatistics(batch);
    case BatchCommand::CopyDavidLogs:
      return RunCopyDavidLogs(batch);
    case BatchCommand::None:
      break;
  }
  batch.LogFailure(batch.Name(), batch_error::NoCommand,
                   file.StoppedAtCommand ? "Unbekanntes Kommando in der Steuerdatei: " + file.UnknownCommand
                                         : "Die Steuerdatei enthält kein Kommando");
  return {};
}

BatchOutcome RunLines(Context& context, std::string_view bytes, std::string_view name,
                      const std::string& path) {
  const MomentTexts moment = MomentNow(context.clock);
  BatchRun batch(context, ParseControlFile(bytes, mailarchive::ExportOptionsOf(context.options), moment),
                 std::string(name), path);
  context.run.ResetCancel();
  context.run.ResetRunCounters();
  return RunCommand(batch);
}

}  // namespace

BatchOutcome RunControlFile(Context& context, std::string_view path) {
  if (Trim(path).empty()) {
    context.run.LogError("Es ist keine Steuerdatei angegeben",
                         {platform::file_error::BadName, "Steuerdatei"});
    return {};
  }
  const std::string found = ControlFilePath(context, path);
  const Result<std::string> bytes = ReadControlFile(context, found);
  if (!bytes) {
    // As it was typed, unless it was looked for elsewhere.
    const bool isTyped = context.fileSystem.FromUserPath(path) == found;
    context.run.LogError(isTyped ? path : found,
                         {bytes.error().Number, "Steuerdatei: " + bytes.error().Text});
    return {};
  }
  return RunLines(context, *bytes, path, found);
}

BatchOutcome RunControlLines(Context& context, std::string_view bytes, std::string_view name) {
  return RunLines(context, bytes, name, "");
}

}  // namespace velmora::startup
