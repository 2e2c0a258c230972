// A report of about 100 A4 pages (4,000 lines, 200 tables of 5 rows, 100
// broken equations) read into a document and written to DOCX, RTF and HTML,
// against writing the same lines as plain text in the same run (compare the
// ratios, not the times). Each writer's counter "peak_vs_text" is the most
// memory it held at once (the document, its buffers and its output) against
// the size of the report's text.
#include <benchmark/benchmark.h>

#include <malloc.h>
#include <atomic>
#include <cstdlib>
#include <new>
#include <string>

#include "bench/long_report.h"
#include "zelkora/document/read_report.h"
#include "zelkora/document/writers.h"
#include "zelkora/typeset/markup.h"

// Live and peak heap bytes of the process, for the memory counters.
namespace {
std::atomic<std::size_t> live_bytes{0};
std::atomic<std::size_t> peak_bytes{0};
}  // namespace

void* operator new(std::size_t size) {
  void* p = std::malloc(size ? size : 1);
  if (!p) throw std::bad_alloc();
  const std::size_t now = live_bytes += malloc_usable_size(p);
  std::size_t peak = peak_bytes.load();
  while (now > peak && !peak_bytes.compare_exchange_weak(peak, now)) {
  }
  return p;
}
// (free is right here: this operator new took the memory from malloc.)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
void operator delete(void* p) noexcept {
  if (p) live_bytes -= malloc_usable_size(p);
  std::free(p);
}
void operator delete(void* p, std::size_t) noexcept { operator delete(p); }
#pragma GCC diagnostic pop

namespace {

using zelkora::Text;
namespace doc = zelkora::document;

const Text& report() {
  static const Text text = zelkora::bench::hundred_pages();
  return text;
}

void peak_counter(benchmark::State& state, std::size_t before) {
  state.counters["peak_vs_text"] =
      static_cast<double>(peak_bytes.load() - before) / static_cast<double>(report().size() * 2);
}

// The baseline: the same lines without markup, as UTF-8, as a report was
// saved before it had a document.
void BM_PlainTextOfTheLines(benchmark::State& state) {
  const Text& text = report();
  for (auto _ : state) {
    benchmark::DoNotOptimize(zelkora::to_utf8(zelkora::typeset::strip_markup(text)));
  }
}
BENCHMARK(BM_PlainTextOfTheLines)->Unit(benchmark::kMillisecond);

void BM_ReadReport(benchmark::State& state) {
  const Text& text = report();
  for (auto _ : state) benchmark::DoNotOptimize(doc::read_report(text));
}
BENCHMARK(BM_ReadReport)->Unit(benchmark::kMillisecond);

// Each writer from a document read once; the peak counts the document too.
template <std::string (*write)(const doc::Document&)>
void BM_Write(benchmark::State& state) {
  const Text& text = report();
  const std::size_t before = live_bytes.load();
  peak_bytes = before;
  const doc::Document document = doc::read_report(text);
  std::size_t size = 0;
  for (auto _ : state) {
    const std::string file = write(document);
    size = file.size();
    benchmark::DoNotOptimize(file.data());
  }
  peak_counter(state, before);
  state.counters["bytes"] = static_cast<double>(size);
}
BENCHMARK(BM_Write<doc::write_docx>)->Name("BM_WriteDocx")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Write<doc::write_rtf>)->Name("BM_WriteRtf")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Write<doc::write_html>)->Name("BM_WriteHtml")->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
