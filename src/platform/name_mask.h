// A mask for file names: "*" any characters, "?" one character, without regard to case.
#pragma once

#include <string>
#include <string_view>

namespace velmora::platform {

bool HasWildcard(std::string_view name);

class NameMask {
 public:
  // "*.*", "*" and "" match every name.
  explicit NameMask(std::string_view mask);

  bool Matches(std::string_view foldedName) const;
  // The folded characters that every matching name begins with.
  const std::string& LiteralPrefix() const { return prefix_; }

 private:
  std::string mask_;  // folded
  std::string prefix_;
};

}  // namespace velmora::platform
