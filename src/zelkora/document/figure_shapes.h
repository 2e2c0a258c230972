// The shapes figures are most often drawn of, each made in one call:
//
//   figure.shapes.push_back(line_shape(0, 0, 50, 0, 0.18));
//   figure.shapes.push_back(text_shape(25, -1, u"250", 3, Align::kCenter));
#pragma once

#include <utility>

#include "zelkora/document/report_document.h"

namespace zelkora::document {

// A line from (x0, y0) to (x1, y1), `stroke_mm` wide, in black.
inline Shape line_shape(double x0, double y0, double x1, double y1, double stroke_mm) {
  Shape s;
  s.kind = Shape::Kind::kLine;
  s.points = {x0, y0, x1, y1};
  s.stroke_mm = stroke_mm;
  return s;
}

// A text `text_mm` high whose baseline is at (x, y), placed there by `align`.
inline Shape text_shape(double x, double y, Text text, double text_mm, Align align) {
  Shape s;
  s.kind = Shape::Kind::kText;
  s.points = {x, y};
  s.stroke_mm = 0;
  s.text = std::move(text);
  s.text_mm = text_mm;
  s.text_align = align;
  return s;
}

}  // namespace zelkora::document
