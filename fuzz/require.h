// What a fuzz target holds its subject to.
#pragma once

#include <cstdlib>

namespace velmora::fuzz {

inline void Require(bool holds) {
  if (!holds) std::abort();
}

}  // namespace velmora::fuzz
