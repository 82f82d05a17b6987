// A clock that stands still until a test moves it.
#pragma once

#include "platform/clock.h"

namespace velmora::test {

class ManualClock final : public platform::Clock {
 public:
  DateTime Now() override { return Time; }
  std::int64_t SteadyMilliseconds() override { return Milliseconds; }

  DateTime Time = DateTime::FromCivil({2026, 12, 31, 23, 59, 0}).value();
  std::int64_t Milliseconds = 1000;
};

}  // namespace velmora::test
