// What is wrong with the entries of a whole tree, found in one pass over its lists, and how it is put right.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "run/run.h"
#include "store/archive.h"

namespace velmora::maintenance {

enum class TreeFault {
  Doubled,      // the archive stands in this list or another one already
  Circular,     // the entry leads back up
  Dangling,     // the entry, or the short-cut, names a directory that is not there
  Interrupted,  // a rewrite of the list was broken off: its backup counts
  Unreadable,   // a list cannot be read, or a directory not be reached: nobody knows what is there
};

struct TreeFinding {
  TreeFault Fault = TreeFault::Doubled;
  std::shared_ptr<store::DvArchive> Parent;  // in whose list the entry stands; of a list its archive
  std::string ID, Name;                      // of the entry
  bool IsShortCut = false;
  std::string First;         // of a doubled one: the path of the list that has it first
  bool IsFirstHere = false;  // that list is this one
  std::string Text;          // of an unreadable list: why
};

struct TreeReport {
  std::int64_t Archives = 0, Entries = 0;  // entered, looked at
  std::vector<TreeFinding> Findings;
};

// Changes nothing. Everything below `start`; a cancel of the run ends it.
TreeReport CheckTree(run::Run& run, const std::shared_ptr<store::DvArchive>& start);

// The finding as a German line: where, what.
std::string Describe(const TreeFinding& finding);

struct RepairOptions {
  bool Dangling = false;  // entries without a directory go, too
};
struct TreeRepair {
  int Doubled = 0, Circular = 0, Dangling = 0;  // entries taken out
  int Recovered = 0;                            // lists that were broken off and stand again
  int Failed = 0;  // lists that could not be written, see the log, and entries that others changed meanwhile

  int Removed() const { return Doubled + Circular + Dangling; }
};
// Puts right what a check found, as far as it still is so: of doubled entries the first stays, circular ones
// go. Each list is rewritten once, so that archivedir.bak holds it as it was before.
TreeRepair RepairTree(run::Run& run, const TreeReport& report, const RepairOptions& options);

}  // namespace velmora::maintenance
