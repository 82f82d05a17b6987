// The content index: index.html, index2.html and index3.html of each directory of a mail archive, built from
// the descriptors on the disk, never from the store.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "mailarchive/format/forms.h"
#include "run/run.h"

namespace velmora::mailarchive {

struct IndexContext {
  run::Run& run;
  DesignSet& designs;
  bool CreateAutorunInf = true;
  std::string ProgramDirectory;
  std::int64_t TotalDirectories = 0;  // for the progress bar; 0: not counted
};

// How many directories a run over the whole tree goes through.
std::int64_t CountIndexDirectories(platform::FileSystem& fileSystem, std::string_view directory);

// Only directories of the kinds root and sub are indexed; children before their parent. An emptied directory
// loses its indexes and its marker. A recursive run ends between two directories when the user cancels it;
// what it has not reached keeps its older indexes.
void BuildContentIndex(IndexContext& context, std::string_view directory, bool recursive, bool showProgress,
                       bool dateSortedUp);
// autorun.inf and shellexec.exe beside an index; with CreateAutorunInf off both are removed.
void WriteAutorunInf(IndexContext& context, std::string_view directory);

}  // namespace velmora::mailarchive
