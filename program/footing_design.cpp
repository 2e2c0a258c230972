// The design of a spread footing; see the header. Clause numbers are those of
// GB 50007-2011 unless another code is named; the rules and their public
// sources are in desk/testdata/footing_rules.md.
#include "program/footing_design.h"
#include "program/form_text.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "zelkora/frame/material_tables.h"
#include "zelkora/frame/variant.h"

namespace zelkora::desk {

namespace {

constexpr double kPi = 3.14159265358979323846;

// Items of "clsFoundationSpread" (18-20, the single load, are not read: the
// loads come as a list).
constexpr int32_t kId = 1, kConcrete = 2, kSteel = 3, kBc = 4, kHc = 5, kE = 6, kShape = 7, kB = 8,
                  kL = 9, kH = 10, kD = 11, kFak = 12, kEtaB = 13, kEtaD = 14, kGamma = 15,
                  kGammaM = 16, kGammaG = 17, kAutoBars = 21, kRange = 22, kDMin = 23, kDMax = 24,
                  kH1 = 25, kB1 = 26, kL1 = 27, kSoil = 28, kAs = 29;

// Table 5.2.4 in SoilKind's order: ηb, ηd, and whether a public text
// confirmed the row (footing_rules.md).
struct TableRow {
  double eta_b, eta_d;
  bool confirmed;
};
constexpr std::array<TableRow, 12> kTable524 = {{
    {0, 0, true},        // kGiven (not used)
    {0, 1.0, false},     // 淤泥和淤泥质土
    {0, 1.0, true},      // 人工填土，e 或 IL ≥ 0.85 的黏性土
    {0, 1.2, false},     // 红黏土 αw > 0.8
    {0.15, 1.4, false},  // 红黏土 αw ≤ 0.8
    {0, 1.5, false},     // 压实粉土
    {0, 2.0, true},      // 压实级配砂石
    {0.3, 1.5, false},   // 粉土 ρc ≥ 10%
    {0.5, 2.0, false},   // 粉土 ρc < 10%
    {0.3, 1.6, true},    // e 及 IL < 0.85 的黏性土
    {2.0, 3.0, false},   // 粉砂、细砂
    {3.0, 4.4, true},    // 中砂、粗砂、砾砂、碎石土
}};

// The list of item 28, in SoilKind's order.
constexpr std::array<TextView, 12> kSoilNames = {
    u"按输入的 ηb、ηd",    u"淤泥和淤泥质土", u"人工填土、e或IL≥0.85的黏性土",
    u"红黏土 αw>0.8",      u"红黏土 αw≤0.8",  u"压实粉土",
    u"压实级配砂石",       u"粉土 ρc≥10%",    u"粉土 ρc<10%",
    u"e及IL<0.85的黏性土", u"粉砂、细砂",     u"中砂、粗砂、砾砂、碎石土"};

// Bottom bars: 8.2.1-3, at least 10 mm, spaced 100 to 200 mm.
constexpr std::array<double, 10> kDiameters = {10, 12, 14, 16, 18, 20, 22, 25, 28, 32};
constexpr double kLeastBar = 10, kSpacingMin = 100, kSpacingMax = 200, kSpacingStep = 10;
constexpr double kRhoMin = 0.0015;  // 8.2.1-3
// 8.2.11: G with its partial factor when the permanent load governs.
constexpr double kGammaGFactor = 1.35;
// Sizing ("自动"): 100 mm steps up to 20 m.
constexpr double kSizeStep = 100, kSizeMax = 20000;
constexpr double kTiny = 1e-9;

double bar_area(double d) { return kPi * d * d / 4; }

// ∫ from h0 to c of min(u, s) du: the widening of a punching cone's side
// region beyond the base's edge at lateral distance s.
double widening(double h0, double c, double s) {
  if (s <= h0) return s * (c - h0);
  if (s >= c) return (c * c - h0 * h0) / 2;
  return (s * s - h0 * h0) / 2 + s * (c - s);
}

// The plan of the core (the column, or the upper step / tapered top),
// centred on the column.
struct Core {
  double cx = 0, cy = 0;  // mm
};

struct Geometry {
  double b = 0, l = 0, e = 0;  // mm
  // Side k of a core: 0 +x, 1 −x, 2 +y, 3 −y. c: core face to base edge;
  // at: the core's side along that edge; s1, s2: from the core's corners
  // to the base's edges across.
  struct Side {
    double c, at, s1, s2, across;
  };
  Side side(const Core& k, int32_t s) const {
    const double ax = (b - k.cx) / 2, up = l / 2 - e - k.cy / 2, down = l / 2 + e - k.cy / 2;
    switch (s) {
      case 0:
      case 1:
        return {ax, k.cy, up, down, l};
      case 2:
        return {up, k.cx, ax, ax, b};
      default:
        return {down, k.cx, ax, ax, b};
    }
  }
};

class Designer {
 public:
  Designer(const FootingInput& in, const std::vector<FootingLoad>& loads)
      : in_(in), loads_(loads) {}
  FootingDesign run();

