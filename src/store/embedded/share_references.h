// References that lead to another computer through the file system: `\\server\share\x`, `//server/x`,
// `file://server/x`. A page that lies on a disc may show pictures beside it, so its policy cannot forbid
// them; on Windows they would tell the server who looks, with his name and a hash of his password.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace velmora::store::embedded {

// The value of an attribute that a browser takes for a URL, a list of URLs or CSS, or the text of a style
// sheet: of every such reference all slashes but the first become "_", also where they are written as
// character references, as escapes of CSS or with line ends between. Nothing when there is none. Addresses
// with "http:" and "https:" stay. Linear.
std::optional<std::string> BreakShareReferences(std::string_view value);

}  // namespace velmora::store::embedded
