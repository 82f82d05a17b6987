// Making a folder with all folders above it.
#pragma once

#include <string>
#include <string_view>

#include "base/paths.h"
#include "platform/file_system.h"

namespace velmora::platform {

// Whatever is missing is made; `ownerOnly` holds for every folder that is made here. A folder that stands
// already is no error and stays as it is.
inline Status MakeFolders(FileSystem& fileSystem, std::string_view path, bool ownerOnly = false) {
  const std::string folder = StripBackslash(path);
  if (folder.empty() || fileSystem.FolderExists(folder)) {
    return {};
  }
  const std::string parent = StripBackslash(DirectoryOf(folder));
  if (parent.size() < folder.size()) {
    if (Status made = MakeFolders(fileSystem, parent, ownerOnly); !made) {
      return made;
    }
  }
  Status created = fileSystem.CreateFolder(folder, ownerOnly);
  const bool madeByAnother = !created && created.error().Number == file_error::AlreadyExists;
  return madeByAnother ? Status{} : created;
}

}  // namespace velmora::platform
