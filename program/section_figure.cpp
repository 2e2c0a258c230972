// The beam's section as a figure of the report; see the header.
#include "program/section_figure.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>

#include "zelkora/document/figure_shapes.h"

namespace zelkora::desk {

namespace {

using document::Figure;
using document::Shape;

constexpr std::size_t kMostBars = 20000;
// The section fits a box of this size, in mm.
constexpr double kMostWidth = 60, kMostHeight = 75;
constexpr double kText = 3.5;  // the numbers' height
constexpr double kMargin = 1;
constexpr double kTick = 1.2;  // half a dimension tick

bool usable(double v) { return std::isfinite(v) && v > 0; }

Text number_text(double v) {
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%.6g", v);
  return from_utf8(buffer);
}

// The width a number takes, as a guess: digits are about 0.55 of the height.
double text_width(const Text& text) { return 0.55 * kText * static_cast<double>(text.size()); }

Shape line(double x0, double y0, double x1, double y1, double width = 0.18) {
  return document::line_shape(x0, y0, x1, y1, width);
}

Shape text(double x, double y, Text what, document::Align align) {
  return document::text_shape(x, y, std::move(what), kText, align);
}

// A dimension line with its ticks (short slashes at 45 degrees).
void dimension(std::vector<Shape>& shapes, double x0, double y0, double x1, double y1) {
  shapes.push_back(line(x0, y0, x1, y1));
  for (const auto& [x, y] : {std::pair{x0, y0}, std::pair{x1, y1}}) {
    shapes.push_back(line(x - kTick, y + kTick, x + kTick, y - kTick));
  }
}

// A rectangle with rounded corners as a closed outline.
Shape rounded_rect(double left, double top, double right, double bottom, double radius) {
  Shape s;
  s.kind = Shape::Kind::kPolygon;
  constexpr int kSteps = 6;
  const struct {
    double cx, cy, from;
  } corners[] = {{right - radius, top + radius, -0.5},
                 {right - radius, bottom - radius, 0},
                 {left + radius, bottom - radius, 0.5},
                 {left + radius, top + radius, 1}};
  for (const auto& c : corners) {
    for (int i = 0; i <= kSteps; ++i) {
      const double a = (c.from + 0.5 * i / kSteps) * std::numbers::pi;
      s.points.push_back(c.cx + radius * std::cos(a));
      s.points.push_back(c.cy + radius * std::sin(a));
    }
  }
  return s;
}

// `a` moved by `share_of_b` towards `b`, channel by channel (0xRRGGBB).
document::Colour mixed(document::Colour a, document::Colour b, double share_of_b) {
  document::Colour out = 0;
  for (const int shift : {16, 8, 0}) {
    const double x = (a >> shift) & 0xFF, y = (b >> shift) & 0xFF;
    out |= static_cast<document::Colour>(std::lround(x + (y - x) * share_of_b)) << shift;
  }
  return out;
}

// The lightness of HSL (max + min) / 2 of the colour's channels.
int lightness(document::Colour c) {
  const int r = (c >> 16) & 0xFF, g = (c >> 8) & 0xFF, b = c & 0xFF;
  return (std::max({r, g, b}) + std::min({r, g, b})) / 2;
}

}  // namespace

std::map<document::Colour, document::Colour> sketch_screen_colours(document::Colour ground,
                                                                   document::Colour ink) {
  ground &= 0xFFFFFF;
  ink &= 0xFFFFFF;
  const bool dark = lightness(ground) < 128;
  return {{figure_colour::kInk, ink},
          {figure_colour::kConcrete, mixed(ground, ink, 0.12)},
          {figure_colour::kStirrup, mixed(ground, ink, 0.55)},
          {figure_colour::kCompression, dark ? 0x6FA8FFu : 0x1F5FC8u}};
}

document::Figure section_figure(const SectionSketch& sketch) {
  Figure figure;
  if (!usable(sketch.b) || !usable(sketch.h)) return figure;
  const double scale = std::min(kMostWidth / sketch.b, kMostHeight / sketch.h);
  if (!usable(scale)) return figure;
  const double sw = sketch.b * scale, sh = sketch.h * scale;
  const Text b_text = number_text(sketch.b), h_text = number_text(sketch.h);
  // The dimension of h on the left, its number left of its line; that of b
  // below, its number over its line.
  const double x0 = kMargin + text_width(h_text) + 1.5 + 3;
  const double y0 = kMargin + kTick;
  const double width = std::max(x0 + sw + kTick, x0 + sw / 2 + text_width(b_text) / 2) + kMargin;
  const double below = y0 + sh + 2.5 + kText;
  figure.width_mm = width;
  figure.height_mm = below + kTick + kMargin;
  figure.caption = sketch.caption.empty() ? b_text + u"×" + h_text : sketch.caption;
  std::vector<Shape>& shapes = figure.shapes;
  const auto at_x = [&](double x) { return x0 + x * scale; };
  const auto at_y = [&](double y) { return y0 + sh - y * scale; };

  Shape concrete;
  concrete.kind = Shape::Kind::kRect;
  concrete.points = {x0, y0, x0 + sw, y0 + sh};
  concrete.stroke_mm = 0.35;
  concrete.fill = figure_colour::kConcrete;
  shapes.push_back(concrete);

  // The stirrup: its outer face at the cover, its line as thick as its bar.
  const double cover = sketch.cover, sd = sketch.stirrup_d;
  if (usable(sd) && std::isfinite(cover) && cover >= 0 && 2 * cover + 2 * sd < sketch.b &&
      2 * cover + 2 * sd < sketch.h) {
    const double inset = cover + sd / 2;
    const double left = at_x(inset), right = at_x(sketch.b - inset);
    const double top = at_y(sketch.h - inset), bottom = at_y(inset);
    Shape stirrup =
        rounded_rect(left, top, right, bottom,
                     std::min(1.75 * sd * scale, std::min(right - left, bottom - top) / 2));
    stirrup.stroke_mm = std::max(0.1, sd * scale);
    stirrup.stroke = figure_colour::kStirrup;
    shapes.push_back(std::move(stirrup));
  }

  // The bars; those outside the drawing are passed over.
  const std::size_t bars = std::min(sketch.bars.size(), kMostBars);
  const double most_radius = std::max(figure.width_mm, figure.height_mm);
  for (std::size_t i = 0; i < bars; ++i) {
    const SectionSketch::Bar& bar = sketch.bars[i];
    if (!usable(bar.d) || !std::isfinite(bar.x) || !std::isfinite(bar.y)) continue;
    const double cx = at_x(bar.x), cy = at_y(bar.y);
    const double r = std::min(std::max(bar.d * scale / 2, 0.25), most_radius);
    if (!std::isfinite(cx) || !std::isfinite(cy) || cx < -r || cy < -r ||
        cx > figure.width_mm + r || cy > figure.height_mm + r) {
      continue;
    }
    Shape circle;
    circle.kind = Shape::Kind::kEllipse;
    circle.points = {cx - r, cy - r, cx + r, cy + r};
    circle.stroke_mm = 0;
    circle.fill = bar.tension ? figure_colour::kInk : figure_colour::kCompression;
    shapes.push_back(std::move(circle));
  }

  for (const double x : {x0, x0 + sw}) shapes.push_back(line(x, y0 + sh + 0.5, x, below + kTick));
  dimension(shapes, x0, below, x0 + sw, below);
  shapes.push_back(text(x0 + sw / 2, below - 0.8, b_text, document::Align::kCenter));
  const double beside = x0 - 3;
  for (const double y : {y0, y0 + sh}) shapes.push_back(line(x0 - 0.5, y, beside - kTick, y));
  dimension(shapes, beside, y0 + sh, beside, y0);
  shapes.push_back(text(beside - 1.5, y0 + sh / 2 + 0.35 * kText, h_text, document::Align::kRight));
  return figure;
}

FigureRect section_in_figure(const document::Figure& figure) {
  if (figure.shapes.empty() || figure.shapes.front().points.size() < 4) return {};
  const std::vector<double>& p = figure.shapes.front().points;
  return {p[0], p[1], p[2] - p[0], p[3] - p[1]};
}

}  // namespace zelkora::desk
