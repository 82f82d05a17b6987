// When two physical directories are one archive's.
#pragma once

#include <string>
#include <string_view>

namespace velmora::store {

// The form under which two spellings of one directory are equal: UNC, without "\" at the end, case folded.
std::string ArchiveKey(std::string_view directory);

// The same, also when the two are spelled through different shares of one server: then what follows the
// first "david" decides. For comparisons within one list only, whose records are all of one server.
bool IsSameArchive(std::string_view a, std::string_view b);

}  // namespace velmora::store
