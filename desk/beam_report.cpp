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

// fc and ft (MPa) by the concrete grade, as the code's table gives them.
constexpr TextView kConcreteFc =
    u"15|20|25|30|35|40|45|50|55|60;7.2|9.6|11.9|14.3|16.7|19.1|21.1|23.1|25.3|27.5";
constexpr TextView kConcreteFt =
    u"15|20|25|30|35|40|45|50|55|60;0.91|1.10|1.27|1.43|1.57|1.71|1.80|1.89|1.96|2.04";
// The standards the calculation follows (catalogue ids).
const std::vector<int32_t> kStandards = {59899, 59009};

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
  // A text of several report lines (joined by the continuation) adds each.
  const auto line = [&](TextView text) {
    for (Text& one : split_text(text, chr.tConEnter1())) {
      if (!one.empty()) lines.push_back(std::move(one));
    }
  };
  const auto heading = [&](int32_t n, TextView title) {
    line(chr.tChrSerial(n) + u"_bb(" + Text(title) + u")bb_");
  };
  line(chr.tCalHead(u"钢筋混凝土梁配筋计算", text_of(values, kProject), kStandards));

  const std::optional<double> b = number(values, kWidth, chr), h = number(values, kDepth, chr),
                              m = number(values, kMoment, chr), cover = number(values, kCover, chr),
                              grade = number(values, kGrade, chr);
  double fy = 0;
  const bool steel_known = chr.bSignEnter_SteelFy(text_of(values, kSteel), fy) && fy > 0;
  int32_t fc_error = 1, ft_error = 1;
  const double fc = grade ? chr.dInterpolate(kConcreteFc, *grade, fc_error) : 0;
  const double ft = grade ? chr.dInterpolate(kConcreteFt, *grade, ft_error) : 0;
  if (!b || !h || !m || !cover || *b <= 0 || *h <= *cover || fc_error || ft_error || !steel_known) {
    line(u"输入数据不完整或无效：请检查截面尺寸、弯矩、混凝土与纵筋的强度等级。");
    return lines;
  }

  const double h0 = *h - *cover;
  heading(1, u"设计资料");
  line(chr.tExpStr(u"梁宽 b", *b, u"mmd") + u"，" + chr.tExpStr(u"梁高 h", *h, u"mmd") + u"，" +
       chr.tExpStr(u"h_ub(0)ub_", h0, u"mmd"));
  line(chr.tExpStr(u"f_ub(c)ub_", fc, u"mpad_1") + u"，" +
       chr.tExpStr(u"f_ub(t)ub_", ft, u"mpad_2") + u"，" +
       chr.tExpStr(u"f_ub(y)ub_", fy, u"mpad_0"));
  line(chr.tExpStr(u"弯矩设计值 M", *m, u"knmd_1"));

  heading(2, u"正截面受弯承载力");
  const double alpha_s = *m * 1e6 / (fc * *b * h0 * h0);
  const double xi = 1 - std::sqrt(std::max(0.0, 1 - 2 * alpha_s));
  const double xi_b = fy >= 435 ? 0.482 : fy >= 360 ? 0.518 : fy >= 300 ? 0.55 : 0.576;
  line(chr.tExpStr(u"α_ub(s)ub_ ＝ M / (f_ub(c)ub_·b·h_ub(0)ub__up(2)up_)", alpha_s, u"4"));
  line(chr.tExpStr(u"ξ ＝ 1 − √(1 − 2α_ub(s)ub_)", xi, u"4") + u"，" +
       chr.tExpStr(u"ξ_ub(b)ub_", xi_b, u"3"));
  if (2 * alpha_s >= 1 || xi > xi_b) {
    line(u"ξ ＞ ξ_ub(b)ub_：截面超筋，应加大截面或提高混凝土强度等级。");
    return lines;
  }
  const double as = fc * *b * xi * h0 / fy;
  const double rho_min = std::max(0.002, 0.45 * ft / fy);
  const double as_min = rho_min * *b * *h;
  const double needed = std::max(as, as_min);
  // The whole equation, with its numbers, broken to the line width.
  line(chr.SplitEQ(u"A_ub(s)ub_ ＝ f_ub(c)ub_·b·ξ·h_ub(0)ub_ / f_ub(y)ub_ ＝ " +
                   chr.tFmt(fc, u"1") + u" × " + chr.tFmt(*b, u"0") + u" × " + chr.tFmt(xi, u"4") +
                   u" × " + chr.tFmt(h0, u"0") + u" / " + chr.tFmt(fy, u"0") +
                   chr.tFmtEq(as, u"mm2d")));
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
  heading(3, u"配筋");
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
