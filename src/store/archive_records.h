// The records of an archive.dir on the disk, whoever else works with the file: finding, writing and deleting
// them. Directories are physical ones, the ID of an archive. Every change takes the exclusive lock of the
// directory and replaces the list as a whole (archive_files.h); nothing is held open or cached in between.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "platform/file_system.h"
#include "store/archive_record.h"
#include "store/record_edit.h"

namespace velmora::store {

// A record and where it stood in its list, from 1.
struct NumberedRecord {
  int Number = 0;
  DirRecord Record;

  bool operator==(const NumberedRecord&) const = default;
};

enum class PathMatch {
  Text,         // the same text, without regard to case
  SameArchive,  // two spellings of one archive's directory, see IsSameArchive
};

struct RecordSearch {
  std::string Path;                      // what tag 3 must be
  std::optional<std::string> Name = {};  // what tag 4 must be, exactly
  int FirstRecord = 0;                   // the first record to look at; 0 means 1
  PathMatch Match = PathMatch::Text;
};

// The first record in the bytes of a list that matches.
std::optional<NumberedRecord> FindRecordIn(std::string_view content, const RecordSearch& search);

// The first record of the directory's list that matches. A record without a path matches nothing, and the
// search goes on behind it. store_error::NotFound when there is none, or no list; Damaged, NoAccess, Busy.
Result<NumberedRecord> FindArchiveRecord(platform::FileSystem& fileSystem, std::string_view directory,
                                         const RecordSearch& search);
// All of them, in record order; an empty list is no error.
Result<std::vector<NumberedRecord>> FindAllRecords(platform::FileSystem& fileSystem,
                                                   std::string_view directory, const RecordSearch& search);

// Changes a list under its exclusive lock: `change` gets the whole records, without a torn one at the end,
// and fails to leave everything as it is. What it leaves unchanged is not written. NotFound without the
// directory.
Status ChangeArchiveList(platform::FileSystem& fileSystem, std::string_view directory,
                         const std::function<Status(std::string& records)>& change);

// Whether a record makes its directory an archive, so that archive.add there is a copy of it.
enum class RecordKind { Own, Link };

// Puts `record` in the place of `old`, which is looked for at its number first and, when others have changed
// the list meanwhile, by its bytes. NotFound when it is gone. An archive's own record is written to the
// archive.add of its directory, too.
Status WriteArchiveRecord(platform::FileSystem& fileSystem, std::string_view directory,
                          const NumberedRecord& old, const DirRecord& record, RecordKind kind);
// The copy of an archive's own record in the archive.add of its directory; nothing where that is missing.
Status WriteOwnRecord(platform::FileSystem& fileSystem, const DirRecord& record);
// Behind the last record; gives its number. archive.add is not touched.
Result<int> AppendArchiveRecord(platform::FileSystem& fileSystem, std::string_view directory,
                                const DirRecord& record);

// Takes a record out; those behind it stand one number lower. Only where it stands at its number, byte for
// byte: when others have changed the list meanwhile, an equal record elsewhere may be the last one, and is
// not touched. NotFound.
Status DeleteArchiveRecord(platform::FileSystem& fileSystem, std::string_view directory,
                           const NumberedRecord& record);
// Takes out all of them in one rewrite, so that the backup holds the list as it was before. Gives how many
// still stood at their numbers.
Result<int> DeleteArchiveRecords(platform::FileSystem& fileSystem, std::string_view directory,
                                 std::span<const NumberedRecord> records);

struct RewrittenPaths {
  int Changed = 0;
  std::vector<int> TooLong;  // the numbers of records whose new path did not fit: they are as they were
};
// Passes every record of the directory's archive.dir, and that of its archive.add, through ReplaceRecordPath.
// A missing list is a success.
Result<RewrittenPaths> RewriteRecordPaths(platform::FileSystem& fileSystem, std::string_view directory,
                                          std::span<const PathReplacement> replacements);

// Copies each of archive.dir, archive.dat, archive.add and archive.urt that exists to its .bak, overwriting;
// gives how many. A copy that fails leaves the other files to be copied all the same, and is the result.
Result<int> BackupArchiveFiles(platform::FileSystem& fileSystem, std::string_view directory);

}  // namespace velmora::store
