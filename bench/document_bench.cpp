// A report of about 100 A4 pages (4,000 lines, 200 tables of 5 rows, 100
// broken equations) read into a document and written to DOCX, RTF and HTML,
// against writing the same lines as plain text in the same run (compare the
// ratios, not the times). Each writer's counter "peak_vs_text" is the most
// memory it held at once (the document, its buffers and its output) against
// the size of the report's text.
#include <benchmark/benchmark.h>

#include <atomic>
#include <cstdlib>
#include <malloc.h>
#include <new>
#include <string>

#include "zelkora/document/read_report.h"
#include "zelkora/document/writers.h"
#include "zelkora/frame/cls_character.h"
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

// The report: per section a heading, 15 lines of text with sub- and
// superscripts and grade symbols, every second section an equation broken
// over two lines, and a table of five rows.
Text hundred_pages() {
  zelkora::clsCharacter chr(zelkora::platform::Platform::headless());
  chr.bSuperSub(true);
  chr.CalHead(u"钢筋混凝土梁配筋计算", u"三号楼", {59899, 59009}, u"2026-11-26");
  chr.ListOut_Ubound(3);
  chr.ListOut_Initialize(0, 14, zelkora::zkRightJustify, 1);
  chr.ListOut_Index_Width(0, 28);
  chr.ListOut_Index_Align(0, zelkora::zkLeftJustify);
  for (int s = 1; s <= 200; ++s) {
    chr.Txt(chr.tChrSerial(s) + u"_bb(截面 KL-" + zelkora::from_utf8(std::to_string(s)) + u")bb_" +
            chr.tConEnter1());
    for (int i = 0; i < 15; ++i) {
      chr.Txt(u"纵筋 4\uE00220，A_ub(s)ub_ ＝ 1256mm_up(2)up_，h_ub(0)ub_ ＝ 465mm，混凝土 C30：f_ub(c)ub_ ＝ 14.3MPa" +
              chr.tConEnter1());
    }
    if (s % 2 == 0) {
      chr.SplitLineCalEQ(
          u"A_ub(s)ub_ ＝ f_ub(c)ub_·b·ξ·h_ub(0)ub_ / f_ub(y)ub_ ＝ 14.3 × 250 × 0.1792 × 465 / 360"
          u" ＝ 827mm_up(2)up_ ＞ A_ub(s,min)ub_ ＝ 0.2% × 250 × 500 ＝ 250mm_up(2)up_");
    }
    chr.ListOut_TextAddRow({u"项目", u"计算值", u"限值", u"结论"}, 0, u"    ");
    for (int r = 0; r < 4; ++r) {
      chr.ListOut_TextAddRow({u"配筋率 ρ_ub(min)ub_", u"0.68%", u"0.20%", u"满足"}, 0, u"    ");
    }
  }
  return chr.Txt();
}

const Text& report() {
  static const Text text = hundred_pages();
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
