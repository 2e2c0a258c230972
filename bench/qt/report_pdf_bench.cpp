// The long report of the document benchmarks (about 100 A4 pages) on pages
// through Qt: laid out and written as PDF (QPdfWriter, fonts embedded), from
// its document, against writing the same lines as plain text in the same
// run (compare the ratios, not the times). Offscreen unless a platform
// plugin is given.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QBuffer>
#include <QPdfWriter>
#include <algorithm>
#include <cstring>

#include "bench/long_report.h"
#include "desk/report_print.h"
#include "desk/report_view.h"
#include "zelkora/document/read_report.h"
#include "zelkora/typeset/markup.h"

namespace {

using namespace zelkora;  // NOLINT(google-build-using-namespace)

const Text& report() {
  static const Text text = bench::hundred_pages();
  return text;
}

void BM_PlainTextOfTheLines(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(to_utf8(typeset::strip_markup(report())));
}
BENCHMARK(BM_PlainTextOfTheLines)->Unit(benchmark::kMillisecond);

void BM_WritePdf(benchmark::State& state) {
  const document::Document doc = document::read_report(report());
  int pages = 0;
  qint64 bytes = 0;
  for (auto _ : state) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
      QPdfWriter pdf(&buffer);
      pdf.setResolution(600);
      pages = desk::print_report(doc, pdf);
    }
    bytes = buffer.size();
  }
  state.counters["pages"] = pages;
  state.counters["bytes"] = static_cast<double>(bytes);
}
BENCHMARK(BM_WritePdf)->Unit(benchmark::kMillisecond)->MinTime(2);

}  // namespace

int main(int argc, char** argv) {
  const bool given =
      qEnvironmentVariableIsSet("QT_QPA_PLATFORM") ||
      std::any_of(argv + 1, argv + argc, [](const char* arg) {
        return std::strcmp(arg, "-platform") == 0 || std::strcmp(arg, "--platform") == 0;
      });
  if (!given) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  desk::load_grade_font();
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
