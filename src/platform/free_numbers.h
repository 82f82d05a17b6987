// The next free numbers of one directory: where the search for a free numbered name goes on, so that asking
// 100,000 times for one name does not try all numbers again each time.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace velmora::platform {

class FreeNumbers {
 public:
  // `fileName`, or head + number + rest (split at the first "."), whichever `isFree` accepts first. Numbers
  // from 1 on; those below the remembered one are known to be taken.
  std::string FirstFree(std::string_view fileName,
                        const std::function<bool(const std::string& name)>& isFree);
  // A name became free: the search for every head that it may be numbered under starts there again.
  void Release(std::string_view foldedName);
  void Clear() { next_.clear(); }

 private:
  std::unordered_map<std::string, std::uint64_t> next_;  // by folded head, "\", folded rest
};

}  // namespace velmora::platform