 private:
  bool check_input();
  double fa_for(double b, double l) const;
  // The pressures of a load on a base b × l (mm); false: a fault was named
  // (quietly with `quiet`, for sizing).
  bool pressure(const FootingLoad& load, double b, double l, FootingPressure& p, bool quiet);
  bool bearing(double b, double l, bool quiet);
  // Net pressure (kPa) of fundamental load i at (x, y) mm from the base's centre.
  double net(std::size_t i, double x, double y) const;
  void punching();
  void shear();
  bool bending();
  void choose_bars();
  Core column() const { return {in_.bc, in_.hc}; }
  Core top() const;
  void fault(TextView text) { d_.faults.emplace_back(text); }

  const FootingInput& in_;
  const std::vector<FootingLoad>& loads_;
  FootingDesign d_;
  Geometry g_;
};

Core Designer::top() const {
  if (in_.b1 && in_.l1) return {*in_.b1, *in_.l1};
  return {in_.bc + 100, in_.hc + 100};  // a tapered top: 50 mm beyond the column all round
}

bool Designer::check_input() {
  const auto finite = [](std::initializer_list<double> v) {
    return std::all_of(v.begin(), v.end(), [](double x) { return std::isfinite(x); });
  };
  if (!finite({in_.bc, in_.hc, in_.e, in_.h, in_.h1, in_.as, in_.d, in_.fak, in_.eta_b, in_.eta_d,
               in_.gamma, in_.gamma_m, in_.gamma_g, in_.d_min, in_.d_max, in_.b.value_or(1),
               in_.l.value_or(1), in_.b1.value_or(1), in_.l1.value_or(1)})) {
    fault(u"输入数据中有非数值。");
    return false;
  }
  bool standard = false, fundamental = false;
  for (const FootingLoad& load : loads_) {
    if (load.seismic) fault(u"荷载“" + load.name + u"”为地震作用组合：本计算不包括抗震验算。");
    if (!finite({load.N, load.Mx, load.My, load.Vx, load.Vy}) || std::fabs(load.N) > 1e6 ||
        std::fabs(load.Mx) > 1e6 || std::fabs(load.My) > 1e6 || std::fabs(load.Vx) > 1e6 ||
        std::fabs(load.Vy) > 1e6)
      fault(u"荷载“" + load.name + u"”的数值超出本计算的范围（绝对值应小于 10^6）。");
    (load.standard ? standard : fundamental) = true;
  }
  if (!standard) fault(u"没有标准组合的荷载：无法验算地基承载力（3.0.5 条）。");
  if (!fundamental) fault(u"没有基本组合的荷载：无法验算受冲切、受剪与受弯（3.0.5 条）。");
  const auto ft = frame::dConcreteFt(in_.concrete);
  const auto fy = frame::dSteelFy(in_.steel);
  if (!ft || in_.concrete < 20)
    fault(u"基础的混凝土强度等级不应低于 C20（8.2.1 条），且不高于 C80。");
  if (!fy) fault(u"底板钢筋的强度等级不在本计算的范围内。");
  d_.ft = ft.value_or(0);
  d_.fy = fy.value_or(0);
  if (!(in_.bc >= 100 && in_.hc >= 100 && in_.bc <= 5000 && in_.hc <= 5000))
    fault(u"柱的截面尺寸应在 100～5000mm 之间。");
  if (in_.b && !(*in_.b > in_.bc + 2 * kTiny && *in_.b <= kSizeMax))
    fault(u"基础底面宽度 b 应大于柱宽 bc（且不大于 20m）。");
  if (in_.l && !(*in_.l > in_.hc + 2 * std::fabs(in_.e) && *in_.l <= kSizeMax))
    fault(u"基础底面长度 l 应大于 hc + 2|e|：柱截面应位于基础底面以内（且 l 不大于 20m）。");
  if (!(in_.as >= 20 && in_.as < in_.h / 2))
    fault(u"钢筋合力点至底面的距离 as 应在 20mm～h/2 之间。");
  if (!(in_.h - in_.as >= 100 && in_.h <= 5000))
    fault(u"基础高度 h 过小（h − as 应不小于 100mm）或大于 5000mm。");
  if (!(in_.h1 > 0 && in_.h1 < in_.h))
    fault(in_.shape == FootingShape::kTapered ? u"锥形基础的边缘高度应大于 0 且小于 h。"
                                              : u"阶梯形基础下阶的高度应大于 0 且小于 h。");
  if (in_.shape == FootingShape::kStepped) {
    if (!in_.b1 || !in_.l1) {
      fault(u"阶梯形基础应输入上阶的宽度 b1 与长度 l1。");
    } else if (!(*in_.b1 > in_.bc && *in_.l1 > in_.hc)) {
      fault(u"阶梯形基础上阶的尺寸应大于柱的截面尺寸。");
    }
    if (in_.h1 - in_.as < 50) fault(u"阶梯形基础下阶过薄：h1 − as 应不小于 50mm。");
  } else if ((in_.b1 || in_.l1) &&
             !(in_.b1.value_or(in_.bc) >= in_.bc && in_.l1.value_or(in_.hc) >= in_.hc)) {
    fault(u"锥形基础顶面的尺寸不应小于柱的截面尺寸。");
  }
  const Core t = top();
  if (in_.b && t.cx >= *in_.b) fault(u"上阶（锥形基础顶面）的宽度应小于基础底面宽度 b。");
  if (in_.l && t.cy + 2 * std::fabs(in_.e) >= *in_.l)
    fault(u"上阶（锥形基础顶面）应位于基础底面以内：l1 + 2|e| 应小于 l。");
  if (!(in_.d > 0 && in_.d <= 30000)) fault(u"埋置深度 d 应在 0～30m 之间。");
  if (!(in_.fak > 0 && in_.fak < 1e5)) fault(u"地基承载力特征值 fak 应大于 0。");
  if (!(in_.gamma > 0 && in_.gamma_m > 0 && in_.gamma_g > 0 && in_.gamma < 100 &&
        in_.gamma_m < 100 && in_.gamma_g < 100))
    fault(u"土与基础的重度应在 0～100kN/m³ 之间。");
  if (in_.soil == SoilKind::kGiven &&
      !(in_.eta_b >= 0 && in_.eta_d >= 0 && in_.eta_b <= 10 && in_.eta_d <= 10))
    fault(u"承载力修正系数 ηb、ηd 应在 0～10 之间。");
  const bool any = std::any_of(kDiameters.begin(), kDiameters.end(), [&](double x) {
    return x >= in_.d_min - kTiny && x <= in_.d_max + kTiny;
  });
  if (in_.auto_bars && !any)
    fault(u"底板钢筋的直径范围内没有 10～32mm 的标准直径（8.2.1 条：不宜小于 10mm）。");
  return d_.faults.empty();
}

// 5.2.4: b taken 3 to 6 m (the base's shorter side), no depth correction
// above 0.5 m.
double Designer::fa_for(double b, double l) const {
  const double width = std::clamp(std::min(b, l) / 1000, 3.0, 6.0);
  const double depth = std::max(in_.d / 1000 - 0.5, 0.0);
  return in_.fak + d_.eta_b * in_.gamma * (width - 3) + d_.eta_d * in_.gamma_m * depth;
}

// 5.2.2: pk = (F + G)/A; pmax, pmin = pk ± Mx/Wx ± My/Wy; a uniaxial
// partial contact (e > b/6): pmax = 2(F + G)/(3·l·a), a = b/2 − e.
bool Designer::pressure(const FootingLoad& load, double b, double l, FootingPressure& p,
                        bool quiet) {
  const double bm = b / 1000, lm = l / 1000, area = bm * lm, hm = in_.h / 1000;
  p.name = load.name;
  p.standard = load.standard;
  p.n = load.N;
  p.mx = load.Mx + load.Vy * hm + load.N * in_.e / 1000;
  p.my = load.My + load.Vx * hm;
  p.g = in_.gamma_g * area * in_.d / 1000 * (load.standard ? 1.0 : kGammaGFactor);
  const double total = p.n + p.g;
  if (!(total > 0)) {
    if (!quiet)
      fault(u"荷载“" + load.name + u"”的竖向力与基础自重之和不大于 0：基础受拉，本计算不适用。");
    return false;
  }
  p.p = total / area;
  p.ex = std::fabs(p.my) / total;
  p.ey = std::fabs(p.mx) / total;
  const double wx = bm * lm * lm / 6, wy = lm * bm * bm / 6;
  p.pmax = p.p + std::fabs(p.mx) / wx + std::fabs(p.my) / wy;
  p.pmin = p.p - std::fabs(p.mx) / wx - std::fabs(p.my) / wy;
  p.full_contact = p.pmin >= -kTiny * std::max(1.0, p.p);
  if (p.full_contact) {
    p.pmin = std::max(p.pmin, 0.0);
  } else {
    if (std::fabs(p.mx) > kTiny && std::fabs(p.my) > kTiny) {
      if (!quiet)
        fault(u"荷载“" + load.name +
              u"”为双向偏心且基础底面部分脱开：GB 50007 "
              u"未给出其基底压力的计算公式，本计算不适用，请加大基础底面尺寸。");
      return false;
    }
    const bool along_y = std::fabs(p.mx) > kTiny;
    const double side = along_y ? lm : bm, across = along_y ? bm : lm;
    p.a = side / 2 - (along_y ? p.ey : p.ex);
    if (!(p.a > kTiny)) {
      if (!quiet)
        fault(u"荷载“" + load.name +
              u"”的合力偏心距不小于基础边长的一半：基础倾覆，本计算不适用。");
      return false;
    }
    p.pmax = 2 * total / (3 * across * p.a);
    p.pmin = 0;
  }
  p.pj_max = p.pmax - p.g / area;
  return true;
}

bool Designer::bearing(double b, double l, bool quiet) {
  d_.fa = fa_for(b, l);
  d_.pressures.clear();
  d_.governing_p = d_.governing_pmax = -1;
  bool fine = true;
  for (const FootingLoad& load : loads_) {
    FootingPressure p;
    if (!pressure(load, b, l, p, quiet)) {
      fine = false;
      continue;
    }
    d_.pressures.push_back(p);
    if (!load.standard) continue;
    const auto i = static_cast<int32_t>(d_.pressures.size() - 1);
    if (d_.governing_p < 0 || p.p > d_.pressures[d_.governing_p].p) d_.governing_p = i;
    if (d_.governing_pmax < 0 || p.pmax > d_.pressures[d_.governing_pmax].pmax)
      d_.governing_pmax = i;
  }
  if (!fine) return false;
  // 5.2.1: pk ≤ fa; with eccentricity pkmax ≤ 1.2 fa.
  d_.bearing_ok = d_.pressures[d_.governing_p].p <= d_.fa + kTiny;
  d_.bearing_max_ok = d_.pressures[d_.governing_pmax].pmax <= 1.2 * d_.fa + kTiny;
  return true;
}

double Designer::net(std::size_t i, double x, double y) const {
  const FootingPressure& p = d_.pressures[i];
  const double bm = g_.b / 1000, lm = g_.l / 1000, area = bm * lm;
  if (p.full_contact) {
    return p.n / area + p.mx * (y / 1000) / (bm * lm * lm * lm / 12) +
           p.my * (x / 1000) / (lm * bm * bm * bm / 12);
  }
  // Partial contact: the pressure falls from pmax at the pressed edge to 0
  // at 3a from it.
  const bool along_y = std::fabs(p.mx) > kTiny;
  const double sign = along_y ? (p.mx > 0 ? 1 : -1) : (p.my > 0 ? 1 : -1);
  const double half = (along_y ? lm : bm) / 2, at = sign * (along_y ? y : x) / 1000;
  const double from_edge = half - at;
  return std::max(0.0, p.pmax * (1 - from_edge / (3 * p.a))) - p.g / area;
}

// 8.2.8: Fl ≤ 0.7 βhp ft am h0, Fl = pj·Al, at the column face and at the
// change of depth of a stepped footing; each side of the core, pj the
// largest net pressure along that side's edge.
void Designer::punching() {
  struct Section {
    Core core;
    double h;
    bool step;
  };
  std::vector<Section> sections = {{column(), in_.h, false}};
  if (in_.shape == FootingShape::kStepped) sections.push_back({top(), in_.h1, true});
  for (const Section& sec : sections) {
    PunchingCheck worst;
    bool any = false;
    double worst_ratio = -1;
    for (std::size_t i = 0; i < d_.pressures.size(); ++i) {
      if (d_.pressures[i].standard) continue;
      for (int32_t s = 0; s < 4; ++s) {
        const Geometry::Side side = g_.side(sec.core, s);
        PunchingCheck c;
        c.load = d_.pressures[i].name;
        c.step = sec.step;
        c.side = s;
        c.h = sec.h;
        c.h0 = sec.h - in_.as;
        if (side.c <= c.h0) continue;  // the cone reaches past the edge
        c.beta_hp = beta_hp(sec.h);
        c.at = side.at;
        c.ab = side.at + std::min(c.h0, side.s1) + std::min(c.h0, side.s2);
        c.am = (c.at + c.ab) / 2;
        c.al = (side.at * (side.c - c.h0) + widening(c.h0, side.c, side.s1) +
                widening(c.h0, side.c, side.s2)) /
               1e6;
        const double half_b = g_.b / 2, half_l = g_.l / 2;
        switch (s) {
          case 0:
            c.pj = std::max(net(i, half_b, half_l), net(i, half_b, -half_l));
            break;
          case 1:
            c.pj = std::max(net(i, -half_b, half_l), net(i, -half_b, -half_l));
            break;
          case 2:
            c.pj = std::max(net(i, half_b, half_l), net(i, -half_b, half_l));
            break;
          default:
            c.pj = std::max(net(i, half_b, -half_l), net(i, -half_b, -half_l));
            break;
        }
        c.pj = std::max(c.pj, 0.0);
        c.fl = c.pj * c.al;
        c.capacity = 0.7 * c.beta_hp * d_.ft * c.am * c.h0 / 1000;
        c.ok = c.fl <= c.capacity + kTiny;
        const double ratio = c.fl / c.capacity;
        if (!any || ratio > worst_ratio) {
          worst = c;
          worst_ratio = ratio;
          any = true;
        }
      }
    }
    if (any) {
      d_.punching.push_back(worst);
      d_.punching_ok = d_.punching_ok && worst.ok;
    }
  }
}

// The width of appendix U for a section across `across` (mm) at the column
// face: stepped (U.0.1) and tapered (U.0.2).
double reduced_width(const FootingInput& in, double across, double top_across) {
  const double h0 = in.h - in.as;
  if (in.shape == FootingShape::kStepped) {
    const double h01 = in.h1 - in.as, h02 = in.h - in.h1;
    return (across * h01 + top_across * h02) / (h01 + h02);
  }
  const double sloped = in.h - in.h1;
  return (1 - 0.5 * sloped / h0 * (1 - top_across / across)) * across;
}

// 8.2.9: when the base's side across is at most the column's side + 2h0:
// Vs ≤ 0.7 βhs ft A0, Vs the net pressure over the area beyond the face
// (its mean), βhs = (800/h0)^¼ with h0 taken 800 to 2000.
void Designer::shear() {
  const double h0 = in_.h - in_.as;
  const Core col = column(), t = top();
  // The column face with the section of appendix U (U.0.1-1, U.0.2); a
  // stepped footing's change of depth with the lower step alone (U.0.1-1's
  // h01 and full width).
  struct Section {
    Core core;
    double h0;
    bool step;
  };
  std::vector<Section> sections = {{col, h0, false}};
  if (in_.shape == FootingShape::kStepped) sections.push_back({t, in_.h1 - in_.as, true});
  double worst_ratio = -1;
  for (int32_t s = 0; s < 4; ++s) {
    if (g_.side(col, s).across > g_.side(col, s).at + 2 * h0 + kTiny) continue;
    for (const Section& sec : sections) {
      const Geometry::Side side = g_.side(sec.core, s);
      for (std::size_t i = 0; i < d_.pressures.size(); ++i) {
        if (d_.pressures[i].standard) continue;
        ShearCheck c;
        c.load = d_.pressures[i].name;
        c.side = s;
        c.step = sec.step;
        c.h0 = sec.h0;
        c.beta_hs = std::pow(800 / std::clamp(sec.h0, 800.0, 2000.0), 0.25);
        c.width0 = sec.step ? side.across : reduced_width(in_, side.across, s < 2 ? t.cy : t.cx);
        c.a0 = c.width0 * sec.h0 / 1e6;
        // The mean over the area beyond the face: the net pressure at its
        // middle, the mean of its two ends across.
        const double mid = side.c / 2;
        switch (s) {
          case 0:
            c.pj = (net(i, g_.b / 2 - mid, g_.l / 2) + net(i, g_.b / 2 - mid, -g_.l / 2)) / 2;
            break;
          case 1:
            c.pj = (net(i, -g_.b / 2 + mid, g_.l / 2) + net(i, -g_.b / 2 + mid, -g_.l / 2)) / 2;
            break;
          case 2:
            c.pj = (net(i, g_.b / 2, g_.l / 2 - mid) + net(i, -g_.b / 2, g_.l / 2 - mid)) / 2;
            break;
          default:
            c.pj = (net(i, g_.b / 2, -g_.l / 2 + mid) + net(i, -g_.b / 2, -g_.l / 2 + mid)) / 2;
            break;
        }
        c.pj = std::max(c.pj, 0.0);
        c.area = side.c * side.across / 1e6;
        c.vs = c.pj * c.area;
        c.capacity = 0.7 * c.beta_hs * d_.ft * c.a0 * 1e3;
        c.ok = c.vs <= c.capacity + kTiny;
        const double ratio = c.vs / c.capacity;
        if (ratio > worst_ratio) {
          worst_ratio = ratio;
          d_.shear = c;
          d_.shear_checked = true;
        }
      }
    }
  }
}

// 8.2.11: M = a1²/12·[(2l + a')(pmax + p − 2G/A) + (pmax − p)·l] on each
// side of the column and of the upper step, with the net pressure of the
// moment in that direction (the moment across averages out over the side);
// MII of the code is this with a uniform pressure. 8.2.12: As = M/(0.9 fy h0).
bool Designer::bending() {
  // The formula's conditions: e ≤ b/6 and the steps' width/height ≤ 2.5.
  for (const FootingPressure& p : d_.pressures) {
    if (p.standard) continue;
    if (p.ex > g_.b / 1000 / 6 + kTiny || p.ey > g_.l / 1000 / 6 + kTiny)
      fault(u"基本组合“" + p.name + u"”的偏心距大于基础边长的 1/6：8.2.11 条的弯矩公式不适用。");
  }
  const Core col = column(), t = top();
  for (int32_t s = 0; s < 4; ++s) {
    if (in_.shape == FootingShape::kStepped) {
      const double lower = g_.side(t, s).c, upper = g_.side(col, s).c - lower;
      if (lower / in_.h1 > 2.5 + kTiny || upper / (in_.h - in_.h1) > 2.5 + kTiny)
        fault(u"台阶的宽高比大于 2.5：8.2.11 条的弯矩公式不适用。");
    } else if (g_.side(col, s).c / in_.h > 2.5 + kTiny) {
      fault(u"基础自柱边伸出的长度与基础高度之比大于 2.5：8.2.11 条的弯矩公式不适用。");
    }
    if (!d_.faults.empty()) break;
  }
  if (!d_.faults.empty()) return false;
  struct Section {
    Core core;
    double h0;
    bool step;
  };
  std::vector<Section> sections = {{col, in_.h - in_.as, false}};
  if (in_.shape == FootingShape::kStepped) sections.push_back({t, in_.h1 - in_.as, true});
  for (int32_t dir = 0; dir < 2; ++dir) {
    BendingSection& best = d_.bending[dir];
    best = {};
    for (const Section& sec : sections) {
      for (int32_t s = 2 * dir; s < 2 * dir + 2; ++s) {
        const Geometry::Side side = g_.side(sec.core, s);
        for (std::size_t i = 0; i < d_.pressures.size(); ++i) {
          const FootingPressure& p = d_.pressures[i];
          if (p.standard) continue;
          const double area = g_.b * g_.l / 1e6;
          // The net pressure along the direction at distance u (mm) from the
          // base's centre towards side s.
          const double sign = s % 2 == 0 ? 1 : -1;
          const auto along = [&](double u) {
            return dir == 0 ? p.n / area + p.my * sign * (u / 1000) /
                                               (g_.l / 1000 * std::pow(g_.b / 1000, 3) / 12)
                            : p.n / area + p.mx * sign * (u / 1000) /
                                               (g_.b / 1000 * std::pow(g_.l / 1000, 3) / 12);
          };
          const double half = (dir == 0 ? g_.b : g_.l) / 2;
          BendingSection c;
          c.load = p.name;
          c.step = sec.step;
          c.side = s;
          c.a1 = side.c;
          c.a_prime = side.at;
          c.width = side.across;
          c.p_edge = along(half);
          c.p_section = along(half - side.c);
          const double a1 = c.a1 / 1000, w = c.width / 1000, ap = c.a_prime / 1000;
          c.m = a1 * a1 / 12 *
                ((2 * w + ap) * (c.p_edge + c.p_section) + (c.p_edge - c.p_section) * w);
          c.h0 = sec.h0;
          c.as_need = std::max(0.0, c.m) * 1e6 / (0.9 * d_.fy * c.h0);
          if (c.as_need > best.as_need || best.load.empty()) best = c;
        }
      }
    }
    // As,min: 0.15 % of the column-face section reduced by appendix U.
    const Geometry::Side face = g_.side(col, 2 * dir);
    d_.width0[dir] = reduced_width(in_, face.across, dir == 0 ? t.cy : t.cx);
    d_.as_min[dir] = kRhoMin * d_.width0[dir] * (in_.h - in_.as);
    d_.as_total[dir] = std::max(best.as_need, d_.as_min[dir]);
  }
  return true;
}

// Bars of one diameter within the range (at least 10 mm), spaced 100 to
// 200 mm by 10: the least diameter whose widest spacing gives the area.
void Designer::choose_bars() {
  for (int32_t dir = 0; dir < 2; ++dir) {
    BarSet& set = d_.bars[dir];
    set = {};
    if (!in_.auto_bars) continue;
    const double across = dir == 0 ? g_.l : g_.b;
    for (double dia : kDiameters) {
      if (dia < std::max(in_.d_min, kLeastBar) - kTiny || dia > in_.d_max + kTiny) continue;
      for (double s = kSpacingMax; s >= kSpacingMin - kTiny; s -= kSpacingStep) {
        const double area = bar_area(dia) * across / s;
        if (area >= d_.as_total[dir] - 1e-6) {
          set = {true, dia, s, area};
          break;
        }
      }
      if (set.found) break;
    }
    d_.bars_ok = d_.bars_ok && set.found;
  }
}

FootingDesign Designer::run() {
  if (!check_input()) return d_;
  if (in_.soil == SoilKind::kGiven) {
    d_.eta_b = in_.eta_b;
    d_.eta_d = in_.eta_d;
  } else {
    const TableRow& row = kTable524[static_cast<std::size_t>(in_.soil)];
    d_.eta_b = row.eta_b;
    d_.eta_d = row.eta_d;
    d_.table_row_confirmed = row.confirmed;
  }
  if (in_.b && in_.l) {
    g_ = {*in_.b, *in_.l, in_.e};
    if (!bearing(g_.b, g_.l, false)) return d_;
  } else {
    // "自动": the least size, by 100 mm, with both checks of 5.2.1 met
    // (square when both are automatic).
    const Core t = top();
    // At least 1000 and the first step beyond the core.
    const auto first = [](double core) {
      return std::max(1000.0, (std::floor(core / kSizeStep) + 1) * kSizeStep);
    };
    double b = in_.b.value_or(first(t.cx));
    double l = in_.l.value_or(first(t.cy + 2 * std::fabs(in_.e)));
    if (!in_.b && !in_.l) b = l = std::max(b, l);
    bool found = false;
    while (b <= kSizeMax && l <= kSizeMax) {
      if (bearing(b, l, true) && d_.bearing_ok && d_.bearing_max_ok) {
        found = true;
        break;
      }
      if (!in_.b) b += kSizeStep;
      if (!in_.l) l += kSizeStep;
    }
    if (!found) {
      fault(u"在 20m 以内找不到满足地基承载力的基础底面尺寸。");
      return d_;
    }
    g_ = {b, l, in_.e};
    d_.sized = true;
  }
  d_.b = g_.b;
  d_.l = g_.l;
  // 8.2.1-1 detailing.
  if (in_.shape == FootingShape::kTapered) {
    d_.edge_ok = in_.h1 >= 200 - kTiny;
    const Core t = top();
    const double run =
        std::min((g_.b - t.cx) / 2, std::min(g_.l / 2 - std::fabs(g_.e), g_.l / 2) - t.cy / 2);
    d_.slope_ok = run > 0 && (in_.h - in_.h1) / run <= 1.0 / 3 + kTiny;
  } else {
    d_.step_ok = in_.h1 >= 300 - kTiny && in_.h1 <= 500 + kTiny && in_.h - in_.h1 >= 300 - kTiny &&
                 in_.h - in_.h1 <= 500 + kTiny;
  }
  if (!bending()) return d_;
  punching();
  shear();
  choose_bars();
  return d_;
}

}  // namespace

double beta_hp(double h) {
  if (h <= 800) return 1.0;
  if (h >= 2000) return 0.9;
  return 1.0 - 0.1 * (h - 800) / 1200;
}

bool FootingDesign::satisfied() const {
  return faults.empty() && bearing_ok && bearing_max_ok && punching_ok &&
         (!shear_checked || shear.ok) && bars_ok && edge_ok && step_ok && slope_ok;
}

FootingDesign design_footing(const FootingInput& in, const std::vector<FootingLoad>& loads) {
  return Designer(in, loads).run();
}

FootingInput footing_input(const std::vector<Text>& values, const clsCharacter& chr,
                           std::vector<Text>* unread) {
  FootingInput in;
  const FormValues form(values, chr, unread);
  const auto text = [&](int32_t item) { return form.text(item); };
  const auto fail = [&](TextView what) { form.fail(what); };
  const auto read = [&](int32_t item, double& into, TextView what) { form.read(item, into, what); };
  // A size that may be "自动" (none).
  const auto size = [&](int32_t item, std::optional<double>& into, TextView what) {
    if (text(item) == u"自动") {
      into.reset();
    } else if (const auto v = number_in(text(item), chr)) {
      into = *v;
    } else {
      fail(what);
    }
  };
  in.id = text(kId);
  Text grade = text(kConcrete);
  if (!grade.empty() && (grade[0] == u'C' || grade[0] == u'c')) grade.erase(0, 1);
  const auto g = number_in(grade, chr);
  if (g && *g == std::floor(*g) && frame::dConcreteFt(static_cast<int32_t>(*g)))
    in.concrete = static_cast<int32_t>(*g);
  else
    fail(u"混凝土的强度等级");
  in.steel = text(kSteel);
  if (!frame::dSteelFy(in.steel)) fail(u"底板钢筋的强度等级");
  read(kBc, in.bc, u"柱截面宽度 bc");
  read(kHc, in.hc, u"柱截面高度 hc");
  if (!text(kE).empty()) read(kE, in.e, u"柱中心的偏心距 e");
  const Text shape = text(kShape);
  if (shape == u"锥形")
    in.shape = FootingShape::kTapered;
  else if (shape == u"阶梯形")
    in.shape = FootingShape::kStepped;
  else
    fail(u"基础形式");
  size(kB, in.b, u"基础底面宽度 b");
  size(kL, in.l, u"基础底面长度 l");
  read(kH, in.h, u"基础高度 h");
  read(kD, in.d, u"埋置深度 d");
  read(kFak, in.fak, u"地基承载力特征值 fak");
  read(kGamma, in.gamma, u"基底以下土的重度 γ");
  read(kGammaM, in.gamma_m, u"基底以上土的平均重度 γm");
  read(kGammaG, in.gamma_g, u"基础及其上土的平均重度 γG");
  const Text soil = text(kSoil);
  const auto* kind = std::find(kSoilNames.begin(), kSoilNames.end(), TextView(soil));
  if (soil.empty())
    in.soil = SoilKind::kGiven;
  else if (kind != kSoilNames.end())
    in.soil = static_cast<SoilKind>(kind - kSoilNames.begin());
  else
    fail(u"地基土的类别");
  if (in.soil == SoilKind::kGiven) {
    read(kEtaB, in.eta_b, u"宽度修正系数 ηb");
    read(kEtaD, in.eta_d, u"深度修正系数 ηd");
  }
  in.auto_bars = yes(text(kAutoBars), chr);
  const auto lo = number_in(text(kDMin), chr), hi = number_in(text(kDMax), chr);
  if (lo && hi) {
    in.d_min = *lo;
    in.d_max = *hi;
  } else {
    const std::vector<Text> range = split_text(text(kRange), u",");
    const auto a = range.size() == 2 ? number_in(range[0], chr) : std::nullopt;
    const auto b = range.size() == 2 ? number_in(range[1], chr) : std::nullopt;
    if (a && b) {
      in.d_min = *a;
      in.d_max = *b;
    } else if (in.auto_bars) {
      fail(u"底板钢筋的直径范围");
    }
  }
  read(kH1, in.h1,
       in.shape == FootingShape::kTapered ? u"锥形基础的边缘高度 h1" : u"阶梯形基础下阶的高度 h1");
  const auto optional_size = [&](int32_t item, std::optional<double>& into, TextView what) {
    if (text(item).empty() || text(item) == u"自动")
      into.reset();
    else if (const auto v = number_in(text(item), chr))
      into = *v;
    else
      fail(what);
  };
  optional_size(kB1, in.b1, u"上阶的宽度 b1");
  optional_size(kL1, in.l1, u"上阶的长度 l1");
  if (!text(kAs).empty()) read(kAs, in.as, u"钢筋合力点至底面的距离 as");
  return in;
}

}  // namespace zelkora::desk
