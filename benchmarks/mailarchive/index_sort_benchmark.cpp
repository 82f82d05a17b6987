// The sort of the content index: subjects and dates of an archive of ordinary and of large size.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "base/date_time.h"
#include "base/sort_rows.h"
#include "base/text.h"

namespace {

using velmora::DateTime;

std::vector<std::string> Subjects(std::int64_t count) {
  std::mt19937 random(4711);
  std::vector<std::string> subjects;
  for (std::int64_t i = 0; i < count; ++i) {
    subjects.push_back(
        velmora::ToLower("Re: [Liste] Nachricht " + std::to_string(random() % 100000) + ".htm"));
  }
  return subjects;
}

void SortTexts(benchmark::State& state) {
  const std::vector<std::string> keys = Subjects(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(velmora::SortRows(keys, true));
  state.SetComplexityN(state.range(0));
}
BENCHMARK(SortTexts)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond)->Complexity(benchmark::oNLogN);

void SortDates(benchmark::State& state) {
  std::mt19937 random(4711);
  std::vector<DateTime> keys;
  for (std::int64_t i = 0; i < state.range(0); ++i) keys.push_back(DateTime::FromSeconds(random()));
  for (auto _ : state) benchmark::DoNotOptimize(velmora::SortRows(keys, true));
  state.SetComplexityN(state.range(0));
}
BENCHMARK(SortDates)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond)->Complexity(benchmark::oNLogN);

}  // namespace
