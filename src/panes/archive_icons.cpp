#include "panes/archive_icons.h"

#include <algorithm>

#include "base/paths.h"
#include "base/text.h"
#include "store/icon_keys.h"

namespace velmora::panes {
namespace {

std::string PathKey(std::string_view id) { return ToUpper(StripBackslash(NormalizePath(id))); }

constexpr int ShortCutIcon = 0;
static_assert(store::ListImageKeys[ShortCutIcon] == "ALink");
static_assert(store::ListImageKeys[store::ArchiveIconOffset + store::RemoteAccessArchivePosition] ==
              store::RemoteAccessIconKey);

}  // namespace

ArchiveIcons::ArchiveIcons(store::Session& session) {
  if (session.Account == nullptr) return;
  const std::string root = session.DefaultArchive == nullptr ? "" : session.DefaultArchive->ID();
  for (std::size_t i = 0; i < store::SpecialArchives.size(); ++i) {
    const auto& special = store::SpecialArchives[i];
    if (special.Kind == 0) {
      if (!root.empty()) paths_[i + 1] = PathKey(JoinPath(root, special.Path));
      continue;
    }
    const auto archive = session.Account->GetSpecialArchive(special.Kind);
    // One that the server lacks, or that this user may not use, has no icon of its own.
    if (archive) paths_[i + 1] = PathKey((*archive)->ID());
  }
}

int ArchiveIcons::IconOf(std::string_view id, bool isShortCut, platform::FileSystem& fileSystem) const {
  if (isShortCut) return ShortCutIcon;
  const auto path = PathKey(id);
  std::size_t position = 0;
  const auto equal = std::find(paths_.begin() + 1, paths_.end(), path);
  if (equal != paths_.end()) position = static_cast<std::size_t>(equal - paths_.begin());
  for (std::size_t i = 1; i < paths_.size(); ++i) {
    const bool coversAllBelow = store::SpecialArchives[i - 1].Kind == 0 && !paths_[i].empty();
    if (coversAllBelow && IsSameOrBelow(path, paths_[i])) position = i;
  }
  if (position > 0) return store::ArchiveIconOffset + static_cast<int>(position);
  const bool isRemote = fileSystem.FileExists(JoinPath(id, "access.ini"));
  return store::ArchiveIconOffset +
         (isRemote ? store::RemoteAccessArchivePosition : store::DefaultArchivePosition);
}

}  // namespace velmora::panes
