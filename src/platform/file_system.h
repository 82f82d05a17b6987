// FileSystem: the one seam between the program and the disk. Paths are Windows paths (`Z:\x`,
// `\\SERVER\DAVID\archive`), names are case-insensitive and case-preserving, contents are bytes. The
// implementation is the only place that knows host paths; tests put a faulty one in its place.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/date_time.h"
#include "base/result.h"

namespace velmora::platform {

// The error numbers of file operations, each with one German text.
namespace file_error {
inline constexpr int BadName = 52;
inline constexpr int FileNotFound = 53;  // also: a mask without a matching file
inline constexpr int DeviceError = 57;
inline constexpr int AlreadyExists = 58;
inline constexpr int DiskFull = 61;
inline constexpr int AccessDenied = 70;  // also: a read-only target
inline constexpr int PathNotFound = 76;  // a missing parent directory; a mask without a matching folder
}  // namespace file_error

// The German text of a file error number; "Gerätefehler" for any other number.
std::string FileErrorText(int number);

struct FileEntry {
  std::string Name;
  bool IsFolder = false;
  bool IsLink = false;  // a symbolic link, whatever it points to
  std::int64_t Size = 0;
  DateTime Modified;  // last write, local time
  bool Hidden = false;
  bool ReadOnly = false;
};

enum class Create {
  Overwrite,  // make the file or replace its content
  Exclusive,  // AlreadyExists when the name is taken, in any case
};

struct WriteOptions {
  Create Mode = Create::Overwrite;
  std::optional<DateTime> Time = {};  // all times of the file; set through the open descriptor
  bool OwnerOnly = false;             // readable by its owner alone, for mail, passwords and temporary data
  bool InPlace = false;  // CopyFile: an existing target is overwritten where it lies and then cut to length,
                         // which spares the disk; a copy that fails leaves a mixture of both contents
  std::string WorkName = {};  // ReplaceFile: the name beside the target under which the new content is
                              // written before it is renamed over; a free name of its own when empty
};

// An open file that is written from front to end. A failed or short write is an error, never a silent
// truncation; Close reports what came late (disk full). Destroyed without Close, the file stays as far as
// written.
class FileWriter {
 public:
  virtual ~FileWriter() = default;
  virtual Status Write(std::string_view bytes) = 0;
  virtual Status Close() = 0;
};

// An open file that is read from front to end, with the way back to a position.
class FileReader {
 public:
  virtual ~FileReader() = default;
  // At most `count` bytes; an empty text at the end of the file.
  virtual Result<std::string> Read(std::size_t count) = 0;
  virtual Status Seek(std::int64_t position) = 0;
  virtual Result<std::int64_t> Size() = 0;
};

enum class ListWhat { Files, Folders, All };

struct Drive {
  std::string Name;       // "Z:"
  std::string ShareName;  // `\\SERVER\DAVID` when a share lies in the same host directory, else ""
  bool IsReady = false;
};

class FileSystem {
 public:
  virtual ~FileSystem() = default;

  // --- Looking. ---
  virtual bool FileExists(std::string_view path) = 0;
  virtual bool FolderExists(std::string_view path) = 0;
  virtual Result<FileEntry> GetEntry(std::string_view path) = 0;  // FileNotFound, PathNotFound
  // Entries whose names match `mask` ("*.*" and "*" match all, "?" one character), in folded ordinal order,
  // "." and ".." left out. A folder that cannot be opened: PathNotFound or AccessDenied. No match: an empty
  // list.
  virtual Result<std::vector<FileEntry>> List(std::string_view folder, std::string_view mask,
                                              ListWhat what) = 0;

  // --- Whole files. ---
  virtual Result<std::string> ReadFile(std::string_view path) = 0;
  // Not atomic: for files of an export. Use ReplaceFile for what must never be half.
  virtual Status WriteFile(std::string_view path, std::string_view bytes,
                           const WriteOptions& options = {}) = 0;
  // Written beside, synced and renamed over: after a crash there is the old or the new content.
  virtual Status ReplaceFile(std::string_view path, std::string_view bytes,
                             const WriteOptions& options = {}) = 0;
  // All or nothing: a failed append leaves the file as it was, except where another process has appended to
  // it meanwhile.
  virtual Status AppendFile(std::string_view path, std::string_view bytes) = 0;
  virtual Result<std::unique_ptr<FileReader>> OpenReader(std::string_view path) = 0;
  virtual Result<std::unique_ptr<FileWriter>> OpenWriter(std::string_view path,
                                                         const WriteOptions& options = {}) = 0;
  // Options.Mode tells what happens to an existing target; the time is the source's unless given.
  virtual Status CopyFile(std::string_view source, std::string_view target,
                          const WriteOptions& options = {}) = 0;
  virtual Status MoveFile(std::string_view source, std::string_view target) = 0;  // AlreadyExists

  // --- Deleting; a symbolic link is removed, never followed. `force` also removes what is read-only. ---
  // A mask in the last component deletes every matching file; without a match FileNotFound.
  virtual Status DeleteFile(std::string_view path, bool force) = 0;
  virtual Status DeleteFolder(std::string_view path, bool force) = 0;  // with all that is in it

  // --- Folders, attributes, times. ---
  virtual Status CreateFolder(std::string_view path,
                              bool ownerOnly = false) = 0;  // AlreadyExists, PathNotFound
  virtual Status SetHidden(std::string_view path, bool hidden) = 0;
  virtual Status SetReadOnly(std::string_view path, bool readOnly) = 0;
  virtual Status SetTimes(std::string_view path, DateTime time) = 0;
  // Everything written through this object so far stands on its disk when this returns.
  virtual Status SyncWritten() = 0;

  // --- Names. ---
  // `fileName` if it is free in the folder, else the first free of head + counter + rest, split at the first
  // ".": Report.htm, Report1.htm, Report2.htm. Linear over many calls with one head.
  virtual std::string UniqueFileName(std::string_view folder, std::string_view fileName) = 0;

  // --- Drives, shares and host paths. ---
  virtual std::vector<Drive> Drives() = 0;
  // The share (`\\SERVER\SHARE`) of a drive, "" when it has none.
  virtual std::string ShareOfDrive(std::string_view drive) = 0;
  // What a person typed as a file path in the Windows form: what starts with "/", "./" or "~/" is taken as a
  // host path and turned into its Windows form, everything else comes back as it is.
  virtual std::string FromUserPath(std::string_view text) = 0;
  // The host path for libraries that open files on their own (SQLite, mail parser, viewers). Resolves case.
  virtual Result<std::string> HostPath(std::string_view path) = 0;
  virtual std::string FromHostPath(std::string_view hostPath) = 0;

  // --- Being told. ---
  // `before` runs before any file at or below `folder` is opened, copied, renamed, replaced or deleted
  // through this object, with the path of the file. Until the returned token is destroyed.
  virtual std::shared_ptr<void> RegisterSubtree(std::string_view folder,
                                                std::function<void(std::string_view path)> before) = 0;
  // Counts every change made through this object at or below `folder` (creation, rename, write, deletion).
  virtual std::uint64_t Generation(std::string_view folder) = 0;
};

}  // namespace velmora::platform
