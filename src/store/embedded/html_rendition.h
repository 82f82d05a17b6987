// The HTML of a mail made for saving: a page that runs no script, loads nothing from the network and shows
// the parts that came with the mail. It begins with a Content-Security-Policy; everything that could redirect
// or reinterpret the page before that policy holds is dropped, and so are frames and forms, for which a
// browser connects before it asks the policy. The rest stays as sent, but for what two readers of HTML might
// take for different things: a "<" of a tag within a comment, an attribute or raw text becomes "&lt;", so
// that a browser that is of another mind about where these end finds no tag there that was not looked at
// here.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace velmora::store::embedded {

// The policy `meta` with which every rendition begins. The character set keeps browsers from guessing one in
// which other bytes than these make tags; the store's text is UTF-8.
inline constexpr std::string_view RenditionHead =
    "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; img-src 'self' file: data:; "
    "style-src 'unsafe-inline'; font-src data:; form-action 'none'; base-uri 'none'\">\r\n"
    "<meta charset=\"utf-8\">\r\n<meta http-equiv=\"x-dns-prefetch-control\" content=\"off\">\r\n";

// The position (from 1) of the part with that Content-ID among the attachments; nothing without one.
using FindInlinePart = std::function<std::optional<int>(std::string_view contentId)>;

// References `cid:` to parts 1 to 99 become `location` + ".$" + two digits; references to shares are broken,
// links that a person must click left out. One pass, linear.
std::string MakeHtmlRendition(std::string_view html, std::string_view location,
                              const FindInlinePart& findPart);

// The character set that an HTML text declares in its first kilobyte, "" for none.
std::string FindHtmlCharset(std::string_view html);

}  // namespace velmora::store::embedded
