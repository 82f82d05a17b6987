// The size of the row under the cursor, counted without being asked for: a slice at a time, so that the
// window stays as quick as ever, and dropped as soon as the cursor goes on. What another process keeps to
// itself just now has no size to show.
#pragma once

#include <cstdint>
#include <memory>

#include "panes/pane.h"
#include "platform/clock.h"
#include "settings/options.h"
#include "store/session.h"

namespace velmora::panes {

class SizeDisplay {
 public:
  // The cursor stands still as long, before a count begins.
  static constexpr std::int64_t RestMilliseconds = 300;
  static constexpr std::int64_t SliceMilliseconds = 15;

  // All must outlive it.
  SizeDisplay(const settings::Options& options, const store::Session& session, platform::Clock& clock)
      : options_(options), session_(session), clock_(clock) {}

  // The cursor rests on a row; what ran is dropped. True when the row has a size to count and the settings
  // want it (DisplayArcSize).
  bool Start(Pane& pane, std::size_t row);
  void Stop() { counter_.reset(); }
  bool Runs() const { return counter_ != nullptr; }
  // Counts for one slice. True when the row has got its size and is to be painted anew. A size that is not
  // whole, because something could not be read, is not shown: asking for it tells why.
  bool RunSlice();

 private:
  const settings::Options& options_;
  const store::Session& session_;  // its store is read without waiting for other processes
  platform::Clock& clock_;
  std::unique_ptr<SizeCounter> counter_;
  Pane* pane_ = nullptr;
  std::uint64_t generation_ = 0;  // of the pane's list
  std::uint32_t unsortedIndex_ = 0;
};

}  // namespace velmora::panes
