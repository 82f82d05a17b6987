#include "run/progress_text.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/date_time.h"

namespace velmora::run {

int Percent(std::int64_t done, std::int64_t total) {
  if (done <= 0 || total <= 0) {
    return 0;
  }
  const double share = static_cast<double>(std::min(done, total)) / static_cast<double>(total);
  return static_cast<int>(share * 100.0);
}

std::string ProgressText(std::int64_t done, std::int64_t total) {
  return fmt::format("{}  ({}%)", done, Percent(done, total));
}

std::string RemainingTimeText(std::int64_t elapsedSeconds, std::int64_t done, std::int64_t total) {
  if (done <= 0 || total <= 0) {
    return "";
  }
  const double left = static_cast<double>(std::max<std::int64_t>(total - done, 0));
  const double seconds = static_cast<double>(elapsedSeconds) * left / static_cast<double>(done);
  return FormatDuration(static_cast<std::int64_t>(seconds));
}

}  // namespace velmora::run
