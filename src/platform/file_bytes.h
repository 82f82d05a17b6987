// Bytes to and from open files, whole or not at all. Each routine answers 0 or an errno.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace velmora::platform {

// A file system that takes fewer bytes than asked for is asked again; that ends in success or in an error.
int WriteAll(int descriptor, std::string_view bytes);
// Appends up to `count` bytes to `bytes`; fewer only at the end of the file.
int ReadUpTo(int descriptor, std::size_t count, std::string& bytes);
// Appends all that is left of the file; what its length tells is set aside once. A file without a length is
// read to its end all the same.
int ReadWhole(int descriptor, std::string& bytes);
// From the position of one file to its end, to the position of the other.
int CopyAll(int from, int to);

}  // namespace velmora::platform
