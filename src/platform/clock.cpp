#include "platform/clock.h"

#include <algorithm>
#include <chrono>

namespace velmora::platform {
namespace {

// From 30.12.1899 to 1.1.1970.
constexpr std::int64_t UnixEpoch = 25'569 * SecondsPerDay;
// Beyond every year that a date can show. A file system may keep any 64-bit number as a file's time.
constexpr std::int64_t FarthestSecond = std::int64_t{1} << 40;

// How far local civil time is ahead of UTC at a moment.
std::int64_t UtcOffset(std::int64_t unixSeconds) {
  const std::time_t moment = unixSeconds;
  std::tm parts{};
  return localtime_r(&moment, &parts) == nullptr ? 0 : parts.tm_gmtoff;
}

class HostClock : public Clock {
 public:
  DateTime Now() override { return FromUnixTime(std::time(nullptr)); }
  std::int64_t SteadyMilliseconds() override {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
  }
};

}  // namespace

Clock& SystemClock() {
  static HostClock clock;  // without state
  return clock;
}

DateTime FromUnixTime(std::int64_t unixSeconds) {
  unixSeconds = std::clamp(unixSeconds, -FarthestSecond, FarthestSecond);
  return DateTime::FromSeconds(unixSeconds + UtcOffset(unixSeconds) + UnixEpoch);
}

std::int64_t ToUnixTime(DateTime local) {
  const std::int64_t asUtc = std::clamp(local.Seconds(), -FarthestSecond, FarthestSecond) - UnixEpoch;
  // Offsets change at most once in two days, so the right one holds a day before or a day after.
  const std::int64_t before = asUtc - UtcOffset(asUtc - SecondsPerDay);
  const std::int64_t after = asUtc - UtcOffset(asUtc + SecondsPerDay);
  const bool isBefore = FromUnixTime(before) == local;
  const bool isAfter = FromUnixTime(after) == local;
  if (isBefore && isAfter) return std::min(before, after);
  // With the old offset, a civil time that the clocks skipped is as far behind the change as it was meant.
  return isAfter ? after : before;
}

}  // namespace velmora::platform
