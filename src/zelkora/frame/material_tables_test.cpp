// Tests of the GB 50010-2010 (2015 edition) material values against the
// code's own tables, typed here from the code.
#include "zelkora/frame/material_tables.h"

#include <gtest/gtest.h>

namespace zelkora::frame {
namespace {

TEST(MaterialTables, ConcreteByGrade) {
  // fck: Table 4.1.3-1; ftk: Table 4.1.3-2; fc: Table 4.1.4-1; ft: Table
  // 4.1.4-2; Ec: Table 4.1.5; α1, β1: clause 6.2.6 (straight line C50..C80).
  struct Row { int32_t grade; double fck, ftk, fc, ft, ec, alpha1, beta1; };
  const Row rows[] = {
      {15, 10.0, 1.27, 7.2, 0.91, 2.20e4, 1.0, 0.8},
      {20, 13.4, 1.54, 9.6, 1.10, 2.55e4, 1.0, 0.8},
      {25, 16.7, 1.78, 11.9, 1.27, 2.80e4, 1.0, 0.8},
      {30, 20.1, 2.01, 14.3, 1.43, 3.00e4, 1.0, 0.8},
      {35, 23.4, 2.20, 16.7, 1.57, 3.15e4, 1.0, 0.8},
      {40, 26.8, 2.39, 19.1, 1.71, 3.25e4, 1.0, 0.8},
      {45, 29.6, 2.51, 21.1, 1.80, 3.35e4, 1.0, 0.8},
      {50, 32.4, 2.64, 23.1, 1.89, 3.45e4, 1.0, 0.8},
      {55, 35.5, 2.74, 25.3, 1.96, 3.55e4, 0.99, 0.79},
      {60, 38.5, 2.85, 27.5, 2.04, 3.60e4, 0.98, 0.78},
      {65, 41.5, 2.93, 29.7, 2.09, 3.65e4, 0.97, 0.77},
      {70, 44.5, 2.99, 31.8, 2.14, 3.70e4, 0.96, 0.76},
      {75, 47.4, 3.05, 33.8, 2.18, 3.75e4, 0.95, 0.75},
      {80, 50.2, 3.11, 35.9, 2.22, 3.80e4, 0.94, 0.74},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.grade);
    EXPECT_EQ(dConcreteFck(r.grade), r.fck);
    EXPECT_EQ(dConcreteFtk(r.grade), r.ftk);
    EXPECT_EQ(dConcreteFc(r.grade), r.fc);
    EXPECT_EQ(dConcreteFt(r.grade), r.ft);
    EXPECT_EQ(dConcreteEc(r.grade), r.ec);
    EXPECT_EQ(dConcreteAlpha1(r.grade), r.alpha1);
    EXPECT_EQ(dConcreteBeta1(r.grade), r.beta1);
  }
  for (int32_t grade : {10, 85, 32, 0, -30}) {
    SCOPED_TRACE(grade);
    EXPECT_FALSE(dConcreteFck(grade) || dConcreteFtk(grade) || dConcreteFc(grade) ||
                 dConcreteFt(grade) || dConcreteEc(grade) || dConcreteAlpha1(grade) ||
                 dConcreteBeta1(grade));
  }
}

TEST(MaterialTables, SteelByName) {
  // fyk: Table 4.2.2-1; fy, fy': Table 4.2.3-1 (2015 edition); Es: Table 4.2.5.
  struct Row { const char16_t* name; double fyk, fy, fyc, es; };
  const Row rows[] = {
      {u"HPB300", 300, 270, 270, 2.10e5},  {u"HRB335", 335, 300, 300, 2.00e5},
      {u"HRBF335", 335, 300, 300, 2.00e5}, {u"HRB400", 400, 360, 360, 2.00e5},
      {u"HRBF400", 400, 360, 360, 2.00e5}, {u"RRB400", 400, 360, 360, 2.00e5},
      {u"HRB500", 500, 435, 435, 2.00e5},  {u"HRBF500", 500, 435, 435, 2.00e5},
      {u"HRB 400", 400, 360, 360, 2.00e5}, {u" HRB500 ", 500, 435, 435, 2.00e5},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(&r - rows);
    EXPECT_EQ(dSteelFyk(r.name), r.fyk);
    EXPECT_EQ(dSteelFy(r.name), r.fy);
    EXPECT_EQ(dSteelFyc(r.name), r.fyc);
    EXPECT_EQ(dSteelEs(r.name), r.es);
  }
  for (TextView name : {u"hrb400", u"HRB", u"", u"HPB235", u"HRB400E", u"Q235"}) {
    EXPECT_FALSE(dSteelFyk(name) || dSteelFy(name) || dSteelFyc(name) || dSteelEs(name));
  }
}

TEST(MaterialTables, GradeTextsAndNames) {
  const std::pair<TextView, std::optional<int32_t>> texts[] = {
      {u"C30", 30},   {u" c55 ", 55}, {u"80", 80}, {u"C32", {}},  {u"C85", {}},  {u"C30.5", {}},
      {u"30abc", {}}, {u"C", {}},     {u"", {}},   {u"C-30", {}}, {u"C030", {}}, {u"C３０", {}},
  };
  for (const auto& [text, grade] : texts) EXPECT_EQ(iConcreteGrade(text), grade) << to_utf8(text);
  // Every name listed has its values.
  const std::vector<Text> names = SteelGradeNames();
  EXPECT_EQ(names.size(), 8u);
  for (const Text& name : names) EXPECT_TRUE(dSteelFyc(name) && dXiB(80, name)) << to_utf8(name);
}

TEST(MaterialTables, XiB) {
  // The table of ξb for concrete up to C50 printed in teaching material on
  // GB 50010-2010 (混凝土结构设计原理): HPB300 0.576, HRB335 0.550,
  // HRB400/RRB400 0.518, HRB500 0.482.
  struct Row { int32_t grade; const char16_t* steel; double xib; };
  const Row rows[] = {
      {15, u"HPB300", 0.576}, {30, u"HPB300", 0.576}, {50, u"HPB300", 0.576},
      {20, u"HRB335", 0.550}, {50, u"HRBF335", 0.550}, {25, u"HRB400", 0.518},
      {40, u"RRB400", 0.518}, {50, u"HRBF400", 0.518}, {30, u"HRB500", 0.482},
      {50, u"HRBF500", 0.482},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.grade);
    ASSERT_TRUE(dXiB(r.grade, r.steel));
    EXPECT_NEAR(*dXiB(r.grade, r.steel), r.xib, 0.0005);
  }
  // Above C50 ξb falls with β1 and εcu: 6.2.7-1 worked by hand, e.g. C80
  // HRB400: 0.74 / (1 + 360 / (2.0E5 × 0.0030)) = 0.4625.
  const Row high[] = {{60, u"HPB300", 0.55643}, {60, u"HRB400", 0.49920}, {70, u"HRB335", 0.51217},
                      {70, u"HRB400", 0.48082}, {80, u"HRB400", 0.46250}, {80, u"HRB500", 0.42899}};
  for (const Row& r : high) {
    SCOPED_TRACE(r.grade);
    EXPECT_NEAR(dXiB(r.grade, r.steel).value_or(0), r.xib, 0.00001);
  }
  EXPECT_FALSE(dXiB(85, u"HRB400"));
  EXPECT_FALSE(dXiB(30, u"hrb400"));
}

}  // namespace
}  // namespace zelkora::frame
