// A member cross-section drawn to scale with its dimension lines.
#include "zelkora/document/section_figure.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

#include "zelkora/document/figure_shapes.h"

namespace zelkora::document {

namespace {

// The section's outline in its own millimetres, x from the left, y up from
// the bottom: solid parts, and the holes drawn over them.
struct Part {
  bool ellipse = false;
  bool hole = false;
  std::vector<double> points;  // polygon x, y, ...; an ellipse's corners
};

struct Outline {
  double width = 0, depth = 0;
  std::vector<Part> parts;
};

// Rectangles stacked from the bottom up, each centred on the widest: the
// outline of T, I and stepped sections.
Part stack(const std::vector<std::pair<double, double>>& layers, double width) {
  const double cx = width / 2;
  Part part;
  double y = 0;
  for (const auto& [w, h] : layers) {  // up the right side
    part.points.insert(part.points.end(), {cx + w / 2, y, cx + w / 2, y + h});
    y += h;
  }
  for (auto it = layers.rbegin(); it != layers.rend(); ++it) {  // down the left
    y -= it->second;
    part.points.insert(part.points.end(),
                       {cx - it->first / 2, y + it->second, cx - it->first / 2, y});
  }
  return part;
}

double widest(const std::vector<std::pair<double, double>>& layers) {
  double w = 0;
  for (const auto& layer : layers) w = std::max(w, layer.first);
  return w;
}

double total(const std::vector<std::pair<double, double>>& layers) {
  double h = 0;
  for (const auto& layer : layers) h += layer.second;
  return h;
}

std::optional<Outline> stacked(const std::vector<std::pair<double, double>>& layers) {
  for (const auto& [w, h] : layers) {
    if (!(w > 0) || !(h > 0)) return std::nullopt;
  }
  const double width = widest(layers);
  return Outline{width, total(layers), {stack(layers, width)}};
}

// Drawn upside down: the wide part at the top.
Outline inverted(Outline outline) {
  for (Part& part : outline.parts) {
    for (std::size_t i = 1; i < part.points.size(); i += 2)
      part.points[i] = outline.depth - part.points[i];
  }
  return outline;
}

std::optional<Outline> outline_of(Section_Shapes shape, const SectionSizes& s) {
  switch (shape) {
    case Rectangular_Shaped:
      return stacked({{s.b, s.h}});
    case Inverted_T_Shaped:
      if (!(s.hf < s.h)) return std::nullopt;
      return stacked({{s.bf, s.hf}, {s.b, s.h - s.hf}});
    case T_Shaped:
      if (!(s.hf1 < s.h)) return std::nullopt;
      return stacked({{s.b, s.h - s.hf1}, {s.bf1, s.hf1}});
    case Inverted_L_Shaped: {  // the flange to one side of the web
      if (!(s.b > 0 && s.h > 0 && s.bf1 >= s.b && s.hf1 > 0 && s.hf1 < s.h)) return std::nullopt;
      const double y = s.h - s.hf1;
      return Outline{
          s.bf1, s.h, {{false, false, {0, 0, s.b, 0, s.b, y, s.bf1, y, s.bf1, s.h, 0, s.h}}}};
    }
    case I_Shaped_Symmetry:
      if (!(2 * s.hf < s.h)) return std::nullopt;
      return stacked({{s.bf, s.hf}, {s.b, s.h - 2 * s.hf}, {s.bf, s.hf}});
    case I_Shaped_Asymmetric:
    case I_Shaped:
      if (!(s.hf + s.hf1 < s.h)) return std::nullopt;
      return stacked({{s.bf, s.hf}, {s.b, s.h - s.hf - s.hf1}, {s.bf1, s.hf1}});
    case Circular_Shaped:
      if (!(s.b > 0)) return std::nullopt;
      return Outline{s.b, s.b, {{true, false, {0, 0, s.b, s.b}}}};
    case Ring_Shaped: {
      if (!(s.h > 0 && s.b > s.h)) return std::nullopt;
      const double gap = (s.b - s.h) / 2;
      return Outline{
          s.b,
          s.b,
          {{true, false, {0, 0, s.b, s.b}}, {true, true, {gap, gap, gap + s.h, gap + s.h}}}};
    }
    case Cone_Shape:
    case Inverted_Cone_Shape: {
      if (!(s.b > 0 && s.h > 0 && s.bf > 0 && s.bf <= s.b && s.hf > 0 && s.hf < s.h))
        return std::nullopt;
      const double c = s.b / 2;
      Outline cone{s.b,
                   s.h,
                   {{false,
                     false,
                     {0, 0, s.b, 0, s.b, s.hf, c + s.bf / 2, s.h, c - s.bf / 2, s.h, 0, s.hf}}}};
      return shape == Cone_Shape ? cone : inverted(cone);
    }
    case Stepped_Shape:
    case Inverted_Stepped_Shape: {
      if (!(s.bf <= s.b) || (s.steps != 2 && !(s.bf1 <= s.bf))) return std::nullopt;
      std::vector<std::pair<double, double>> steps = {{s.b, s.h1}, {s.bf, s.hf}};
      if (s.steps != 2) steps.push_back({s.bf1, s.hf1});
      std::optional<Outline> outline = stacked(steps);
      if (outline && shape == Inverted_Stepped_Shape) outline = inverted(*outline);
      return outline;
    }
    case Box_Shape: {
      if (!(s.b > 0 && s.bf > s.b && s.hf > 0 && s.hf1 > 0 && s.hf + s.hf1 < s.h))
        return std::nullopt;
      const double gap = s.b / 2;
      return Outline{s.bf,
                     s.h,
                     {{false, false, {0, 0, s.bf, 0, s.bf, s.h, 0, s.h}},
                      {false,
                       true,
                       {gap, s.hf, s.bf - gap, s.hf, s.bf - gap, s.h - s.hf1, gap, s.h - s.hf1}}}};
    }
    default:
      return std::nullopt;
  }
}

// A size as written on drawings: whole millimetres, else one decimal.
Text size_text(double mm) {
  char digits[32];
  const bool whole = std::fabs(mm - std::round(mm)) < 1e-9;
  std::snprintf(digits, sizeof digits, whole ? "%.0f" : "%.1f", mm);
  return Text(digits, digits + std::char_traits<char>::length(digits));
}

Text shape_name(Section_Shapes shape) {
  switch (shape) {
    case Rectangular_Shaped:
      return u"矩形截面";
    case Inverted_T_Shaped:
      return u"倒T形截面";
    case Inverted_L_Shaped:
      return u"倒L形截面";
    case T_Shaped:
      return u"T形截面";
    case I_Shaped_Symmetry:
      return u"工形截面（对称）";
    case I_Shaped_Asymmetric:
      return u"工形截面（不对称）";
    case Circular_Shaped:
      return u"圆形截面";
    case Ring_Shaped:
      return u"环形截面";
    case I_Shaped:
      return u"工形截面";
    case Inverted_Cone_Shape:
      return u"倒锥形基础横截面";
    case Cone_Shape:
      return u"锥形基础横截面";
    case Inverted_Stepped_Shape:
      return u"倒阶梯形截面";
    case Stepped_Shape:
      return u"阶梯形截面";
    case Box_Shape:
      return u"箱形截面";
    default:
      return {};
  }
}

// The drawing's layout, in the figure's millimetres.
constexpr double kMostWidth = 70, kMostDepth = 55;
constexpr double kLeft = 16, kTop = 3, kRight = 3, kBottom = 10;
constexpr double kTextMm = 3;
constexpr Colour kInk = 0x000000, kHatch = 0xE0E0E0, kPaper = 0xFFFFFF;

Shape line(double x0, double y0, double x1, double y1, double stroke) {
  return line_shape(x0, y0, x1, y1, stroke);
}

Shape label(double x, double y, Text text, Align align) {
  return text_shape(x, y, std::move(text), kTextMm, align);
}

// A dimension line between two points with its ticks and its value.
void dimension(std::vector<Shape>& shapes, double x0, double y0, double x1, double y1, Text value,
               bool horizontal) {
  constexpr double kThin = 0.18, kTick = 1.2;
  shapes.push_back(line(x0, y0, x1, y1, kThin));
  for (const auto& [x, y] : {std::pair{x0, y0}, std::pair{x1, y1}}) {
    shapes.push_back(line(x - kTick / 2, y + kTick / 2, x + kTick / 2, y - kTick / 2, 0.35));
  }
  if (horizontal) {
    shapes.push_back(label((x0 + x1) / 2, y0 - 1, std::move(value), Align::kCenter));
  } else {
    shapes.push_back(label(x0 - 1.5, (y0 + y1) / 2 + kTextMm / 3, std::move(value), Align::kRight));
  }
}

}  // namespace

std::optional<Figure> section_figure(Section_Shapes shape, const SectionSizes& mm) {
  const std::optional<Outline> outline = outline_of(shape, mm);
  if (!outline || !std::isfinite(outline->width) || !std::isfinite(outline->depth) ||
      !(outline->width > 0) || !(outline->depth > 0)) {
    return std::nullopt;
  }
  const double scale = std::min(kMostWidth / outline->width, kMostDepth / outline->depth);
  const double w = outline->width * scale, d = outline->depth * scale;
  const auto fx = [&](double x) { return kLeft + x * scale; };
  const auto fy = [&](double y) { return kTop + (outline->depth - y) * scale; };
  Figure figure;
  figure.width_mm = kLeft + w + kRight;
  figure.height_mm = kTop + d + kBottom;
  for (const Part& part : outline->parts) {
    Shape s;
    s.kind = part.ellipse ? Shape::Kind::kEllipse : Shape::Kind::kPolygon;
    for (std::size_t i = 0; i + 1 < part.points.size(); i += 2) {
      s.points.push_back(fx(part.points[i]));
      s.points.push_back(fy(part.points[i + 1]));
    }
    s.stroke_mm = 0.35;
    s.stroke = kInk;
    s.fill = part.hole ? kPaper : kHatch;
    figure.shapes.push_back(std::move(s));
  }
  const double below = kTop + d + 6, beside = kLeft - 5;
  figure.shapes.push_back(line(fx(0), kTop + d + 1, fx(0), below + 1, 0.18));
  figure.shapes.push_back(
      line(fx(outline->width), kTop + d + 1, fx(outline->width), below + 1, 0.18));
  dimension(figure.shapes, fx(0), below, fx(outline->width), below, size_text(outline->width),
            true);
  figure.shapes.push_back(line(kLeft - 1, kTop, beside - 1, kTop, 0.18));
  figure.shapes.push_back(line(kLeft - 1, kTop + d, beside - 1, kTop + d, 0.18));
  dimension(figure.shapes, beside, kTop + d, beside, kTop, size_text(outline->depth), false);
  figure.caption =
      shape_name(shape) + u" " + size_text(outline->width) + u"×" + size_text(outline->depth);
  return figure;
}

}  // namespace zelkora::document
