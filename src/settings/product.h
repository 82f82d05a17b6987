// What the program says of itself.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace velmora::settings {

inline constexpr std::string_view ProductName = "Velmora";
inline constexpr std::string_view LegalCopyright = "Orvane Works";

struct ProductVersion {
  std::int32_t Major = 0, Minor = 0, Revision = 0;
};

ProductVersion RunningVersion();

}  // namespace velmora::settings
