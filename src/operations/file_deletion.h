// Deleting what is marked in a directory of the file system. Entries of a mail archive go with all of their
// components; symbolic links are removed, never followed.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "mailarchive/content_index.h"
#include "run/run.h"

namespace velmora::operations {

struct FileDeleteOptions {
  // --- The names are those of the dialog's check boxes. ---
  bool EnDelDirs = false;  // directories themselves, not only what is in them
  bool EnMakeIdx = false;  // the index of a mail archive's directory, of this one alone, is made anew
  // --- Of the settings. ---
  bool HideMailArcHelperFiles = true;  // what the pane shows are entries, not files
  bool DateIndexSortedUp = true;
  bool ClearErrorLog = false;
};

struct FileSelection {
  struct Item {
    std::string Name;  // in the directory
    bool IsFolder = false;
  };
  std::string Directory;
  std::vector<Item> Items;
};

// The whole run on marked files and directories, from the last to the first: log, status, items, index. A
// name that would lead out of the directory is refused, and so is a directory that ReasonNotToDelete keeps.
// `davidRoot`: where the archives lie, "" for nowhere. A box tells of failures.
void RunDeleteFiles(mailarchive::IndexContext& context, const FileDeleteOptions& options,
                    const FileSelection& selection, std::string_view davidRoot);

// The folder with all that is in it, or without `deleteFolder` only what is in it. A folder that resists has
// the attributes of its files cleared and is tried once more. Failures are logged; denied access is told in a
// box as well. Nothing happens behind a symbolic link, nor to the root of a drive or share.
void DeleteFolderTree(run::Run& run, std::string_view folder, bool deleteFolder);

// Clears the attributes of all files of the folder and below it, and deletes them; what resists stays.
void ClearAttributes(platform::FileSystem& fileSystem, std::string_view folder);

// Why a folder must not be deleted: it is, or holds, the root of a drive or the archives. "" when it may be.
std::string ReasonNotToDelete(platform::FileSystem& fileSystem, std::string_view folder,
                              std::string_view davidRoot);

}  // namespace velmora::operations
