// The report of the load combination form.
#include "program/load_combination_report.h"

#include "program/report_writer.h"

#include <algorithm>
#include <cmath>

#include "program/load_combination.h"
#include "zelkora/frame/variant.h"

namespace zelkora::desk {

namespace {

// The standards the calculation follows (catalogue ids).
constexpr int32_t kGB55001 = 59001, kGB50009 = 59009, kGB50011 = 59011;

const char16_t* kind_name(CombinationKind kind) {
  switch (kind) {
    case CombinationKind::kFundamental:
      return u"基本组合";
    case CombinationKind::kStandard:
      return u"标准组合";
    case CombinationKind::kFrequent:
      return u"频遇组合";
    case CombinationKind::kQuasiPermanent:
      return u"准永久组合";
    case CombinationKind::kSeismic:
      return u"地震组合";
  }
  return u"";
}

class Writer : public ReportWriter {
 public:
  Writer(clsCharacter& chr, const LoadCombinationInput& in, const std::vector<Action>& actions,
         const std::vector<Combination>& combinations)
      : ReportWriter(chr),
        in_(in),
        o_(in.options),
        a_(actions),
        c_(combinations),
        g_(governing(combinations)) {}

  std::vector<Text> write();

 private:
  Text num(double value) { return chr_.tFmt(value, u"0.00"); }
  Text factor(double value) { return chr_.tFmt(value, u"0.0##"); }

  bool governs(std::size_t i) const {
    return std::any_of(g_.begin(), g_.end(),
                       [&](const Governing& g) { return g.largest == i || g.smallest == i; });
  }
  // "S ＝ 1.3×10.00 + 1.5×5.00 ＝ 20.50" for the form's one component.
  Text sum_text(const Combination& c) {
    Text text;
    for (std::size_t i = 0; i < a_.size(); ++i) {
      if (c.factors[i] == 0) continue;
      const double e = a_[i].effects[0];
      if (!text.empty()) text += u" + ";
      text += factor(c.factors[i]) + u"×" + (e < 0 ? u"(" + num(e) + u")" : num(e));
    }
    return text.empty() ? Text(u"0") : text;
  }
  void write_equation(const Combination& c, TextView why) {
    Text text = Text(why) + u"：" + c.label + u"：S ＝ " + sum_text(c);
    if (c.gamma_0 != 1) {
      text += chr_.tFmtEq(c.effects[0] / c.gamma_0, u"0.00") + u"，γ_ub(0)ub_S ＝ " +
              factor(c.gamma_0) + u"×" + num(c.effects[0] / c.gamma_0);
    }
    equation(text + chr_.tFmtEq(c.effects[0], u"0.00"));
  }
  void governing_equations(CombinationKind kind);
  void table(CombinationKind kind);

  void data();
  void fundamental();
  void serviceability();
  void seismic();
  void summary();

