// The size of an archive or directory with all that is below it, counted step by step.
#pragma once

#include <cstdint>
#include <memory>
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

// A count that its owner may pause, resume and drop between two steps.
class SizeCounter {
 public:
  virtual ~SizeCounter() = default;
  // Counts one more archive or directory. False when all are counted.
  virtual bool Step() = 0;
  const SizeCount& Total() const { return total_; }

 protected:
  SizeCount total_;
};

// The archive and its sub-archives, links and circles left out: messages that pass the filter, the files in
// each archive's own directory. The archive itself is not counted among the archives.
std::unique_ptr<SizeCounter> CountArchive(std::shared_ptr<store::DvArchive> archive, std::uint32_t filter,
                                          platform::FileSystem& fileSystem);
// Symbolic links are counted as files and not followed. The directory itself is not counted.
std::unique_ptr<SizeCounter> CountDirectory(std::string_view path, platform::FileSystem& fileSystem);
// To the end, unless the user stops it.
SizeCount CountAll(SizeCounter& counter, Breather& breather);

// The two texts that stand in a row's columns 1 and 2.
struct SizeTexts {
  std::string Counts, Bytes;
};
SizeTexts ArchiveSizeTexts(const SizeCount& count);    // "2 Arc(s)/ 17 Msg(s)", "1.234.567  (1 MB)"
SizeTexts DirectorySizeTexts(const SizeCount& count);  // "2 Dir(s)/ 17 File(s)"

}  // namespace velmora::panes
