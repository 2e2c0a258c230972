// Where a figure goes in an area; see the header.
#include "zelkora/document/figure_placement.h"

#include <algorithm>
#include <cmath>

namespace zelkora::document {

namespace {

constexpr double kCaptionMm = 3.5;  // a caption without a text shape to size it

bool finite(double v) { return std::isfinite(v); }

}  // namespace

double caption_mm(const Figure& figure) {
  for (const Shape& s : figure.shapes) {
    if (s.kind == Shape::Kind::kText && finite(s.text_mm) && s.text_mm > 0) return s.text_mm;
  }
  return kCaptionMm;
}

double caption_baseline_mm(const Figure& figure) {
  const double h = finite(figure.height_mm) ? std::max(0.0, figure.height_mm) : 0;
  return h + caption_mm(figure) * 1.15;
}

FigureSize figure_size_mm(const Figure& figure) {
  const double w = finite(figure.width_mm) ? std::max(0.0, figure.width_mm) : 0;
  double h = finite(figure.height_mm) ? std::max(0.0, figure.height_mm) : 0;
  if (!figure.caption.empty()) h += kCaptionLines * caption_mm(figure);
  return {w, h};
}

FigurePlacement figure_placement(double left, double top, double width, double height,
                                 const Figure& figure) {
  const FigureSize size = figure_size_mm(figure);
  if (!finite(left) || !finite(top) || !finite(width) || !finite(height) || width <= 0 ||
      height <= 0 || size.width <= 0 || size.height <= 0) {
    return {};
  }
  const double scale = std::min(width / size.width, height / size.height);
  if (!finite(scale) || scale <= 0) return {};
  return {scale, left + width / 2 - size.width * scale / 2,
          top + height / 2 - size.height * scale / 2};
}

bool drawable(const Shape& shape) {
  const std::vector<double>& p = shape.points;
  return p.size() >= 2 && std::all_of(p.begin(), p.end(), finite);
}

}  // namespace zelkora::document
