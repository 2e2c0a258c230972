// The plan of a spread footing as a drawing of the report and the form's
// sketch (document::Figure): the base b × l, the column bc × hc where it
// stands, the dimension lines of the base and the column's offset, and the
// base pressure under the governing load along each side: a trapezoid from
// the pressure at one edge to that at the other, or a triangle over the part
// in contact when the base lifts off. It knows no toolkit; the report view,
// the PDF and the files paint the one drawing (figure_painter.h).
//
//   FootingSketch s;  s.b = 2500;  s.l = 3000;  s.bc = 500;  s.hc = 500;
//   s.along_b = {180.0, 95.0, 2500};   // kPa at x = 0 and x = b, in contact all along
//   document::Figure f = footing_figure(s);
//
// The x axis runs along b, the y axis along l; an offset is the column's
// centre from the base's centre. A sketch without a usable base (b or l not
// above 0, or not a number) gives an empty figure; a column that does not
// fit the base, or a profile without finite pressures, is left out.
#pragma once

#include <optional>

#include "zelkora/document/report_document.h"
#include "zelkora/platform/text.h"

namespace zelkora::desk {

struct FootingSketch {
  double b = 0, l = 0;    // the base, mm
  double bc = 0, hc = 0;  // the column, mm (bc along b, hc along l)
  double ex = 0, ey = 0;  // the column's centre from the base's, mm
  // The base pressure (kPa) along one side: at its start (x or y = 0) and at
  // its end; `contact` the length in contact measured from the edge with the
  // greater pressure (the whole side when it is not less than it).
  struct Profile {
    double at_start = 0, at_end = 0, contact = 0;
  };
  std::optional<Profile> along_b, along_l;
  Text caption;  // "基础平面及基底压力"
};

document::Figure footing_figure(const FootingSketch& sketch);

}  // namespace zelkora::desk
