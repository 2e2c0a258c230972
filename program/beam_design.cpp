// The design of a rectangular beam section; see the header. Clause numbers
// are those of GB 50010-2010 (2015 edition) unless another code is named.
#include "program/beam_design.h"
#include "program/form_text.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "zelkora/frame/material_tables.h"
#include "zelkora/frame/variant.h"

namespace zelkora::desk {

namespace {

constexpr double kPi = 3.14159265358979323846;

// Items of "clsBeamSteel".
constexpr int32_t kId = 1, kConcrete = 2, kShowArea = 3, kMoment = 4, kShear = 5, kShowRatio = 6,
                  kRange = 7, kAutoAs = 8, kSeismic = 9, kWidth = 10, kDepth = 11, kSteel = 12,
                  kStirrupSteel = 13, kCover = 14, kThrough = 15, kAs = 18, kTorque = 19,
                  kLegs = 22, kSpacing = 23, kRatio = 24, kCompression = 25;

// The seismic grades as the form's list names them, in BeamInput's order.
constexpr std::array<TextView, 6> kSeismicNames = {u"特一级", u"一级", u"二级",
                                                   u"三级",   u"四级", u"非抗震"};
constexpr int32_t kNonSeismic = 5;

// The standard bar diameters; stirrups up to 25.
constexpr std::array<double, 15> kDiameters = {6,  8,  10, 12, 14, 16, 18, 20,
                                               22, 25, 28, 32, 36, 40, 50};
constexpr double kLargestStirrup = 25;
// Lengths closer than this are the same (as and a's against the bars').
constexpr double kSameLength = 1e-6;
// ζ of the torsion formulas (6.4.4: 0.6 to 1.7); 1.2 is the usual choice.
constexpr double kZeta = 1.2;

double bar_area(double d) { return kPi * d * d / 4; }

// ---- Materials ----------------------------------------------------------------------

// βc of 6.3.1: 1.0 up to C50, 0.8 at C80, a straight line between.
double beta_c(int32_t grade) { return grade <= 50 ? 1.0 : 1.0 - 0.2 * (grade - 50) / 30.0; }

std::optional<BeamMaterials> materials(const BeamInput& in) {
  const auto fc = frame::dConcreteFc(in.concrete), ft = frame::dConcreteFt(in.concrete),
             a1 = frame::dConcreteAlpha1(in.concrete), b1 = frame::dConcreteBeta1(in.concrete),
             fy = frame::dSteelFy(in.steel), fyc = frame::dSteelFyc(in.steel),
             es = frame::dSteelEs(in.steel), fyv = frame::dSteelFy(in.stirrup_steel),
             xib = frame::dXiB(in.concrete, in.steel);
  if (!fc || !ft || !a1 || !b1 || !fy || !fyc || !es || !fyv || !xib) return std::nullopt;
  BeamMaterials m;
  m.fc = *fc;
  m.ft = *ft;
  m.alpha1 = *a1;
  m.beta1 = *b1;
  m.beta_c = beta_c(in.concrete);
  m.fy = *fy;
  m.fyc = *fyc;
  m.es = *es;
  m.fyv = std::min(*fyv, 360.0);  // note 2 to table 4.2.3-1: shear and torsion
  m.xi_b = *xib;
  return m;
}

// ---- Limits of the seismic grades (chapter 11) ---------------------------------------

bool seismic(const BeamInput& in) { return in.seismic >= 0 && in.seismic < kNonSeismic; }
// 0 for 特一级 and 一级, 1 for 二级, 2 for 三级, 3 for 四级.
int32_t seismic_rank(const BeamInput& in) { return std::max(0, in.seismic - 1); }

// ξ at most (11.3.1): a frame beam's end, i.e. a hogging moment here.
double xi_limit(const BeamInput& in, const BeamMaterials& m, bool hogging) {
  if (!hogging || !seismic(in) || seismic_rank(in) == 3) return m.xi_b;
  return std::min(m.xi_b, seismic_rank(in) == 0 ? 0.25 : 0.35);
}

// ρmin of the tension bars, of b·h: 8.5.1; table 11.3.6-1 for the seismic
// grades (支座 for a hogging moment, 跨中 for a sagging one).
double rho_min(const BeamInput& in, const BeamMaterials& m, bool hogging) {
  if (!seismic(in)) return std::max(0.002, 0.45 * m.ft / m.fy);
  struct Pair { double rho, coefficient; };
  static constexpr Pair kSupport[] = {{0.40, 80}, {0.30, 65}, {0.25, 55}, {0.25, 55}};
  static constexpr Pair kSpan[] = {{0.30, 65}, {0.25, 55}, {0.20, 45}, {0.20, 45}};
  const Pair p = (hogging ? kSupport : kSpan)[seismic_rank(in)];
  return std::max(p.rho, p.coefficient * m.ft / m.fy) / 100;
}

// As'/As at a frame beam's end at least (11.3.6-2).
double ratio_min(const BeamInput& in, bool hogging) {
  if (!hogging || !seismic(in) || seismic_rank(in) == 3) return 0;
  return seismic_rank(in) == 0 ? 0.5 : 0.3;
}

// ---- Bending (6.2.10) -----------------------------------------------------------------

void design_bending(const BeamInput& in, BeamDesign& d) {
  const BeamMaterials& m = d.mat;
  const double moment = std::fabs(in.m) * 1e6;
  d.alpha_s = moment / (m.alpha1 * m.fc * in.b * d.h0 * d.h0);
  d.xi = 2 * d.alpha_s < 1 ? 1 - std::sqrt(1 - 2 * d.alpha_s) : NAN;
  d.xi_lim = xi_limit(in, m, d.hogging);
  d.as_flex = d.asc = 0;
  if (!std::isnan(d.xi) && d.xi <= d.xi_lim) {
    d.bending = BendingCase::kSingly;
    d.as_flex = m.alpha1 * m.fc * in.b * d.xi * d.h0 / m.fy;
  } else if (in.compression) {
    d.bending = BendingCase::kDoubly;
    const double x = d.xi_lim * d.h0, asc_at = d.asc_used;
    d.asc = std::max(0.0, (moment - m.alpha1 * m.fc * in.b * x * (d.h0 - x / 2)) / (m.fyc * (d.h0 - asc_at)));
    d.as_flex = (m.alpha1 * m.fc * in.b * x + m.fyc * d.asc) / m.fy;
    // x < 2a's: the compression bars do not yield; 6.2.14 takes the moment
    // about them.
    d.x_below_2as = x < 2 * asc_at;
    if (d.x_below_2as) d.as_flex = moment / (m.fy * (d.h0 - asc_at));
  } else {
    d.bending = BendingCase::kOver;
  }
  d.rho_min = rho_min(in, m, d.hogging);
  d.as_min = d.rho_min * in.b * in.h;
  d.ratio_min = ratio_min(in, d.hogging);
}

// ---- Shear (6.3) and torsion (6.4) ---------------------------------------------------

// The factor of βc·fc in the section limits 6.3.1 and 6.4.1: 0.25 for
// hw/b ≤ 4, 0.20 for hw/b ≥ 6, a straight line between.
double section_factor(double hw_over_b) {
  if (hw_over_b <= 4) return 0.25;
  if (hw_over_b >= 6) return 0.20;
  return 0.25 - 0.025 * (hw_over_b - 4);
}

// The stirrups' inner core for a stirrup diameter (6.4.4).
void core(const BeamInput& in, double dv, BeamDesign& d) {
  d.bcor = in.b - 2 * (in.cover + dv);
  d.hcor = in.h - 2 * (in.cover + dv);
  d.acor = d.bcor * d.hcor;
  d.ucor = 2 * (d.bcor + d.hcor);
}

void design_shear_torsion(const BeamInput& in, double dv, BeamDesign& d) {
  const BeamMaterials& m = d.mat;
  const double v = std::fabs(in.v) * 1e3, t = std::fabs(in.t) * 1e6;
  const double b = in.b, h0 = d.h0;
  d.hw_over_b = h0 / b;
  d.vc = 0.7 * m.ft * b * h0;  // 6.3.4, αcv = 0.7
  d.v_lim = section_factor(d.hw_over_b) * m.beta_c * m.fc * b * h0;
  d.asv_s = d.ast1_s = d.astl = 0;
  d.torsion = t > 0;
  core(in, dv, d);
  const auto shear_alone = [&] {
    d.asv_s = v > d.vc ? (v - d.vc) / (m.fyv * h0) : 0;  // 6.3.4, 6.3.7
  };
  if (!d.torsion) {
    d.section_ok = v <= d.v_lim;  // 6.3.1
    d.torsion_case = TorsionCase::kNone;
    shear_alone();
    return;
  }
  d.wt = std::pow(std::min(b, in.h), 2) * (3 * std::max(b, in.h) - std::min(b, in.h)) / 6;
  d.stress = v / (b * h0) + t / (0.8 * d.wt);  // 6.4.1
  d.stress_lim = section_factor(d.hw_over_b) * m.beta_c * m.fc;
  d.section_ok = d.stress <= d.stress_lim;
  d.beta_t = 1;
  const auto torsion_stirrups = [&] {  // 6.4.4 and 6.4.8-3
    d.ast1_s = std::max(0.0, (t - d.beta_t * 0.35 * m.ft * d.wt) /
                                 (1.2 * std::sqrt(kZeta) * m.fyv * d.acor));
  };
  if (v / (b * h0) + t / d.wt <= 0.7 * m.ft) {
    d.torsion_case = TorsionCase::kDetailing;  // 6.4.2
  } else if (v <= 0.35 * m.ft * b * h0) {
    d.torsion_case = TorsionCase::kShearIgnored;  // 6.4.12-1
    torsion_stirrups();
  } else if (t <= 0.175 * m.ft * d.wt) {
    d.torsion_case = TorsionCase::kTorsionIgnored;  // 6.4.12-2
    shear_alone();
  } else {
    d.torsion_case = TorsionCase::kCombined;  // 6.4.8
    d.beta_t = std::clamp(1.5 / (1 + 0.5 * (v / t) * (d.wt / (b * h0))), 0.5, 1.0);
    d.asv_s = std::max(0.0, (v - (1.5 - d.beta_t) * 0.7 * m.ft * b * h0) / (m.fyv * h0));
    torsion_stirrups();
  }
  // 6.4.4-2 with ζ, and the least ratio of 9.2.5 (T/(V·b) at most 2).
  const double t_over_vb = v > 0 ? std::min(2.0, t / (v * b)) : 2.0;
  d.rho_tl_min = 0.6 * std::sqrt(t_over_vb) * m.ft / m.fy;
  d.astl = std::max(kZeta * m.fyv * d.ast1_s * d.ucor / m.fy, d.rho_tl_min * b * in.h);
}

// The least stirrup diameter: 9.2.9; table 11.3.6-2 at a frame beam's end.
double stirrup_d_min(const BeamInput& in, bool hogging) {
  double d = in.h > 800 ? 8 : 6;
  if (hogging && seismic(in)) d = std::max(d, std::array<double, 4>{10, 8, 8, 6}[seismic_rank(in)]);
  return d;
}

// The largest stirrup spacing, table 9.2.9.
double stirrup_s_max(double h, bool above_vc) {
  if (h <= 300) return above_vc ? 150 : 200;
  if (h <= 500) return above_vc ? 200 : 300;
  if (h <= 800) return above_vc ? 250 : 350;
  return above_vc ? 300 : 400;
}

void choose_stirrups(const BeamInput& in, BeamDesign& d) {
  const BeamMaterials& m = d.mat;
  d.rho_sv_min = 0;
  if (std::fabs(in.v) * 1e3 > d.vc) d.rho_sv_min = 0.24 * m.ft / m.fyv;  // 9.2.9-3
  if (d.torsion) d.rho_sv_min = std::max(d.rho_sv_min, 0.28 * m.ft / m.fyv);  // 9.2.10
  if (seismic(in)) {  // 11.3.9
    d.rho_sv_min = std::max(d.rho_sv_min,
                            std::array<double, 4>{0.30, 0.28, 0.26, 0.26}[seismic_rank(in)] *
                                m.ft / m.fyv);
  }
  d.asv1 = std::max(d.asv_s * in.s / in.legs + d.ast1_s * in.s,
                    d.rho_sv_min * in.b * in.s / in.legs);
  d.stirrup_d = 0;
  for (double dv : kDiameters) {
    if (dv > kLargestStirrup) break;
    if (dv >= d.stirrup_d_min && bar_area(dv) >= d.asv1 - 1e-9) {
      d.stirrup_d = dv;
      break;
    }
  }
  // The column "V > 0.7 ft b h0" also when torsion is calculated.
  d.s_max = stirrup_s_max(in.h, std::fabs(in.v) * 1e3 > d.vc ||
                                    (d.torsion && d.torsion_case != TorsionCase::kDetailing));
  d.spacing_ok = in.s <= d.s_max;
}

// ---- Bars ---------------------------------------------------------------------------

// The least diameter of a beam's longitudinal bars (9.2.1).
double least_bar(const BeamInput& in) { return in.h >= 300 ? 10 : 8; }

// The smallest diameter the bars may have: of the range, and of 9.2.1.
double smallest_bar(const BeamInput& in) {
  for (double d : kDiameters) {
    if (d >= in.d_min - 1e-9 && d <= in.d_max + 1e-9 && d >= least_bar(in)) return d;
  }
  return 0;
}

// The centres of a row's end bars apart, over the gaps between.
double row_spacing(const BeamInput& in, double dv, const BarRow& row) {
  if (row.d.size() < 2) return 0;
  const double largest = *std::max_element(row.d.begin(), row.d.end());
  return (in.b - 2 * (in.cover + dv) - largest) / static_cast<double>(row.d.size() - 1);
}

// Clear spacing of the bars in a row (9.2.1): a beam's top face 30 mm and
// 1.5 d, its bottom face 25 mm and d.
double clear_spacing(double d, bool top) { return top ? std::max(30.0, 1.5 * d) : std::max(25.0, d); }

BarChoice choose_bars(const BeamInput& in, double need, bool top, double dv, int32_t nt, double dt) {
  const double inside = in.cover + dv, width = in.b - 2 * inside;
  BarChoice best;
  if (need <= 0 && nt == 0) {
    best.found = true;
    return best;
  }
  const double through_area = nt * bar_area(dt);
  for (double d : kDiameters) {
    if (d < in.d_min - 1e-9 || d > in.d_max + 1e-9 || d < least_bar(in)) continue;
    int32_t n = need > through_area ? static_cast<int32_t>(std::ceil((need - through_area) / bar_area(d) - 1e-9)) : 0;
    if (nt == 0) n = std::max(n, 2);
    const int32_t total = nt + n;
    const double large = std::max(d, nt > 0 ? dt : 0.0), sc = clear_spacing(large, top);
    const auto per_row = static_cast<int32_t>(std::floor((width + sc) / (large + sc) + 1e-9));
    int32_t first = total, second = 0;
    if (total > per_row) {
      first = per_row;
      second = total - per_row;
      if (second == 1) {
        --first;
        second = 2;
      }
      if (second > per_row || first < 2 || first < nt) continue;
    }
    const double area = through_area + n * bar_area(d);
    // One row before two; then the least area; of equal areas the larger
    // diameter (the later one).
    const bool one_row = second == 0, best_one_row = best.found && best.rows.size() == 1;
    const bool better = !best.found || (one_row != best_one_row ? one_row : area <= best.area + 1e-6);
    if (!better) continue;
    best.found = true;
    best.area = area;
    best.rows.clear();
    BarRow row1;
    for (int32_t i = 0; i < (nt + 1) / 2; ++i) row1.d.push_back(dt);
    for (int32_t i = nt; i < first; ++i) row1.d.push_back(d);
    for (int32_t i = 0; i < nt / 2; ++i) row1.d.push_back(dt);
    const double d1 = large;
    row1.from_face = inside + d1 / 2;
    best.rows.push_back(row1);
    if (second > 0) {
      BarRow row2;
      row2.d.assign(static_cast<std::size_t>(second), d);
      row2.from_face = inside + d1 + std::max({25.0, d1, d}) + d / 2;
      best.rows.push_back(row2);
    }
    double moment = 0, sum = 0;
    for (const BarRow& row : best.rows) {
      for (double one : row.d) {
        moment += bar_area(one) * row.from_face;
        sum += bar_area(one);
      }
    }
    best.centroid = sum > 0 ? moment / sum : 0;
  }
  return best;
}

// The detailing of a doubly reinforced section's stirrups (9.2.9): their
// diameter at least d'/4, their spacing at most 15 d' (10 d' with more than
// five bars above 18 mm in a row) and 400, composite stirrups for a row of
// more than 3 bars (b > 400) or 4 (b ≤ 400).
void compression_detailing(const BeamInput& in, BeamDesign& d) {
  if (d.bending != BendingCase::kDoubly || !d.compression.found || d.compression.rows.empty()) return;
  double largest = 0, smallest = 1e9;
  bool many_large = false, many = false;
  for (const BarRow& row : d.compression.rows) {
    int32_t large = 0;
    for (double bar : row.d) {
      largest = std::max(largest, bar);
      smallest = std::min(smallest, bar);
      if (bar > 18) ++large;
    }
    many_large = many_large || large > 5;
    many = many || static_cast<int32_t>(row.d.size()) > (in.b > 400 ? 3 : 4);
  }
  d.stirrup_d_for_compression = largest / 4;
  d.s_max_compression = std::min((many_large ? 10 : 15) * smallest, 400.0);
  d.spacing_ok = d.spacing_ok && in.s <= d.s_max_compression;
  d.composite_needed = many;
  d.composite_ok = !many || in.legs > 2;
}

// One round of the design with given as, a's and least stirrup diameter.
BeamDesign design_round(const BeamInput& in, const BeamMaterials& mat, double as, double asc_at,
                        double dv_floor) {
  BeamDesign d;
  d.mat = mat;
  d.hogging = in.m < 0;
  d.as_used = as;
  d.asc_used = asc_at;
  d.h0 = in.h - as;
  design_bending(in, d);
  d.stirrup_d_min = std::max(stirrup_d_min(in, d.hogging), dv_floor);
  // The core of the torsion formulas depends on the stirrups chosen.
  double dv = d.stirrup_d_min;
  for (int32_t round = 0; round < 5; ++round) {
    design_shear_torsion(in, dv, d);
    choose_stirrups(in, d);
    if (d.stirrup_d == 0 || d.stirrup_d == dv) break;
    dv = d.stirrup_d;
  }
  const double bars_dv = d.stirrup_d > 0 ? d.stirrup_d : kLargestStirrup;
  core(in, bars_dv, d);
  const double share = d.torsion && d.ucor > 0 ? d.astl * d.bcor / d.ucor : 0;  // 9.2.5
  // Each side face: its torsion bars, and at least 0.1 % b·hw when hw ≥ 450
  // (9.2.13); spaced at most 200, and with torsion at most the short side.
  d.side_each = std::max(d.torsion && d.ucor > 0 ? d.astl * d.hcor / d.ucor : 0.0,
                         d.h0 >= 450 ? 0.001 * in.b * d.h0 : 0.0);
  d.side_spacing = d.torsion ? std::min(200.0, std::min(in.b, in.h)) : 200.0;
  d.n_side = d.side_each > 0 ? std::max(0, static_cast<int32_t>(std::ceil(d.hcor / d.side_spacing - 1e-9)) - 1) : 0;
  if (d.bending == BendingCase::kOver) return d;
  d.as_total = std::max(d.as_flex, d.as_min) + share;
  d.ratio = std::max(in.ratio, d.ratio_min);
  const int32_t nt = in.through_n > 0 && in.through_d > 0 ? in.through_n : 0;
  d.tension = choose_bars(in, d.as_total, d.hogging, bars_dv, d.hogging ? nt : 0, in.through_d);
  // As'/As of the bars placed (11.3.6-2).
  d.asc_total = std::max(d.asc, d.ratio * (d.tension.found ? d.tension.area : d.as_total)) + share;
  if (d.asc_total < 1e-9) d.asc_total = 0;
  d.compression = choose_bars(in, d.asc_total, !d.hogging, bars_dv, d.hogging ? 0 : nt, in.through_d);
  d.a_actual = d.tension.found ? d.tension.centroid : 0;
  compression_detailing(in, d);
  if (d.torsion) {
    // The torsion bars around the section at most the side spacing apart (9.2.5).
    for (const BarChoice* face : {&d.tension, &d.compression}) {
      if (!face->found || (!face->rows.empty() &&
                           row_spacing(in, bars_dv, face->rows.front()) > d.side_spacing + 1e-9)) {
        d.torsion_spacing_ok = false;
      }
    }
  }
  return d;
}

std::vector<Text> input_faults(const BeamInput& in) {
  std::vector<Text> faults;
  if (!(in.b >= 100 && in.h >= 150 && in.b <= 5000 && in.h <= 5000))
    faults.push_back(u"截面尺寸超出本计算的范围：b 应在 100～5000mm、h 应在 150～5000mm 之间。");
  if (!(in.cover >= 0 && in.cover * 2 + 2 * kDiameters[0] < std::min(in.b, in.h)))
    faults.push_back(u"保护层厚度 c 与截面尺寸不相容。");
  if (in.as && !(*in.as > in.cover && *in.as < in.h / 2))
    faults.push_back(u"纵筋合力点至截面边缘的距离 as 应大于保护层厚度 c 且小于 h/2。");
  if (in.legs < 2 || in.legs > 12) faults.push_back(u"箍筋的肢数 n 应在 2～12 之间。");
  if (!(in.s > 0 && in.s <= 1000)) faults.push_back(u"箍筋的间距 s 应在 0～1000mm 之间。");
  const bool any_diameter = std::any_of(kDiameters.begin(), kDiameters.end(), [&](double d) {
    return d >= in.d_min - 1e-9 && d <= in.d_max + 1e-9;
  });
  if (!any_diameter) faults.push_back(u"纵筋的直径范围内没有标准直径（6～50mm）。");
  if (in.through_n < 0 || in.through_n > 20 || (in.through_n > 0 && !(in.through_d >= 6 && in.through_d <= 50)))
    faults.push_back(u"通长纵向钢筋的根数或直径不合理。");
  if (!(std::isfinite(in.m) && std::isfinite(in.v) && std::isfinite(in.t) && std::fabs(in.m) < 1e6 &&
        std::fabs(in.v) < 1e6 && std::fabs(in.t) < 1e6))
    faults.push_back(u"内力设计值超出本计算的范围（绝对值应小于 10^6）。");
  if (!(in.ratio >= 0 && in.ratio <= 1)) faults.push_back(u"As'/As 应在 0～1.0 之间。");
  return faults;
}

}  // namespace

// ---- Public ---------------------------------------------------------------------------

BeamInput beam_input(const std::vector<Text>& values, const clsCharacter& chr,
                     std::vector<Text>* unread) {
  BeamInput in;
  const FormValues form(values, chr, unread);
  const auto text = [&](int32_t item) { return form.text(item); };
  const auto fail = [&](TextView what) { form.fail(what); };
  const auto read = [&](int32_t item, double& into, TextView what) { form.read(item, into, what); };
  in.id = text(kId);
  Text grade = text(kConcrete);
  if (!grade.empty() && (grade[0] == u'C' || grade[0] == u'c')) grade.erase(0, 1);
  const auto g = number_in(grade, chr);
  if (g && *g == std::floor(*g) && frame::dConcreteFc(static_cast<int32_t>(*g))) {
    in.concrete = static_cast<int32_t>(*g);
  } else {
    fail(u"混凝土的强度等级");
  }
  in.steel = text(kSteel);
  if (!frame::dSteelFy(in.steel)) fail(u"纵筋的强度等级");
  in.stirrup_steel = text(kStirrupSteel);
  if (!frame::dSteelFy(in.stirrup_steel)) fail(u"箍筋的强度等级");
  const Text level = text(kSeismic);
  const auto* found = std::find(kSeismicNames.begin(), kSeismicNames.end(), TextView(level));
  if (found != kSeismicNames.end()) in.seismic = static_cast<int32_t>(found - kSeismicNames.begin());
  else fail(u"抗震等级");
  read(kWidth, in.b, u"梁的截面宽度 b");
  read(kDepth, in.h, u"梁的截面高度 h");
  read(kCover, in.cover, u"混凝土保护层厚度 c");
  if (!text(kAs).empty()) {
    double as = 0;
    read(kAs, as, u"纵筋合力点至截面边缘的距离 as");
    in.as = as;
  }
  read(kMoment, in.m, u"弯矩设计值 M");
  read(kShear, in.v, u"剪力设计值 V");
  if (!text(kTorque).empty()) read(kTorque, in.t, u"扭矩设计值 T");
  const std::vector<Text> through = split_text(text(kThrough), u",");
  if (through.size() == 2) {
    const auto n = number_in(through[0], chr), d = number_in(through[1], chr);
    if (n && d && *n == std::floor(*n)) {
      in.through_n = static_cast<int32_t>(*n);
      in.through_d = *d;
    } else {
      fail(u"通长纵向钢筋");
    }
  } else if (!trim(text(kThrough)).empty()) {
    fail(u"通长纵向钢筋");
  }
  const std::vector<Text> range = split_text(text(kRange), u",");
  if (range.size() == 2) {
    const auto lo = number_in(range[0], chr), hi = number_in(range[1], chr);
    if (lo && hi) {
      in.d_min = *lo;
      in.d_max = *hi;
    } else {
      fail(u"纵筋的直径范围");
    }
  } else {
    fail(u"纵筋的直径范围");
  }
  double legs = in.legs;
  read(kLegs, legs, u"箍筋的肢数 n");
  in.legs = legs == std::floor(legs) && std::fabs(legs) < 1000 ? static_cast<int32_t>(legs) : 0;
  read(kSpacing, in.s, u"箍筋的间距 s");
  read(kRatio, in.ratio, u"As'/As");
  in.compression = yes(text(kCompression), chr);
  in.show_area = yes(text(kShowArea), chr);
  in.show_ratio = yes(text(kShowRatio), chr);
  in.auto_as = yes(text(kAutoAs), chr);
  return in;
}

BeamDesign design_beam(const BeamInput& in) {
  BeamDesign d;
  d.faults = input_faults(in);
  const auto mat = materials(in);
  if (!mat) d.faults.emplace_back(u"混凝土或钢筋的强度等级不在本计算的范围内。");
  if (!d.faults.empty()) return d;
  // as: the form's, or the chosen bars' when it is empty or, with the
  // option, when theirs is larger; a's of a doubly reinforced section: the
  // chosen compression bars'. Both only grow, from the least a bar can
  // have, over a few rounds; so does the stirrup's least diameter.
  const bool automatic = !in.as || in.auto_as;
  const double least = in.cover + stirrup_d_min(in, in.m < 0) + smallest_bar(in) / 2;
  double as = in.as ? *in.as : least, asc_at = least, dv_floor = 0;
  for (int32_t round = 0; round < 8; ++round) {
    d = design_round(in, *mat, as, asc_at, dv_floor);
    if (d.bending == BendingCase::kOver) break;
    bool again = false;
    if (automatic && d.tension.found && d.a_actual > as + kSameLength) {
      as = d.a_actual;
      again = true;
    }
    if (d.bending == BendingCase::kDoubly && d.compression.found && !d.compression.rows.empty() &&
        d.compression.centroid > asc_at + kSameLength) {
      asc_at = d.compression.centroid;
      again = true;
    }
    if (d.stirrup_d > 0 && d.stirrup_d < d.stirrup_d_for_compression - 1e-9) {
      dv_floor = d.stirrup_d_for_compression;
      again = true;
    }
    if (!again) break;
  }
  const double fyk = std::max(frame::dSteelFyk(in.steel).value_or(0), frame::dSteelFyk(in.stirrup_steel).value_or(0));
  d.grade_ok = in.concrete >= 20 && !(in.concrete < 25 && fyk >= 400) &&
               !(seismic(in) && seismic_rank(in) == 0 && in.concrete < 30);  // 4.1.2, 11.2.1
  if (seismic(in)) {  // 11.3.7
    d.through_checked = true;
    d.through_ok = in.through_n >= 2 && in.through_d >= (seismic_rank(in) <= 1 ? 14 : 12);
  }
  d.as_from_bars = automatic && d.as_used != (in.as ? *in.as : -1);
  d.as_ok = !d.tension.found || d.a_actual <= d.as_used + kSameLength;
  d.asc_ok = d.bending != BendingCase::kDoubly || !d.compression.found ||
             d.compression.rows.empty() || d.compression.centroid <= d.asc_used + kSameLength;
  d.compression_stirrup_ok = d.stirrup_d == 0 || d.stirrup_d >= d.stirrup_d_for_compression - 1e-9;
  if (d.tension.found) d.rho = d.tension.area / (in.b * in.h);
  d.rho_above_end_limit = d.hogging && seismic(in) && d.tension.found &&
                          d.tension.area / (in.b * d.h0) > 0.025;  // 11.3.7
  return d;
}

bool BeamDesign::satisfied() const {
  return faults.empty() && bending != BendingCase::kOver && section_ok && stirrup_d > 0 &&
         spacing_ok && tension.found && compression.found && as_ok && asc_ok && composite_ok &&
         compression_stirrup_ok && torsion_spacing_ok && grade_ok && through_ok;
}

SectionSketch beam_sketch(const BeamInput& in, const BeamDesign& d) {
  SectionSketch sketch;
  if (!(in.b > 0 && in.h > 0 && std::isfinite(in.b) && std::isfinite(in.h))) return sketch;
  sketch.b = in.b;
  sketch.h = in.h;
  sketch.cover = in.cover;
  sketch.stirrup_d = d.stirrup_d > 0 ? d.stirrup_d : d.stirrup_d_min;
  sketch.caption = frame::Variant(in.b).to_text({}) + u"×" + frame::Variant(in.h).to_text({});
  const auto place = [&](const BarChoice& choice, bool tension, bool top) {
    for (const BarRow& row : choice.rows) {
      const double y = top ? in.h - row.from_face : row.from_face;
      const double left = in.cover + sketch.stirrup_d, right = in.b - left;
      const std::size_t n = row.d.size();
      for (std::size_t i = 0; i < n; ++i) {
        const double di = row.d[i];
        const double x = n == 1 ? in.b / 2
                                : left + di / 2 + (right - left - di) * static_cast<double>(i) /
                                                      static_cast<double>(n - 1);
        sketch.bars.push_back({x, y, di, tension});
      }
    }
  };
  place(d.tension, true, d.hogging);
  place(d.compression, false, !d.hogging);
  return sketch;
}

SectionSketch beam_sketch(const std::vector<Text>& values, clsCharacter& chr) {
  const BeamInput in = beam_input(values, chr);
  return beam_sketch(in, design_beam(in));
}

}  // namespace zelkora::desk
