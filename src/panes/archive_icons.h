// Which icon stands for an archive in a list.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "platform/file_system.h"
#include "store/session.h"
#include "store/special_archives.h"

namespace velmora::panes {

// The directories of the special archives, read once per sign-on.
class ArchiveIcons {
 public:
  ArchiveIcons() = default;
  explicit ArchiveIcons(store::Session& session);

  // A position in store::ListImageKeys. `id`: the physical directory of the archive.
  int IconOf(std::string_view id, bool isShortCut, platform::FileSystem& fileSystem) const;

 private:
  // Normalised, in capitals, without "\" at the end; position 0 and those of missing archives are empty.
  std::array<std::string, store::SpecialArchives.size() + 1> paths_;
};

}  // namespace velmora::panes
