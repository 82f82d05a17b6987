#include "startup/batch_logs.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>

#include "startup/david_logs.h"

namespace velmora::startup {
namespace {

struct LogTypeText {
  int Type;
  std::string_view Text;
};
constexpr std::array LogTypeTexts = {LogTypeText{log_type::Rx, "Empfangsprotokoll"},
                                     LogTypeText{log_type::Tx, "Sendeprotokoll"},
                                     LogTypeText{log_type::Both, "Sende- und Empfangsprotokoll"}};

struct LogStep {
  int Type;
  DavidLog Kind;
};
// The send log goes first.
constexpr std::array LogSteps = {LogStep{log_type::Tx, DavidLog::Send},
                                 LogStep{log_type::Rx, DavidLog::Receive}};

Result<std::shared_ptr<store::DvArchive>> FindParent(BatchRun& batch) {
  const ControlFile& file = batch.File();
  if (file.Archives.empty()) {
    batch.LogFailure(batch.Name(), batch_error::NoArchive, "Die Steuerdatei nennt kein Zielarchiv");
    return Fail(batch_error::NoArchive, "");
  }
  Result<std::shared_ptr<store::DvArchive>> parent =
      batch.GetContext().session.Account->GetArchive(file.Archives.front());
  if (!parent) {
    batch.LogStoreFailure(file.Archives.front(), parent.error());
  }
  return parent;
}

// How many of the logs were copied.
int CopyLogs(BatchRun& batch, store::DvArchive& parent) {
  Context& context = batch.GetContext();
  int copied = 0;
  for (const LogStep& step : LogSteps) {
    if ((batch.File().LogType & step.Type) == 0) {
      continue;
    }
    const Status done = CopyDavidLog(context.fileSystem, context.session, parent, step.Kind);
    if (done) {
      ++copied;
    } else {
      batch.LogStoreFailure(parent.FullPath(), done.error());
    }
  }
  return copied;
}

}  // namespace

BatchOutcome RunCopyDavidLogs(BatchRun& batch) {
  const ControlFile& file = batch.File();
  const auto text = std::find_if(LogTypeTexts.begin(), LogTypeTexts.end(),
                                 [&](const LogTypeText& row) { return row.Type == file.LogType; });
  if (text == LogTypeTexts.end()) {
    batch.LogFailure(batch.Name(), batch_error::BadLogType, "Die Steuerdatei nennt kein Protokoll (logtype)");
    return {};
  }
  const Result<std::shared_ptr<store::DvArchive>> parent = FindParent(batch);
  if (!parent) {
    return {};
  }
  const int copied = CopyLogs(batch, **parent);
  batch.SendMail({{"%5", file.Archives.front()}, {"%6", batch.Name()}, {"%7", std::string(text->Text)}}, "");
  if (copied == 0) {
    return {};
  }
  return {batch.HadErrors() ? exit_status::DoneWithErrors : exit_status::Done, ""};
}

}  // namespace velmora::startup
