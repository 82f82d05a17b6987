// Workbooks of addresses: 26 columns, most texts different from all others.
#include <benchmark/benchmark.h>

#include <string>

#include "tables/workbook.h"

namespace velmora::tables {
namespace {

constexpr std::size_t Columns = 26;

Row AddressRow(std::size_t number) {
  Row row;
  for (std::size_t column = 0; column < Columns; ++column) {
    const bool isCommon = column % 3 == 0;
    row.emplace_back(isCommon ? "Geschäftlich " + std::to_string(column)
                              : "Größe " + std::to_string(number * Columns + column));
  }
  return row;
}

Workbook Addresses(std::int64_t rows) {
  Workbook workbook{{Sheet{"Adressen", {}, 1}}};
  for (std::int64_t i = 0; i < rows; ++i) {
    workbook.Sheets.front().Rows.push_back(AddressRow(static_cast<std::size_t>(i)));
  }
  return workbook;
}

void BM_WriteWorkbook(benchmark::State& state) {
  const Workbook workbook = Addresses(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(FormatWorkbook(workbook));
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * state.range(0));
}
BENCHMARK(BM_WriteWorkbook)->Arg(1000)->Arg(10000)->Arg(65000)->Unit(benchmark::kMillisecond);

void BM_ReadWorkbook(benchmark::State& state) {
  const std::string file = FormatWorkbook(Addresses(state.range(0))).value();
  for (auto _ : state) benchmark::DoNotOptimize(ParseWorkbook(file));
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * state.range(0));
}
BENCHMARK(BM_ReadWorkbook)->Arg(1000)->Arg(10000)->Arg(65000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace velmora::tables
