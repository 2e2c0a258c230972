// The report of the beam form's design.
#include "program/beam_report.h"

#include "program/report_writer.h"

#include <algorithm>
#include <cmath>

#include "program/beam_design.h"
#include "zelkora/frame/variant.h"

namespace zelkora::desk {

namespace {

// The standards the calculation follows (catalogue ids).
const std::vector<int32_t> kStandards = {59899, 59009};
constexpr const char16_t* kSeismicNames[] = {u"特一级", u"一级", u"二级", u"三级", u"四级", u"非抗震"};

class Writer : public ReportWriter {
 public:
  Writer(clsCharacter& chr, const BeamInput& in, const BeamDesign& d)
      : ReportWriter(chr), in_(in), d_(d) {}

  std::vector<Text> write();

 private:
  Text num(double value, TextView format) { return chr_.tFmt(value, format); }
  Text expr(TextView name, double value, TextView format) {
    return chr_.tExpStr(name, value, format);
  }
  Text mark(TextView steel) { return chr_.tGjFhByFy(frame::Variant(Text(steel))); }
  Text bars_text(const BarChoice& choice);

  void data();
  void bending();
  void shear();
  void torsion();
  void stirrups();
  void bars();
  void seismic_note();

  const BeamInput& in_;
  const BeamDesign& d_;
};

Text Writer::bars_text(const BarChoice& choice) {
  Text text;
  for (std::size_t r = 0; r < choice.rows.size(); ++r) {
    // Bars of one diameter in a row are written together: "2C20+3C22".
    const std::vector<double>& ds = choice.rows[r].d;
    std::vector<std::pair<double, int32_t>> groups;
    for (double d : ds) {
      auto it = std::find_if(groups.begin(), groups.end(), [&](const auto& g) { return g.first == d; });
      if (it == groups.end()) groups.push_back({d, 1});
      else ++it->second;
    }
    Text row;
    for (const auto& [d, n] : groups) {
      if (!row.empty()) row += u"+";
      row += frame::Variant(n).to_text({}) + mark(in_.steel) + num(d, u"0");
    }
    if (!text.empty()) text += u"（第一排）＋ ";
    text += row;
    if (r == 1) text += u"（第二排）";
  }
  return text;
}

void Writer::data() {
  heading(u"设计资料");
  if (!in_.id.empty()) line(u"构件编号：" + in_.id);
  line(u"抗震等级：" + Text(kSeismicNames[std::clamp(in_.seismic, 0, 5)]));
  line(expr(u"梁宽 b", in_.b, u"mmd") + u"，" + expr(u"梁高 h", in_.h, u"mmd") + u"，" +
       expr(u"保护层厚度 c", in_.cover, u"mmd"));
  line(expr(u"a_ub(s)ub_", d_.as_used, u"mmd_1") +
       (d_.as_from_bars ? Text(u"（由所选纵筋的合力点确定）") : Text()) + u"，" +
       expr(u"h_ub(0)ub_ ＝ h − a_ub(s)ub_", d_.h0, u"mmd_1"));
  line(u"混凝土 C" + frame::Variant(in_.concrete).to_text({}) + u"：" +
       expr(u"f_ub(c)ub_", d_.mat.fc, u"mpad_1") + u"，" + expr(u"f_ub(t)ub_", d_.mat.ft, u"mpad_2") +
       u"，" + expr(u"α_ub(1)ub_", d_.mat.alpha1, u"2") + u"，" + expr(u"β_ub(1)ub_", d_.mat.beta1, u"2") +
       u"，" + expr(u"β_ub(c)ub_", d_.mat.beta_c, u"3"));
  line(u"纵筋 " + in_.steel + u"（" + mark(in_.steel) + u"）：" + expr(u"f_ub(y)ub_", d_.mat.fy, u"mpad_0") +
       u"，" + expr(u"f_ub(y)ub_'", d_.mat.fyc, u"mpad_0") + u"，" + expr(u"E_ub(s)ub_", d_.mat.es, u"0.00E+00") +
       u"MPa");
  line(u"箍筋 " + in_.stirrup_steel + u"（" + mark(in_.stirrup_steel) + u"）：" +
       expr(u"f_ub(yv)ub_", d_.mat.fyv, u"mpad_0") + u"（受剪、受扭计算时不大于 360MPa）");
  line(expr(u"弯矩设计值 M", in_.m, u"knmd_1") + u"，" + expr(u"剪力设计值 V", in_.v, u"knd_1") +
       (in_.t != 0 ? u"，" + expr(u"扭矩设计值 T", in_.t, u"knmd_1") : Text()));
}

void Writer::bending() {
  heading(u"正截面受弯承载力");
  line(d_.hogging ? u"负弯矩：截面上部受拉（支座截面），以下按弯矩的绝对值计算。" : u"正弯矩：截面下部受拉（跨中截面）。");
  equation(u"α_ub(s)ub_ ＝ M / (α_ub(1)ub_·f_ub(c)ub_·b·h_ub(0)ub__up(2)up_) ＝ " +
           num(std::fabs(in_.m), u"0.0") + u"×10_up(6)up_ / (" + num(d_.mat.alpha1, u"0.00") + u" × " +
           num(d_.mat.fc, u"0.0") + u" × " + num(in_.b, u"0") + u" × " + num(d_.h0, u"0.0") +
           u"_up(2)up_)" + chr_.tFmtEq(d_.alpha_s, u"4"));
  const Text limit = d_.xi_lim < d_.mat.xi_b - 1e-12
                         ? expr(u"ξ_ub(b)ub_", d_.mat.xi_b, u"3") + u"，抗震等级要求 " +
                               expr(u"ξ", d_.xi_lim, u"2") + u" 以下（11.3.1 条）"
                         : expr(u"ξ_ub(b)ub_", d_.mat.xi_b, u"3");
  if (std::isnan(d_.xi)) {
    line(u"2α_ub(s)ub_ ≥ 1：单筋截面无解。" + limit);
  } else {
    line(expr(u"ξ ＝ 1 − √(1 − 2α_ub(s)ub_)", d_.xi, u"4") + u"，" + limit);
  }
  switch (d_.bending) {
    case BendingCase::kSingly:
      equation(u"A_ub(s)ub_ ＝ α_ub(1)ub_·f_ub(c)ub_·b·ξ·h_ub(0)ub_ / f_ub(y)ub_" +
               chr_.tFmtEq(d_.as_flex, u"mm2d"));
      break;
    case BendingCase::kDoubly: {
      const double x = d_.xi_lim * d_.h0;
      line(u"ξ 超过限值且考虑受压钢筋：按双筋截面计算，取 " + expr(u"x ＝ ξ_ub(lim)ub_·h_ub(0)ub_", x, u"mmd_1") +
           u"，" + expr(u"a_ub(s)ub_'", d_.asc_used, u"mmd_1") + u"（受压纵筋的合力点）");
      equation(u"A_ub(s)ub_' ＝ (M − α_ub(1)ub_·f_ub(c)ub_·b·x·(h_ub(0)ub_ − x/2)) / (f_ub(y)ub_'·(h_ub(0)ub_ − a_ub(s)ub_'))" +
               chr_.tFmtEq(d_.asc, u"mm2d"));
      equation(u"A_ub(s)ub_ ＝ (α_ub(1)ub_·f_ub(c)ub_·b·x + f_ub(y)ub_'·A_ub(s)ub_') / f_ub(y)ub_" +
               chr_.tFmtEq(d_.as_flex, u"mm2d"));
      if (d_.x_below_2as) {
        equation(u"x ＜ 2a_ub(s)ub_'，受压钢筋不屈服，按 6.2.14 条：A_ub(s)ub_ ＝ M / (f_ub(y)ub_·(h_ub(0)ub_ − a_ub(s)ub_'))" +
                 chr_.tFmtEq(d_.as_flex, u"mm2d"));
      }
      break;
    }
    case BendingCase::kOver:
      conclude(false, u"ξ ＞ ξ_ub(lim)ub_，截面超筋：应加大截面、提高混凝土强度等级或考虑受压钢筋");
      return;
  }
  line(expr(u"ρ_ub(min)ub_", d_.rho_min * 100, u"3") + u"%" +
       (in_.seismic < 5 ? (d_.hogging ? u"（表 11.3.6-1 支座）" : u"（表 11.3.6-1 跨中）") : u"（8.5.1 条）") +
       u"，" + expr(u"A_ub(s,min)ub_ ＝ ρ_ub(min)ub_·b·h", d_.as_min, u"mm2d"));
  if (d_.as_flex < d_.as_min) line(u"计算所需 A_ub(s)ub_ 小于最小配筋，取 A_ub(s,min)ub_。");
}

void Writer::shear() {
  heading(u"斜截面受剪承载力");
  const double v = std::fabs(in_.v);
  line(expr(u"h_ub(w)ub_/b", d_.hw_over_b, u"2") + u"，" +
       expr(u"0.7f_ub(t)ub_·b·h_ub(0)ub_", d_.vc / 1e3, u"knd_1"));
  if (!d_.torsion) {
    line(expr(u"截面限值 " + Text(d_.hw_over_b <= 4 ? u"0.25" : d_.hw_over_b >= 6 ? u"0.2" : u"(按 h_ub(w)ub_/b 内插)") +
                  u"β_ub(c)ub_·f_ub(c)ub_·b·h_ub(0)ub_",
              d_.v_lim / 1e3, u"knd_1"));
    conclude(d_.section_ok, d_.section_ok ? u"V 不大于截面限值（6.3.1 条）" : u"V 超过截面限值（6.3.1 条），应加大截面或提高混凝土强度等级");
  }
  if (v * 1e3 <= d_.vc && !d_.torsion) {
    line(u"V ≤ 0.7f_ub(t)ub_·b·h_ub(0)ub_：按构造配置箍筋（6.3.7 条）。");
  } else if (d_.asv_s > 0) {
    equation(u"A_ub(sv)ub_/s ＝ (V − " + Text(d_.torsion_case == TorsionCase::kCombined ? u"(1.5 − β_ub(t)ub_)·" : u"") +
             u"0.7f_ub(t)ub_·b·h_ub(0)ub_) / (f_ub(yv)ub_·h_ub(0)ub_)" + chr_.tFmtEq(d_.asv_s, u"4") +
             u"mm_up(2)up_/mm");
  }
}

void Writer::torsion() {
  if (!d_.torsion) return;
  heading(u"受扭承载力");
  line(expr(in_.b <= in_.h ? u"W_ub(t)ub_ ＝ b_up(2)up_(3h − b)/6" : u"W_ub(t)ub_ ＝ h_up(2)up_(3b − h)/6", d_.wt,
            u"0.000E+00") + u"mm_up(3)up_");
  equation(u"V/(b·h_ub(0)ub_) + T/(0.8W_ub(t)ub_)" + chr_.tFmtEq(d_.stress, u"mpad_3") + u"，限值" +
           chr_.tFmtEq(d_.stress_lim, u"mpad_3"));
  conclude(d_.section_ok, d_.section_ok ? u"截面尺寸满足 6.4.1 条" : u"截面尺寸不满足 6.4.1 条，应加大截面或提高混凝土强度等级");
  switch (d_.torsion_case) {
    case TorsionCase::kDetailing:
      line(u"V/(b·h_ub(0)ub_) + T/W_ub(t)ub_ ≤ 0.7f_ub(t)ub_：不进行剪扭承载力计算，按构造配筋（6.4.2 条）。");
      break;
    case TorsionCase::kShearIgnored:
      line(u"V ≤ 0.35f_ub(t)ub_·b·h_ub(0)ub_：不计剪力，按纯扭构件计算（6.4.12 条）。");
      break;
    case TorsionCase::kTorsionIgnored:
      line(u"T ≤ 0.175f_ub(t)ub_·W_ub(t)ub_：不计扭矩，按受剪计算（6.4.12 条）。");
      break;
    case TorsionCase::kCombined:
      equation(u"β_ub(t)ub_ ＝ 1.5 / (1 + 0.5·V·W_ub(t)ub_/(T·b·h_ub(0)ub_))，取 0.5～1.0" +
               chr_.tFmtEq(d_.beta_t, u"3"));
      break;
    case TorsionCase::kNone:
      break;
  }
  line(u"ζ ＝ 1.2，" + expr(u"A_ub(cor)ub_", d_.acor, u"0") + u"mm_up(2)up_，" +
       expr(u"u_ub(cor)ub_", d_.ucor, u"mmd"));
  if (d_.ast1_s > 0) {
    equation(u"A_ub(st1)ub_/s ＝ (T − " + Text(d_.torsion_case == TorsionCase::kCombined ? u"β_ub(t)ub_·" : u"") +
             u"0.35f_ub(t)ub_·W_ub(t)ub_) / (1.2√ζ·f_ub(yv)ub_·A_ub(cor)ub_)" + chr_.tFmtEq(d_.ast1_s, u"4") +
             u"mm_up(2)up_/mm");
  }
  line(expr(u"受扭纵筋 A_ub(stl)ub_", d_.astl, u"mm2d") + u"（不小于 " +
       expr(u"ρ_ub(tl,min)ub_", d_.rho_tl_min * 100, u"3") + u"%·b·h，9.2.5 条）；上、下边各 " +
       num(d_.astl * d_.bcor / d_.ucor, u"mm2d") + u"，两侧各 " + num(d_.astl * d_.hcor / d_.ucor, u"mm2d"));
}

void Writer::stirrups() {
  if (d_.stirrup_d == 0) {
    conclude(false, u"所需箍筋直径超过 25mm：应减小箍筋间距、增加肢数或加大截面");
    return;
  }
  const Text text = frame::Variant(in_.legs).to_text({}) + u"肢 " + mark(in_.stirrup_steel) +
                    num(d_.stirrup_d, u"0") + u"@" + num(in_.s, u"0");
  if (d_.asv1 <= 0) {
    line(u"箍筋按构造选用 " + text + u"，" + expr(u"最小直径", d_.stirrup_d_min, u"mmd"));
  } else {
    line(u"箍筋选用 " + text + u"，" + expr(u"单肢所需面积", d_.asv1, u"mm2d_1") +
         (d_.rho_sv_min > 0 ? u"（含最小配箍率 " + expr(u"ρ_ub(sv,min)ub_", d_.rho_sv_min * 100, u"3") + u"%）"
                            : Text()) +
         u"，" + expr(u"最小直径", d_.stirrup_d_min, u"mmd"));
  }
  const bool compression_bars = d_.s_max_compression > 0;
  const double s_max = compression_bars ? std::min(d_.s_max, d_.s_max_compression) : d_.s_max;
  conclude(d_.spacing_ok, (d_.spacing_ok ? u"箍筋间距不大于 " : u"箍筋间距大于最大间距 ") + num(s_max, u"mmd") +
                              (compression_bars ? u"（表 9.2.9；受压钢筋 15d 且 400mm，9.2.9 条）" : u"（表 9.2.9）"));
  if (compression_bars) {
    conclude(d_.compression_stirrup_ok, u"箍筋直径不小于受压钢筋最大直径的 1/4（9.2.9 条）");
    if (d_.composite_needed) {
      conclude(d_.composite_ok, d_.composite_ok ? u"一层受压钢筋较多，已设复合箍筋（9.2.9 条）"
                                                : u"一层内受压钢筋多于 " + Text(in_.b > 400 ? u"3" : u"4") +
                                                      u" 根，应设置复合箍筋（9.2.9 条）");
    }
  }
}

void Writer::bars() {
  heading(u"配筋");
  line(expr(u"受拉边所需 A_ub(s)ub_", d_.as_total, u"mm2d") +
       (d_.ratio > 0 || d_.asc_total > 0 ? u"，" + expr(u"受压边所需 A_ub(s)ub_'", d_.asc_total, u"mm2d") : Text()) +
       (d_.ratio > 0 ? u"（A_ub(s)ub_'/A_ub(s)ub_ 不小于 " + num(d_.ratio, u"0.0#") + u"）" : Text()));
  const Text face = d_.hogging ? u"上部" : u"下部";
  if (!d_.tension.found) {
    conclude(false, u"直径 " + num(in_.d_min, u"0") + u"～" + num(in_.d_max, u"0") +
                        u"mm 的纵筋在两排内放不下所需 A_ub(s)ub_：应放宽直径范围或加大梁宽");
  } else {
    Text text = face + u"受拉纵筋选用 " + bars_text(d_.tension);
    if (in_.show_area) text += u"，" + expr(u"实配 A_ub(s)ub_", d_.tension.area, u"mm2d");
    line(text);
    if (in_.show_ratio) line(expr(u"配筋率 ρ ＝ A_ub(s)ub_/(b·h)", d_.rho * 100, u"3") + u"%");
    if (d_.rho_above_end_limit) {
      line(expr(u"梁端受拉钢筋配筋率 A_ub(s)ub_/(b·h_ub(0)ub_)", d_.tension.area / (in_.b * d_.h0) * 100, u"3") +
           u"%，大于 2.5%（11.3.7 条：不宜）。");
    }
    const Text need = num(d_.a_actual, u"0.0");
    conclude(d_.as_ok, d_.as_ok ? u"所选纵筋的合力点至截面边缘 " + need + u"mm，不大于 a_ub(s)ub_"
                                : u"所选纵筋的合力点至截面边缘 " + need + u"mm，大于 a_ub(s)ub_ ＝ " +
                                      num(d_.as_used, u"0.0") + u"mm：应取 a_ub(s)ub_ ≥ " + need + u"mm 重新计算");
  }
  if (!d_.compression.found) {
    conclude(false, u"受压边纵筋在直径范围内放不下");
  } else if (!d_.compression.rows.empty()) {
    Text text = Text(d_.hogging ? u"下部" : u"上部") + u"纵筋" +
                (in_.through_n > 0 && !d_.hogging ? u"（含通长纵筋）" : u"") + u"选用 " + bars_text(d_.compression);
    if (in_.show_area) text += u"，" + expr(u"实配 A_ub(s)ub_'", d_.compression.area, u"mm2d");
    line(text);
    if (!d_.asc_ok) conclude(false, u"受压纵筋的合力点至截面边缘 " + num(d_.compression.centroid, u"0.0") + u"mm，大于计算所取的 a_ub(s)ub_'");
  }
  if (d_.torsion) {
    conclude(d_.torsion_spacing_ok, d_.torsion_spacing_ok
                                        ? u"受扭纵筋沿截面周边的间距不大于 " + num(d_.side_spacing, u"mmd") + u"（9.2.5 条）"
                                        : u"上、下边纵筋的间距大于 " + num(d_.side_spacing, u"mmd") +
                                              u"（9.2.5 条）：应增加根数");
  }
  if (d_.side_each > 0) {
    line(Text(d_.torsion ? u"受扭纵筋" : u"腰筋（9.2.13 条）") + u"：两侧面各不少于 " + num(d_.side_each, u"mm2d") +
         (d_.n_side > 0 ? u"，各配 " + frame::Variant(d_.n_side).to_text({}) + u" 根，间距不大于 " +
                              num(d_.side_spacing, u"mmd") + u"，" + expr(u"单根面积", d_.side_each / d_.n_side, u"mm2d_1")
                        : Text(u"，由角部纵筋承担")) + u"。");
  }
  if (d_.through_checked) {
    conclude(d_.through_ok, d_.through_ok ? u"通长纵筋满足 11.3.7 条"
                                          : Text(u"通长纵筋应不少于 2 根且直径不小于 ") +
                                                (in_.seismic <= 2 ? u"14mm" : u"12mm") + u"（11.3.7 条）");
  }
  conclude(d_.grade_ok, d_.grade_ok ? u"混凝土强度等级满足 4.1.2 条" + Text(in_.seismic <= 1 ? u"、11.2.1 条" : u"")
                                    : u"混凝土强度等级低于 4.1.2 条或 11.2.1 条的要求（不应低于 C20；400MPa 及以上钢筋不应低于 C25；一级抗震不应低于 C30）");
}

void Writer::seismic_note() {
  if (in_.seismic >= 5) return;
  const bool end = d_.hogging, first_three = in_.seismic <= 3;
  Text checked = u"最小配筋率（表 11.3.6-1" + Text(end ? u" 支座" : u" 跨中") + u"）";
  if (end && first_three) checked += u"、受压区高度（11.3.1 条）、底面与顶面纵筋比（11.3.6 条）";
  if (end) checked += u"、箍筋最小直径（表 11.3.6-2）";
  checked += u"、沿梁全长的配箍率（11.3.9 条）、通长纵筋（11.3.7 条）";
  line(u"抗震：负弯矩按梁端截面、正弯矩按跨中截面验算了" + checked +
       u"；梁端的正弯矩截面应另按梁端的要求验算。M、V、T 应为考虑承载力抗震调整系数 γ_ub(RE)ub_ 后的设计值；"
       u"强剪弱弯的剪力调整（11.3.2 条）、抗震受剪截面与承载力（11.3.3、11.3.4 条）、箍筋加密区及其配筋率大于 2% "
       u"时箍筋直径的增大未在本计算中验算。");
}

std::vector<Text> Writer::write() {
  data();
  bending();
  if (d_.bending != BendingCase::kOver) {
    shear();
    torsion();
    stirrups();
    bars();
  }
  seismic_note();
  summary();
  return std::move(lines_);
}

}  // namespace

std::vector<Text> beam_report(const std::vector<Text>& values, clsCharacter& chr) {
  std::vector<Text> lines;
  const auto add = [&](TextView text) {
    for (Text& one : split_text(text, chr.tConEnter1())) {
      if (!one.empty()) lines.push_back(std::move(one));
    }
  };
  std::vector<Text> unread;
  const BeamInput in = beam_input(values, chr, &unread);
  add(chr.tCalHead(u"钢筋混凝土矩形截面梁配筋计算", values.empty() ? Text() : Text(trim(values[0])), kStandards));
  if (!unread.empty()) {
    Text names;
    for (const Text& one : unread) names += (names.empty() ? u"" : u"、") + one;
    add(u"无法计算：以下数据为空或无效：" + names + u"。");
    return lines;
  }
  const BeamDesign design = design_beam(in);
  if (!design.faults.empty()) {
    for (const Text& fault : design.faults) add(u"无法计算：" + fault);
    return lines;
  }
  for (Text& line : Writer(chr, in, design).write()) lines.push_back(std::move(line));
  return lines;
}

}  // namespace zelkora::desk
