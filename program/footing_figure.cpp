// The footing's plan as a figure of the report; see the header.
#include "program/footing_figure.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "program/section_figure.h"
#include "zelkora/document/figure_shapes.h"

namespace zelkora::desk {

namespace {

using document::Align;
using document::Figure;
using document::Shape;

constexpr double kMostPlan = 70;       // the plan fits a square of this size, mm
constexpr double kPressureDepth = 14;  // the greatest pressure drawn this deep, mm
constexpr double kText = 3.5;
constexpr double kMargin = 1;
constexpr double kTick = 1.2;
constexpr double kGap = 3;  // between the plan, its dimensions and the diagrams
constexpr document::Colour kPressureFill = 0xD9D9D9;

bool usable(double v) { return std::isfinite(v) && v > 0; }

Text number_text(const char* format, double v) {
  char buffer[48];
  std::snprintf(buffer, sizeof buffer, format, v);
  return from_utf8(buffer);
}

double text_width(const Text& text) { return 0.55 * kText * static_cast<double>(text.size()); }

Shape line(double x0, double y0, double x1, double y1, double width = 0.18) {
  return document::line_shape(x0, y0, x1, y1, width);
}

Shape text(double x, double y, Text what, Align align) {
  return document::text_shape(x, y, std::move(what), kText, align);
}

Shape rect(double x0, double y0, double x1, double y1, double stroke,
           std::optional<document::Colour> fill) {
  Shape s;
  s.kind = Shape::Kind::kRect;
  s.points = {std::min(x0, x1), std::min(y0, y1), std::max(x0, x1), std::max(y0, y1)};
  s.stroke_mm = stroke;
  s.fill = fill;
  return s;
}

void dimension(std::vector<Shape>& shapes, double x0, double y0, double x1, double y1) {
  shapes.push_back(line(x0, y0, x1, y1));
  for (const auto& [x, y] : {std::pair{x0, y0}, std::pair{x1, y1}}) {
    shapes.push_back(line(x - kTick, y + kTick, x + kTick, y - kTick));
  }
}

bool usable_profile(const FootingSketch::Profile& p) {
  return std::isfinite(p.at_start) && std::isfinite(p.at_end) && std::isfinite(p.contact);
}

// The diagram of one side's pressure as points along the side (0..1 of its
// drawn length) with their pressures: a trapezoid, or a triangle over the
// part in contact.
std::vector<std::pair<double, double>> pressure_points(const FootingSketch::Profile& p,
                                                       double side) {
  const bool start_greater = p.at_start >= p.at_end;
  if (p.contact > 0 && p.contact < side) {
    const double reach = p.contact / side;
    if (start_greater) return {{0, 0}, {0, p.at_start}, {reach, 0}};
    return {{1, 0}, {1, p.at_end}, {1 - reach, 0}};
  }
  return {{0, 0}, {0, p.at_start}, {1, p.at_end}, {1, 0}};
}

}  // namespace

document::Figure footing_figure(const FootingSketch& s) {
  Figure figure;
  if (!usable(s.b) || !usable(s.l)) return figure;
  const double scale = std::min(kMostPlan / s.b, kMostPlan / s.l);
  if (!usable(scale)) return figure;
  const double pw = s.b * scale, ph = s.l * scale;
  const Text b_text = number_text("%.0f", s.b), l_text = number_text("%.0f", s.l);
  const bool with_b = s.along_b && usable_profile(*s.along_b);
  const bool with_l = s.along_l && usable_profile(*s.along_l);
  const double most = std::max(
      {with_b ? std::abs(s.along_b->at_start) : 0.0, with_b ? std::abs(s.along_b->at_end) : 0.0,
       with_l ? std::abs(s.along_l->at_start) : 0.0, with_l ? std::abs(s.along_l->at_end) : 0.0});
  const double depth_scale = most > 0 ? kPressureDepth / most : 0;

  const double x0 = kMargin + kText;  // room for the y-profile's labels left of nothing
  const double y0 = kMargin + kText;
  std::vector<Shape>& shapes = figure.shapes;
  const auto at_x = [&](double x) { return x0 + x * scale; };
  const auto at_y = [&](double y) { return y0 + ph - y * scale; };

  // The base, its centre lines and the column.
  shapes.push_back(rect(x0, y0, x0 + pw, y0 + ph, 0.35, figure_colour::kConcrete));
  shapes.push_back(line(at_x(s.b / 2), y0 - 1.5, at_x(s.b / 2), y0 + ph + 1.5, 0.13));
  shapes.push_back(line(x0 - 1.5, at_y(s.l / 2), x0 + pw + 1.5, at_y(s.l / 2), 0.13));
  const double cx = s.b / 2 + s.ex, cy = s.l / 2 + s.ey;
  if (usable(s.bc) && usable(s.hc) && std::isfinite(cx) && std::isfinite(cy) &&
      cx - s.bc / 2 >= 0 && cx + s.bc / 2 <= s.b && cy - s.hc / 2 >= 0 && cy + s.hc / 2 <= s.l) {
    shapes.push_back(rect(at_x(cx - s.bc / 2), at_y(cy - s.hc / 2), at_x(cx + s.bc / 2),
                          at_y(cy + s.hc / 2), 0.35, figure_colour::kStirrup));
  }

  // The dimension of b below the plan, of l to its right.
  const double below = y0 + ph + kGap;
  for (const double x : {x0, x0 + pw}) shapes.push_back(line(x, y0 + ph + 0.5, x, below + kTick));
  dimension(shapes, x0, below, x0 + pw, below);
  shapes.push_back(text(x0 + pw / 2, below - 0.8, b_text, Align::kCenter));
  const double beside = x0 + pw + kGap;
  for (const double y : {y0, y0 + ph}) shapes.push_back(line(x0 + pw + 0.5, y, beside + kTick, y));
  dimension(shapes, beside, y0 + ph, beside, y0);
  shapes.push_back(text(beside + 1.5, y0 + ph / 2 + 0.35 * kText, l_text, Align::kLeft));
  double width = beside + 1.5 + text_width(l_text);
  double height = below + kTick;

  // The pressure along b, hanging under a line below the dimension.
  if (with_b) {
    const double base = below + kGap + 1;
    Shape diagram;
    diagram.kind = Shape::Kind::kPolygon;
    diagram.stroke_mm = 0.25;
    diagram.fill = kPressureFill;
    for (const auto& [t, p] : pressure_points(*s.along_b, s.b)) {
      diagram.points.push_back(x0 + t * pw);
      diagram.points.push_back(base + p * depth_scale);
    }
    shapes.push_back(line(x0, base, x0 + pw, base, 0.25));
    shapes.push_back(std::move(diagram));
    const double deepest =
        base + std::max(0.0, std::max(s.along_b->at_start, s.along_b->at_end)) * depth_scale;
    shapes.push_back(
        text(x0, deepest + kText + 0.5, number_text("%.1f", s.along_b->at_start), Align::kLeft));
    shapes.push_back(text(x0 + pw, deepest + kText + 0.5, number_text("%.1f", s.along_b->at_end),
                          Align::kRight));
    height = deepest + kText + 0.5;
  }
  // The pressure along l, to the right of l's dimension.
  if (with_l) {
    const double base = width + kGap;
    Shape diagram;
    diagram.kind = Shape::Kind::kPolygon;
    diagram.stroke_mm = 0.25;
    diagram.fill = kPressureFill;
    for (const auto& [t, p] : pressure_points(*s.along_l, s.l)) {
      diagram.points.push_back(base + p * depth_scale);
      diagram.points.push_back(y0 + ph - t * ph);
    }
    shapes.push_back(line(base, y0, base, y0 + ph, 0.25));
    shapes.push_back(std::move(diagram));
    const double farthest =
        base + std::max(0.0, std::max(s.along_l->at_start, s.along_l->at_end)) * depth_scale;
    const Text start = number_text("%.1f", s.along_l->at_start);
    const Text end = number_text("%.1f", s.along_l->at_end);
    shapes.push_back(text(base + 1, y0 + ph + kText + 0.5, start, Align::kLeft));
    shapes.push_back(text(base + 1, y0 - 1, end, Align::kLeft));
    width = std::max(farthest, base + 1 + std::max(text_width(start), text_width(end)));
    height = std::max(height, y0 + ph + kText + 0.5);
  }
  figure.width_mm = width + kMargin;
  figure.height_mm = height + kMargin;
  figure.caption = s.caption.empty() ? Text(u"基础平面及基底压力（kPa）") : s.caption;
  return figure;
}

}  // namespace zelkora::desk
