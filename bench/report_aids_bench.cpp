// The report aids against the library's own nearest work, in the same run
// (compare the ratios, not the times):
//  - breaking a long equation (40 terms, about 500 cells) at its operators,
//    against wrapping the same text at its blanks (SplitTextToMulLine's rules);
//  - a value of a 10 x 10 table held in a text, read and interpolated, against
//    only splitting the text into its items and reading their numbers.
// 1 MB equations (many break points, at 80 cells and on one unlimited line)
// and a 1 MB run of unmatched markup show that hostile input costs time in
// proportion to its length.
#include <benchmark/benchmark.h>

#include <limits>
#include <string>

#include "zelkora/frame/numbers.h"
#include "zelkora/frame/value_table.h"
#include "zelkora/typeset/equation_split.h"
#include "zelkora/typeset/line_split.h"

namespace {

using zelkora::Text;

Text long_equation(int terms) {
  Text equation = u"M ＝ ";
  for (int i = 0; i < terms; ++i) {
    equation += (i ? u" + " : u"") + Text(u"1.2 × 3.45 × l_ub(0)ub__up(2)up_");
  }
  return equation + u" ＝ 165.6kN·m";
}

Text table_10x10() {
  Text table = u"b/h";
  for (int c = 1; c <= 10; ++c) table += u"|" + zelkora::from_utf8(std::to_string(c));
  for (int r = 1; r <= 10; ++r) {
    table += u";" + zelkora::from_utf8(std::to_string(r * 100));
    for (int c = 1; c <= 10; ++c) table += u"|" + zelkora::from_utf8(std::to_string(r * c * 0.1));
  }
  return table;
}

void BM_SplitEquation(benchmark::State& state) {
  const Text equation = long_equation(40);
  for (auto _ : state) benchmark::DoNotOptimize(zelkora::typeset::split_equation(equation, 80));
}
BENCHMARK(BM_SplitEquation);

void BM_WrapSameTextAtBlanks(benchmark::State& state) {
  const Text equation = long_equation(40);
  const zelkora::typeset::WrapLayout layout{80, 0, 5};
  for (auto _ : state) benchmark::DoNotOptimize(zelkora::typeset::wrap_text(equation, layout));
}
BENCHMARK(BM_WrapSameTextAtBlanks);

void BM_Interpolate10x10(benchmark::State& state) {
  const Text table = table_10x10();
  for (auto _ : state) benchmark::DoNotOptimize(zelkora::frame::interpolate(table, 550, 5.5));
}
BENCHMARK(BM_Interpolate10x10);

void BM_SplitAndReadItemsOnly(benchmark::State& state) {
  const Text table = table_10x10();
  for (auto _ : state) {
    double sum = 0;
    for (const Text& row : zelkora::split_text(table, u";")) {
      for (const Text& item : zelkora::split_text(row, u"|")) {
        sum += zelkora::frame::leading_value(item).value_or(0);
      }
    }
    benchmark::DoNotOptimize(sum);
  }
}
BENCHMARK(BM_SplitAndReadItemsOnly);

// 0: "x + " at 80 cells, 1: unmatched "_ub(" at 80, 2: "x + " on one line
// as wide as an int (every break point fits).
void BM_SplitHostileEquation(benchmark::State& state) {
  const std::size_t units = 1 << 20;
  const bool runs = state.range(0) == 1;
  const int width = state.range(0) == 2 ? std::numeric_limits<int>::max() : 80;
  Text equation = u"A ＝ ";
  const Text unit = runs ? Text(u"_ub(") : Text(u"x + ");
  while (equation.size() < units) equation += unit;
  for (auto _ : state) benchmark::DoNotOptimize(zelkora::typeset::split_equation(equation, width));
  state.SetLabel(runs ? "1 MB of \"_ub(\"" : "1 MB of \"x + \"");
}
BENCHMARK(BM_SplitHostileEquation)->Arg(0)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
