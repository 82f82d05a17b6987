// The inline parts of an HTML mail: references of the store become paths beside the body file.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace velmora::mailarchive {

// Replaces every `<location>.$NN` (two digits, from 01) by "../" and the path of that attachment. A part that
// has no path, because it could not be saved, keeps its reference; so does everything when `location` is
// empty.
std::string ReplaceInlineReferences(std::string_view html, std::string_view location,
                                    const std::vector<std::string>& attachmentPaths);

}  // namespace velmora::mailarchive
