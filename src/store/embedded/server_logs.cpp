#include "store/embedded/server_logs.h"

#include <fmt/core.h>

#include <algorithm>
#include <utility>

#include "base/paths.h"
#include "platform/make_folders.h"
#include "store/archive_files.h"
#include "store/embedded/entry_record.h"
#include "store/embedded/message_database.h"
#include "store/embedded/message_store.h"
#include "store/vocabulary.h"

namespace velmora::store::embedded {
namespace {

constexpr std::size_t EnoughEntries = 1'000;
// Beyond this the oldest entries of a log that cannot be written are given up.
constexpr std::size_t MostEntries = 20'000;
constexpr std::int64_t LongestCollection = 1'000;   // ms
constexpr std::int64_t PauseAfterFailure = 10'000;  // ms: a log that another process holds is waited for once

// An empty message database in `directory`: the store makes one when an entry is written, and keeps it when
// the entry goes.
Status MakeEmptyDatabase(platform::FileSystem& fileSystem, platform::Clock& clock,
                         const std::string& directory) {
  MessageStore messages(fileSystem, clock);
  const auto entry = messages.CreateEntry(directory, item_type::EMail);
  if (!entry) return Fail(entry.error());
  if (const auto deleted = (*entry)->Delete(); !deleted) return deleted;
  return messages.CommitAndClose(directory);
}

EntryRecord MakeRecord(const LogEntry& entry, EntryKey key, std::uint32_t flags) {
  EntryRecord record;
  auto& row = record.Row;
  row.Key = key;
  row.Type = item_type::EMail;
  row[Column::Flags] = std::int64_t{flags};
  row[Column::StatusTime] = entry.Time;
  row[Column::SenderAddress] = entry.Sender;
  row[Column::Subject] = entry.Subject;
  row[Column::RecipientText] = entry.RecipientText;
  row[Column::SendStatus] = entry.SendStatus;
  if (!entry.Comment.empty()) record.Texts.emplace(tag::Comment, entry.Comment);
  return record;
}

}  // namespace

Status MakeServerLogs(platform::FileSystem& fileSystem, platform::Clock& clock, const StoreLayout& layout) {
  for (const auto name : {ReceiveLogName, SendLogName}) {
    const std::string log = JoinPath(layout.Code(), name);
    if (fileSystem.FileExists(log)) continue;
    const std::string work = JoinPath(layout.Code(), "newlog");
    if (const auto made = platform::MakeFolders(fileSystem, work, true); !made) return made;
    if (const auto made = MakeEmptyDatabase(fileSystem, clock, work); !made) return made;
    if (const auto moved = fileSystem.MoveFile(JoinPath(work, archive_file::Messages), log); !moved)
      return moved;
    if (const auto deleted = fileSystem.DeleteFolder(work, true); !deleted) return deleted;
  }
  return {};
}

LogEntry LogEntryOf(DvItem& item, DateTime time) {
  const auto value = [&](FieldTag tag) { return item.Fields().Get(tag).value_or(FieldValue()); };
  return {.Time = time,
          .Subject = FieldText(value(tag::Subject)),
          .Sender = FieldText(value(tag::SenderAddress)),
          .RecipientText = FieldText(value(tag::RecipientText)),
          .SendStatus = FieldNumber(value(tag::SendStatus)),
          .Comment = {}};
}

ServerLogs::ServerLogs(platform::FileSystem& fileSystem, platform::Clock& clock, const StoreLayout& layout)
    : fileSystem_(fileSystem),
      clock_(clock),
      received_{JoinPath(layout.Code(), ReceiveLogName), {}},
      sent_{JoinPath(layout.Code(), SendLogName), {}} {}

ServerLogs::~ServerLogs() { Write(); }

void ServerLogs::NoteReceived(LogEntry entry) { Note(received_, std::move(entry)); }
void ServerLogs::NoteSent(LogEntry entry) { Note(sent_, std::move(entry)); }

void ServerLogs::Note(Log& log, LogEntry entry) {
  if (received_.Entries.empty() && sent_.Entries.empty()) {
    dueAt_ = clock_.SteadyMilliseconds() + LongestCollection;
  }
  log.Entries.push_back(std::move(entry));
}

bool ServerLogs::IsDue() const {
  const std::size_t collected = received_.Entries.size() + sent_.Entries.size();
  if (collected == 0) return false;
  return (!isHeldUp_ && collected >= EnoughEntries) || clock_.SteadyMilliseconds() >= dueAt_;
}

void ServerLogs::Write() {
  isHeldUp_ = false;
  for (auto* const log : {&received_, &sent_}) {
    if (log->Entries.empty()) continue;
    const auto written = WriteLog(*log);
    if (written) {
      log->Entries.clear();
      continue;
    }
    warning_ = Error{written.error().Number,
                     fmt::format("Das Protokoll ist nicht zu schreiben: {}", written.error().Text)};
    isHeldUp_ = true;
    dueAt_ = clock_.SteadyMilliseconds() + PauseAfterFailure;
    if (log->Entries.size() > MostEntries) {
      log->Entries.erase(log->Entries.begin(), log->Entries.end() - MostEntries);
    }
  }
}

Status ServerLogs::WriteLog(const Log& log) {
  // A log that somebody took away is made anew. That it is there already is no failure, and others show
  // below.
  if (!fileSystem_.FileExists(log.Path)) {
    (void)fileSystem_.WriteFile(log.Path, "", {platform::Create::Exclusive, std::nullopt, true});
  }
  const auto hostPath = fileSystem_.HostPath(log.Path);
  if (!hostPath) return Fail(hostPath.error());
  const auto database = MessageDatabase::Open(*hostPath, log.Path);
  if (!database) return Fail(database.error());
  if (const auto begun = (*database)->BeginWrite(); !begun) return begun;
  auto key = (*database)->HighestKeyEver();
  if (!key) return Fail(key.error());
  const std::uint32_t flags = &log == &received_ ? item_flag::Received : 0;
  for (const auto& entry : log.Entries) {
    if (const auto done = (*database)->Insert(MakeRecord(entry, ++*key, flags)); !done) return done;
  }
  return (*database)->Commit();
}

std::optional<Error> ServerLogs::TakeWarning() { return std::exchange(warning_, std::nullopt); }

}  // namespace velmora::store::embedded
