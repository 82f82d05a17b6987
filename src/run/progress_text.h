// The texts beside a progress bar.
#pragma once

#include <cstdint>
#include <string>

namespace velmora::run {

// How much of `total` is done, 0 to 100; 0 when no total is known.
int Percent(std::int64_t done, std::int64_t total);
// "<count>  (<percent>%)".
std::string ProgressText(std::int64_t done, std::int64_t total);
// The time that the rest will take if it goes on as before, "hh:mm:ss"; "" while nothing is done yet or no
// total is known.
std::string RemainingTimeText(std::int64_t elapsedSeconds, std::int64_t done, std::int64_t total);

}  // namespace velmora::run
