// The material values of GB 50010-2010 (2015 edition); see the header.
#include "zelkora/frame/material_tables.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace zelkora::frame {
namespace {

// One column per grade C15, C20, ..., C80.
using ConcreteRow = std::array<double, 14>;

// Table 4.1.3-1: fck, N/mm².
constexpr ConcreteRow kFck = {10.0, 13.4, 16.7, 20.1, 23.4, 26.8, 29.6,
                              32.4, 35.5, 38.5, 41.5, 44.5, 47.4, 50.2};
// Table 4.1.3-2: ftk, N/mm².
constexpr ConcreteRow kFtk = {1.27, 1.54, 1.78, 2.01, 2.20, 2.39, 2.51,
                              2.64, 2.74, 2.85, 2.93, 2.99, 3.05, 3.11};
// Table 4.1.4-1: fc, N/mm².
constexpr ConcreteRow kFc = {7.2,  9.6,  11.9, 14.3, 16.7, 19.1, 21.1,
                             23.1, 25.3, 27.5, 29.7, 31.8, 33.8, 35.9};
// Table 4.1.4-2: ft, N/mm².
constexpr ConcreteRow kFt = {0.91, 1.10, 1.27, 1.43, 1.57, 1.71, 1.80,
                             1.89, 1.96, 2.04, 2.09, 2.14, 2.18, 2.22};
// Table 4.1.5: Ec, N/mm² (the table gives ×10⁴ N/mm²).
constexpr ConcreteRow kEc = {2.20e4, 2.55e4, 2.80e4, 3.00e4, 3.15e4, 3.25e4, 3.35e4,
                             3.45e4, 3.55e4, 3.60e4, 3.65e4, 3.70e4, 3.75e4, 3.80e4};
// Clause 6.2.6: α1 1.0 up to C50, 0.94 at C80, straight line between.
constexpr ConcreteRow kAlpha1 = {1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0,
                                 1.0, 0.99, 0.98, 0.97, 0.96, 0.95, 0.94};
// Clause 6.2.6: β1 0.8 up to C50, 0.74 at C80, straight line between.
constexpr ConcreteRow kBeta1 = {0.8, 0.8, 0.8, 0.8, 0.8, 0.8, 0.8,
                                0.8, 0.79, 0.78, 0.77, 0.76, 0.75, 0.74};

std::optional<double> concrete(const ConcreteRow& row, int32_t grade) {
  if (grade < 15 || grade > 80 || grade % 5 != 0) return std::nullopt;
  return row[static_cast<size_t>((grade - 15) / 5)];
}

struct Steel {
  std::u16string_view name;
  double fyk;  // Table 4.2.2-1
  double fy;   // Table 4.2.3-1
  double fyc;  // Table 4.2.3-1 (the 2015 edition's 435 for HRB500; 410 in 2010)
  double es;   // Table 4.2.5
};

constexpr std::array<Steel, 8> kSteel = {{
    {u"HPB300", 300, 270, 270, 2.10e5},
    {u"HRB335", 335, 300, 300, 2.00e5},
    {u"HRBF335", 335, 300, 300, 2.00e5},
    {u"HRB400", 400, 360, 360, 2.00e5},
    {u"HRBF400", 400, 360, 360, 2.00e5},
    {u"RRB400", 400, 360, 360, 2.00e5},
    {u"HRB500", 500, 435, 435, 2.00e5},
    {u"HRBF500", 500, 435, 435, 2.00e5},
}};

const Steel* steel(TextView grade) {
  Text name(grade);
  name.erase(std::remove(name.begin(), name.end(), u' '), name.end());
  for (const Steel& s : kSteel)
    if (s.name == name) return &s;
  return nullptr;
}

}  // namespace

std::optional<int32_t> iConcreteGrade(TextView text) {
  TextView t = trim(text);
  if (!t.empty() && (t.front() == u'C' || t.front() == u'c')) t.remove_prefix(1);
  if (t.empty() || t.size() > 2) return std::nullopt;
  int32_t grade = 0;
  for (const char16_t c : t) {
    if (c < u'0' || c > u'9') return std::nullopt;
    grade = grade * 10 + (c - u'0');
  }
  if (!concrete(kFc, grade)) return std::nullopt;
  return grade;
}

std::vector<Text> SteelGradeNames() {
  std::vector<Text> names;
  for (const Steel& s : kSteel) names.emplace_back(s.name);
  return names;
}

std::optional<double> dConcreteFck(int32_t grade) { return concrete(kFck, grade); }
std::optional<double> dConcreteFtk(int32_t grade) { return concrete(kFtk, grade); }
std::optional<double> dConcreteFc(int32_t grade) { return concrete(kFc, grade); }
std::optional<double> dConcreteFt(int32_t grade) { return concrete(kFt, grade); }
std::optional<double> dConcreteEc(int32_t grade) { return concrete(kEc, grade); }
std::optional<double> dConcreteAlpha1(int32_t grade) { return concrete(kAlpha1, grade); }
std::optional<double> dConcreteBeta1(int32_t grade) { return concrete(kBeta1, grade); }

std::optional<double> dSteelFyk(TextView grade) {
  const Steel* s = steel(grade);
  return s ? std::optional<double>(s->fyk) : std::nullopt;
}
std::optional<double> dSteelFy(TextView grade) {
  const Steel* s = steel(grade);
  return s ? std::optional<double>(s->fy) : std::nullopt;
}
std::optional<double> dSteelFyc(TextView grade) {
  const Steel* s = steel(grade);
  return s ? std::optional<double>(s->fyc) : std::nullopt;
}
std::optional<double> dSteelEs(TextView grade) {
  const Steel* s = steel(grade);
  return s ? std::optional<double>(s->es) : std::nullopt;
}

// Clause 6.2.7 (6.2.7-1), with εcu of clause 6.2.1 (6.2.1-5).
std::optional<double> dXiB(int32_t concrete_grade, TextView steel_grade) {
  const auto beta1 = dConcreteBeta1(concrete_grade);
  const Steel* s = steel(steel_grade);
  if (!beta1 || !s) return std::nullopt;
  const double ecu = std::min(0.0033, 0.0033 - (concrete_grade - 50) * 1e-5);
  return *beta1 / (1 + s->fy / (s->es * ecu));
}

}  // namespace zelkora::frame
