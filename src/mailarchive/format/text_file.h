// The small text files of a mail archive (markers, descriptors, design files) as bytes, lines and `Key=Value`
// pairs. They come from discs and shares of any origin, so nothing here trusts their size or content.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "base/result.h"
#include "platform/file_system.h"

namespace velmora::mailarchive {

// No file that the program writes comes near this; more is not read.
inline constexpr std::size_t TextFileLimit = 4 * 1024 * 1024;

// The bytes of a file; of a longer one the whole lines within the first TextFileLimit bytes.
Result<std::string> ReadTextFile(platform::FileSystem& fileSystem, std::string_view path);

// The text of a file that users edit: Windows-1252, or UTF-8 without its mark where an editor has put one at
// the beginning.
std::string DecodeEditedFile(std::string_view bytes);

// Takes the next line off `rest`, without its CR LF or LF. Nothing at the end.
std::optional<std::string_view> TakeLine(std::string_view& rest);

struct KeyValue {
  std::string_view Key, Value;  // both trimmed
};
// Split at the first "="; nothing for a line without one.
std::optional<KeyValue> SplitKeyValue(std::string_view line);

// A value's Windows-1252 bytes as text, decimal references beyond the code page resolved.
std::string DecodeValue(std::string_view bytes);
// The bytes of a text in such a file: control characters become blanks, so that it stays on its line.
std::string EncodeValue(std::string_view text);

}  // namespace velmora::mailarchive
