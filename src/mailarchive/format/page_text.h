// What text from a mail must not do to a page of a mail archive.
#pragma once

#include <string>
#include <string_view>

namespace velmora::mailarchive {

// Values go into pages as they are, markup included, and the page's Content-Security-Policy keeps them from
// running script and from loading anything. Some elements escape such a policy: `meta` redirects, `base`
// bends links, `link` has names looked up and connections made ahead, and so do a frame and the sending of a
// form, even where the policy then forbids them. Here the "<" of `meta`, `link`, `base`, `iframe`, `frame`,
// `frameset` and `form` becomes "&lt;", in any case, also where a part of the name stands before a "%" or at
// the end: a variable of the form, filled in later, could make the rest. Everything else stays byte for byte.
std::string NeutralizeHeadTags(std::string_view text);

}  // namespace velmora::mailarchive
