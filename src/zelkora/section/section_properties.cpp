// The closed forms of the cross-sections. Each sums width × cube of the
// distance from the centroid to the outer edges and subtracts the same for
// the parts that are cut away; the operations stay in the suite's order.
#include "zelkora/section/section_properties.h"

#include <cmath>
#include <optional>

namespace zelkora::section {

namespace {

double sq(double x) { return std::pow(x, 2.0); }
double cube(double x) { return std::pow(x, 3.0); }

// A first moment divided by the area (or a multiple of it); nothing for an
// area of zero.
std::optional<double> over_area(double moment, double area) {
  if (area == 0) return std::nullopt;
  return moment / area;
}

}  // namespace

std::optional<SectionProperties> rectangle(double b, double h) {
  SectionProperties p;
  p.area = b * h;
  p.centroid = h / 2;
  p.inertia = sq(h) * p.area / 12;
  return p;
}

std::optional<SectionProperties> bottom_flange(double b, double h, double bf, double hf) {
  SectionProperties p;
  p.area = bf * hf + (h - hf) * b;
  const std::optional<double> y_ = over_area(((bf - b) * sq(hf) + b * sq(h)) * 0.5, p.area);
  if (!y_) return std::nullopt;
  const double y = *y_;
  p.centroid = y;
  p.inertia = (b * cube(h - y) + bf * cube(y) - (bf - b) * cube(y - hf)) / 3;
  return p;
}

std::optional<SectionProperties> top_flange(double b, double h, double bf1, double hf1) {
  SectionProperties p;
  p.area = (h - hf1) * b + bf1 * hf1;
  const std::optional<double> c_ = over_area(((bf1 - b) * sq(hf1) + b * sq(h)) * 0.5, p.area);
  if (!c_) return std::nullopt;
  const double c = *c_;
  p.centroid = h - c;
  p.inertia = (bf1 * cube(c) + b * cube(h - c) - (bf1 - b) * cube(c - hf1)) / 3;
  return p;
}

std::optional<SectionProperties> symmetric_i(double b, double h, double bf, double hf) {
  SectionProperties p;
  p.area = (h - 2 * hf) * b + 2 * bf * hf;
  p.centroid = h / 2;
  p.inertia = (bf * cube(h) - (bf - b) * cube(h - 2 * hf)) / 12;
  return p;
}

std::optional<SectionProperties> i_section(double b, double h, double bf, double hf, double bf1,
                                           double hf1) {
  SectionProperties p;
  p.area = bf * hf + (h - hf1 - hf) * b + bf1 * hf1;
  const std::optional<double> y_ =
      over_area(((2 * h - hf1) * (bf1 - b) * hf1 + (bf - b) * sq(hf) + b * sq(h)) * 0.5, p.area);
  if (!y_) return std::nullopt;
  const double y = *y_;
  p.centroid = y;
  p.inertia =
      (bf1 * cube(h - y) + bf * cube(y) - (bf - b) * cube(y - hf) - (bf1 - b) * cube(h - y - hf1)) /
      3;
  return p;
}

std::optional<SectionProperties> circle(double d) {
  SectionProperties p;
  p.area = kQuarterPi * sq(d);
  p.centroid = d / 2;
  p.inertia = sq(d) * p.area / 16;
  return p;
}

std::optional<SectionProperties> ring(double d, double d_inner) {
  SectionProperties p;
  p.area = kQuarterPi * (sq(d) - sq(d_inner));
  p.centroid = d / 2;
  p.inertia = (sq(d) + sq(d_inner)) * p.area / 16;
  return p;
}

std::optional<SectionProperties> cone(double b, double h, double bf, double hf) {
  SectionProperties p;
  const double d = h - hf;  // height of the sloping part
  p.area = (b + bf) * d * 0.5 + b * hf;
  const std::optional<double> y_ =
      over_area((2 * bf + b) * sq(d) + 3 * hf * (d * bf + b * h), 6 * p.area);
  if (!y_) return std::nullopt;
  const double y = *y_;
  p.centroid = y;
  p.inertia = (cube(d) * (3 * bf + b) + 4 * b * cube(hf)) / 12 - p.area * sq(y - hf);
  return p;
}

std::optional<SectionProperties> two_steps(double b, double h, double h1, double bf, double hf) {
  SectionProperties p;
  p.area = b * h1 + bf * hf;
  const std::optional<double> y_ = over_area((sq(h1) * (b - bf) + sq(h) * bf) * 0.5, p.area);
  if (!y_) return std::nullopt;
  const double y = *y_;
  p.centroid = y;
  p.inertia = (b * cube(y) + bf * cube(h - y) - (b - bf) * cube(y - h1)) / 3;
  return p;
}

std::optional<SectionProperties> three_steps(double b, double h, double h1, double bf, double hf,
                                             double bf1, double hf1) {
  SectionProperties p;
  p.area = b * h1 + bf * hf + bf1 * hf1;
  const std::optional<double> y_ =
      over_area((sq(h1) * (b - bf) + sq(h1 + hf) * (bf - bf1) + sq(h) * bf1) * 0.5, p.area);
  if (!y_) return std::nullopt;
  const double y = *y_;
  p.centroid = y;
  p.inertia =
      (b * cube(y) + bf1 * cube(h - y) - (b - bf) * cube(y - h1) - (bf - bf1) * cube(y - h1 - hf)) /
      3;
  return p;
}

std::optional<SectionProperties> box(double b, double h, double bf, double hf, double hf1) {
  SectionProperties p;
  p.area = b * h + (hf + hf1) * (bf - b);
  const std::optional<double> y_ =
      over_area((((2 * h - hf1) * hf1 + sq(hf)) * (bf - b) + b * sq(h)) * 0.5, p.area);
  if (!y_) return std::nullopt;
  const double y = *y_;
  p.centroid = y;
  p.inertia = (bf * (cube(h - y) + cube(y)) - (bf - b) * (cube(y - hf) + cube(h - y - hf1))) / 3;
  return p;
}

}  // namespace zelkora::section
