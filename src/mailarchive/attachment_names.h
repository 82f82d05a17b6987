// File names of attachments. A name comes with the message, so it is hostile input.
#pragma once

#include <string>
#include <string_view>

namespace velmora::mailarchive {

// Every name is cut to what a file can bear, keeping its extension, and characters beyond Windows-1252 stand
// as "_", among them those that turn the direction of writing and so disguise an extension.

// The name of an attachment that belongs to a page: the part before the last "." made file-safe, the last "."
// and what follows as they stand, as far as a file name can hold them. A name without a "." takes `previous`,
// the name before it in the same entry, where one is given; else it is made file-safe as a whole.
std::string AttachmentFileName(std::string_view name, std::string_view previous);
// The name of an attachment saved alone: as it stands; made file-safe only where no file can bear it.
std::string PlainAttachmentFileName(std::string_view name);
// A name that the mail archive needs for a file of its own takes a number: its markers anywhere, its indexes
// and autorun files where the file lies `besidePages`. So does the name of a device of Windows, anywhere.
// There a descriptor's extension gets a "_". Else the attachment would be overwritten, or taken for what it
// is not.
std::string AvoidReservedName(std::string_view name, bool besidePages);

}  // namespace velmora::mailarchive
