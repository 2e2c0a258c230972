// The cross-section of a beam as a drawing of the report (document::Figure):
// the concrete b × h, the stirrup, the bars as filled circles (tension bars
// black, compression bars blue), the dimension lines of b and h with their
// numbers, and the caption ("250×500"). One drawing for the form's sketch
// (section_sketch.h paints it), the report view, the PDF and the files; it
// knows no toolkit.
//
//   document::Figure figure = section_figure(beam_sketch(values, chr));
//   paint_figure(painter, area, figure);   // figure_painter.h
//
// A sketch without a usable size (b or h not above 0, or not a number)
// gives an empty figure (no shapes, size 0); bars that are not numbers or
// lie outside the drawing are left out, as are bars past the first 20000.
#pragma once

#include <map>

#include "program/beam_design.h"
#include "zelkora/document/report_document.h"

namespace zelkora::desk {

// The colours of the drawing as it goes into files (black on white).
namespace figure_colour {
inline constexpr document::Colour kInk = 0x000000;  // outline, lines, numbers, tension bars
inline constexpr document::Colour kConcrete = 0xEBEBEB;
inline constexpr document::Colour kStirrup = 0x7F7F7F;
inline constexpr document::Colour kCompression = 0x1F5FC8;
}  // namespace figure_colour

// What a form's sketch shows when the figure is empty.
inline constexpr char16_t kSketchHint[] = u"输入截面尺寸后显示截面图";

// The drawing's colours (figure_colour) as a screen shows them whose ground
// and ink (its text) are `ground` and `ink` (0xRRGGBB), light or dark: the
// concrete and the stirrup shades between them, the tension bars in the ink,
// the compression bars a blue that stands out from the concrete on either.
std::map<document::Colour, document::Colour> sketch_screen_colours(document::Colour ground,
                                                                   document::Colour ink);

document::Figure section_figure(const SectionSketch& sketch);

// The section's rectangle in the figure, in mm (x, y, width, height): its
// first shape. Empty for an empty figure.
struct FigureRect {
  double x = 0, y = 0, width = 0, height = 0;
};
FigureRect section_in_figure(const document::Figure& figure);

}  // namespace zelkora::desk
