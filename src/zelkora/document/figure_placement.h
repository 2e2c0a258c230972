// Where a Figure (report_document.h) goes in an area of a screen or a page:
// kept in proportion and centred, its caption (when it has one) on a line
// under the drawing in the size of its first text. The one rule of every
// painter of figures (the Qt painter, the Windows GDI painter), which map
// the figure's mm to their device with it.
//
//   const FigurePlacement place = figure_placement(0, 0, 320, 260, figure);
//   if (place.scale > 0) line_to(place.x(x_mm), place.y(y_mm));
//
// Sizes that are not numbers or not above zero place nothing (scale 0).
#pragma once

#include "zelkora/document/report_document.h"

namespace zelkora::document {

// The caption's line under the drawing, as a share of the text height.
inline constexpr double kCaptionLines = 1.6;

// The figure's size in mm with its caption.
struct FigureSize {
  double width = 0, height = 0;
};
FigureSize figure_size_mm(const Figure& figure);

// The caption's height in mm: that of the figure's first text.
double caption_mm(const Figure& figure);
// The caption's baseline in the figure's mm, centred at width / 2.
double caption_baseline_mm(const Figure& figure);

// The figure's mm on the device: (left + x · scale, top + y · scale).
struct FigurePlacement {
  double scale = 0, left = 0, top = 0;
  double x(double mm) const { return left + mm * scale; }
  double y(double mm) const { return top + mm * scale; }
};
FigurePlacement figure_placement(double left, double top, double width, double height,
                                 const Figure& figure);

// Whether a shape has the points it needs, each a number.
bool drawable(const Shape& shape);

}  // namespace zelkora::document
