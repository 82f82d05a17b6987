// The size of an archive or directory with all that is below it, counted on demand.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/result.h"
#include "panes/fill_watcher.h"
#include "platform/file_system.h"
#include "store/archive.h"

namespace velmora::panes {

struct SizeCount {
  std::int64_t Bytes = 0;  // of the files
  std::int64_t Archives = 0, Messages = 0;
  std::int64_t Directories = 0, Files = 0;
  bool IsStopped = false;
  std::optional<Error> FirstError{};  // what could not be read is left out
};

// The two texts that stand in a row's columns 1 and 2.
struct SizeTexts {
  std::string Counts, Bytes;
};

// The archive and its sub-archives, links and circles left out: messages that pass the filter, the files in
// each archive's own directory. The archive itself is not counted among the archives.
SizeCount CountArchive(store::DvArchive& archive, std::uint32_t filter, platform::FileSystem& fileSystem,
                       Breather& breather);
// Symbolic links are counted as files and not followed. The directory itself is not counted.
SizeCount CountDirectory(std::string_view path, platform::FileSystem& fileSystem, Breather& breather);

SizeTexts ArchiveSizeTexts(const SizeCount& count);    // "2 Arc(s)/ 17 Msg(s)", "1.234.567  (1 MB)"
SizeTexts DirectorySizeTexts(const SizeCount& count);  // "2 Dir(s)/ 17 File(s)"

}  // namespace velmora::panes
