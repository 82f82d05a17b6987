// Entries that point back up their own tree. A short-cut never is one, wherever it leads.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "run/run.h"
#include "store/archive.h"

namespace velmora::maintenance {

struct CircularEntry {
  std::shared_ptr<store::DvArchive> ParentArchive;  // in whose list the entry stands
  std::string Parent, Child;                        // the IDs of both
};

// Which archives a user sees; all when empty.
using Visibility = std::function<bool(store::DvArchive& archive)>;

// All below `start`, in the order of the walk. Two entries for one ancestor are two pairs, also in one list.
// An archive whose list cannot be read is logged; a cancel of the run ends the search.
std::vector<CircularEntry> FindCircularEntries(run::Run& run, const std::shared_ptr<store::DvArchive>& start,
                                               const Visibility& isVisible = {});

// Finds them anew and takes all of them out of their lists, each list in one rewrite; gives how many went.
// Failures are logged. After a cancel during the search nothing is removed.
int RemoveCircularEntries(run::Run& run, const std::shared_ptr<store::DvArchive>& start,
                          const Visibility& isVisible = {});

}  // namespace velmora::maintenance
