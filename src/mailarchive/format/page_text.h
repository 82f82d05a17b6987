// What text from a mail must not do to a page of a mail archive.
#pragma once

#include <string>
#include <string_view>

namespace velmora::mailarchive {

// Values go into pages as they are, markup included, and the page's Content-Security-Policy keeps them from
// running script and from loading anything. Four elements escape such a policy: `meta` (redirects), `link`
// (look-ups and connections made ahead), `base`, and `iframe`, whose inner page can hold the other three.
// Here their "<" becomes "&lt;", in any case; everything else stays byte for byte.
std::string NeutralizeHeadTags(std::string_view text);

}  // namespace velmora::mailarchive
