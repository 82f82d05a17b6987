// The walk through a tree of archives that its repairs share: every archive is entered once, whatever its
// records say, so that records which point upward or stand several times end no walk in a circle and cost no
// second visit of what lies below.
#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "base/result.h"
#include "run/run.h"
#include "store/archive.h"

namespace velmora::maintenance {

enum class Encounter {
  New,       // met for the first time; it is entered after the visit
  Again,     // an archive that was met before, in this list or another one
  OnPath,    // it lies on the way down to this very list: a circular reference
  ShortCut,  // never entered
};

struct Traversal {
  // Which sub-archives are looked at at all; every one when empty.
  std::function<bool(store::DvArchive& sub)> IsVisible = {};
  // Every entry, lists from front to end, parents before their children. False: a New one is not entered.
  std::function<bool(const std::shared_ptr<store::DvArchive>& parent,
                     const std::shared_ptr<store::DvArchive>& sub, Encounter encounter)>
      Visit = {};
  // An archive whose list cannot be read; logged where nobody wants to know.
  std::function<void(store::DvArchive& archive, const Error& error)> Unreadable = {};
};

// From `start`, which is not visited itself, until the end or a cancel of the run.
void TraverseTree(run::Run& run, const std::shared_ptr<store::DvArchive>& start, const Traversal& traversal);

}  // namespace velmora::maintenance
