// beam_check: the tension reinforcement of a rectangular beam under a bending
// moment, as a calculation program of the suite would write it on Zelkora:
// the entries are checked with their check expressions, refused entries
// explained in the suite's words, the material values taken from the
// library's tables of GB 50010, numbers written with their units.
//
//   beam_check B H GRADE STEEL M      (mm, mm, "C30", "HRB400", kN·m)
#include <cmath>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "zelkora/checking/cls_err_chr.h"
#include "zelkora/document/report_document.h"
#include "zelkora/frame/cls_character.h"
#include "zelkora/frame/error_numbers.h"
#include "zelkora/frame/material_tables.h"
#include "zelkora/section/cls_section_properties.h"

namespace {

using zelkora::Text;

void print(const Text& text) {
  zelkora::clsCharacter chr;
  const zelkora::Text plain =
      zelkora::document::grade_symbols_as_letters(chr.tDelSuperSubSign(text));
  std::puts(zelkora::to_utf8(plain).c_str());
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 6) {
    std::fputs("usage: beam_check B H GRADE STEEL M\n", stderr);
    return 2;
  }
  zelkora::clsErrChr err;
  zelkora::clsCharacter chr;
  const Text b_text = zelkora::from_utf8(argv[1]), h_text = zelkora::from_utf8(argv[2]);
  const Text grade_text = zelkora::from_utf8(argv[3]);
  const Text steel = zelkora::from_utf8(argv[4]), m_text = zelkora::from_utf8(argv[5]);

  // Every entry is checked as the property grid would check it.
  struct Entry {
    const char16_t* check;
    const char16_t* caption;
    Text text;
  };
  const Entry entries[] = {{u"S>=150", u"梁宽 b", b_text},
                           {u"S>=250", u"梁高 h", h_text},
                           {u"S>0", u"弯矩设计值 M", m_text}};
  bool refused = false;
  for (const Entry& e : entries) {
    if (err.GenCheckCboEnterNumErrW(e.check, e.caption, e.text, true) != 0) {
      print(err.tError_Txt());
      refused = true;
    }
  }
  // The grades: those the library holds values for.
  const std::optional<int32_t> grade = zelkora::frame::iConcreteGrade(grade_text);
  if (!grade) {
    err.GenMsgErrorW(zelkora::error_id::kNotAGrade, u"混凝土强度等级", grade_text, {}, {}, true);
    print(err.tError_Txt());
    refused = true;
  }
  const std::optional<double> fy = zelkora::frame::dSteelFy(steel);
  if (!fy) {
    Text names;
    for (const Text& name : zelkora::frame::SteelGradeNames()) {
      names += (names.empty() ? u"" : u"、") + name;
    }
    err.GenMsgErrorW(zelkora::error_id::kNotInList, u"钢筋牌号", steel, u"（" + names + u"）", {},
                     true);
    print(err.tError_Txt());
    refused = true;
  }
  if (refused) return 1;

  const double b = std::stod(argv[1]), h = std::stod(argv[2]), m = std::stod(argv[5]);
  const double fc = *zelkora::frame::dConcreteFc(*grade);
  const double alpha1 = *zelkora::frame::dConcreteAlpha1(*grade);
  const double xi_b = *zelkora::frame::dXiB(*grade, steel);
  const double h0 = h - 40;
  const double alpha_s = m * 1e6 / (alpha1 * fc * b * h0 * h0);
  const double xi = 1 - std::sqrt(std::max(0.0, 1 - 2 * alpha_s));

  chr.TxtClear();
  print(chr.tExpStr(u"梁宽 b", b, u"mmd"));
  print(chr.tExpStr(u"梁高 h", h, u"mmd"));
  print(chr.tExpStr(u"截面有效高度 h_ub(0)ub_", h0, u"mmd"));
  print(chr.tExpStr(u"f_ub(c)ub_", fc, u"mpad_1"));
  print(chr.tExpStr(u"f_ub(y)ub_", *fy, u"mpad_0"));
  print(chr.tExpStr(u"α_ub(s)ub_", alpha_s, u"4"));
  print(chr.tExpStr(u"ξ", xi, u"3"));
  if (2 * alpha_s >= 1 || xi > xi_b) {
    // The design-rule message of the library: ξ beyond the balanced limit.
    err.GenMsgErrorW(zelkora::error_id::kXiAboveBalanced, u"", chr.tFmt(xi, u"3"), {},
                     chr.tFmt(xi_b, u"3"), true);
    print(err.tError_Txt());
    return 1;
  }
  const double as = alpha1 * fc * b * xi * h0 / *fy;
  print(chr.tExpStr(u"A_ub(s)ub_", as, u"mm2d"));
  for (int32_t n = 2; n <= 8; ++n) {
    const double d = chr.dGjDiameterFromAsW(as, n);
    if (d <= 25) {
      print(u"选用 " + zelkora::from_utf8(std::to_string(n)) + u"Φ" + chr.tFmt(d, u"0"));
      break;
    }
  }
  zelkora::clsSectionProperties section;
  section.Section_Shape(zelkora::Rectangular_Shaped);
  section.B_SectionWidth(b);
  section.H_SectionDepth(h);
  print(chr.tExpStr(u"截面惯性矩 I", section.dIx_InertiaMoment(), u"0.000E+00"));
  return 0;
}
