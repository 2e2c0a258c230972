/// A member cross-section drawn for a report: the outline of one of the
/// shapes of clsSectionProperties to scale, hatched light grey, with the
/// dimension lines of its overall width and depth and a caption naming the
/// shape and its sizes.
/// @code{.unparsed}
///   SectionSizes s;  s.b = 250;  s.h = 600;  s.bf1 = 600;  s.hf1 = 120;
///   std::optional<Figure> f = section_figure(T_Shaped, s);  // "T形截面 250×600"
/// @endcode
/// The sizes (mm) mean what they mean to clsSectionProperties: b the web
/// width (a circle's or a ring's outer diameter, the bottom width of cone and
/// stepped sections, a box's total web width), h the depth (a ring's inner
/// diameter), bf/hf the bottom flange (a cone's top width and edge depth, the
/// second step, a box's flange width and bottom slab), bf1/hf1 the top flange
/// (the third step; a box's top slab hf1), h1 the lowest step, steps 2 or 3.
/// Inverted cone and stepped shapes are drawn upside down. Nothing (no
/// figure) for a shape that has no outline (方形截面, 梁式梯板, unknown codes)
/// or for sizes that do not make one: a size not above zero, not finite, or
/// parts wider or deeper than the whole. @file
#pragma once

#include <optional>

#include "zelkora/document/report_document.h"
#include "zelkora/frame/shared_types.h"

namespace zelkora::document {
/// A section's dimensions in millimetres (clsSectionProperties' names).
struct SectionSizes {  /// b, h and the flanges' and step's sizes.
  /** @{ The sizes. */ double b = 0, h = 0, bf = 0, hf = 0, bf1 = 0, hf1 = 0, h1 = 0;  /// @}
  int steps = 2;  ///< The number of steps of a stepped shape.
};
/// The dimensioned drawing of a section, or nothing for a shape it lacks.
std::optional<Figure> section_figure(Section_Shapes shape, const SectionSizes& mm);

}  // namespace zelkora::document
