/// The material values of GB 50010-2010 (2015 edition), 混凝土结构设计规范, for
/// every calculation program of the suite: concrete strengths and modulus by
/// grade, the rectangular stress block (α1, β1), rebar strengths and modulus by
/// grade name, and the relative balanced depth ξb.
///
/// Units: strengths and moduli in N/mm² (MPa); α1, β1 and ξb without unit.
///
/// A concrete grade is the number after "C": one of 15, 20, ..., 80. A rebar
/// grade is its name as the suite writes it, case-sensitive: "HPB300",
/// "HRB335", "HRBF335", "HRB400", "HRBF400", "RRB400", "HRB500", "HRBF500";
/// blanks in the name are removed before it is looked up ("HRB 400" is
/// "HRB400", "hrb400" is unknown). Anything else has no value: every function
/// answers std::nullopt then, never 0. @file
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "zelkora/platform/text.h"

namespace zelkora::frame {

/// The grade of a concrete grade text: "C30", "c30" or "30", blanks around
/// it allowed, when the tables hold that grade ("C32", "C30.5", "30abc" have
/// none).
std::optional<int32_t> iConcreteGrade(TextView text);

/// The rebar grade names that have values, in the order of Table 4.2.3-1, for
/// a message or a list of choices.
std::vector<Text> SteelGradeNames();

/// Concrete, by grade (15 for C15 ... 80 for C80).
std::optional<double> dConcreteFck(int32_t grade);     ///< Table 4.1.3-1
std::optional<double> dConcreteFtk(int32_t grade);     ///< Table 4.1.3-2
std::optional<double> dConcreteFc(int32_t grade);      ///< Table 4.1.4-1
std::optional<double> dConcreteFt(int32_t grade);      ///< Table 4.1.4-2
std::optional<double> dConcreteEc(int32_t grade);      ///< Table 4.1.5 (3.00E4 for C30)
std::optional<double> dConcreteAlpha1(int32_t grade);  ///< clause 6.2.6
std::optional<double> dConcreteBeta1(int32_t grade);   ///< clause 6.2.6

/// Rebar, by grade name.
std::optional<double> dSteelFyk(TextView grade);  ///< Table 4.2.2-1
std::optional<double> dSteelFy(TextView grade);   ///< Table 4.2.3-1, tension
std::optional<double> dSteelFyc(TextView grade);  ///< Table 4.2.3-1, compression fy'
std::optional<double> dSteelEs(TextView grade);   ///< Table 4.2.5

/// ξb = β1 / (1 + fy / (Es·εcu)), εcu = 0.0033 − (fcu,k − 50)×10⁻⁵ and not
/// above 0.0033 (clause 6.2.7, formulas 6.2.7-1 and 6.2.1-5): the value of
/// the formula, not rounded. No value when either grade has none.
std::optional<double> dXiB(int32_t concrete_grade, TextView steel_grade);

}  // namespace zelkora::frame
