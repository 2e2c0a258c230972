// Display width of a typical report line against a plain pass over the same
// UTF-16 units, so the ratio of the two is what matters, not the times.
#include <benchmark/benchmark.h>

#include <cstddef>
#include <string>

#include "zelkora/platform/codepage.h"

namespace {

// 40 UTF-16 units of mixed Chinese and ASCII, as a report line has them.
const zelkora::Text kLine = u"钢筋 HRB400 直径 d=20mm 间距@200mm 配筋率 ρ=0.85%";

// Baseline: one pass summing the units, the least any width count must do.
void BM_SumUnits(benchmark::State& state) {
  const zelkora::Text& line = kLine;
  for (auto _ : state) {
    benchmark::DoNotOptimize(line.data());
    std::size_t sum = 0;
    for (const char16_t c : line) sum += c;
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<long>(line.size()));
}
BENCHMARK(BM_SumUnits);

void BM_DisplayWidth(benchmark::State& state) {
  const zelkora::Text& line = kLine;
  for (auto _ : state) {
    benchmark::DoNotOptimize(line.data());
    benchmark::DoNotOptimize(zelkora::codepage::display_width(line));
  }
  state.SetItemsProcessed(state.iterations() * static_cast<long>(line.size()));
}
BENCHMARK(BM_DisplayWidth);

// For scale: the conversion that display_width spares.
void BM_ToAnsi(benchmark::State& state) {
  const zelkora::Text& line = kLine;
  std::string out;
  for (auto _ : state) {
    out.clear();
    zelkora::codepage::append_ansi(out, line);
    benchmark::DoNotOptimize(out.data());
  }
  state.SetItemsProcessed(state.iterations() * static_cast<long>(line.size()));
}
BENCHMARK(BM_ToAnsi);

}  // namespace

BENCHMARK_MAIN();
