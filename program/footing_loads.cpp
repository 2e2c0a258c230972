// The spread footing's loads from its table of load cases; see the header.
#include "program/footing_loads.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "program/form_text.h"
#include "program/load_combination.h"
#include "zelkora/checking/cls_err_chr.h"
#include "zelkora/datafile/cls_load_save.h"
#include "zelkora/datafile/foundation_data.h"
#include "zelkora/platform/headless/headless_controls.h"

namespace zelkora::desk {

namespace {

constexpr std::size_t kEditionItem = 18, kPsiCItem = 19, kSafetyClassItem = 20,
                      kDesignLifeItem = 30;
// GB 50009-2012 8.1.4: the wind's combination, frequent and quasi-permanent
// value factors.
constexpr double kWindPsiC = 0.6, kWindPsiF = 0.4, kWindPsiQ = 0.0;
constexpr int kMostCasesOfAKind = 4;

Text item(const std::vector<Text>& values, std::size_t at) {
  return at < values.size() ? Text(trim(values[at])) : Text();
}

Text number_text(int n) { return from_utf8(std::to_string(n)); }

}  // namespace

FootingLoadSet footing_loads(const std::vector<Text>& values, const CaseRows& cases,
                             const clsCharacter& chr) {
  const auto number = [&](std::size_t at) { return number_in(item(values, at), chr); };
  FootingLoadSet set;
  // The cells, read and checked as the library reads a foundation table.
  platform::headless::MemoryListView table;
  table.columns = kCaseColumns;
  set_case_rows(table, cases);
  clsLoadSave reader;
  Array2<Text> cells;
  Array2<double> forces;
  std::vector<int16_t> kinds;
  if (!reader.ReadCellToArray_Gk_Nl_Text(table, cells, forces, kinds)) {
    clsErrChr errors;
    Text message;
    errors.GenMsgErrorW(reader.last_error(), reader.error_place(), reader.error_cell(), {}, {},
                        true, message);
    set.faults.push_back(u"荷载工况表" +
                         (reader.error_place().empty() ? Text() : reader.error_place()) + u"：" +
                         message);
    return set;
  }

  Options options;
  const Text edition = item(values, kEditionItem);
  if (edition == u"GB 50009-2012") {
    options.edition = Edition::kGB50009;
    options.gamma_g = 1.2;  // GB 50009 3.2.4-1
    options.gamma_q = 1.4;  // GB 50009 3.2.4-2
  } else if (edition == u"GB 55001-2021") {
    options.edition = Edition::kGB55001;
    options.gamma_g = 1.3;
    options.gamma_q = 1.5;
  } else {
    set.faults.push_back(u"执行规范“" + edition + u"”应为 GB 50009-2012 或 GB 55001-2021。");
  }
  const std::optional<double> psi_c = number(kPsiCItem);
  if (!psi_c || !(*psi_c > 0 && *psi_c <= 1)) {
    set.faults.push_back(u"活荷载的组合值系数 ψc“" + item(values, kPsiCItem) +
                         u"”应在 0 与 1.0 之间。");
  }
  const Text safety = item(values, kSafetyClassItem);
  if (safety != u"一级" && safety != u"二级" && safety != u"三级") {
    set.faults.push_back(u"结构的安全等级“" + safety + u"”应为一级、二级或三级。");
  }
  options.gamma_0 = safety == u"一级" ? 1.1 : 1.0;
  const std::optional<double> years = number(kDesignLifeItem);
  options.gamma_l = years ? design_life_factor(*years) : 0;
  if (!(options.gamma_l > 0)) {
    set.faults.push_back(u"设计使用年限“" + item(values, kDesignLifeItem) +
                         u"”应在 5 至 100 年之间。");
  }
  options.frequent = false;

  std::vector<Action> actions;
  for (int32_t i = 0; i <= cells.U1; ++i) {
    Action action;
    action.name = Text(trim(cells(i, 0)));
    const auto kind = static_cast<datafile::FoundationLoadKind>(kinds[static_cast<std::size_t>(i)]);
    switch (kind) {
      case datafile::FoundationLoadKind::kPermanent:
        action.kind = ActionKind::kPermanent;
        break;
      case datafile::FoundationLoadKind::kVariable:
        action.kind = ActionKind::kVariable;
        action.psi_c = psi_c.value_or(0);
        break;
      case datafile::FoundationLoadKind::kWind:
        action.kind = ActionKind::kWind;
        action.psi_c = kWindPsiC;
        action.psi_f = kWindPsiF;
        action.psi_q = kWindPsiQ;
        options.wind = true;
        break;
      case datafile::FoundationLoadKind::kSeismic:
        set.faults.push_back(u"荷载工况“" + action.name +
                             u"”为地震作用：本程序不作地基基础的抗震验算，请删去该工况。");
        continue;
    }
    for (int32_t c = 0; c <= forces.U2; ++c) action.effects.push_back(forces(i, c));
    actions.push_back(std::move(action));
  }
  // Every set of the variable cases with each wind case is combined, so the
  // combinations (and the report) double with each variable case: a footing
  // takes at most four of each.
  for (const auto& [kind, name] :
       {std::pair{ActionKind::kVariable, u"可变荷载"}, std::pair{ActionKind::kWind, u"风荷载"}}) {
    const auto n = std::count_if(actions.begin(), actions.end(),
                                 [kind = kind](const Action& a) { return a.kind == kind; });
    if (n > kMostCasesOfAKind) {
      set.faults.push_back(Text(name) + u"的工况有 " + number_text(static_cast<int>(n)) +
                           u" 个，本程序最多 " + number_text(kMostCasesOfAKind) +
                           u" 个：请合并同时作用的工况。");
    }
  }
  if (!set.faults.empty()) return set;

  std::vector<Text> faults;
  const std::vector<Combination> combinations = combine(actions, options, faults);
  for (Text& fault : faults) set.faults.push_back(std::move(fault));
  if (!set.faults.empty()) return set;

  set.source.code = options.edition == Edition::kGB50009 ? u"GB 50009-2012" : u"GB 55001-2021";
  set.source.gamma_0 = options.gamma_0;
  set.source.gamma_l = options.gamma_l;
  for (int32_t i = 0; i <= cells.U1; ++i) {
    std::vector<Text> row;
    for (int32_t c = 0; c <= cells.U2; ++c) row.emplace_back(trim(cells(i, c)));
    set.source.cases.push_back(std::move(row));
  }
  int standard = 0, fundamental = 0;
  for (const bool standard_pass : {true, false}) {
    for (const Combination& c : combinations) {
      const bool is_standard = c.kind == CombinationKind::kStandard;
      if (is_standard != standard_pass ||
          (!is_standard && c.kind != CombinationKind::kFundamental)) {
        continue;
      }
      FootingLoad load;
      load.name =
          (is_standard ? u"标准" + number_text(++standard) : u"基本" + number_text(++fundamental));
      load.standard = is_standard;
      load.N = c.effects[0];
      load.Mx = c.effects[1];
      load.My = c.effects[2];
      load.Vx = c.effects[3];
      load.Vy = c.effects[4];
      set.source.definitions.push_back(load.name + u" ＝ " + c.label);
      set.loads.push_back(std::move(load));
    }
  }
  return set;
}

FootingSketch footing_sketch(const std::vector<Text>& values, const CaseRows& cases,
                             const clsCharacter& chr) {
  FootingSketch sketch;
  const FootingInput in = footing_input(values, chr);
  sketch.bc = in.bc;
  sketch.hc = in.hc;
  sketch.ey = in.e;
  sketch.b = in.b.value_or(0);
  sketch.l = in.l.value_or(0);
  const FootingLoadSet set = footing_loads(values, cases, chr);
  if (!set.faults.empty()) return sketch;
  const FootingDesign design = design_footing(in, set.loads);
  if (!design.faults.empty() || design.governing_pmax < 0) return sketch;
  sketch.b = design.b;
  sketch.l = design.l;
  const FootingPressure& p = design.pressures[static_cast<std::size_t>(design.governing_pmax)];
  const double b = design.b / 1000, l = design.l / 1000;  // m
  if (p.full_contact) {
    // GB 50007 5.2.2-2, -3 along each centre line: p ± M/W.
    const double along_x = 6 * p.my / (l * b * b), along_y = 6 * p.mx / (b * l * l);
    sketch.along_b = FootingSketch::Profile{p.p - along_x, p.p + along_x, design.b};
    sketch.along_l = FootingSketch::Profile{p.p - along_y, p.p + along_y, design.l};
  } else {
    // 5.2.2-4: a triangle over 3a from the pressed edge, in the direction of
    // the eccentricity (a biaxial lift-off is refused by the design).
    const double contact = 3 * p.a * 1000;
    const bool along_x = std::abs(p.ex) >= std::abs(p.ey);
    const bool towards_end = (along_x ? p.ex : p.ey) > 0;
    const FootingSketch::Profile triangle{towards_end ? 0.0 : p.pmax, towards_end ? p.pmax : 0.0,
                                          contact};
    (along_x ? sketch.along_b : sketch.along_l) = triangle;
  }
  sketch.caption = u"基础平面及基底压力（kPa，" + p.name + u"）";
  return sketch;
}

std::vector<Text> footing_calculation(const std::vector<Text>& values, const CaseRows& cases,
                                      clsCharacter& chr) {
  FootingLoadSet set = footing_loads(values, cases, chr);
  return footing_report(values, set.loads, chr, set.faults.empty() ? &set.source : nullptr,
                        set.faults);
}

}  // namespace zelkora::desk
