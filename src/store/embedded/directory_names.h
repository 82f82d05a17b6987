// Names of the directories of new archives.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace velmora::store::embedded {

inline constexpr std::size_t DirectoryNameLength = 8;

// The name given to a new archive, taken apart: `Post{POST}` is the display name "Post" and the directory
// "POST".
struct GivenName {
  std::string DisplayName;
  std::string Directory;  // "" without braces, or when nothing usable stands in them
};
// Text in the first pair of braces is the directory's name, wherever it stands; the rest, as it is, the
// display name. The directory's name is cut to its length, its characters are made fit for every host.
GivenName SplitGivenName(std::string_view name);

// The first choice for the directory of an archive of that name: its ASCII letters and digits in capitals,
// umlauts written out, cut; "ARCHIV" when none is left.
std::string DirectoryNameFor(std::string_view displayName);
// The beginning before a number of `digits` digits: "PROJEKTE" and 2 give "PROJEK".
std::string_view NumberedStem(std::string_view base, std::size_t digits);

}  // namespace velmora::store::embedded
