// Deletes a host directory with all that is in it. Symbolic links are removed, never followed.
#pragma once

#include <functional>
#include <string>

#include "base/result.h"

namespace velmora::platform {

struct TreeDeletion {
  bool Force = false;  // also what is read-only
  // Told before each file, with its folder below the tree ("" for the tree itself, "a/b"). May be empty.
  std::function<void(const std::string& folder, const std::string& name)> BeforeFile;
};

// Deletes the directory `name` of the open directory `parent`. What cannot be deleted stays, the rest goes;
// the first failure is told. However deep the tree, one descriptor is open at a time.
Status DeleteTree(int parent, const std::string& name, const TreeDeletion& deletion);

}  // namespace velmora::platform
