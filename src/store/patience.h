// How long a call waits for what another process keeps to itself.
#pragma once

namespace velmora::store {

enum class Patience {
  Usual,  // up to five seconds
  None,   // not at all: for what is only shown, while a person may be about to press a key
};

}  // namespace velmora::store
