// Reading a bar text and computing a section, against std::from_chars on the
// digits alone as the least any reading must do. Compare ratios, not times.
#include <benchmark/benchmark.h>

#include <charconv>

#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/platform.h"
#include "zelkora/section/cls_section_properties.h"

namespace {

void BM_FromCharsTwoNumbers(benchmark::State& state) {
  const char text[] = "4 20";
  for (auto _ : state) {
    int count = 0;
    int diameter = 0;
    std::from_chars(text, text + 1, count);
    std::from_chars(text + 2, text + 4, diameter);
    benchmark::DoNotOptimize(count + diameter);
  }
}
BENCHMARK(BM_FromCharsTwoNumbers);

void BM_GjTextTurnW(benchmark::State& state) {
  zelkora::platform::ScopedPlatform scope(zelkora::platform::Platform::headless());
  zelkora::clsCharacter chr;
  for (auto _ : state) {
    int32_t count = 0;
    int32_t error = 0;
    double diameter = 0;
    chr.GjTextTurnW(u"4Φ20", count, diameter, error);
    benchmark::DoNotOptimize(diameter);
  }
}
BENCHMARK(BM_GjTextTurnW);

// A pasted text of 100,000 characters with no bar in it: the reading must
// stay linear.
void BM_GjTextTurnWLongText(benchmark::State& state) {
  zelkora::platform::ScopedPlatform scope(zelkora::platform::Platform::headless());
  zelkora::clsCharacter chr;
  const zelkora::Text text(100000, u'Φ');
  for (auto _ : state) {
    int32_t count = 0;
    int32_t error = 0;
    double diameter = 0;
    chr.GjTextTurnW(text, count, diameter, error);
    benchmark::DoNotOptimize(error);
  }
}
BENCHMARK(BM_GjTextTurnWLongText)->Unit(benchmark::kMicrosecond);

void BM_SectionInertia(benchmark::State& state) {
  zelkora::clsSectionProperties sp;
  sp.Section_Shape(zelkora::T_Shaped);
  sp.B_SectionWidth(250);
  sp.H_SectionDepth(600);
  sp.Bf1_FlangeWidth_CompressionZone(800);
  sp.Hf1_FlangeDepth_CompressionZone(120);
  for (auto _ : state) benchmark::DoNotOptimize(sp.dIx_InertiaMoment());
}
BENCHMARK(BM_SectionInertia);

}  // namespace

BENCHMARK_MAIN();
