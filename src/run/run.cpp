#include "run/run.h"

#include <fmt/format.h>

#include <utility>

#include "base/code_page.h"
#include "base/date_time.h"
#include "base/paths.h"
#include "base/text.h"

namespace velmora::run {
namespace {

constexpr std::string_view ErrorLogName = "VelmoraError.log";

std::string_view SeverityLabel(Severity severity) {
  return severity == Severity::Error ? "Fehler:" : "Warnung:";
}

std::string NumberText(const LogNumber& number) {
  const auto* text = std::get_if<std::string>(&number);
  return text != nullptr ? *text : fmt::format("{}", std::get<std::int64_t>(number));
}

}  // namespace

Run::Run(platform::FileSystem& fileSystem, platform::Clock& clock, FrontEnd frontEnd,
         std::string logDirectory)
    : fileSystem_(fileSystem), clock_(clock), frontEnd_(frontEnd), logDirectory_(std::move(logDirectory)) {
  ResetRunCounters();
}

void Run::LogError(std::string_view text, const LogNumber& number, std::string_view origin,
                   Severity severity) {
  ++counters.Errors;
  // The texts may come from a mail: one event stays one line.
  const std::string line = BlankControlCharacters(
      fmt::format(" {} {} - {} -> {}", SeverityLabel(severity), NumberText(number), origin, text));
  std::string bytes;
  if (!ErrorLogExists()) {
    bytes = fmt::format("Start Logfile {}\r\n", FormatDateTime(clock_.Now()));
  }
  bytes += ToCodePage(line) + "\r\n";
  // A log that cannot be written must not stop the run that it reports on.
  (void)fileSystem_.AppendFile(ErrorLogPath(), bytes);
}

std::string Run::ErrorLogPath() const { return JoinPath(logDirectory_, ErrorLogName); }

bool Run::ErrorLogExists() { return fileSystem_.FileExists(ErrorLogPath()); }

void Run::DeleteErrorLog() {
  // A log that is missing or cannot be removed is simply written further.
  (void)fileSystem_.DeleteFile(ErrorLogPath(), false);
}

void Run::ResetRunCounters() {
  counters = {};
  startTime_ = clock_.Now();
  startMilliseconds_ = clock_.SteadyMilliseconds();
}

std::int64_t Run::ElapsedSeconds() { return (clock_.SteadyMilliseconds() - startMilliseconds_) / 1000; }

void Run::ResetCancel() {
  cancelRequested_ = false;
  cancelLogged_ = false;
}

bool Run::CheckCancel() {
  if (frontEnd_.progress.Pump()) {
    cancelRequested_ = true;
  }
  if (cancelRequested_ && !cancelLogged_) {
    cancelLogged_ = true;
    LogError("Abbruch durch Benutzer", std::int64_t{-1}, "CancelReq", Severity::Error);
  }
  return cancelRequested_;
}

}  // namespace velmora::run
