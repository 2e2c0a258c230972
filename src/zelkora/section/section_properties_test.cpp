// Tests of the section properties against an independent polygon computation.
#include "zelkora/section/section_properties.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <numbers>
#include <random>
#include <vector>

#include "zelkora/platform/fault.h"
#include "zelkora/section/cls_section_properties.h"

namespace zelkora {
namespace {

struct Sizes {  // the dimensions of the setters
  double b = 0, h = 0, bf = 0, hf = 0, bf1 = 0, hf1 = 0, h1 = 0;
  int32_t steps = 0;
};

struct Result {
  double i, a, y;
};

Result compute(clsSectionProperties& sp, Section_Shapes shape, const Sizes& mm) {
  sp.Section_Shape(shape);
  sp.B_SectionWidth(mm.b);
  sp.H_SectionDepth(mm.h);
  sp.Bf_FlangeWidth_TensionZone(mm.bf);
  sp.Hf_FlangeDepth_TensionZone(mm.hf);
  sp.Bf1_FlangeWidth_CompressionZone(mm.bf1);
  sp.Hf1_FlangeDepth_CompressionZone(mm.hf1);
  sp.H1_SectionDepth_Stepped(mm.h1);
  sp.StepsNumber_SteppedShape(mm.steps);
  const double i = sp.dIx_InertiaMoment();
  return {i, sp.A_SectionArea(), sp.Y_CentroidToTensionEdge()};
}
Result compute(Section_Shapes shape, const Sizes& mm) {
  clsSectionProperties sp;
  return compute(sp, shape, mm);
}

bool close(double actual, double expected) {
  return std::abs(actual - expected) <= 1e-9 * std::abs(expected);
}

// ---- The oracle: the section as polygons, by Green's theorem ----------------

struct Point {
  double x, y;
};
using Polygon = std::vector<Point>;  // counter-clockwise; a hole clockwise

Result polygon_properties(const std::vector<Polygon>& rings) {
  double area = 0, moment = 0, inertia = 0;
  for (const Polygon& p : rings) {
    for (std::size_t k = 0; k < p.size(); ++k) {
      const Point a = p[k], b = p[(k + 1) % p.size()];
      area += (a.x * b.y - b.x * a.y) / 2;
      moment += (a.y + b.y) * (a.x * b.y - b.x * a.y) / 6;
    }
  }
  const double cy = moment / area;
  for (const Polygon& p : rings) {  // about the centroid, against cancellation
    for (std::size_t k = 0; k < p.size(); ++k) {
      const Point a{p[k].x, p[k].y - cy}, b{p[(k + 1) % p.size()].x, p[(k + 1) % p.size()].y - cy};
      inertia += (a.y * a.y + a.y * b.y + b.y * b.y) * (a.x * b.y - b.x * a.y) / 12;
    }
  }
  return {inertia, area, cy};
}

// Centred layers {width, height} from the bottom up.
Polygon stack(const std::vector<Point>& layers) {
  Polygon right, left;
  double z = 0;
  for (const Point& l : layers) {
    for (double top : {z, z + l.y})
      right.push_back({l.x / 2, top}), left.push_back({-l.x / 2, top});
    z += l.y;
  }
  right.insert(right.end(), left.rbegin(), left.rend());
  return right;
}

// Upside down within the depth h, still counter-clockwise.
Polygon flip(const Polygon& p, double h) {
  Polygon out;
  for (auto it = p.rbegin(); it != p.rend(); ++it) out.push_back({it->x, h - it->y});
  return out;
}

// The shape drawn with its tension edge at y = 0, sizes in metres.
std::vector<Polygon> outline(Section_Shapes shape, const Sizes& m) {
  const Polygon cone{{-m.b / 2, 0},   {m.b / 2, 0},     {m.b / 2, m.hf},
                     {m.bf / 2, m.h}, {-m.bf / 2, m.h}, {-m.b / 2, m.hf}};
  const Polygon steps = m.steps == 2 ? stack({{m.b, m.h1}, {m.bf, m.hf}})
                                     : stack({{m.b, m.h1}, {m.bf, m.hf}, {m.bf1, m.hf1}});
  const double web = m.h - m.hf1, gap = (m.bf - m.b) / 2;
  switch (shape) {
    case Rectangular_Shaped:
      return {stack({{m.b, m.h}})};
    case Inverted_T_Shaped:
      return {stack({{m.bf, m.hf}, {m.b, m.h - m.hf}})};
    case T_Shaped:
      return {stack({{m.b, web}, {m.bf1, m.hf1}})};
    case Inverted_L_Shaped:  // the flange to one side
      return {{{0, 0}, {m.b, 0}, {m.b, web}, {m.bf1, web}, {m.bf1, m.h}, {0, m.h}}};
    case I_Shaped_Symmetry:
      return {stack({{m.bf, m.hf}, {m.b, m.h - 2 * m.hf}, {m.bf, m.hf}})};
    case Cone_Shape:
      return {cone};
    case Inverted_Cone_Shape:
      return {flip(cone, m.h)};
    case Stepped_Shape:
      return {steps};
    case Inverted_Stepped_Shape:
      return {flip(steps, m.h)};
    case Box_Shape:
      return {stack({{m.bf, m.h}}), {{-gap, m.hf}, {-gap, web}, {gap, web}, {gap, m.hf}}};
    default:
      return {stack({{m.bf, m.hf}, {m.b, m.h - m.hf - m.hf1}, {m.bf1, m.hf1}})};
  }
}

using Rng = std::mt19937_64;
double u(Rng& rng, double lo, double hi) { return std::uniform_real_distribution(lo, hi)(rng); }

// Random sizes in millimetres for which the shape is what its name says. All
// four flange dimensions are drawn, also where the shape does not use them;
// a stepped section has two or three steps.
Sizes random_sizes(Section_Shapes shape, Rng& r) {
  Sizes s{.b = u(r, 100, 800), .h = u(r, 200, 2500)};
  s.bf = u(r, s.b, 4 * s.b), s.hf = u(r, 0.05, 0.45) * s.h;
  s.bf1 = u(r, s.b, 4 * s.b), s.hf1 = u(r, 0.05, 0.45) * s.h;
  if (shape == Cone_Shape || shape == Inverted_Cone_Shape) {
    s.b = u(r, 500, 4000), s.bf = u(r, 0.1, 1) * s.b, s.hf = u(r, 0.02, 0.9) * s.h;
  } else if (shape == Stepped_Shape || shape == Inverted_Stepped_Shape) {
    s = {.b = u(r, 500, 4000), .h1 = u(r, 100, 1000), .steps = u(r, 0, 1) < 0.5 ? 2 : 3};
    s.bf = u(r, 0.1, 1) * s.b, s.hf = u(r, 100, 1000);
    if (s.steps == 3) s.bf1 = u(r, 0.1, 1) * s.bf, s.hf1 = u(r, 100, 1000);
    s.h = s.h1 + s.hf + s.hf1;
  } else if (shape == Box_Shape) {
    s.b = u(r, 0.1, 0.9) * s.bf;
  }
  return s;
}

TEST(SectionProperties, PolygonalShapesAgreeWithGreensTheorem) {
  const Section_Shapes shapes[] = {
      Rectangular_Shaped,     Inverted_T_Shaped, T_Shaped,   Inverted_L_Shaped,   I_Shaped_Symmetry,
      I_Shaped_Asymmetric,    I_Shaped,          Cone_Shape, Inverted_Cone_Shape, Stepped_Shape,
      Inverted_Stepped_Shape, Box_Shape};
  for (const Section_Shapes shape : shapes) {
    Rng rng(20240611);
    for (int n = 0; n < 1000; ++n) {
      const Sizes mm = random_sizes(shape, rng);
      Sizes m = mm;
      for (double* d : {&m.b, &m.h, &m.bf, &m.hf, &m.bf1, &m.hf1, &m.h1}) *d *= 0.001;
      const Result e = polygon_properties(outline(shape, m));
      clsSectionProperties sp;
      const Result r = compute(sp, shape, mm);
      if (!close(r.i, e.i) || !close(r.a, e.a) || !close(r.y, e.y) ||
          !close(sp.dWx_ElasticResistanceMoment(), e.i / e.y)) {
        ADD_FAILURE() << shape << "/" << mm.steps << " b=" << mm.b << " h=" << mm.h
                      << " bf=" << mm.bf << " hf=" << mm.hf << " bf1=" << mm.bf1
                      << " hf1=" << mm.hf1 << " h1=" << mm.h1 << ": I " << r.i << " vs " << e.i
                      << ", A " << r.a << " vs " << e.a << ", Y " << r.y << " vs " << e.y;
        break;
      }
    }
  }
}

TEST(SectionProperties, CircleAndRingAgreeWithTheCircleFormulas) {
  const double pi = std::numbers::pi;
  Rng rng(7);
  for (int n = 0; n < 1000 && !HasFailure(); ++n) {
    const double d = u(rng, 50, 3000), inner = u(rng, 0, 0.95) * d;
    const double dm = d / 1000, im = inner / 1000;
    const Result circle = compute(Circular_Shaped, {.b = d, .h = inner});
    EXPECT_TRUE(close(circle.i, pi * std::pow(dm, 4) / 64)) << d;
    EXPECT_TRUE(close(circle.a, pi * dm * dm / 4)) << d;
    EXPECT_TRUE(close(circle.y, dm / 2)) << d;
    const Result ring = compute(Ring_Shaped, {.b = d, .h = inner});
    EXPECT_TRUE(close(ring.i, pi * (std::pow(dm, 4) - std::pow(im, 4)) / 64)) << d << "/" << inner;
    EXPECT_TRUE(close(ring.a, pi * (dm * dm - im * im) / 4)) << d << "/" << inner;
  }
}

// ---- Worked examples and the suite's conventions -----------------------------

TEST(SectionProperties, WorkedExamplesInMillimetres) {
  struct Case {
    Section_Shapes shape;
    Sizes mm;
    Result expected;
  };
  const double quarter_pi = std::numbers::pi / 4;
  const Case cases[] = {
      {Rectangular_Shaped, {.b = 200, .h = 500}, {0.25 * 0.1 / 12, 0.1, 0.25}},
      {Rectangular_Shaped, {.b = -200, .h = 500}, {-0.25 * 0.1 / 12, -0.1, 0.25}},  // unchecked
      {Inverted_T_Shaped, {.b = 200, .h = 500, .bf = 200, .hf = 120}, {0.25 * 0.1 / 12, 0.1, 0.25}},
      {I_Shaped_Symmetry, {.b = 300, .h = 600, .bf = 300, .hf = 77}, {0.3 * 0.216 / 12, 0.18, 0.3}},
      {Cone_Shape, {.b = 2000, .h = 600, .bf = 2000, .hf = 250}, {2 * 0.216 / 12, 1.2, 0.3}},
      {Circular_Shaped, {.b = 400}, {quarter_pi * 0.0256 / 16, quarter_pi * 0.16, 0.2}},
  };
  for (const Case& c : cases) {
    const Result r = compute(c.shape, c.mm);
    EXPECT_TRUE(close(r.i, c.expected.i) && close(r.a, c.expected.a) && close(r.y, c.expected.y))
        << c.shape << ": I=" << r.i << " A=" << r.a << " Y=" << r.y;
  }
  clsSectionProperties sp;
  compute(sp, Rectangular_Shaped, {.b = 200, .h = 500});
  EXPECT_TRUE(close(sp.dWx_ElasticResistanceMoment(), 0.1 / 12));
}

TEST(SectionProperties, RingKeepsYAtHalfTheInnerDiameter) {
  for (const auto& [outer, inner] : {std::pair{400.0, 300.0}, {1000.0, 100.0}, {800.0, 790.0}}) {
    clsSectionProperties sp;
    const Result r = compute(sp, Ring_Shaped, {.b = outer, .h = inner});
    EXPECT_EQ(r.y, inner * 0.001 / 2) << outer << "/" << inner;
    EXPECT_EQ(sp.dWx_ElasticResistanceMoment(), r.i / (inner * 0.001 / 2)) << outer;
  }
}

TEST(SectionProperties, ShapesWithoutFormulaGiveZeroAndKeepTheArea) {
  const Sizes sizes{.b = 300, .h = 700, .bf = 900, .hf = 100};
  for (const int32_t code : {30270, 30272, 30271, 0, -1}) {
    const auto shape = static_cast<Section_Shapes>(code);
    clsSectionProperties sp;
    EXPECT_EQ(compute(sp, shape, sizes).a, 0) << code;  // nothing computed yet
    compute(sp, Rectangular_Shaped, {.b = 200, .h = 500});
    const Result r = compute(sp, shape, sizes);
    EXPECT_EQ(r.i, 0) << code;
    EXPECT_TRUE(close(r.a, 0.1) && close(r.y, 0.35)) << code << ": A=" << r.a << " Y=" << r.y;
    EXPECT_EQ(sp.dWx_ElasticResistanceMoment(), 0) << code;
  }
}

TEST(SectionProperties, CodesSharingAFormulaAndUnusedDimensions) {
  struct Case {
    Section_Shapes shape, same_as;
    Sizes mm, changed;  // `changed` differs only in dimensions the shape ignores
  };
  const Sizes i{.b = 200, .h = 900, .bf = 500, .hf = 150, .bf1 = 700, .hf1 = 110};
  const Case cases[] = {
      {T_Shaped,
       Inverted_L_Shaped,
       {.b = 250, .h = 700, .bf1 = 800, .hf1 = 120},
       {.b = 250, .h = 700, .bf = 999, .hf = 333, .bf1 = 800, .hf1 = 120, .h1 = 9}},
      {Inverted_L_Shaped,
       T_Shaped,
       {.b = 250, .h = 700, .bf = 1500, .hf = 50, .bf1 = 800, .hf1 = 120},
       {.b = 250, .h = 700, .bf1 = 800, .hf1 = 120}},
      {I_Shaped, I_Shaped_Asymmetric, i, i},
      {I_Shaped_Symmetry,
       I_Shaped_Symmetry,
       {.b = 200, .h = 900, .bf = 500, .hf = 150},
       {.b = 200, .h = 900, .bf = 500, .hf = 150, .bf1 = 1234, .hf1 = 321}},
  };
  for (const Case& c : cases) {
    const Result a = compute(c.shape, c.mm), b = compute(c.same_as, c.changed);
    EXPECT_TRUE(a.i == b.i && a.a == b.a && a.y == b.y) << c.shape << " vs " << c.same_as;
  }
}

TEST(SectionProperties, InvertedShapesOnlyMeasureYFromTheTop) {
  struct Case {
    Section_Shapes upright, inverted;
    Sizes mm;
  };
  const Case cases[] = {
      {Cone_Shape, Inverted_Cone_Shape, {.b = 3000, .h = 800, .bf = 600, .hf = 300}},
      {Stepped_Shape,
       Inverted_Stepped_Shape,
       {.b = 3000, .h = 900, .bf = 1500, .hf = 400, .h1 = 500, .steps = 2}},
      // H is taken as given, even where it is not the sum of the steps.
      {Stepped_Shape,
       Inverted_Stepped_Shape,
       {.b = 3000, .h = 1700, .bf = 1500, .hf = 400, .bf1 = 700, .hf1 = 300, .h1 = 500}},
  };
  for (const Case& c : cases) {
    const Result up = compute(c.upright, c.mm), down = compute(c.inverted, c.mm);
    EXPECT_TRUE(down.i == up.i && down.a == up.a) << c.inverted;
    EXPECT_EQ(down.y, c.mm.h * 0.001 - up.y) << c.inverted;
  }
}

TEST(SectionProperties, TwoStepsOnlyForTwoEveryOtherCountIsThree) {
  Sizes mm{.b = 3000, .h = 1200, .bf = 1800, .hf = 400, .bf1 = 900, .hf1 = 300, .h1 = 500};
  const double two = 3 * 0.5 + 1.8 * 0.4, three = two + 0.9 * 0.3;
  for (const int32_t steps : {2, 3, 0, 1, 4, -2, INT32_MAX}) {
    mm.steps = steps;
    EXPECT_TRUE(close(compute(Stepped_Shape, mm).a, steps == 2 ? two : three)) << steps;
  }
}

TEST(SectionProperties, DivisionByZeroKeepsWhatWasWrittenBefore) {
  struct Case {
    Section_Shapes shape;
    Sizes mm;
    bool in_inertia;  // the fault comes from dIx_InertiaMoment, else only from dWx
    double a, y;      // A and Y after the fault
  };
  const Case cases[] = {
      {Inverted_T_Shaped, {.h = 400}, true, 0, 0.2},
      {T_Shaped, {.h = 400, .bf = 300, .hf = 100}, true, 0, 0.2},
      {I_Shaped_Asymmetric, {.h = 600}, true, 0, 0.3},
      {Cone_Shape, {.h = 600, .hf = 200}, true, 0, 0.3},
      {Inverted_Cone_Shape, {.h = 600}, true, 0, 0.3},
      {Stepped_Shape, {.h = 800, .steps = 2}, true, 0, 0.4},
      {Inverted_Stepped_Shape, {.h = 800}, true, 0, 0.4},
      {Box_Shape, {.h = 1000, .hf = 100, .hf1 = 100}, true, 0, 0.5},
      {Rectangular_Shaped, {}, false, 0, 0},
      {Rectangular_Shaped, {.b = 300}, false, 0, 0},
      {Circular_Shaped, {.h = 300}, false, 0, 0},
      {Ring_Shaped, {.b = 400}, false, std::numbers::pi / 4 * 0.16, 0},  // solid: Y = 0
      {Square_Shaped, {.b = 300}, false, 0.1, 0},
  };
  for (const Case& c : cases) {
    clsSectionProperties sp;
    compute(sp, Rectangular_Shaped, {.b = 200, .h = 500});  // leaves A = 0.1, Y = 0.25
    int faults = 0;
    for (bool modulus : {false, true}) {
      try {
        (void)(modulus ? sp.dWx_ElasticResistanceMoment() : compute(sp, c.shape, c.mm).i);
      } catch (const Fault& f) {
        EXPECT_EQ(f.kind(), FaultKind::DivisionByZero) << c.shape;
        ++faults;
      }
    }
    EXPECT_EQ(faults, c.in_inertia ? 2 : 1) << c.shape;
    EXPECT_TRUE(close(sp.A_SectionArea(), c.a)) << c.shape << ": " << sp.A_SectionArea();
    EXPECT_EQ(sp.Y_CentroidToTensionEdge(), c.y) << c.shape;
  }
}

}  // namespace
}  // namespace zelkora
