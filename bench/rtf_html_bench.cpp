// write_rtf and write_html on a long report: 4,400 paragraphs and 200 tables
// (200 sections of headings, equations with scripts, grade symbols, a
// four-row table and fourteen check lines). Both should take well under
// 100 ms.
#include <benchmark/benchmark.h>

#include "zelkora/document/writers.h"

namespace {

using namespace zelkora;
using namespace zelkora::document;

Paragraph line(std::vector<Run> runs, Paragraph::Kind kind = Paragraph::Kind::kText, int level = 0,
               int indent = 0) {
  Paragraph p;
  p.kind = kind;
  p.level = level;
  p.indent = indent;
  p.runs = std::move(runs);
  return p;
}

Run scripted(Text text, Script script) { return Run{std::move(text), false, script}; }

void add_section(Document& doc) {
  const Run sub_s = scripted(u"s", Script::kSubscript),
            squared = scripted(u"2", Script::kSuperscript);
  doc.blocks.push_back(line({{u"一、设计资料", true}}, Paragraph::Kind::kHeading, 1));
  doc.blocks.push_back(line({{u"（一）截面尺寸"}}, Paragraph::Kind::kHeading, 2));
  doc.blocks.push_back(line({{u"梁截面 b × h ＝ 250 × 500 mm，混凝土 C30，f"},
                             scripted(u"c", Script::kSubscript),
                             {u" ＝ 14.3 N/mm"},
                             squared},
                            Paragraph::Kind::kText, 0, 4));
  doc.blocks.push_back(line({{u"(1) 受拉钢筋"}}, Paragraph::Kind::kHeading, 3, 4));
  doc.blocks.push_back(line({{u"A"},
                             sub_s,
                             {u" ＝ M / (f"},
                             scripted(u"y", Script::kSubscript),
                             {u" γ"},
                             sub_s,
                             {u" h"},
                             scripted(u"0", Script::kSubscript),
                             {u")"}},
                            Paragraph::Kind::kText, 0, 4));
  doc.blocks.push_back(line({{u"＝ 120.5×10"},
                             scripted(u"6", Script::kSuperscript),
                             {u" / (360 × 0.9 × 465) ＝ 800 mm"},
                             squared},
                            Paragraph::Kind::kEquation, 0, 9));
  doc.blocks.push_back(line({{u"选用 4"},
                             {u"\uE002", false, Script::kNormal, true},
                             {u"20（A"},
                             sub_s,
                             {u" ＝ 1256 mm"},
                             squared,
                             {u"）"}},
                            Paragraph::Kind::kText, 0, 4));
  Table table;
  table.header = true;
  table.indent = 4;
  table.align = {Align::kLeft, Align::kRight, Align::kCenter};
  table.widths = {12, 10, 8};
  table.rows = {{{{u"项目"}}, {{u"数值"}}, {{u"单位"}}},
                {{{u"弯矩 M"}}, {{u"120.5"}}, {{u"kN·m"}}},
                {{{u"剪力 V"}}, {{u"85.0"}}, {{u"kN"}}},
                {{{u"配筋 A"}, sub_s}, {{u"1256"}}, {{u"mm"}, squared}}};
  doc.blocks.push_back(table);
  for (int i = 0; i < 14; ++i) {
    doc.blocks.push_back(line({{u"验算：ρ ＝ A"},
                               sub_s,
                               {u"/(b h"},
                               scripted(u"0", Script::kSubscript),
                               {u") ＝ 1.08% ≥ ρ"},
                               scripted(u"min", Script::kSubscript),
                               {u" ＝ 0.20%，满足要求。"}}));
  }
  doc.blocks.push_back(line({}));
}

const Document& long_report() {
  static const Document doc = [] {
    Document d;
    d.program = u"梁配筋计算";
    d.project = u"某办公楼工程";
    d.title = u"钢筋混凝土梁配筋计算书";
    d.blocks.push_back(line({{u"钢筋混凝土梁配筋计算书", true}}, Paragraph::Kind::kTitle));
    d.blocks.push_back(line({}, Paragraph::Kind::kRule));
    for (int i = 0; i < 200; ++i) add_section(d);
    return d;
  }();
  return doc;
}

void BM_WriteRtf(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(write_rtf(long_report()));
}
BENCHMARK(BM_WriteRtf)->Unit(benchmark::kMillisecond);

void BM_WriteHtml(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(write_html(long_report()));
}
BENCHMARK(BM_WriteHtml)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
