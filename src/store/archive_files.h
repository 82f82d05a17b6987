// The files of an archive directory that hold records: how they are locked and how they are replaced.
// Everyone who writes records goes through here, so that no list is ever seen half.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/result.h"
#include "platform/file_system.h"
#include "store/patience.h"

namespace velmora::store {

namespace archive_file {
inline constexpr std::string_view List = "archive.dir";  // the sub-archives and links of this archive
inline constexpr std::string_view Self = "archive.add";  // one record: the archive itself
inline constexpr std::string_view ListBackup = "archivedir.bak";
inline constexpr std::string_view Work = "archive.vlw";  // stands only during a rewrite
inline constexpr std::string_view Messages = "archive.dat";
inline constexpr std::string_view Rules = "archive.urt";
}  // namespace archive_file

// A lock on an archive directory that holds between processes and between owners in one process; released
// when destroyed or when the process dies. Whoever holds one must not ask for another on the same directory,
// and takes several in the order of FoldCase of their paths.
class ArchiveLock {
 public:
  enum class Mode { Shared, Exclusive };  // readers, writers

  // Waits for other holders: store_error::Busy when patience is at an end. NotFound when the directory is not
  // there, NoAccess when it cannot be opened.
  static Result<ArchiveLock> Acquire(platform::FileSystem& fileSystem, std::string_view directory, Mode mode,
                                     Patience patience = Patience::Usual);
  ArchiveLock(ArchiveLock&& other) noexcept;
  ArchiveLock& operator=(ArchiveLock&& other) noexcept;
  ArchiveLock(const ArchiveLock&) = delete;
  ArchiveLock& operator=(const ArchiveLock&) = delete;
  ~ArchiveLock();

 private:
  explicit ArchiveLock(int descriptor) : descriptor_(descriptor) {}
  int descriptor_;
};

enum class DirectoryState {
  There,
  Gone,     // the directory around it can be looked into and does not have it
  Unknown,  // on a share that nobody maps, or below what may not be looked into
};
DirectoryState LookForDirectory(platform::FileSystem& fileSystem, std::string_view directory);

// No sound file of records is longer; one beyond it is not read into memory.
inline constexpr std::int64_t LongestRecordFile = std::int64_t{200'000} * 430;

// Whether archive.dir is missing while archive.vlw and archivedir.bak are there: what a program leaves that
// deletes the list before it writes the new one, and was killed in between. The backup is then the list.
bool IsListInterrupted(platform::FileSystem& fileSystem, std::string_view directory);

// The bytes of the list as it stands; of an interrupted one those of the backup. A missing one is empty.
// store_error::Damaged or NoAccess when it cannot be read, NotFound without the directory. For whoever holds
// a lock on it.
Result<std::string> ReadArchiveList(platform::FileSystem& fileSystem, std::string_view directory);

// Puts the backup in the place of an interrupted list, whose work file then goes; nothing to do for any
// other. The caller holds the exclusive lock.
Status RecoverArchiveList(platform::FileSystem& fileSystem, std::string_view directory);

// What a failed write in an archive directory is to callers of the store: NoAccess, NotFound or Failed, with
// the directory in the text.
Error ArchiveWriteError(std::string_view directory, const Error& error);

// Puts a new list in the place of archive.dir, which is recovered first where it was interrupted. The old
// list is copied to archivedir.bak; the new one is written whole to archive.vlw, synced and renamed over, so
// that at every moment the old or the new list stands. The caller holds the exclusive lock.
Status ReplaceArchiveList(platform::FileSystem& fileSystem, std::string_view directory,
                          std::string_view content);

}  // namespace velmora::store
