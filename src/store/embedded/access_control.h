// Who may use which archive.
//
// Administrators may use every archive. Other users have their own tree and the archives that all share
// (Common, the public addresses, the resources), each with what the tree holds below it; never an archive
// that is for administrators only, nor anything below such a one. There is no right to read alone: who may
// see an archive may work in it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "store/embedded/archive_tree.h"
#include "store/embedded/store_layout.h"
#include "store/embedded/users.h"

namespace velmora::store::embedded {

class AccessControl {
 public:
  AccessControl(ArchiveTree& tree, const StoreLayout& layout, const UserRecord& user);

  bool IsAdministrator() const { return isAdministrator_; }
  // The rights bits of the user on an archive, 0 for none. Of a link those on its target.
  std::uint32_t RightsOn(const ArchiveRecord& record);
  // The same for a record of the list of an archive on which the user has `parentRights`.
  std::uint32_t RightsOnChild(const ArchiveRecord& child, std::uint32_t parentRights);

 private:
  ArchiveTree& tree_;
  bool isAdministrator_;
  std::vector<std::string> anchors_;  // directories below which an ordinary user may work
};

}  // namespace velmora::store::embedded
