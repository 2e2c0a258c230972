// The design of a rectangular reinforced-concrete beam section to
// GB 50010-2010 (2015 edition): bending (sagging or hogging, singly or doubly
// reinforced), the minimum reinforcement, shear, torsion, the seismic grade's
// limits for a frame beam, and the bars chosen to fit the width. The numbers
// only: the report (beam_report) writes them out, the form's sketch draws
// them.
//
// Units: mm, N/mm², kN, kN·m; areas mm², area per spacing mm²/mm.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/text.h"

namespace zelkora::desk {

// The beam form's values, read.
struct BeamInput {
  Text id;                 // 构件编号
  int32_t seismic = 5;     // 0 特一级, 1 一级, 2 二级, 3 三级, 4 四级, 5 非抗震
  int32_t concrete = 30;   // the grade's number: 30 for C30
  Text steel = u"HRB400";  // longitudinal bars
  Text stirrup_steel = u"HPB300";
  double b = 250, h = 500;
  double cover = 20;  // concrete cover of the stirrups (the outermost bars)
  // From the tension face to the tension bars' centroid; none: the chosen
  // bars' own.
  std::optional<double> as;
  double m = 0;       // > 0 sagging (bottom in tension), < 0 hogging (top)
  double v = 0, t = 0;
  int32_t through_n = 0;  // bars running the full length on the tension face
  double through_d = 0;
  double d_min = 12, d_max = 32;  // the diameters the bars may have
  int32_t legs = 2;
  double s = 200;       // stirrup spacing
  double ratio = 0;     // As'/As wanted at least
  bool compression = true;    // 考虑受压钢筋
  bool show_area = false;     // 显示实配纵筋的等效面积
  bool show_ratio = true;     // 显示配筋率
  bool auto_as = false;       // as taken from the chosen bars when larger
};

// One row of bars parallel to a face: the diameters from left to right and
// the row's centre measured from that face.
struct BarRow {
  std::vector<double> d;
  double from_face = 0;
};

struct BeamMaterials {
  double fc = 0, ft = 0, alpha1 = 0, beta1 = 0, beta_c = 0;  // concrete
  double fy = 0, fyc = 0, es = 0, xi_b = 0;                  // longitudinal bars
  double fyv = 0;  // stirrups, at most 360 for shear and torsion
};

// The bars chosen for one face.
struct BarChoice {
  bool found = false;     // false: none within the range fits the width
  std::vector<BarRow> rows;  // the first row nearest the face
  double area = 0;
  double centroid = 0;  // from the face
};

enum class BendingCase { kSingly, kDoubly, kOver };
enum class TorsionCase {
  kNone,            // T = 0
  kDetailing,       // 6.4.2: the stirrups and bars of the detailing rules
  kShearIgnored,    // 6.4.12-1
  kTorsionIgnored,  // 6.4.12-2
  kCombined,        // 6.4.8
};

// What the design found; the clauses are GB 50010-2010's.
struct BeamDesign {
  std::vector<Text> faults;  // inputs outside what the design covers: nothing else is set
  BeamMaterials mat;
  bool hogging = false;       // M < 0: the top face in tension
  double as_used = 0, h0 = 0;
  double asc_used = 0;  // a's: from the compression face to its bars' centroid
  bool as_from_bars = false;  // as taken from the chosen bars
  // Bending (6.2.10).
  BendingCase bending = BendingCase::kSingly;
  double alpha_s = 0, xi = 0, xi_lim = 0;
  double as_flex = 0, asc = 0;  // As and As' the moment needs
  bool x_below_2as = false;     // doubly reinforced with x < 2a's: As by 6.2.14
  double rho_min = 0, as_min = 0;   // 8.5.1, table 11.3.6-1
  bool grade_ok = true;  // the concrete grade allowed (4.1.2, 11.2.1)
  double ratio_min = 0, ratio = 0;  // As'/As: the seismic least (11.3.6-2), the one used
  // Shear (6.3) and torsion (6.4).
  double hw_over_b = 0, v_lim = 0, vc = 0, asv_s = 0;
  bool section_ok = true;
  bool torsion = false;
  TorsionCase torsion_case = TorsionCase::kNone;
  double wt = 0, stress = 0, stress_lim = 0, beta_t = 1, ast1_s = 0;
  double bcor = 0, hcor = 0, acor = 0, ucor = 0, rho_tl_min = 0, astl = 0;
  bool torsion_spacing_ok = true;  // the torsion bars of each face close enough (9.2.5)
  // Each side face (torsion, 9.2.13): its area, n_side bars at most
  // side_spacing apart.
  double side_each = 0, side_spacing = 200;
  int32_t n_side = 0;
  // Stirrups.
  double rho_sv_min = 0, asv1 = 0, stirrup_d_min = 0, stirrup_d = 0;  // 0: none of 25 or less
  double s_max = 0;
  bool spacing_ok = true;
  // With compression bars by calculation (9.2.9): the stirrup's least
  // diameter d'/4, the spacing limit, composite stirrups.
  double stirrup_d_for_compression = 0, s_max_compression = 0;
  bool compression_stirrup_ok = true, composite_needed = false, composite_ok = true;
  // Bars.
  double as_total = 0, asc_total = 0;  // to provide on the tension and compression face
  BarChoice tension, compression;
  double a_actual = 0;  // the tension bars' centroid from their face
  bool as_ok = true;
  bool asc_ok = true;   // a doubly reinforced section's compression bars within a's
  double rho = 0;       // provided As / (b·h)
  bool rho_above_end_limit = false;  // 11.3.7: As/(b·h0) above 2.5 % at a seismic beam's end
  bool through_checked = false, through_ok = true;  // 11.3.7: the through bars of a seismic grade

  // Every check passed.
  bool satisfied() const;
};

BeamDesign design_beam(const BeamInput& in);

// The section as the form's sketch and the report's figure draw it.
struct SectionSketch {
  double b = 0, h = 0, cover = 0, stirrup_d = 0;
  struct Bar {
    double x = 0, y = 0, d = 0;  // centre from the bottom-left corner, mm
    bool tension = true;
  };
  std::vector<Bar> bars;
  Text caption;  // "250×500"
};

// The form's values (by item of "clsBeamSteel") read; a value that cannot be
// read keeps its default and is named in `unread`.
BeamInput beam_input(const std::vector<Text>& values, const clsCharacter& chr,
                     std::vector<Text>* unread = nullptr);

// The section with the bars of a design.
SectionSketch beam_sketch(const BeamInput& in, const BeamDesign& design);
// The section of the form's values with the bars the design chooses: what
// the form's sketch shows as values change. Without a usable b and h: an
// empty sketch (b = h = 0).
SectionSketch beam_sketch(const std::vector<Text>& values, clsCharacter& chr);

}  // namespace zelkora::desk
