// The list of the file pane: the way up, directories and files.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "panes/columns.h"
#include "panes/rows.h"
#include "platform/file_system.h"

namespace velmora::panes {

struct FileList {
  std::vector<FileRow> Rows;
  int Directories = 0;
  int Files = 0;
};

// Whether a path is the root of a drive or share, above which there is no directory.
bool IsDriveRoot(std::string_view path);
// With "\" at the end; of a root itself.
std::string DriveRootOf(std::string_view path);

// Each appends in the order of the file system; PathNotFound or AccessDenied for a directory that cannot be
// opened.
Status ListDirectories(FileList& list, platform::FileSystem& fileSystem, std::string_view directory);
Status ListFiles(FileList& list, platform::FileSystem& fileSystem, std::string_view directory,
                 bool hideHelperFiles);
// Directories and files together; the DirBackEntry keeps the top.
void SortFSList(FileList& list, const SortState& sorting);

}  // namespace velmora::panes
