// What text from a mail must not do to a page of a mail archive.
#pragma once

#include <string>
#include <string_view>

namespace velmora::mailarchive {

// Values go into pages as they are, markup included, and the page's Content-Security-Policy keeps them from
// running script and from loading anything. Some elements escape such a policy: `meta` redirects, `base`
// bends links, `link` has names looked up and connections made ahead, and so does a frame, even one that the
// policy then forbids. Here the "<" of `meta`, `link`, `base`, `iframe`, `frame` and `frameset` becomes
// "&lt;", in any case; everything else stays byte for byte.
std::string NeutralizeHeadTags(std::string_view text);

}  // namespace velmora::mailarchive
