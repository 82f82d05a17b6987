// What a command works on, the marked objects of a pane or what a control file or a command line names, and
// whether it leaves them where they are.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "store/archive.h"

namespace velmora::store {

enum class CopyMode { Copy, Move };

// The title of the progress box of a run over archives.
constexpr std::string_view ProgressTitle(CopyMode mode) {
  return mode == CopyMode::Move ? "Archive/Messages verschieben" : "Archive/Messages kopieren";
}

struct Selection {
  struct Object {
    enum class Kind { Message, Archive } kind = Kind::Archive;
    EntryKey Key = 0;         // of a message
    std::string ArchivePath;  // of an archive, in any form that GetArchive takes; of a link the target's
    bool IsLink = false;      // the archive stands in CurrentArchive as a link
    std::string Name = {};    // under which CurrentArchive lists the archive
  };
  std::shared_ptr<DvArchive> CurrentArchive;  // from where
  std::vector<Object> Objects;
};

}  // namespace velmora::store
