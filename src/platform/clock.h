// The clock: the current local time, and conversions between local civil time and points in time.
#pragma once

#include <cstdint>
#include <ctime>

#include "base/date_time.h"

namespace velmora::platform {

class Clock {
 public:
  virtual ~Clock() = default;
  virtual DateTime Now() = 0;                     // local civil time
  virtual std::int64_t SteadyMilliseconds() = 0;  // for durations; never goes back
};

Clock& SystemClock();

// Between UTC seconds since 1970 and local civil time, by the host's time zone. A civil time that does not
// exist (spring) gives the moment one hour later, one that exists twice (autumn) the first.
DateTime FromUnixTime(std::int64_t unixSeconds);
std::int64_t ToUnixTime(DateTime local);

}  // namespace velmora::platform
