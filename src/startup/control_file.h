// The control file of unattended runs: `key = value` lines that say what to do.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "mailarchive/export_options.h"

namespace velmora::startup {

enum class BatchCommand { None, ArchiveCopyMove, ArchiveStatistics, CopyDavidLogs };

// Values of the key `logtype`; a sum of bits.
namespace log_type {
inline constexpr int Rx = 1;
inline constexpr int Tx = 2;
inline constexpr int Both = Rx | Tx;
}  // namespace log_type

// The keys of the command `archivestatistics`.
struct StatisticsKeys {
  std::string OutputFile;
  bool IncludeSubArchives = false;
  bool UserStatistics = false, OldUsers = false, ActiveUsers = false, UserDetails = false;
  bool ArchiveStatistics = false, ArchiveCharts = false;
  int ArchiveTypes = 0;  // 0 all, 1 user, 2 system, 3 other
  std::string ChartsLength;
  int ChartsMinimumSize = 0;
  int Sorting = 0;  // 0 all sizes, 1 own size, 2 all messages, 3 own messages, 4 sub-archives
};

struct ResultMailKeys {
  bool Send = false;
  std::string To, From, Subject, Body;
};

struct ControlFile {
  BatchCommand Command = BatchCommand::None;
  std::string UnknownCommand;         // the value that ended the reading, "" without one
  bool StoppedAtCommand = false;      // the reading ended at a command that does not exist
  std::vector<std::string> Archives;  // in the order of the file, whichever key named them
  int LogType = 0;
  std::string DstDirectory;  // as typed; "" when no line named it
  bool DeleteDst = false;
  mailarchive::ExportOptions Export;
  StatisticsKeys Statistics;
  ResultMailKeys Mail;
};

// What "%1", "%2" and "%3" stand for.
struct MomentTexts {
  std::string Date, Time, Computer;
};

// `bytes` are UTF-8 where they hold something beyond ASCII and are valid as such, else Windows-1252; a byte
// order mark is skipped. Lines that are empty, begin with ";" or hold no "=" are skipped, so are unknown
// keys. A command that does not exist ends the reading and leaves no command. `defaults` holds what the
// settings say.
ControlFile ParseControlFile(std::string_view bytes, const mailarchive::ExportOptions& defaults,
                             const MomentTexts& moment);

}  // namespace velmora::startup
