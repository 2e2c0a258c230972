// tFmt against std::to_chars with fixed precision 2 on the same values: the
// ratio of the two is what matters. The counter "allocs" is the number of
// heap allocations per call, the result included.
#include <benchmark/benchmark.h>

// The counting operator new pairs with free() in operator delete; GCC cannot
// see that they match.
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"

#include <atomic>
#include <charconv>
#include <cstdlib>
#include <new>
#include <random>
#include <vector>

#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/platform.h"
#include "zelkora/typeset/picture_format.h"

namespace {

std::atomic<long> g_allocations{0};

}  // namespace

void* operator new(std::size_t size) {
  g_allocations.fetch_add(1, std::memory_order_relaxed);
  if (void* p = std::malloc(size == 0 ? 1 : size)) return p;
  throw std::bad_alloc();
}
void operator delete(void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }

namespace {

// Results of calculations, as a report prints them: forces of a few kN to a
// few thousand, with all their binary digits.
const std::vector<double>& values() {
  static const std::vector<double> v = [] {
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> force(0.0, 2500.0);
    std::vector<double> out(1024);
    for (double& x : out) x = force(random) * 1.35;
    return out;
  }();
  return v;
}

void BM_ToCharsFixed2(benchmark::State& state) {
  const auto& v = values();
  char buffer[64];
  std::size_t i = 0;
  for (auto _ : state) {
    auto result =
        std::to_chars(buffer, buffer + sizeof buffer, v[i++ & 1023], std::chars_format::fixed, 2);
    benchmark::DoNotOptimize(result.ptr);
  }
}
BENCHMARK(BM_ToCharsFixed2);

void BM_tFmt_KnD2(benchmark::State& state) {
  zelkora::platform::ScopedPlatform scope(zelkora::platform::Platform::headless());
  zelkora::clsCharacter chr;
  const auto& v = values();
  std::size_t i = 0;
  benchmark::DoNotOptimize(chr.tFmt(1.0, u"knd_2"));  // the pattern buffer grows once
  const long before = g_allocations.load();
  for (auto _ : state) {
    zelkora::Text s = chr.tFmt(v[i++ & 1023], u"knd_2");
    benchmark::DoNotOptimize(s.data());
  }
  state.counters["allocs"] =
      static_cast<double>(g_allocations.load() - before) / static_cast<double>(state.iterations());
}
BENCHMARK(BM_tFmt_KnD2);

void BM_FormatPicture(benchmark::State& state) {
  const zelkora::frame::NumberSymbols symbols;
  const auto& v = values();
  zelkora::Text out;
  std::size_t i = 0;
  for (auto _ : state) {
    out.clear();
    zelkora::typeset::append_picture(out, v[i++ & 1023], u"#,##0.00", symbols);
    benchmark::DoNotOptimize(out.data());
  }
}
BENCHMARK(BM_FormatPicture);

}  // namespace

BENCHMARK_MAIN();
