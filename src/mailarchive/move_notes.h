// What a move has written, noted in the directory of the mail archive for as long as the entries may still
// stand in the store. A move that was killed leaves its notes there: the next one takes back what was written
// of an entry that it meets again, so that the entry does not stand in the mail archive twice, or half.
//
// The notes are lines of UTF-8 ended by LF, appended until a commit of the store settles them: "*", the key
// and the ID of the archive begin an entry; each line behind it is the relative path of a file that is about
// to be made for it; "?" before a path takes that back.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "mailarchive/format/descriptor.h"
#include "platform/file_system.h"
#include "store/item.h"

namespace velmora::mailarchive {

class MoveNotes {
 public:
  // `directory`: of the mail archive, with "\" at its end. `archiveId`: of the archive that is moved.
  MoveNotes(platform::FileSystem& fileSystem, std::string directory, std::string_view archiveId);

  // Before the first file of an entry is made: removes the files that a killed move has made for it, unless a
  // descriptor among them tells of another entry than `entry`.
  void BeginEntry(store::EntryKey key, const IndexFields& entry);
  // Before a file of the entry is made of which none stands there, and once it turns out that somebody else
  // makes it. Notes that cannot be written only cost what they are for.
  void NoteFile(std::string_view relativePath);
  void Withdraw(std::string_view relativePath);

  // The store is committed: what was moved is gone from it for good. Only the notes of entries that were not
  // met yet stay, so that notes never outgrow what one commit takes.
  void Settle();

  static std::string PathIn(std::string_view directory);

 private:
  void ReadOld();
  void TakeBack(const std::string& entryLine, const IndexFields& entry);
  bool IsOther(const std::string& descriptor, const IndexFields& entry);
  void Append(std::string_view line);

  platform::FileSystem& fileSystem_;
  std::string directory_, archiveId_;
  // The entry lines of older notes by the paths that stand under them; nothing until they were read. The
  // other way round all paths that did when they were read: some may have gone from the first since.
  std::optional<std::map<std::string, std::string>> old_;
  std::map<std::string, std::vector<std::string>> oldPaths_;
};

}  // namespace velmora::mailarchive