  const LoadCombinationInput& in_;
  const Options& o_;
  const std::vector<Action>& a_;
  const std::vector<Combination>& c_;
  const std::vector<Governing> g_;
};

void Writer::governing_equations(CombinationKind kind) {
  for (const Governing& g : g_) {
    if (g.kind != kind) continue;
    write_equation(c_[g.largest], u"最大值");
    if (g.smallest != g.largest) write_equation(c_[g.smallest], u"最小值");
  }
}

void Writer::table(CombinationKind kind) {
  std::vector<std::size_t> rows;
  for (std::size_t i = 0; i < c_.size(); ++i) {
    if (c_[i].kind == kind && (in_.all || governs(i))) rows.push_back(i);
  }
  if (rows.empty()) return;
  std::size_t widest = 8;
  for (std::size_t i : rows) widest = std::max(widest, to_utf8(c_[i].label).size());
  chr_.TxtClear();
  chr_.ListOut_Ubound(2);
  chr_.ListOut_Initialize(0, 12);
  chr_.ListOut_Index_Width(0, 6);
  chr_.ListOut_Index_Width(1, static_cast<int32_t>(std::min<std::size_t>(widest, 60)));
  chr_.ListOut_Index_Align(1, zkLeftJustify);
  const bool factored = kind == CombinationKind::kFundamental;
  chr_.ListOut_TextAddRow({u"序号", u"组合", factored ? u"γ_ub(0)ub_S" : u"S"}, 0);
  int32_t n = 0;
  for (std::size_t i = 0; i < c_.size(); ++i) {
    if (c_[i].kind != kind) continue;
    ++n;
    if (!in_.all && !governs(i)) continue;
    chr_.ListOut_TextAddRow({chr_.tFmt(n, u"0"), c_[i].label, num(c_[i].effects[0])}, 0);
  }
  for (const Text& row : split_text(chr_.Txt(), chr_.tConEnter1())) {
    if (!trim(row).empty()) line(trim_right(row));
  }
  chr_.TxtClear();
  line(in_.all ? u"（上表列出全部组合。）"
               : u"（上表只列出起控制作用的组合；全部组合可选“输出全部荷载组合”。）");
}

void Writer::data() {
  heading(u"设计资料");
  if (!in_.id.empty()) line(u"构件编号：" + in_.id);
  line(o_.edition == Edition::kGB55001
           ? u"执行规范：GB 55001－2021（作用分项系数），组合规则按 GB 50009－2012 第 3.2 节"
           : u"执行规范：GB 50009－2012（荷载组合与分项系数）");
  line(u"设计使用年限 " + frame::Variant(in_.years).to_text({}) + u" 年：" +
       chr_.tExpStr(u"γ_ub(L)ub_", o_.gamma_l, u"0.000") +
       u"（GB 50009－2012 表 3.2.5，可按线性内插；用于楼面活荷载，"
       u"风荷载的设计使用年限由基本风压的重现期考虑，3.2.5 条）");
  static const char16_t* kClasses[] = {u"一级", u"二级", u"三级"};
  line(u"结构的安全等级 " + Text(kClasses[std::clamp(in_.safety_class, 1, 3) - 1]) + u"：" +
       chr_.tExpStr(u"γ_ub(0)ub_", o_.gamma_0, u"0.0") +
       u"（安全等级一、二、三级分别取 1.1、1.0、0.9），用于基本组合");
  Text loads = chr_.tExpStr(u"S_ub(Gk)ub_", in_.sgk, u"0.00") + u"，" +
               chr_.tExpStr(u"S_ub(Qk)ub_", in_.sqk, u"0.00");
  if (o_.wind) loads += u"，" + chr_.tExpStr(u"S_ub(Wk)ub_", in_.swk, u"0.00");
  if (o_.seismic) loads += u"，" + chr_.tExpStr(u"S_ub(Ehk)ub_", in_.sehk, u"0.00");
  line(u"荷载效应标准值：" + loads);
  Text gammas = chr_.tExpStr(u"γ_ub(G)ub_", o_.gamma_g, u"0.00") + u"，" +
                chr_.tExpStr(u"γ_ub(G)ub_'", o_.gamma_g_favourable, u"0.00") +
                u"（对结构有利时），" + chr_.tExpStr(u"γ_ub(Q)ub_", o_.gamma_q, u"0.00") +
                (o_.wind ? u"（活荷载与风荷载）" : u"");
  if (o_.seismic) gammas += u"，" + chr_.tExpStr(u"γ_ub(Eh)ub_", o_.gamma_eh, u"0.00");
  line(u"分项系数（取输入值，不小于所执行规范的规定）：" + gammas);
  if (o_.edition == Edition::kGB50009 && o_.gamma_q < 1.4) {
    line(
        u"γ_ub(Q)ub_ ＜ 1.4：仅适用于标准值大于 4kN/m_up(2)up_ 的工业房屋楼面结构的活荷载（3.2.4 "
        u"条）。");
  }
  line(u"活荷载：" + chr_.tExpStr(u"ψ_ub(c)ub_", in_.psi_c, u"0.0#") + u"，" +
       chr_.tExpStr(u"ψ_ub(q)ub_", in_.psi_q, u"0.0#") +
       (o_.seismic ? u"，" + chr_.tExpStr(u"ψ_ub(E)ub_", in_.psi_e, u"0.0#") : Text()));
  if (o_.wind) {
    line(u"风荷载：" + chr_.tExpStr(u"ψ_ub(w)ub_", in_.psi_w, u"0.0#") +
         u"（组合值系数），频遇值系数 0.4、准永久值系数 0（8.1.4 条）；按两个方向：W左 ＝ "
         u"S_ub(Wk)ub_，"
         u"W右 ＝ −S_ub(Wk)ub_，每个组合至多取其一。");
  }
  if (o_.seismic) {
    line(u"水平地震作用按两个方向：E左 ＝ S_ub(Ehk)ub_，E右 ＝ −S_ub(Ehk)ub_。" +
         (o_.wind ? chr_.tExpStr(u"地震组合中风荷载的组合值系数 ψ_ub(w)ub_", o_.psi_we, u"0.0#")
                  : Text(u"不考虑风荷载：ψ_ub(wE)ub_ 不参与组合。")));
  }
  const bool favourable =
      std::any_of(c_.begin(), c_.end(), [](const Combination& c) { return c.favourable; });
  if (favourable) {
    line(
        u"永久荷载效应与其他荷载效应异号，永久荷载可能对结构有利：另列永久荷载取 γ_ub(G)ub_' 的组合"
        u"（GB 50009－2012 第 3.2.4 条；地震组合按 GB 50011－2010 第 5.4.1 条，不大于 1.0）。");
  }
}

void Writer::fundamental() {
  heading(u"基本组合（承载能力极限状态）");
  if (o_.edition == Edition::kGB50009) {
    line(
        u"按 GB 50009－2012 第 3.2.3 条，取由可变荷载控制的组合（式 "
        u"3.2.3-1，各可变荷载轮流作为主导）"
        u"与由永久荷载控制的组合（式 3.2.3-2，γ_ub(G)ub_ ＝ 1.35）中的最不利者：");
  } else {
    line(
        u"按 GB 55001－2021 的作用分项系数与 GB 50009－2012 式 3.2.3-1（各可变荷载轮流作为主导），"
        u"不再列由永久荷载控制的组合：");
  }
  equation(
      u"S_ub(d)ub_ ＝ Σγ_ub(G)ub_S_ub(Gk)ub_ + γ_ub(Q1)ub_γ_ub(L1)ub_S_ub(Q1k)ub_ + "
      u"Σγ_ub(Qi)ub_γ_ub(Li)ub_ψ_ub(ci)ub_S_ub(Qik)ub_，"
      u"γ_ub(0)ub_S_ub(d)ub_ ≤ R_ub(d)ub_（3.2.2 条）");
  governing_equations(CombinationKind::kFundamental);
  table(CombinationKind::kFundamental);
}

void Writer::serviceability() {
  heading(u"标准组合与准永久组合（正常使用极限状态）");
  equation(
      u"标准组合（3.2.8 条）：S_ub(d)ub_ ＝ ΣS_ub(Gk)ub_ + S_ub(Q1k)ub_ + "
      u"Σψ_ub(ci)ub_S_ub(Qik)ub_");
  governing_equations(CombinationKind::kStandard);
  table(CombinationKind::kStandard);
  equation(
      u"频遇组合（3.2.9 条）：S_ub(d)ub_ ＝ ΣS_ub(Gk)ub_ + ψ_ub(f1)ub_S_ub(Q1k)ub_ + "
      u"Σψ_ub(qi)ub_S_ub(Qik)ub_");
  governing_equations(CombinationKind::kFrequent);
  table(CombinationKind::kFrequent);
  equation(u"准永久组合（3.2.10 条）：S_ub(d)ub_ ＝ ΣS_ub(Gk)ub_ + Σψ_ub(qi)ub_S_ub(Qik)ub_");
  governing_equations(CombinationKind::kQuasiPermanent);
  table(CombinationKind::kQuasiPermanent);
}

void Writer::seismic() {
  if (!o_.seismic) return;
  heading(u"地震组合（GB 50011－2010 第 5.4.1 条）");
  equation(
      u"S ＝ γ_ub(G)ub_S_ub(GE)ub_ + γ_ub(Eh)ub_S_ub(Ehk)ub_ + "
      u"ψ_ub(w)ub_γ_ub(w)ub_S_ub(wk)ub_，γ_ub(G)ub_ ＝ 1.2，"
      u"γ_ub(w)ub_ ＝ 1.4");
  equation(u"S_ub(GE)ub_ ＝ S_ub(Gk)ub_ + ψ_ub(E)ub_S_ub(Qk)ub_ ＝ " + num(in_.sgk) + u" + " +
           factor(in_.psi_e) + u"×" + num(in_.sqk) +
           chr_.tFmtEq(in_.sgk + in_.psi_e * in_.sqk, u"0.00") + u"（5.1.3 条）");
  governing_equations(CombinationKind::kSeismic);
  table(CombinationKind::kSeismic);
  line(u"地震组合不乘 γ_ub(0)ub_，截面抗震验算按 S ≤ R/γ_ub(RE)ub_（5.4.2 条）。");
}

void Writer::summary() {
  heading(u"结论");
  for (const Governing& g : g_) {
    const Combination& hi = c_[g.largest];
    const Combination& lo = c_[g.smallest];
    const Text name = g.kind == CombinationKind::kFundamental ? u"γ_ub(0)ub_S" : u"S";
    line(Text(kind_name(g.kind)) + u"：" +
         chr_.tExpStr(name + u"_ub(max)ub_", hi.effects[0], u"0.00") + u"（" + hi.label + u"），" +
         chr_.tExpStr(name + u"_ub(min)ub_", lo.effects[0], u"0.00") + u"（" + lo.label + u"）");
  }
}

std::vector<Text> Writer::write() {
  data();
  fundamental();
  serviceability();
  seismic();
  summary();
  return std::move(lines_);
}

}  // namespace

std::vector<Text> load_combination_report(const std::vector<Text>& values, clsCharacter& chr) {
  std::vector<Text> lines;
  const auto add = [&](TextView text) {
    for (Text& one : split_text(text, chr.tConEnter1())) {
      if (!one.empty()) lines.push_back(std::move(one));
    }
  };
  std::vector<Text> unread;
  const LoadCombinationInput in = load_combination_input(values, chr, &unread);
  std::vector<int32_t> standards = {kGB50009};
  if (in.options.edition == Edition::kGB55001) standards.insert(standards.begin(), kGB55001);
  if (in.options.seismic) standards.push_back(kGB50011);
  add(chr.tCalHead(u"荷载效应组合计算", values.empty() ? Text() : Text(trim(values[0])),
                   standards));
  if (!unread.empty()) {
    Text names;
    for (const Text& one : unread) names += (names.empty() ? u"" : u"、") + one;
    add(u"无法计算：以下数据为空或无效：" + names + u"。");
    return lines;
  }
  if (in.options.gamma_l == 0) {
    add(u"无法计算：设计使用年限应在 5～100 年之间（GB 50009－2012 表 3.2.5）。");
    return lines;
  }
  const std::vector<Action> actions = form_actions(in);
  std::vector<Text> faults;
  const std::vector<Combination> combinations = combine(actions, in.options, faults);
  if (!faults.empty()) {
    for (const Text& fault : faults) add(u"无法计算：" + fault);
    return lines;
  }
  for (Text& line : Writer(chr, in, actions, combinations).write())
    lines.push_back(std::move(line));
  return lines;
}

}  // namespace zelkora::desk
