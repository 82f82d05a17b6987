// Content files beside an archive's database: `<key>.001`, `<key>.002`, ... with the key in eight upper-case
// hexadecimal digits. They are written once, exclusively and for their owner alone, and never changed. Host
// paths.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/result.h"
#include "platform/descriptor.h"
#include "store/item.h"

namespace velmora::store::embedded {

// "0000001A.001"
std::string ContentFileName(EntryKey key, int number);
// "0000001A"
std::string ContentFileBase(EntryKey key);
// The key of a file name of that form, any case; nothing for any other name.
std::optional<EntryKey> KeyOfContentFile(std::string_view fileName);

// The content files in a directory, with their keys.
struct FoundContentFile {
  EntryKey Key = 0;
  std::string Name;
};
Result<std::vector<FoundContentFile>> ListContentFiles(const std::string& directory);

// Who may read and write the files of a directory with mail: the owner alone, and the group where it may
// write to the directory.
mode_t MailFileMode(const std::string& directory);

// The errors bear the file error numbers; `AlreadyExists` when the name is taken.
Status WriteContentFile(const std::string& path, std::string_view bytes, mode_t mode);
// A file of the same bytes: a hard link where `mayShare` allows it and the file system can.
Status CopyContentFile(const std::string& source, const std::string& target, mode_t mode, bool mayShare);
bool IsContentFile(const std::string& path);
// Nothing for what is no file.
std::optional<std::int64_t> SizeOfContentFile(const std::string& path);
// A missing file counts as removed.
Status RemoveContentFile(const std::string& path);

// A content file that no entry has any more, or has yet. What later stands under its name, put there by a
// person or by a copy of the database under another archive, is another file.
struct StrayFile {
  std::string Name;
  std::int64_t Inode = 0;
  std::int64_t Modified = 0;  // nanoseconds since 1970
  bool IsDoomed = false;      // of a deleted entry; else of a delivery that did not come to its end
};
// Nothing when there is no such file.
std::optional<StrayFile> DescribeStrayFile(const std::string& path, bool isDoomed);
bool IsStillThere(const std::string& directory, const StrayFile& file);

// The files and their directory entries stand on the disk.
Status SyncContentFiles(const std::string& directory, const std::vector<std::string>& paths);

// A content file that is read in pieces from a position on.
class ContentReader {
 public:
  static Result<ContentReader> Open(const std::string& path);
  // At most `count` bytes; empty at the end of the file.
  Result<std::string> Read(std::int64_t offset, std::size_t count) const;

 private:
  ContentReader(platform::Descriptor file, std::string path)
      : file_(std::move(file)), path_(std::move(path)) {}

  platform::Descriptor file_;
  std::string path_;
};

}  // namespace velmora::store::embedded
