// The long report of the document benchmarks: about 100 A4 pages.
#pragma once

#include <string>

#include "zelkora/frame/cls_character.h"

namespace zelkora::bench {

// The report: per section a heading, 15 lines of text with sub- and
// superscripts and grade symbols, every second section an equation broken
// over two lines, and a table of five rows.
inline Text hundred_pages() {
  clsCharacter chr(platform::Platform::headless());
  chr.bSuperSub(true);
  chr.CalHead(u"钢筋混凝土梁配筋计算", u"三号楼", {59899, 59009}, u"2026-11-26");
  chr.ListOut_Ubound(3);
  chr.ListOut_Initialize(0, 14, zkRightJustify, 1);
  chr.ListOut_Index_Width(0, 28);
  chr.ListOut_Index_Align(0, zkLeftJustify);
  for (int s = 1; s <= 200; ++s) {
    chr.Txt(chr.tChrSerial(s) + u"_bb(截面 KL-" + from_utf8(std::to_string(s)) + u")bb_" +
            chr.tConEnter1());
    for (int i = 0; i < 15; ++i) {
      chr.Txt(
          u"纵筋 4\uE00220，A_ub(s)ub_ ＝ 1256mm_up(2)up_，h_ub(0)ub_ ＝ 465mm，混凝土 "
          u"C30：f_ub(c)ub_ ＝ 14.3MPa" +
          chr.tConEnter1());
    }
    if (s % 2 == 0) {
      chr.SplitLineCalEQ(
          u"A_ub(s)ub_ ＝ f_ub(c)ub_·b·ξ·h_ub(0)ub_ / f_ub(y)ub_ ＝ 14.3 × 250 × 0.1792 × 465 / 360"
          u" ＝ 827mm_up(2)up_ ＞ A_ub(s,min)ub_ ＝ 0.2% × 250 × 500 ＝ 250mm_up(2)up_");
    }
    chr.ListOut_TextAddRow({u"项目", u"计算值", u"限值", u"结论"}, 0, u"    ");
    for (int r = 0; r < 4; ++r) {
      chr.ListOut_TextAddRow({u"配筋率 ρ_ub(min)ub_", u"0.68%", u"0.20%", u"满足"}, 0, u"    ");
    }
  }
  return chr.Txt();
}

}  // namespace zelkora::bench
