// The axial compression check of a column, GB 50010-2010 clause 6.2.15
// (column.h).
#include "column.h"

#include <algorithm>

#include "zelkora/checking/cls_err_chr.h"
#include "zelkora/frame/cls_character.h"
#include "zelkora/frame/material_tables.h"
#include "zelkora/frame/variant.h"
#include "zelkora/grid/form_check.h"

namespace column_form {

using zelkora::Text;

namespace {

// Table 6.2.15: the stability factor φ of a member in compression by l0/b (b
// the shorter side of a rectangular section); l0/b ≤ 8 gives 1.0. Between
// the rows of the table the value is interpolated linearly.
constexpr char16_t kStabilityTable[] =
    u"8|10|12|14|16|18|20|22|24|26|28|30|32|34|36|38|40|42|44|46|48|50;"
    u"1.0|0.98|0.95|0.92|0.87|0.81|0.75|0.70|0.65|0.60|0.56|0.52|0.48|0.44|0.40|0.36|0.32|"
    u"0.29|0.26|0.23|0.21|0.19";

// Clause 6.2.15, note: with more than 3% longitudinal reinforcement the
// area A of the formula is the net area A − As'.
constexpr double kNetAreaRatio = 0.03;

}  // namespace

// [guide:checks]
std::optional<Column> read_column(zelkora::clsGridCell& form, Text& refusal) {
  if (const auto refused = zelkora::grid::check_form_values(form); !refused.empty()) {
    refusal = refused.front().message;
    return std::nullopt;
  }
  std::vector<Text> values;
  form.GetCurrentText(values);
  // A layout overridden by a resource folder may have fewer items.
  if (values.size() < kItems) {
    refusal = u"错误：界面文件 ColumnForm 的数据项少于 8 项。";
    return std::nullopt;
  }
  const zelkora::frame::NumberSymbols symbols = zelkora::clsCharacter().number_symbols();
  const auto number = [&](Item item) {
    return zelkora::frame::Variant(values[item]).number(symbols).value_or(0);
  };
  Column column{.concrete = static_cast<int32_t>(number(kConcrete)),
                .steel = values[kSteel],
                .b = number(kWidth),
                .h = number(kDepth),
                .l0 = number(kLength),
                .as = number(kSteelArea),
                .n = number(kForce)};
  // The grades are good when the material tables know them.
  zelkora::clsErrChr err;
  if (!zelkora::frame::dConcreteFc(column.concrete)) {
    err.GenMsgErrorW(200, form.tGetCaption(kConcrete), values[kConcrete], {}, {}, true);
  } else if (!zelkora::frame::dSteelFyc(column.steel)) {
    err.GenMsgErrorW(200, form.tGetCaption(kSteel), values[kSteel], {}, {}, true);
  } else {
    return column;
  }
  refusal = err.tError_Txt();
  return std::nullopt;
}
// [/guide:checks]

// [guide:calculation]
Outcome check_column(const Column& c) {
  zelkora::clsCharacter chr;
  zelkora::clsErrChr err;
  Outcome out;
  const double fc = *zelkora::frame::dConcreteFc(c.concrete);  // Table 4.1.4-1
  const double fy = *zelkora::frame::dSteelFyc(c.steel);       // Table 4.2.3-1, fy'
  const double ratio = c.l0 / std::min(c.b, c.h);
  double phi = 1.0;
  if (ratio > 8 && err.GenCheckInterpolateErrW(kStabilityTable, u"l0/b", ratio, phi, true) != 0) {
    out.refusal = err.tError_Txt();
    return out;
  }
  const double rho = c.as / (c.b * c.h);
  const double area = rho > kNetAreaRatio ? c.b * c.h - c.as : c.b * c.h;
  const double nu = 0.9 * phi * (fc * area + fy * c.as) / 1000;  // formula 6.2.15, kN
  out.passes = c.n <= nu;
  // [/guide:calculation]

  // [guide:report]
  out.lines = {u"_bb(轴心受压构件的正截面受压承载力)bb_（GB 50010-2010 第 6.2.15 条）",
               chr.tExpStr(u"f_ub(c)ub_", fc, u"mpad_1") + u"，" +
                   chr.tExpStr(u"f'_ub(y)ub_", fy, u"mpad_0"),
               chr.tExpStr(u"l_ub(0)ub_/b", ratio, u"2") + u"，" + chr.tExpStr(u"φ", phi, u"3"),
               chr.tExpStr(u"ρ'", rho * 100, u"2") + u"%，" + chr.tExpStr(u"A", area, u"mm2d"),
               chr.tExpStr(u"N_ub(u)ub_ ＝ 0.9φ(f_ub(c)ub_A + f'_ub(y)ub_A'_ub(s)ub_)", nu, u"knd"),
               chr.tExpStr(u"N", c.n, u"knd") +
                   (out.passes ? u" ≤ N_ub(u)ub_，满足要求。" : u" ＞ N_ub(u)ub_，不满足要求。")};
  return out;
}
// [/guide:report]

}  // namespace column_form
