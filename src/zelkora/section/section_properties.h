// The closed forms of the member cross-sections: area, centroid height and
// second moment of area about the horizontal axis through the centroid.
//
// One function per shape family. Lengths are in metres; every section is
// drawn with its tension edge at the bottom, and `centroid` is the height of
// the centroid above that edge. The formulas are the ones the suite's
// programs have always used, term for term (squares and cubes through
// std::pow), so that results agree with theirs to the last digit:
//
//   section::rectangle(0.2, 0.5)          // {0.1, 0.25, 0.00208333...}
//   section::bottom_flange(0.2, 0.6, 0.5, 0.12)
//
// No dimension is checked: negative or inconsistent sizes are computed as
// given. The families whose centroid is a moment divided by the area give
// nothing for an area of zero (clsSectionProperties turns that into its
// Fault(DivisionByZero)).
//
// clsSectionProperties (cls_section_properties.h) maps the shape codes onto
// these families and keeps the suite's conventions for the result.
#pragma once

#include <optional>

namespace zelkora::section {

struct SectionProperties {
  double area = 0;      // m²
  double centroid = 0;  // m, height of the centroid above the bottom edge
  double inertia = 0;   // m⁴, about the horizontal centroidal axis
};

// π/4 as the suite's programs write it.
constexpr double kQuarterPi = 0.785398163397448;

// A rectangle b wide and h deep.
std::optional<SectionProperties> rectangle(double b, double h);

// A web b wide, h deep in all, with a flange bf × hf at the bottom (the
// inverted T).
std::optional<SectionProperties> bottom_flange(double b, double h, double bf, double hf);

// A web b wide, h deep in all, with a flange bf1 × hf1 at the top (the T).
// The centroid depth below the top edge is computed first; `centroid` is h
// minus it.
std::optional<SectionProperties> top_flange(double b, double h, double bf1, double hf1);

// A symmetric I: web b, depth h, two flanges bf × hf. The centroid is at h/2.
std::optional<SectionProperties> symmetric_i(double b, double h, double bf, double hf);

// An I with a bottom flange bf × hf and a top flange bf1 × hf1 on a web b,
// h deep in all.
std::optional<SectionProperties> i_section(double b, double h, double bf, double hf, double bf1,
                                           double hf1);

// A full circle of diameter d.
std::optional<SectionProperties> circle(double d);

// A ring of outer diameter d and inner diameter d_inner; the centroid is at
// d/2.
std::optional<SectionProperties> ring(double d, double d_inner);

// A foundation cross-section: a rectangle b × hf at the bottom under a
// trapezoid that narrows from b to the top width bf, h deep in all.
std::optional<SectionProperties> cone(double b, double h, double bf, double hf);

// A stepped section of two steps: b × h1 at the bottom, bf × hf on it; h is
// taken as the total depth as given.
std::optional<SectionProperties> two_steps(double b, double h, double h1, double bf, double hf);

// A stepped section of three steps: b × h1, bf × hf and bf1 × hf1 from the
// bottom up; h is taken as the total depth as given.
std::optional<SectionProperties> three_steps(double b, double h, double h1, double bf, double hf,
                                             double bf1, double hf1);

// A box: outer width bf, depth h, bottom slab hf, top slab hf1 and webs of
// total width b.
std::optional<SectionProperties> box(double b, double h, double bf, double hf, double hf1);

}  // namespace zelkora::section
