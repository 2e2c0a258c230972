// Tests of the cross-sections drawn for reports: the area drawn is the area
// clsSectionProperties computes, the drawing stays in its frame, and sizes
// that make no outline give no figure.
#include "zelkora/document/section_figure.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

#include "zelkora/section/cls_section_properties.h"

namespace zelkora::document {
namespace {

// The area a figure's outline encloses in its own millimetres, holes taken
// out, at the figure's scale (the width's dimension text over its length).
double drawn_area(const Figure& f, double scale) {
  double area = 0;
  for (const Shape& s : f.shapes) {
    double a = 0;
    if (s.kind == Shape::Kind::kPolygon) {
      for (std::size_t i = 0; i + 1 < s.points.size(); i += 2) {
        const std::size_t j = (i + 2) % s.points.size();
        a += s.points[i] * s.points[j + 1] - s.points[j] * s.points[i + 1];
      }
      a = std::fabs(a) / 2;
    } else if (s.kind == Shape::Kind::kEllipse) {
      a = std::numbers::pi / 4 * std::fabs(s.points[2] - s.points[0]) *
          std::fabs(s.points[3] - s.points[1]);
    } else {
      continue;
    }
    area += s.fill == 0xFFFFFFu ? -a : a;
  }
  return area / (scale * scale);
}

TEST(SectionFigure, DrawsTheAreaTheSectionHas) {
  const struct {
    Section_Shapes shape;
    SectionSizes s;
    double width, depth;
  } cases[] = {
      {Rectangular_Shaped, {.b = 250, .h = 500}, 250, 500},
      {T_Shaped, {.b = 250, .h = 600, .bf1 = 800, .hf1 = 120}, 800, 600},
      {Inverted_L_Shaped, {.b = 250, .h = 600, .bf1 = 500, .hf1 = 100}, 500, 600},
      {Inverted_T_Shaped, {.b = 200, .h = 500, .bf = 600, .hf = 150}, 600, 500},
      {I_Shaped_Symmetry, {.b = 100, .h = 800, .bf = 400, .hf = 120}, 400, 800},
      {I_Shaped, {.b = 120, .h = 900, .bf = 300, .hf = 100, .bf1 = 500, .hf1 = 150}, 500, 900},
      {Circular_Shaped, {.b = 600}, 600, 600},
      {Ring_Shaped, {.b = 800, .h = 600}, 800, 800},
      {Cone_Shape, {.b = 2400, .h = 600, .bf = 500, .hf = 300}, 2400, 600},
      {Inverted_Cone_Shape, {.b = 2400, .h = 600, .bf = 500, .hf = 300}, 2400, 600},
      {Stepped_Shape,
       {.b = 2000, .h = 700, .bf = 1200, .hf = 300, .h1 = 400, .steps = 2},
       2000,
       700},
      {Stepped_Shape,
       {.b = 3000, .h = 900, .bf = 2000, .hf = 300, .bf1 = 800, .hf1 = 300, .h1 = 300, .steps = 3},
       3000,
       900},
      {Box_Shape, {.b = 300, .h = 1200, .bf = 1500, .hf = 200, .hf1 = 250}, 1500, 1200},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.shape);
    const std::optional<Figure> f = section_figure(c.shape, c.s);
    ASSERT_TRUE(f);
    clsSectionProperties sp;
    sp.Section_Shape(c.shape);
    sp.B_SectionWidth(c.s.b);
    sp.H_SectionDepth(c.s.h);
    sp.Bf_FlangeWidth_TensionZone(c.s.bf);
    sp.Hf_FlangeDepth_TensionZone(c.s.hf);
    sp.Bf1_FlangeWidth_CompressionZone(c.s.bf1);
    sp.Hf1_FlangeDepth_CompressionZone(c.s.hf1);
    sp.H1_SectionDepth_Stepped(c.s.h1);
    sp.StepsNumber_SteppedShape(c.s.steps);
    sp.dIx_InertiaMoment();
    const double scale = std::min(70 / c.width, 55 / c.depth);
    EXPECT_NEAR(drawn_area(*f, scale), sp.A_SectionArea() * 1e6, sp.A_SectionArea() * 1e6 * 1e-9);
    for (const Shape& s : f->shapes) {
      for (std::size_t i = 0; i + 1 < s.points.size(); i += 2) {
        EXPECT_GE(s.points[i], 0);
        EXPECT_LE(s.points[i], f->width_mm);
        EXPECT_GE(s.points[i + 1], 0);
        EXPECT_LE(s.points[i + 1], f->height_mm);
      }
    }
    EXPECT_NE(f->caption.find(u"×"), Text::npos);
  }
}

TEST(SectionFigure, NoFigureForSizesWithoutAnOutline) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const struct {
    Section_Shapes shape;
    SectionSizes s;
  } cases[] = {
      {Rectangular_Shaped, {.b = 0, .h = 500}},
      {Rectangular_Shaped, {.b = nan, .h = 500}},
      {Rectangular_Shaped, {.b = 250, .h = std::numeric_limits<double>::infinity()}},
      {T_Shaped, {.b = 250, .h = 600, .bf1 = 800, .hf1 = 600}},  // the flange as deep as all
      {Ring_Shaped, {.b = 600, .h = 600}},                       // no wall
      {Box_Shape, {.b = 1500, .h = 1200, .bf = 1500, .hf = 200, .hf1 = 250}},
      {Cone_Shape, {.b = 500, .h = 600, .bf = 800, .hf = 300}},  // the top wider than the base
      {Square_Shaped, {.b = 250, .h = 250}},
      {static_cast<Section_Shapes>(1), {.b = 250, .h = 250}},
  };
  for (const auto& c : cases) EXPECT_FALSE(section_figure(c.shape, c.s)) << c.shape;
}

}  // namespace
}  // namespace zelkora::document
