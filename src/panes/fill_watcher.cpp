#include "panes/fill_watcher.h"

namespace velmora::panes {

Breather::Breather(FillWatcher& watcher, platform::Clock& clock)
    : watcher_(watcher), clock_(clock), last_(clock.SteadyMilliseconds()) {}

bool Breather::Breathe() {
  if (clock_.SteadyMilliseconds() - last_ < Interval) return isStopped_;
  isStopped_ = watcher_.Breathe() || isStopped_;
  last_ = clock_.SteadyMilliseconds();  // what the interface took does not count
  return isStopped_;
}

}  // namespace velmora::panes
