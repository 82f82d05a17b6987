// Names of attachments: made safe as file names, whatever the message says.
#pragma once

#include <string>
#include <string_view>

namespace velmora::store::embedded {

inline constexpr std::size_t LongestAttachmentName = 200;  // bytes

// `name` without path parts (of either separator) and control characters, characters that a Windows file name
// cannot have replaced by "_". Without a name: "Anhang". Without an extension: that of the media type, ".bin"
// for an unknown one. At most LongestAttachmentName bytes; the extension is kept.
std::string MakeAttachmentName(std::string_view name, std::string_view mediaType);

}  // namespace velmora::store::embedded
