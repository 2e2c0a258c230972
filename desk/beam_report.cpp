// The calculation of the beam form.
#include "desk/beam_report.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "zelkora/frame/variant.h"
#include "zelkora/section/cls_section_properties.h"

namespace zelkora::desk {

namespace {

// Items of "clsBeamSteel".
constexpr int32_t kProject = 0, kGrade = 2, kMoment = 4, kRange = 7, kWidth = 10, kDepth = 11,
                  kSteel = 12, kBars = 15, kCover = 18;

// fc and ft (MPa) of the concrete grades.
struct Concrete {
  double grade, fc, ft;
};
constexpr Concrete kConcrete[] = {
    {15, 7.2, 0.91},  {20, 9.6, 1.10},  {25, 11.9, 1.27}, {30, 14.3, 1.43}, {35, 16.7, 1.57},
    {40, 19.1, 1.71}, {45, 21.1, 1.80}, {50, 23.1, 1.89}, {55, 25.3, 1.96}, {60, 27.5, 2.04},
};

std::optional<double> number(const std::vector<Text>& values, int32_t item,
                             const clsCharacter& chr) {
  const auto at = static_cast<std::size_t>(item);
  if (at >= values.size()) return std::nullopt;
  return frame::Variant(Text(trim(values[at]))).number(chr.number_symbols());
}

Text text_of(const std::vector<Text>& values, int32_t item) {
  const auto at = static_cast<std::size_t>(item);
  return at < values.size() ? Text(trim(values[at])) : Text();
}

}  // namespace

std::vector<Text> beam_report(const std::vector<Text>& values, clsCharacter& chr) {
  std::vector<Text> lines;
  const auto line = [&](Text text) { lines.push_back(std::move(text)); };
  line(u"_bb(梁配筋计算)bb_");
  const Text project = text_of(values, kProject);
  if (!project.empty()) line(u"工程名称：" + project);

  const std::optional<double> b = number(values, kWidth, chr), h = number(values, kDepth, chr),
                              m = number(values, kMoment, chr), cover = number(values, kCover, chr),
                              grade = number(values, kGrade, chr);
  double fy = 0;
  const bool steel_known = chr.bSignEnter_SteelFy(text_of(values, kSteel), fy) && fy > 0;
  const Concrete* concrete = nullptr;
  for (const Concrete& c : kConcrete) {
    if (grade && c.grade == *grade) concrete = &c;
  }
  if (!b || !h || !m || !cover || *b <= 0 || *h <= *cover || !concrete || !steel_known) {
    line(u"输入数据不完整或无效：请检查截面尺寸、弯矩、混凝土与纵筋的强度等级。");
    return lines;
  }

  const double h0 = *h - *cover;
  line(u"_bb(一、设计资料)bb_");
  line(chr.tExpStr(u"梁宽 b", *b, u"mmd") + u"，" + chr.tExpStr(u"梁高 h", *h, u"mmd") + u"，" +
       chr.tExpStr(u"h_ub(0)ub_", h0, u"mmd"));
  line(chr.tExpStr(u"f_ub(c)ub_", concrete->fc, u"mpad_1") + u"，" +
       chr.tExpStr(u"f_ub(t)ub_", concrete->ft, u"mpad_2") + u"，" +
       chr.tExpStr(u"f_ub(y)ub_", fy, u"mpad_0"));
  line(chr.tExpStr(u"弯矩设计值 M", *m, u"knmd_1"));

  line(u"_bb(二、正截面受弯承载力)bb_");
  const double alpha_s = *m * 1e6 / (concrete->fc * *b * h0 * h0);
  const double xi = 1 - std::sqrt(std::max(0.0, 1 - 2 * alpha_s));
  const double xi_b = fy >= 435 ? 0.482 : fy >= 360 ? 0.518 : fy >= 300 ? 0.55 : 0.576;
  line(chr.tExpStr(u"α_ub(s)ub_ ＝ M / (f_ub(c)ub_·b·h_ub(0)ub__up(2)up_)", alpha_s, u"4"));
  line(chr.tExpStr(u"ξ ＝ 1 − √(1 − 2α_ub(s)ub_)", xi, u"4") + u"，" +
       chr.tExpStr(u"ξ_ub(b)ub_", xi_b, u"3"));
  if (2 * alpha_s >= 1 || xi > xi_b) {
    line(u"ξ ＞ ξ_ub(b)ub_：截面超筋，应加大截面或提高混凝土强度等级。");
    return lines;
  }
  const double as = concrete->fc * *b * xi * h0 / fy;
  const double rho_min = std::max(0.002, 0.45 * concrete->ft / fy);
  const double as_min = rho_min * *b * *h;
  const double needed = std::max(as, as_min);
  line(chr.tExpStr(u"A_ub(s)ub_ ＝ f_ub(c)ub_·b·ξ·h_ub(0)ub_ / f_ub(y)ub_", as, u"mm2d"));
  line(chr.tExpStr(u"ρ_ub(min)ub_", rho_min * 100, u"3") + u"%，" +
       chr.tExpStr(u"A_ub(s,min)ub_", as_min, u"mm2d"));

  // The bars: the fewest of a diameter within the form's range.
  std::vector<Text> range = split_text(text_of(values, kRange), u",");
  const double d_min =
      range.size() > 0
          ? frame::Variant(Text(trim(range[0]))).number(chr.number_symbols()).value_or(12)
          : 12;
  const double d_max =
      range.size() > 1
          ? frame::Variant(Text(trim(range[1]))).number(chr.number_symbols()).value_or(32)
          : 32;
  line(u"_bb(三、配筋)bb_");
  for (int32_t n = 2; n <= 12; ++n) {
    const double d = std::max(chr.dGjDiameterFromAsW(needed, n), d_min);
    if (d <= d_max) {
      const double provided = n * 0.25 * 3.14159265358979 * d * d;
      line(u"选用 " + frame::Variant(n).to_text(chr.number_symbols()) + chr.tPubF3() +
           chr.tFmt(d, u"0") + u"，" + chr.tExpStr(u"实配 A_ub(s)ub_", provided, u"mm2d"));
      break;
    }
  }
  const Text bars = text_of(values, kBars);
  if (!bars.empty()) line(u"通长纵向钢筋：" + bars);

  clsSectionProperties section;
  section.Section_Shape(Rectangular_Shaped);
  section.B_SectionWidth(*b);
  section.H_SectionDepth(*h);
  line(chr.tExpStr(u"截面惯性矩 I", section.dIx_InertiaMoment(), u"0.000E+00") + u"m_up(4)up_");
  return lines;
}

}  // namespace zelkora::desk
