// The text converters, and pages of up to 100,000 rows: the sizes of an index over a full archive.
#include <benchmark/benchmark.h>

#include "html/converters.h"
#include "html/report_writer.h"

namespace velmora::html {
namespace {

std::string Body(std::size_t size) {
  std::string text;
  while (text.size() < size)
    text += "<p>Größere Menge Äpfel für die Küche & mehr, über 5 € je Stück – siehe unten</p>\r\n";
  return text;
}

template <typename Convert>
void Run(benchmark::State& state, Convert convert) {
  const std::string text = Body(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(convert(text));
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                          static_cast<std::int64_t>(text.size()));
}

void BM_TextToHtml(benchmark::State& state) {
  Run(state, [](const std::string& text) { return TextToHtml(text, true); });
}
void BM_HtmlToText(benchmark::State& state) {
  Run(state, [](const std::string& text) { return HtmlToText(text); });
}
void BM_UmlautsToHtml(benchmark::State& state) {
  Run(state, [](const std::string& text) { return UmlautsToHtml(text); });
}
void BM_EscapeAngleBrackets(benchmark::State& state) {
  Run(state, [](const std::string& text) { return EscapeAngleBrackets(text); });
}
// A throughput that stays from 64 KB to 16 MB shows that it is linear.
void BM_ToNumericEntities(benchmark::State& state) {
  Run(state, [](const std::string& text) { return ToNumericEntities(text); });
}
BENCHMARK(BM_TextToHtml)->Arg(64 << 10);
BENCHMARK(BM_HtmlToText)->Arg(64 << 10);
BENCHMARK(BM_UmlautsToHtml)->Arg(64 << 10);
BENCHMARK(BM_EscapeAngleBrackets)->Arg(64 << 10);
BENCHMARK(BM_ToNumericEntities)->Arg(64 << 10)->Arg(1 << 20)->Arg(16 << 20);

void BM_IndexRows(benchmark::State& state) {
  for (auto _ : state) {
    StringReportStream page;
    ReportWriter writer(&page);
    writer.SetColumnWidths3("15%", "20%", "70%");
    writer.OpenReportTable(" ", 3);
    for (std::int64_t i = 0; i < state.range(0); ++i)
      writer.WriteRow3("31.12.2026 23:59:00", "anna.mueller@firma.de<br>vertrieb@kunde.de",
                       "<a href=\"Angebot_4711.htm\">AW: Größere Menge Äpfel</a><br>");
    writer.CloseReportTable();
    benchmark::DoNotOptimize(page.Text());
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * state.range(0));
}
BENCHMARK(BM_IndexRows)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace velmora::html
