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
  double as = 40;     // from the tension face to the tension bars' centroid
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

// The section of the form's values with the bars the design chooses: what
// the form's sketch shows as values change. Without a usable b and h: an
// empty sketch (b = h = 0).
SectionSketch beam_sketch(const std::vector<Text>& values, clsCharacter& chr);

}  // namespace zelkora::desk
