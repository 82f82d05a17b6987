// What lets the interface breathe while a list is filled or a size is counted.
#pragma once

#include <cstdint>

#include "platform/clock.h"

namespace velmora::panes {

class FillWatcher {
 public:
  virtual ~FillWatcher() = default;
  // Repaint, and nothing that starts a command. True once the user wants a count to end; a fill goes on.
  virtual bool Breathe() = 0;
};

// Asks the watcher at most every 50 ms, however often it is called.
class Breather {
 public:
  static constexpr std::int64_t Interval = 50;  // milliseconds

  Breather(FillWatcher& watcher, platform::Clock& clock);
  bool Breathe();  // what the watcher answered last

 private:
  FillWatcher& watcher_;
  platform::Clock& clock_;
  std::int64_t last_;
  bool isStopped_ = false;
};

}  // namespace velmora::panes
