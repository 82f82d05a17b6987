// The open databases of a store and their transactions.
//
// SQLite's locks die when any other descriptor of the file is closed in the same process, and a journal of a
// process that died follows the file. So the pool is told by the file system before a database is touched as
// a file, commits and closes it then, and checks device and inode before each use.
//
// A write begins a transaction that stays open for at most 200 ms, so that many writes share one commit.
// Order of a commit: the archives that the changes were copied to, the files exported before a deletion, the
// content files, the database; only then are the content files of deleted entries removed. A process killed
// at any point has lost no entry; one that it left in two archives goes from its source at the next opening
// (move_journal.h).
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/result.h"
#include "platform/clock.h"
#include "platform/file_system.h"
#include "store/embedded/message_database.h"
#include "store/embedded/move_journal.h"

namespace velmora::store::embedded {

inline constexpr std::size_t MaxOpenDatabases = 64;
inline constexpr std::int64_t LongestTransaction = 200;  // ms

// Whether a file name is that of a database or of its journal.
bool IsDatabaseFile(std::string_view fileName);

// A database in use, with what its transaction has still to do.
class OpenArchive {
 public:
  MessageDatabase& Database() { return *database_; }
  const std::string& HostDirectory() const { return hostDirectory_; }
  std::string ContentPath(EntryKey key, int number) const;
  mode_t FileMode() const { return fileMode_; }  // of new content files

  // --- Of the running transaction. ---
  // A key that no entry has or had and no content file bears.
  Result<EntryKey> NextKey();
  void NoteWrittenFile(std::string path) { writtenFiles_.push_back(std::move(path)); }
  void NoteRemovedFile(std::string path) { removedFiles_.push_back(std::move(path)); }
  void NoteDeletion() { hasDeletions_ = true; }

 private:
  friend class DatabasePool;
  struct Identity {
    std::uint64_t Device = 0, Inode = 0;
    bool operator==(const Identity&) const = default;
  };

  // Notes the files that no entry has had yet.
  Status FindHighestFile(EntryKey highestEntry);
  void EndTransaction();

  std::string folded_;  // the directory in folded case, by which the pool knows it
  std::string directory_, hostDirectory_, hostPath_;
  mode_t fileMode_ = 0;
  Identity identity_;
  std::unique_ptr<MessageDatabase> database_;
  std::optional<EntryKey> highestKey_;  // of rows and files, while the transaction runs
  std::optional<EntryKey> highestFile_;
  std::vector<std::string> writtenFiles_, removedFiles_;
  bool hasDeletions_ = false;
  std::set<std::string> commitAfter_;  // the archives whose transactions must stand first
  // The sources of entries that arrived here in transactions of this process, once they have committed.
  std::set<std::string> settledSources_;
  bool isTidied_ = false;   // the arrivals of processes that have ended are forgotten
  std::int64_t begun_ = 0;  // of the transaction, steady milliseconds
  std::uint64_t lastUse_ = 0;
};

// What the calls give is valid until the next call of the pool or the file system, except that the last two
// archives given stay valid together.
class DatabasePool {
 public:
  // `moveJournals`: the folder of the notes on moves; without one moves are not noted.
  DatabasePool(platform::FileSystem& fileSystem, platform::Clock& clock, std::string moveJournals);
  ~DatabasePool();  // commits

  // Of reading. A database in a transaction keeps the usual patience: what is written must come to stand.
  void SetPatience(Patience patience);

  // Null for a directory without messages.
  Result<OpenArchive*> ForReading(std::string_view directory);
  // In a transaction; makes the database.
  Result<OpenArchive*> ForWriting(std::string_view directory);
  // Both in a transaction; the source's is committed after the target's.
  struct Moving {
    OpenArchive* Source = nullptr;
    OpenArchive* Target = nullptr;
  };
  Result<Moving> ForMoving(std::string_view source, std::string_view target);

  // The name under which a move's target notes what arrives; "" when nothing is to be noted.
  const std::string& MoveProcess() const { return journal_.Name(); }

  Status Commit();
  Status CommitAndClose(std::string_view directoryOrBelow);
  Status CommitArchive(OpenArchive& archive);

 private:
  using Archives = std::unordered_map<std::string, std::unique_ptr<OpenArchive>>;

  Result<OpenArchive*> Find(std::string_view directory, bool create);
  Result<std::unique_ptr<OpenArchive>> Open(std::string_view directory, bool create);
  Status CommitOverdue();
  Status Begin(OpenArchive& archive);
  Status RemoveDoomedFiles(OpenArchive& archive);
  Status ForgetArrivals(OpenArchive& archive);
  void NoteSettled(const OpenArchive& source);
  void Abandon(OpenArchive& archive);
  Status Close(Archives::iterator archive);
  void MakeRoom();
  void Watch(std::string_view directory);
  void BeforeFileOperation(std::string_view path);

  platform::FileSystem& fileSystem_;
  platform::Clock& clock_;
  Archives archives_;
  Patience patience_ = Patience::Usual;
  std::uint64_t uses_ = 0;
  std::unordered_map<std::string, std::shared_ptr<void>> watched_;  // by share
  std::string moveJournals_;
  MoveJournal journal_;
  bool hasAbandoned_ = false;
  std::optional<Error> failure_;  // of a commit that nobody could be told of, for the next call
};

}  // namespace velmora::store::embedded
