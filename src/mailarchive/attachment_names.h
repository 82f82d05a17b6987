// File names of attachments. A name comes with the message, so it is hostile input.
#pragma once

#include <string>
#include <string_view>

namespace velmora::mailarchive {

// The first two cut a name to what a file can bear, keeping its extension, and write characters beyond
// Windows-1252 as "_", among them those that turn the direction of writing and so disguise an extension.

// The name of an attachment that belongs to a page: the part before the last "." made file-safe, the last "."
// and what follows as they stand, as far as a file name can hold them. A name without a "." takes `previous`,
// the name before it in the same entry, where one is given; else it is made file-safe as a whole.
std::string AttachmentFileName(std::string_view name, std::string_view previous);
// The name of an attachment saved alone: as it stands; made file-safe only where no file can bear it.
std::string PlainAttachmentFileName(std::string_view name);
// A name that would be overwritten, or taken for what it is not, takes a number: that of a marker and that of
// a device of Windows, and where the file lies `besidePages` that of an index or autorun file. Beside pages
// the extension of a descriptor gets a "_".
std::string AvoidReservedName(std::string_view name, bool besidePages);

}  // namespace velmora::mailarchive
