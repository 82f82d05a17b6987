// Case folding, the code page, numbers and dates: what every entry of a list or an index goes through.
#include <benchmark/benchmark.h>

#include "base/code_page.h"
#include "base/date_time.h"
#include "base/numbers.h"
#include "base/text.h"

namespace velmora {
namespace {

std::string Repeat(std::string_view piece, std::size_t size) {
  std::string text;
  while (text.size() < size) text += piece;
  return text;
}

constexpr std::string_view AsciiLine = "Re: Angebot 4711 for the new office, second try\r\n";
constexpr std::string_view GermanLine = "AW: Größere Menge Äpfel für die Küche, über 5 € je Stück\r\n";
constexpr std::string_view CyrillicLine = "Привет из Москвы, счёт номер 5\r\n";

void SetBytes(benchmark::State& state, std::size_t bytesPerRun) {
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                          static_cast<std::int64_t>(bytesPerRun));
}

void BM_FoldCase(benchmark::State& state, std::string_view line) {
  const std::string text = Repeat(line, 64 * 1024);
  for (auto _ : state) benchmark::DoNotOptimize(FoldCase(text));
  SetBytes(state, text.size());
}
BENCHMARK_CAPTURE(BM_FoldCase, ascii, AsciiLine);
BENCHMARK_CAPTURE(BM_FoldCase, german, GermanLine);
BENCHMARK_CAPTURE(BM_FoldCase, cyrillic, CyrillicLine);

void BM_EqualsFold(benchmark::State& state) {
  const std::string a = ToUpper(GermanLine), b = ToLower(GermanLine);
  for (auto _ : state) benchmark::DoNotOptimize(EqualsFold(a, b));
  SetBytes(state, a.size());
}
BENCHMARK(BM_EqualsFold);

void BM_ToCodePage(benchmark::State& state, std::string_view line) {
  const std::string text = Repeat(line, 64 * 1024);
  for (auto _ : state) benchmark::DoNotOptimize(ToCodePage(text, Unmappable::Reference));
  SetBytes(state, text.size());
}
BENCHMARK_CAPTURE(BM_ToCodePage, ascii, AsciiLine);
BENCHMARK_CAPTURE(BM_ToCodePage, german, GermanLine);
BENCHMARK_CAPTURE(BM_ToCodePage, cyrillic, CyrillicLine);

void BM_FromCodePage(benchmark::State& state, std::string_view line) {
  const std::string bytes = ToCodePage(Repeat(line, 64 * 1024));
  for (auto _ : state) benchmark::DoNotOptimize(FromCodePage(bytes));
  SetBytes(state, bytes.size());
}
BENCHMARK_CAPTURE(BM_FromCodePage, ascii, AsciiLine);
BENCHMARK_CAPTURE(BM_FromCodePage, german, GermanLine);

void BM_DecodeReferences(benchmark::State& state) {
  const std::string text = Repeat("Angebot &#1055;&#8364; & mehr ", 64 * 1024);
  for (auto _ : state) benchmark::DoNotOptimize(DecodeReferences(text));
  SetBytes(state, text.size());
}
BENCHMARK(BM_DecodeReferences);

void BM_FormatAndParseDateTime(benchmark::State& state) {
  std::int64_t seconds = 4'000'000'000;
  for (auto _ : state)
    benchmark::DoNotOptimize(ParseDateTime(FormatDateTime(DateTime::FromSeconds(++seconds))));
}
BENCHMARK(BM_FormatAndParseDateTime);

void BM_FormatSize(benchmark::State& state) {
  std::int64_t bytes = 1234567;
  for (auto _ : state) benchmark::DoNotOptimize(FormatSize(bytes += 4711));
}
BENCHMARK(BM_FormatSize);

}  // namespace
}  // namespace velmora
