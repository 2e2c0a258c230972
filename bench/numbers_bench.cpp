// The shared number rules on typical inputs, each beside a baseline in the
// same run: reading a typed number against std::from_chars on the same ASCII
// bytes (without the grouping, which from_chars cannot read), and writing the
// general number text against std::to_chars with 15 significant digits.
// Compare the ratios, not the times.
#include <benchmark/benchmark.h>

#include <charconv>
#include <cstring>
#include <iterator>
#include <string>

#include "zelkora/frame/numbers.h"

namespace {

using zelkora::Text;
using zelkora::frame::NumberSymbols;

const NumberSymbols kSymbols{u'.', u','};

// ---- Reading ---------------------------------------------------------------

void parse_number(benchmark::State& state, const char16_t* input) {
  const Text text(input);
  for (auto _ : state) {
    const zelkora::TextView view = text;
    benchmark::DoNotOptimize(view.data());
    auto value = zelkora::frame::parse_number(view, kSymbols);
    benchmark::DoNotOptimize(value);
  }
}

void from_chars_baseline(benchmark::State& state, const char* input) {
  const std::string ascii(input);
  for (auto _ : state) {
    const char* begin = ascii.data();
    benchmark::DoNotOptimize(begin);
    double value = 0;
    std::from_chars(begin, begin + ascii.size(), value);
    benchmark::DoNotOptimize(value);
  }
}

BENCHMARK_CAPTURE(parse_number, plain, u"12.5");
BENCHMARK_CAPTURE(from_chars_baseline, plain, "12.5");
BENCHMARK_CAPTURE(parse_number, grouped, u"-1,234.75");
BENCHMARK_CAPTURE(from_chars_baseline, grouped, "-1234.75");
BENCHMARK_CAPTURE(parse_number, exponent, u"3.0E+5");
BENCHMARK_CAPTURE(from_chars_baseline, exponent, "3.0E+5");

// ---- Writing ---------------------------------------------------------------

void append_general_number(benchmark::State& state, double input) {
  Text out;
  out.reserve(64);
  for (auto _ : state) {
    double value = input;
    benchmark::DoNotOptimize(value);
    out.clear();
    zelkora::frame::append_general_number(out, value, kSymbols);
    benchmark::DoNotOptimize(out.data());
  }
}

void to_chars_baseline(benchmark::State& state, double input) {
  char out[64];
  for (auto _ : state) {
    double value = input;
    benchmark::DoNotOptimize(value);
    auto result = std::to_chars(out, std::end(out), value, std::chars_format::general, 15);
    benchmark::DoNotOptimize(result.ptr);
    benchmark::DoNotOptimize(out);
  }
}

BENCHMARK_CAPTURE(append_general_number, plain, 12.5);
BENCHMARK_CAPTURE(to_chars_baseline, plain, 12.5);
BENCHMARK_CAPTURE(append_general_number, grouped, -1234.75);
BENCHMARK_CAPTURE(to_chars_baseline, grouped, -1234.75);
BENCHMARK_CAPTURE(append_general_number, exponent, 3.0e5);
BENCHMARK_CAPTURE(to_chars_baseline, exponent, 3.0e5);
BENCHMARK_CAPTURE(append_general_number, third, 1.0 / 3);
BENCHMARK_CAPTURE(to_chars_baseline, third, 1.0 / 3);
BENCHMARK_CAPTURE(append_general_number, large, 1.5e20);
BENCHMARK_CAPTURE(to_chars_baseline, large, 1.5e20);

}  // namespace

BENCHMARK_MAIN();
