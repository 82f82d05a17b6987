// The server's logs below `code\`, message databases as archives have them: copied into an archive as
// `archive.dat` they can be read there. david.rec has an entry for each mail that came into the store,
// david.log one for each that was sent.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/date_time.h"
#include "base/result.h"
#include "platform/clock.h"
#include "platform/file_system.h"
#include "store/embedded/store_layout.h"
#include "store/item.h"

namespace velmora::store::embedded {

inline constexpr std::string_view ReceiveLogName = "david.rec";
inline constexpr std::string_view SendLogName = "david.log";

// Makes the logs that are missing, without entries.
Status MakeServerLogs(platform::FileSystem& fileSystem, platform::Clock& clock, const StoreLayout& layout);

// An entry of a log: what a list shows of the mail, in as few fields as will do, and a comment that tells
// where it came from and went to.
struct LogEntry {
  DateTime Time;  // of the delivery, not of the mail
  std::string Subject, Sender, RecipientText;
  std::int64_t SendStatus = 0;
  std::string Comment;
};
// What the mail itself gives of its log entry; what cannot be read of it stays empty.
LogEntry LogEntryOf(DvItem& item, DateTime time);

// The logs of one session. Entries are collected and written many at once, in a short transaction per log and
// with the log open for no longer than that: other processes write it, too, and it may be copied as a file at
// any time. No work fails because of a log: what went wrong is kept as a warning.
class ServerLogs {
 public:
  ServerLogs(platform::FileSystem& fileSystem, platform::Clock& clock, const StoreLayout& layout);
  ~ServerLogs();  // writes
  ServerLogs(const ServerLogs&) = delete;
  ServerLogs& operator=(const ServerLogs&) = delete;

  void NoteReceived(LogEntry entry);
  void NoteSent(LogEntry entry);
  // Whether so much has been collected, or for so long, that it is time to write. The mails come first:
  // commit them before.
  bool IsDue() const;
  // Cheap when nothing has been collected. Entries that cannot be written are tried again later, as long as
  // they are not too many.
  void Write();
  // What hindered the logs since the last call.
  std::optional<Error> TakeWarning();

 private:
  struct Log {
    std::string Path;
    std::vector<LogEntry> Entries;
  };

  void Note(Log& log, LogEntry entry);
  Status WriteLog(const Log& log);

  platform::FileSystem& fileSystem_;
  platform::Clock& clock_;
  Log received_, sent_;
  std::int64_t dueAt_ = 0;  // steady milliseconds, while anything is collected
  bool isHeldUp_ = false;   // the last writing failed: the next one waits until then
  std::optional<Error> warning_;
};

}  // namespace velmora::store::embedded
