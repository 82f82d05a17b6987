#include "store/embedded/access_control.h"

#include <algorithm>

#include "base/paths.h"
#include "base/text.h"
#include "store/account.h"
#include "store/vocabulary.h"

namespace velmora::store::embedded {
namespace {

// Read, write, create, delete, scan and modify; the owner is set by administrators only.
constexpr std::uint32_t UserAccess = access_right::Read | access_right::Write | access_right::Create |
                                     access_right::Delete | access_right::Scan | access_right::Modify;
constexpr std::uint32_t AdministratorAccess = UserAccess | access_right::SetOwner;

// No tree is deeper; a chain of parents that is longer runs in a circle.
constexpr int MaxDepth = 500;

}  // namespace

AccessControl::AccessControl(ArchiveTree& tree, const StoreLayout& layout, const UserRecord& user)
    : tree_(tree), isAdministrator_((user.Rights & trustee::Administrator) != 0) {
  if (user.Rights == 0) return;
  anchors_ = {layout.UserRoot(user.Id), JoinPath(layout.ArchiveRoot(), "common"),
              JoinPath(layout.ArchiveRoot(), "address"), JoinPath(layout.ArchiveRoot(), "resource")};
}

std::uint32_t AccessControl::RightsOn(const ArchiveRecord& record) {
  if (isAdministrator_) return AdministratorAccess;
  std::string directory = record.Directory;
  for (int depth = 0; depth < MaxDepth && !directory.empty(); ++depth) {
    const auto own = tree_.FindByDirectory(directory);
    if (!own || own->Properties.AdminOnly) return 0;
    if (std::ranges::any_of(anchors_, [&](const auto& anchor) { return EqualsFold(anchor, directory); })) {
      return UserAccess;
    }
    directory = own->ParentDirectory;
  }
  return 0;
}

std::uint32_t AccessControl::RightsOnChild(const ArchiveRecord& child, std::uint32_t parentRights) {
  if (isAdministrator_) return AdministratorAccess;
  if (child.IsLink || parentRights == 0) return RightsOn(child);
  return child.Properties.AdminOnly ? 0 : parentRights;
}

}  // namespace velmora::store::embedded
