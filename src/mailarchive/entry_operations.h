// The operations on one entry of a finished mail archive: delete and rename it with all its components, show
// what a marker or a descriptor says.
#pragma once

#include <string_view>

#include "platform/file_system.h"
#include "run/front_ends.h"

namespace velmora::mailarchive {

// Deletes the components that the page's descriptor names, then page and descriptor, then component folders
// (by their default names) that hold nothing but a marker. False, and nothing touched, without a readable
// descriptor; false, with page and descriptor left, when a component could not be deleted.
bool DeleteMailArcEntry(platform::FileSystem& fileSystem, std::string_view directory,
                        std::string_view pageFile);

// Gives the entry the base name of `newFileName` (its extension is not used): page, descriptor, body,
// original, header and comment get new names, descriptor and page new references; attachments keep theirs. A
// component whose file is gone is left out. False, with everything as it was, without a readable descriptor,
// for a text that is no file name, when a new name is taken and when a file cannot be moved or written.
bool RenameMailArcEntry(platform::FileSystem& fileSystem, std::string_view directory,
                        std::string_view pageFile, std::string_view newFileName);

// Opens the directory's marker, or the descriptor of a page, in the text view. A message when there is none
// or when it cannot be read.
void ShowArcDescriptor(run::FrontEnd& frontEnd, platform::FileSystem& fileSystem, std::string_view directory);
void ShowEntryDescriptor(run::FrontEnd& frontEnd, platform::FileSystem& fileSystem,
                         std::string_view directory, std::string_view pageFile);

}  // namespace velmora::mailarchive
