// Names of users by their ids, each looked up once per run.
#pragma once

#include <map>
#include <string>

#include "store/special_archives.h"

namespace velmora::mailarchive {

class UserNames {
 public:
  explicit UserNames(store::DvAccount& account) : account_(account) {}

  const std::string& NameOf(int id) {
    const auto [place, isNew] = names_.try_emplace(id);
    if (isNew) place->second = store::ArchiveOwnerName(account_, id);
    return place->second;
  }

 private:
  store::DvAccount& account_;
  std::map<int, std::string> names_;
};

}  // namespace velmora::mailarchive
