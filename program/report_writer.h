// What every calculation's report writer does with its lines: a text of
// several report lines (joined by the continuation) adds each; headings
// numbered "一、", "二、"...; equations broken to the line width; a check's
// conclusion (满足, or 不满足 in bold, remembered); the conclusion that lists
// what failed; tables padded by the library's list output.
#pragma once

#include <cstdint>
#include <vector>

#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/text.h"

namespace zelkora::desk {

class ReportWriter {
 protected:
  explicit ReportWriter(clsCharacter& chr) : chr_(chr) {}

  void line(TextView text) {
    for (Text& one : split_text(text, chr_.tConEnter1())) {
      if (!one.empty()) lines_.push_back(std::move(one));
    }
  }
  void heading(TextView title) {
    line(chr_.tChrSerial(++section_) + u"_bb(" + Text(title) + u")bb_");
  }
  // An equation with its numbers, broken to the line width.
  void equation(TextView text) { line(chr_.SplitEQ(text)); }
  // A check's conclusion, remembered for the summary.
  void conclude(bool ok, TextView what) {
    line((ok ? u"满足：" : u"_bb(不满足)bb_：") + Text(what));
    if (!ok) failed_.emplace_back(what);
  }
  // The last heading: "各项验算均满足。" or each check that failed.
  void summary() {
    heading(u"结论");
    if (failed_.empty()) {
      line(u"各项验算均满足。");
    } else {
      for (const Text& one : failed_) line(u"_bb(不满足)bb_：" + one);
    }
  }
  // Rows of cells in columns `widths` wide (display cells).
  void table(const std::vector<std::vector<Text>>& rows, const std::vector<int32_t>& widths) {
    const auto n = static_cast<int32_t>(widths.size());
    chr_.ListOut_Ubound(n - 1);
    chr_.ListOut_Initialize(0, 10);
    for (int32_t i = 0; i < n; ++i) chr_.ListOut_Index_Width(i, widths[static_cast<std::size_t>(i)]);
    for (const auto& cells : rows) {
      Text row;
      chr_.TextAddRowA(row, cells, n - 1);
      line(row);
    }
  }

  clsCharacter& chr_;
  std::vector<Text> lines_;
  std::vector<Text> failed_;
  int32_t section_ = 0;
};

}  // namespace zelkora::desk
