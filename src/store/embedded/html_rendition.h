// The HTML of a mail made for saving: a page that runs no script, loads nothing from the network and shows
// the parts that came with the mail. It begins with a Content-Security-Policy; everything that could redirect
// or reinterpret the page before that policy holds is dropped, the rest stays as sent.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace velmora::store::embedded {

// The policy `meta` with which every rendition begins.
inline constexpr std::string_view RenditionHead =
    "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; img-src 'self' file: data:; "
    "style-src 'unsafe-inline'; font-src data:; form-action 'none'; base-uri 'none'\">\r\n";

// The position (from 1) of the part with that Content-ID among the attachments; nothing without one.
using FindInlinePart = std::function<std::optional<int>(std::string_view contentId)>;

// References `cid:` to parts 1 to 99 become `location` + ".$" + two digits. One pass, linear.
std::string MakeHtmlRendition(std::string_view html, std::string_view location,
                              const FindInlinePart& findPart);

// The character set that an HTML text declares in its first kilobyte, "" for none.
std::string FindHtmlCharset(std::string_view html);

}  // namespace velmora::store::embedded
