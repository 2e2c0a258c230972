// The display width of a report line with markup, against converting the
// already stripped line to GBK with the C library's iconv and counting the
// bytes, which gives the same number the slow way (the baseline checks that
// it does). Compare the ratio, not the times.
//
// The program replaces the global operator new to count allocations: the
// `allocations` counter of the width must stay 0.
#include <benchmark/benchmark.h>
#include <iconv.h>

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>

#include "zelkora/platform/codepage.h"
#include "zelkora/typeset/markup.h"

namespace {

std::atomic<std::size_t> g_allocations{0};

}  // namespace

void* operator new(std::size_t size) {
  g_allocations.fetch_add(1, std::memory_order_relaxed);
  if (void* p = std::malloc(size == 0 ? 1 : size)) return p;
  throw std::bad_alloc();
}
// GCC takes the replaced pair for a mismatch.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
#endif
void operator delete(void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }

namespace {

// A strength line as the reports have it: Chinese, ASCII, a subscript and a
// superscript.
const zelkora::Text kLine = u"钢筋面积 A_ub(s)ub_ ＝ 1256.6mm_up(2)up_，配筋率 ρ ＝ 0.85%";

void BM_MarkupDisplayWidth(benchmark::State& state) {
  const zelkora::Text& line = kLine;
  const std::size_t before = g_allocations.load();
  for (auto _ : state) {
    benchmark::DoNotOptimize(line.data());
    benchmark::DoNotOptimize(zelkora::typeset::markup_display_width(line));
  }
  const std::size_t allocations = g_allocations.load() - before;
  state.counters["allocations"] = static_cast<double>(allocations);
  if (allocations != 0) state.SkipWithError("markup_display_width allocated");
}
BENCHMARK(BM_MarkupDisplayWidth);

// Baseline: the stripped line (stripped once, outside the loop) converted
// with iconv into a buffer, the bytes counted.
void BM_IconvStrippedToGbk(benchmark::State& state) {
  const zelkora::Text stripped = zelkora::typeset::strip_markup(kLine);
  iconv_t cd = iconv_open("GBK", "UTF-16LE");
  if (cd == reinterpret_cast<iconv_t>(-1)) {
    state.SkipWithError("iconv has no GBK");
    return;
  }
  char buffer[256];
  std::size_t bytes = 0;
  for (auto _ : state) {
    char* in = const_cast<char*>(reinterpret_cast<const char*>(stripped.data()));
    std::size_t in_left = stripped.size() * sizeof(char16_t);
    char* out = buffer;
    std::size_t out_left = sizeof buffer;
    iconv(cd, &in, &in_left, &out, &out_left);
    bytes = sizeof buffer - out_left;
    benchmark::DoNotOptimize(bytes);
  }
  iconv_close(cd);
  if (bytes != zelkora::typeset::markup_display_width(kLine)) {
    state.SkipWithError("iconv and the width disagree");
  }
}
BENCHMARK(BM_IconvStrippedToGbk);

// The same with the converter opened and closed for each line, as a width
// function built on iconv alone would have to (it keeps no state).
void BM_IconvOpenConvertClose(benchmark::State& state) {
  const zelkora::Text stripped = zelkora::typeset::strip_markup(kLine);
  char buffer[256];
  for (auto _ : state) {
    iconv_t cd = iconv_open("GBK", "UTF-16LE");
    char* in = const_cast<char*>(reinterpret_cast<const char*>(stripped.data()));
    std::size_t in_left = stripped.size() * 2;
    char* out = buffer;
    std::size_t out_left = sizeof buffer;
    iconv(cd, &in, &in_left, &out, &out_left);
    iconv_close(cd);
    benchmark::DoNotOptimize(sizeof buffer - out_left);
  }
}
BENCHMARK(BM_IconvOpenConvertClose);

}  // namespace

BENCHMARK_MAIN();
