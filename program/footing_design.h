// The design of a reinforced-concrete spread footing under one rectangular
// column to GB 50007-2011: the soil pressures under the standard
// combinations against the corrected bearing capacity (5.2), punching at the
// column face and at the change of depth (8.2.8), shear of a narrow footing
// (8.2.9), the bending moments at the column face and the change of depth
// (8.2.11), the bottom bars (8.2.12, 8.2.1). The numbers only: the report
// (footing_report) writes them out. The rules and their sources are in
// desk/testdata/footing_rules.md.
//
// Axes: x along the base width b, y along the base length l. The column's bc
// lies along x, hc along y; its centre is e from the base's centre, along +y.
// Units: mm for the footing's sizes, m only inside the soil formulas; kN,
// kN·m, kPa (kN/m²), N/mm².
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/text.h"

namespace zelkora::desk {

// One load at the top of the footing (the column's base).
struct FootingLoad {
  Text name;
  // true: a standard combination (标准组合), for the soil pressures;
  // false: a fundamental combination (基本组合), for punching, shear and
  // bending.
  bool standard = true;
  // A seismic combination: outside this design (named as a fault).
  bool seismic = false;
  double N = 0;  // kN, downwards
  // kN·m. Mx turns about the x axis and presses the +y edge when positive;
  // My turns about the y axis and presses the +x edge.
  double Mx = 0, My = 0;
  // kN at the top of the footing, Vx along +x, Vy along +y: at the base they
  // add Vx·h to My and Vy·h to Mx.
  double Vx = 0, Vy = 0;
};

enum class FootingShape { kTapered, kStepped };

// The rows of table 5.2.4 of GB 50007-2011 (ηb, ηd); kGiven: the form's ηb
// and ηd.
enum class SoilKind {
  kGiven,
  kMud,         // 淤泥和淤泥质土
  kFill,        // 人工填土，e 或 IL 不小于 0.85 的黏性土
  kRedClayWet,  // 红黏土，含水比 αw > 0.8
  kRedClayDry,  // 红黏土，αw ≤ 0.8
  kCompactedSilt,  // 大面积压实填土，压实系数大于 0.95、黏粒含量 ρc ≥ 10% 的粉土
  kCompactedGravel,  // 大面积压实填土，最大干密度大于 2100kg/m³ 的级配砂石
  kSiltClayey,       // 粉土，黏粒含量 ρc ≥ 10%
  kSiltSandy,        // 粉土，黏粒含量 ρc < 10%
  kClay,             // e 及 IL 均小于 0.85 的黏性土
  kFineSand,         // 粉砂、细砂（不包括很湿与饱和时的稍密状态）
  kCoarseSand,       // 中砂、粗砂、砾砂和碎石土
};

// The form's values, read.
struct FootingInput {
  Text id;
  int32_t concrete = 25;
  Text steel = u"HRB400";
  double bc = 400, hc = 400, e = 0;
  FootingShape shape = FootingShape::kTapered;
  // Base width and length; none: sized to the bearing checks ("自动").
  std::optional<double> b = 2500, l = 2500;
  double h = 600;
  // Tapered: the edge height; stepped: the lower step's height.
  double h1 = 300;
  // Tapered: the top's plan (none: the column and 50 mm all round);
  // stepped: the upper step's plan. Centred on the column.
  std::optional<double> b1, l1;
  double as = 40;   // from the bottom face to the bars' centroid
  double d = 1500;  // depth of the base below the ground, mm
  double fak = 180;
  SoilKind soil = SoilKind::kGiven;
  double eta_b = 0, eta_d = 1.0;                  // used with SoilKind::kGiven
  double gamma = 18, gamma_m = 18, gamma_g = 20;  // kN/m³
  bool auto_bars = true;
  double d_min = 10, d_max = 25;
};

// The pressures of one load on the base, kPa.
struct FootingPressure {
  Text name;
  bool standard = true;
  double n = 0, mx = 0, my = 0;  // at the base: N (without G), Mx, My
  double g = 0;  // the footing and soil above it, kN (×1.35 for a fundamental load)
  double p = 0, pmax = 0, pmin = 0;  // with G
  double ex = 0, ey = 0;             // eccentricities, m: My/(N+G), Mx/(N+G)
  bool full_contact = true;
  double a = 0;  // partial contact: from the resultant to the edge, m
  // Net pressures (without G) for the fundamental loads.
  double pj_max = 0;
};

// One punching check: a side of the column or of the upper step.
struct PunchingCheck {
  Text load;
  bool step = false;  // at the change of depth
  int32_t side = 0;   // 0 +x, 1 −x, 2 +y, 3 −y
  double h = 0, h0 = 0, beta_hp = 1;
  double at = 0, ab = 0, am = 0, al = 0;  // mm, mm, mm, m²
  double pj = 0;                          // kPa
  double fl = 0, capacity = 0;            // kN
  bool ok = true;
};

struct ShearCheck {
  Text load;
  bool step = false;  // at the change of depth
  int32_t side = 0;
  double h0 = 0, beta_hs = 1, width0 = 0, a0 = 0;  // width0 mm, A0 m²
  double pj = 0, area = 0, vs = 0, capacity = 0;   // kPa, m², kN, kN
  bool ok = true;
};

// The bending of one cantilever side at one section.
struct BendingSection {
  Text load;
  bool step = false;
  int32_t side = 0;
  double a1 = 0, a_prime = 0, width = 0;  // mm: cantilever, section width a', base width across
  double p_edge = 0, p_section = 0;       // net, kPa
  double m = 0;                           // kN·m
  double h0 = 0, as_need = 0;             // mm, mm²
};

struct BarSet {
  bool found = false;
  double d = 0, s = 0;  // mm
  double area = 0;      // over the footing's width, mm²
};

struct FootingDesign {
  std::vector<Text> faults;  // inputs outside what the design covers: nothing else is set
  double ft = 0, fy = 0;
  double b = 0, l = 0;  // mm, the ones used (sized when 自动)
  bool sized = false;
  double eta_b = 0, eta_d = 0, fa = 0;
  bool table_row_confirmed = true;         // the row of table 5.2.4 found in a public text
  std::vector<FootingPressure> pressures;  // every load, in order
  // 5.2.1: the governing standard loads.
  int32_t governing_p = -1, governing_pmax = -1;
  bool bearing_ok = true, bearing_max_ok = true;
  // 8.2.8.
  std::vector<PunchingCheck> punching;  // the governing check of each section (column, step)
  bool punching_ok = true;
  // 8.2.9, when the short side of the base is at most the column's width + 2h0.
  bool shear_checked = false;
  ShearCheck shear;
  // 8.2.11: the governing side of each direction (0: bars along x, 1: along y).
  BendingSection bending[2];
  double as_min[2] = {0, 0}, as_total[2] = {0, 0};
  double width0[2] = {0, 0};  // the reduced width of appendix U for As,min, mm
  BarSet bars[2];
  bool bars_ok = true;
  // 8.2.1 detailing: a tapered footing's edge height at least 200, a
  // stepped footing's steps 300–500 high.
  bool edge_ok = true, step_ok = true, slope_ok = true;

  bool satisfied() const;
};

// β_hp of 8.2.8: 1.0 up to h = 800 mm, 0.9 from 2000, a straight line between.
double beta_hp(double h);

FootingDesign design_footing(const FootingInput& in, const std::vector<FootingLoad>& loads);

// The form's values (by item of "clsFoundationSpread") read; a value that
// cannot be read keeps its default and is named in `unread`.
FootingInput footing_input(const std::vector<Text>& values, const clsCharacter& chr,
                           std::vector<Text>* unread = nullptr);

}  // namespace zelkora::desk
