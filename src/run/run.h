// What every long run shares: counters with a start time, one error log, one cancel request.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "base/result.h"
#include "platform/clock.h"
#include "platform/file_system.h"
#include "run/front_ends.h"

namespace velmora::run {

enum class Severity { Error, Warning };

// All counters of all kinds of run; each run uses its own.
struct Counters {
  std::int64_t Mails = 0, Attachments = 0, Faxes = 0, VoiceMails = 0, Addresses = 0, Links = 0, EmlFiles = 0;
  std::int64_t Errors = 0;
  std::int64_t Entries = 0;  // entries handled; feeds the progress display
  std::int64_t Archives = 0, Messages = 0, Rules = 0, Directories = 0, Files = 0, ChangedArchives = 0;

  bool operator==(const Counters&) const = default;
};

// A number, or the text of a send status that stands where other entries have their number.
using LogNumber = std::variant<std::int64_t, std::string>;

// The state of the run that is going on. One per process, created in main.
class Run {
 public:
  // `logDirectory`: Windows path of the directory that holds VelmoraError.log.
  Run(platform::FileSystem& fileSystem, platform::Clock& clock, FrontEnd frontEnd, std::string logDirectory);

  Counters counters;
  bool BatchMode = false;  // unattended: no box is ever shown

  FrontEnd& frontEnd() { return frontEnd_; }
  platform::FileSystem& fileSystem() { return fileSystem_; }
  platform::Clock& clock() { return clock_; }

  // --- Log: VelmoraError.log, one line per event, Windows-1252 with CR LF, opened for appending per entry.
  // --- Counts an error, warnings included, and writes ` Fehler: <number> - <origin> -> <text>`. A log that
  // cannot be written loses the entry. Line breaks and control characters in the texts become blanks.
  void LogError(std::string_view text, const LogNumber& number, std::string_view origin, Severity severity);
  // The form most failures take: number and text of an Error, `text` being the path or archive concerned.
  void LogError(std::string_view text, const Error& error, Severity severity = Severity::Error) {
    LogError(text, std::int64_t{error.Number}, error.Text, severity);
  }
  std::string ErrorLogPath() const;
  bool ErrorLogExists();
  void DeleteErrorLog();  // its absence is no error

  // --- Counters and time. ---
  void ResetRunCounters();  // zeroes all and sets the start time to now
  std::int64_t ElapsedSeconds();
  DateTime StartTime() const { return startTime_; }

  // --- Cancel. ---
  void ResetCancel();
  void RequestCancel() { cancelRequested_ = true; }
  // Lets the interface breathe, then tells whether a cancel is requested. The first call that sees it writes
  // the log entry of the cancellation, once per run.
  bool CheckCancel();
  bool CancelRequested() const { return cancelRequested_; }

 private:
  platform::FileSystem& fileSystem_;
  platform::Clock& clock_;
  FrontEnd frontEnd_;
  std::string logDirectory_;
  DateTime startTime_;
  std::int64_t startMilliseconds_ = 0;
  bool cancelRequested_ = false;
  bool cancelLogged_ = false;
};

}  // namespace velmora::run
