// The report of the footing form's design.
#include "program/footing_report.h"

#include "program/report_writer.h"

#include <algorithm>
#include <cmath>

#include "zelkora/frame/variant.h"

namespace zelkora::desk {

namespace {

// The standards the calculation follows (catalogue ids).
const std::vector<int32_t> kStandards = {59013, 59899};
constexpr const char16_t* kSides[] = {u"+x 侧", u"−x 侧", u"+y 侧", u"−y 侧"};

class Writer : public ReportWriter {
 public:
  Writer(clsCharacter& chr, const FootingInput& in, const std::vector<FootingLoad>& loads,
         const FootingDesign& d, const FootingLoadSource* source)
      : ReportWriter(chr), in_(in), loads_(loads), d_(d), source_(source) {}

  std::vector<Text> write();

 private:
  Text num(double value, TextView format = u"0.00") { return chr_.tFmt(value, format, true); }
  Text eq(double value, TextView format = u"0.00") { return chr_.tFmtEq(value, format, true); }

  void data();
  void load_table();
  void bearing();
  void punching();
  void shear();
  void bending();
  void detailing();

  const FootingInput& in_;
  const std::vector<FootingLoad>& loads_;
  const FootingDesign& d_;
  const FootingLoadSource* source_;
};

void Writer::data() {
  heading(u"设计资料");
  if (!in_.id.empty()) line(u"基础编号：" + in_.id);
  const bool tapered = in_.shape == FootingShape::kTapered;
  line(Text(u"基础形式：") + (tapered ? u"锥形" : u"阶梯形（两阶）") +
       u"；坐标：x 沿基础底面宽度 b，y 沿长度 l。");
  line(u"柱截面 b_ub(c)ub_ × h_ub(c)ub_ ＝ " + num(in_.bc, u"0") + u" × " + num(in_.hc, u"0") +
       u"mm，柱中心沿 +y 方向偏离基础底面中心 e ＝ " + num(in_.e, u"0") + u"mm");
  line(u"基础底面 b × l ＝ " + num(d_.b, u"0") + u" × " + num(d_.l, u"0") + u"mm" +
       (d_.sized ? Text(u"（按地基承载力自动确定：以 100mm 为级差取满足 5.2.1 条的最小尺寸" +
                        Text(!in_.b && !in_.l ? u"，正方形" : u"") + u"）")
                 : Text()) +
       u"，基础高度 h ＝ " + num(in_.h, u"0") + u"mm，" +
       (tapered ? u"边缘高度 h_ub(1)ub_ ＝ " : u"下阶高度 h_ub(1)ub_ ＝ ") + num(in_.h1, u"0") +
       u"mm");
  const Text top_b = num(in_.b1.value_or(in_.bc + 100), u"0"),
             top_l = num(in_.l1.value_or(in_.hc + 100), u"0");
  line((tapered ? u"锥形基础顶面 " : u"上阶 ") + top_b + u" × " + top_l + u"mm" +
       (tapered && !in_.b1 ? Text(u"（柱边各放出 50mm）") : Text()) +
       u"，钢筋合力点至底面 a_ub(s)ub_ ＝ " + num(in_.as, u"0") +
       u"mm，h_ub(0)ub_ ＝ h − a_ub(s)ub_（两个方向的钢筋取同一 h_ub(0)ub_）");
  line(u"混凝土 C" + frame::Variant(in_.concrete).to_text({}) + u"：f_ub(t)ub_ ＝ " + num(d_.ft) +
       u"N/mm_up(2)up_；底板钢筋 " + in_.steel + u"：f_ub(y)ub_ ＝ " + num(d_.fy, u"0") +
       u"N/mm_up(2)up_（GB 50010 表 4.1.4-2、4.2.3-1）");
  line(u"埋置深度 d ＝ " + num(in_.d, u"0") + u"mm，f_ub(ak)ub_ ＝ " + num(in_.fak, u"0.0") +
       u"kPa，γ ＝ " + num(in_.gamma, u"0.0") + u"，γ_ub(m)ub_ ＝ " + num(in_.gamma_m, u"0.0") +
       u"，γ_ub(G)ub_ ＝ " + num(in_.gamma_g, u"0.0") + u"kN/m_up(3)up_");
  Text eta = u"η_ub(b)ub_ ＝ " + num(d_.eta_b) + u"，η_ub(d)ub_ ＝ " + num(d_.eta_d);
  if (in_.soil != SoilKind::kGiven) {
    eta += u"（表 5.2.4）";
    if (!d_.table_row_confirmed) eta += u"（该行系数未能由公开文本核实，请核对）";
  }
  line(eta);
}

void Writer::load_table() {
  heading(u"荷载");
  line(
      u"柱底（基础顶面）的荷载；M_ub(x)ub_ 绕 x 轴、以压 +y 边为正，M_ub(y)ub_ 绕 y 轴、以压 +x "
      u"边为正；"
      u"基础底面的弯矩计入 V·h 与柱偏心 N·e：M_ub(x)ub_' ＝ M_ub(x)ub_ + V_ub(y)ub_·h + "
      u"N·e，M_ub(y)ub_' ＝ M_ub(y)ub_ + V_ub(x)ub_·h。");
  if (source_) {
    line(u"荷载工况（标准值）：");
    std::vector<std::vector<Text>> cases = {
        {u"工况", u"类别", u"N(kN)", u"Mx(kN·m)", u"My(kN·m)", u"Vx(kN)", u"Vy(kN)"}};
    for (const std::vector<Text>& row : source_->cases) cases.push_back(row);
    table(cases, {10, 6, 10, 10, 10, 9, 9});
    line(u"荷载组合按 " + source_->code + u" 的分项系数（γ_ub(0)ub_ ＝ " +
         num(source_->gamma_0, u"0.0") + u"，可变荷载 γ_ub(L)ub_ ＝ " + num(source_->gamma_l) +
         u"；风荷载 ψ_ub(c)ub_ ＝ 0.6，GB 50009 8.1.4 条）：");
    for (const Text& definition : source_->definitions) line(definition);
  }
  line(u"标准组合用于地基承载力，基本组合用于受冲切、受剪与受弯（3.0.5 条）。");
  std::vector<std::vector<Text>> rows = {
      {u"荷载", u"组合", u"N(kN)", u"Mx(kN·m)", u"My(kN·m)", u"Vx(kN)", u"Vy(kN)"}};
  for (const FootingLoad& load : loads_) {
    rows.push_back({load.name, load.standard ? u"标准" : u"基本", num(load.N, u"0.0"),
                    num(load.Mx, u"0.0"), num(load.My, u"0.0"), num(load.Vx, u"0.0"),
                    num(load.Vy, u"0.0")});
  }
  table(rows, {10, 6, 10, 10, 10, 9, 9});
}

void Writer::bearing() {
  heading(u"地基承载力（5.2.1、5.2.2、5.2.4 条）");
  const double width = std::clamp(std::min(d_.b, d_.l) / 1000, 3.0, 6.0),
               depth = std::max(in_.d / 1000 - 0.5, 0.0);
  equation(
      u"f_ub(a)ub_ ＝ f_ub(ak)ub_ + η_ub(b)ub_·γ·(b − 3) + η_ub(d)ub_·γ_ub(m)ub_·(d − 0.5) ＝ " +
      num(in_.fak, u"0.0") + u" + " + num(d_.eta_b) + u" × " + num(in_.gamma, u"0.0") + u" × (" +
      num(width) + u" − 3) + " + num(d_.eta_d) + u" × " + num(in_.gamma_m, u"0.0") + u" × " +
      num(depth, u"0.00") + eq(d_.fa) + u"kPa");
  line(u"（b 取基础底面短边，小于 3m 按 3m、大于 6m 按 6m；d 不大于 0.5m 时不作深度修正）");
  line(
      u"p_ub(k)ub_ ＝ (F_ub(k)ub_ + G_ub(k)ub_)/A，p_ub(kmax)ub_、p_ub(kmin)ub_ ＝ p_ub(k)ub_ ± "
      u"M_ub(x)ub_'/W_ub(x)ub_ ± M_ub(y)ub_'/W_ub(y)ub_；"
      u"单向偏心 e ＞ b/6 时 p_ub(kmax)ub_ ＝ 2(F_ub(k)ub_ + G_ub(k)ub_)/(3la)，a ＝ b/2 − "
      u"e；G_ub(k)ub_ ＝ γ_ub(G)ub_·A·d。");
  std::vector<std::vector<Text>> rows = {
      {u"荷载", u"Gk(kN)", u"pk(kPa)", u"pkmax(kPa)", u"pkmin(kPa)", u"基底"}};
  for (const FootingPressure& p : d_.pressures) {
    if (!p.standard) continue;
    rows.push_back({p.name, num(p.g, u"0.0"), num(p.p), num(p.pmax), num(p.pmin),
                    p.full_contact ? u"全接触" : u"部分脱开"});
  }
  table(rows, {10, 10, 10, 11, 11, 9});
  const FootingPressure& gp = d_.pressures[static_cast<std::size_t>(d_.governing_p)];
  const FootingPressure& gm = d_.pressures[static_cast<std::size_t>(d_.governing_pmax)];
  if (!gm.full_contact) {
    line(u"荷载“" + gm.name + u"”基底部分脱开：a ＝ " + num(gm.a, u"0.000") +
         u"m，受压宽度 3a ＝ " + num(3 * gm.a, u"0.000") + u"m。");
  }
  conclude(d_.bearing_ok, u"控制荷载“" + gp.name + u"”：p_ub(k)ub_ ＝ " + num(gp.p) +
                              (d_.bearing_ok ? u"kPa ≤ f_ub(a)ub_ ＝ " : u"kPa ＞ f_ub(a)ub_ ＝ ") +
                              num(d_.fa) + u"kPa");
  conclude(d_.bearing_max_ok,
           u"控制荷载“" + gm.name + u"”：p_ub(kmax)ub_ ＝ " + num(gm.pmax) +
               (d_.bearing_max_ok ? u"kPa ≤ 1.2f_ub(a)ub_ ＝ " : u"kPa ＞ 1.2f_ub(a)ub_ ＝ ") +
               num(1.2 * d_.fa) + u"kPa");
}

void Writer::punching() {
  heading(u"受冲切承载力（8.2.8 条）");
  line(
      u"F_ub(l)ub_ ≤ 0.7β_ub(hp)ub_·f_ub(t)ub_·a_ub(m)ub_·h_ub(0)ub_，F_ub(l)ub_ ＝ "
      u"p_ub(j)ub_·A_ub(l)ub_，a_ub(m)ub_ ＝ (a_ub(t)ub_ + a_ub(b)ub_)/2；"
      u"p_ub(j)ub_ 取该侧基础边缘处的最大净反力，逐个基本组合、逐侧验算，列出控制的一项。");
  std::vector<std::vector<Text>> rows = {{u"基本组合", u"G(kN)", u"pjmax(kPa)", u"基底"}};
  for (const FootingPressure& p : d_.pressures) {
    if (!p.standard)
      rows.push_back(
          {p.name, num(p.g, u"0.0"), num(p.pj_max), p.full_contact ? u"全接触" : u"部分脱开"});
  }
  table(rows, {10, 10, 11, 9});
  line(u"（G 取 1.35 倍自重；全接触时净反力 p_ub(j)ub_ ＝ N/A ± M'/W 与 G 无关）");
  if (d_.punching.empty()) line(u"冲切破坏锥体的底面落在基础底面以外：不需验算受冲切承载力。");
  for (const PunchingCheck& c : d_.punching) {
    line(Text(c.step ? u"变阶处" : u"柱与基础交接处") + u"（" + kSides[c.side] + u"，控制荷载“" +
         c.load + u"”）：h ＝ " + num(c.h, u"0") + u"mm，h_ub(0)ub_ ＝ " + num(c.h0, u"0") +
         u"mm，β_ub(hp)ub_ ＝ " + num(c.beta_hp, u"0.0000"));
    equation(u"a_ub(m)ub_ ＝ (a_ub(t)ub_ + a_ub(b)ub_)/2 ＝ (" + num(c.at, u"0") + u" + " +
             num(c.ab, u"0") + u")/2" + eq(c.am, u"0.0") + u"mm");
    equation(u"F_ub(l)ub_ ＝ p_ub(j)ub_·A_ub(l)ub_ ＝ " + num(c.pj) + u" × " +
             num(c.al, u"0.0000") + eq(c.fl) + u"kN");
    equation(u"0.7β_ub(hp)ub_·f_ub(t)ub_·a_ub(m)ub_·h_ub(0)ub_ ＝ 0.7 × " +
             num(c.beta_hp, u"0.0000") + u" × " + num(d_.ft) + u" × " + num(c.am, u"0.0") + u" × " +
             num(c.h0, u"0") + u"/1000" + eq(c.capacity) + u"kN");
    conclude(c.ok, Text(c.step ? u"变阶处" : u"柱与基础交接处") + u"受冲切：F_ub(l)ub_ ＝ " +
                       num(c.fl) + (c.ok ? u"kN ≤ " : u"kN ＞ ") + num(c.capacity) + u"kN（“" +
                       c.load + u"”）");
  }
}

void Writer::shear() {
  if (!d_.shear_checked) return;
  heading(u"受剪承载力（8.2.9 条）");
  const ShearCheck& c = d_.shear;
  line(u"基础底面短边不大于柱宽加两倍有效高度：验算柱边" +
       Text(in_.shape == FootingShape::kStepped ? u"与变阶处" : u"") + u"截面；控制的是" +
       (c.step ? u"变阶处" : u"柱边") + u"（" + kSides[c.side] + u"，控制荷载“" + c.load +
       u"”），h_ub(0)ub_ ＝ " + num(c.h0, u"0") + u"mm。");
  equation(u"β_ub(hs)ub_ ＝ (800/h_ub(0)ub_)_up(1/4)up_ ＝ (800/" +
           num(std::clamp(c.h0, 800.0, 2000.0), u"0") + u")_up(1/4)up_" + eq(c.beta_hs, u"0.0000"));
  line(Text(c.step ? u"下阶截面（附录 U）：b_ub(0)ub_ ＝ " : u"截面按附录 U 折算：b_ub(0)ub_ ＝ ") +
       num(c.width0, u"0.0") + u"mm，A_ub(0)ub_ ＝ b_ub(0)ub_·h_ub(0)ub_ ＝ " +
       num(c.a0, u"0.0000") + u"m_up(2)up_");
  equation(u"V_ub(s)ub_ ＝ p_ub(j)ub_·A ＝ " + num(c.pj) + u" × " + num(c.area, u"0.0000") +
           eq(c.vs) + u"kN（p_ub(j)ub_ 取该区域的平均净反力）");
  equation(u"0.7β_ub(hs)ub_·f_ub(t)ub_·A_ub(0)ub_ ＝ 0.7 × " + num(c.beta_hs, u"0.0000") + u" × " +
           num(d_.ft) + u" × " + num(c.a0, u"0.0000") + u" × 1000" + eq(c.capacity) + u"kN");
  conclude(c.ok, u"受剪：V_ub(s)ub_ ＝ " + num(c.vs) + (c.ok ? u"kN ≤ " : u"kN ＞ ") +
                     num(c.capacity) + u"kN（“" + c.load + u"”）");
}

void Writer::bending() {
  heading(u"底板受弯与配筋（8.2.11、8.2.12 条）");
  line(
      u"M ＝ a_ub(1)ub__up(2)up_/12·[(2l + a')(p_ub(max)ub_ + p − 2G/A) + (p_ub(max)ub_ − "
      u"p)·l]，式中 p − G/A 为净反力 p_ub(j)ub_；"
      u"各基本组合、柱边" +
      Text(in_.shape == FootingShape::kStepped ? u"与变阶处" : u"") +
      u"两侧分别计算（该方向的弯矩产生的净反力；垂直方向的弯矩在该侧对称区域上平均为零）。");
  const char16_t* names[] = {u"x 方向（平行于 b）", u"y 方向（平行于 l）"};
  for (int32_t dir = 0; dir < 2; ++dir) {
    const BendingSection& s = d_.bending[dir];
    line(Text(names[dir]) + u"钢筋：控制截面为" + (s.step ? u"变阶处" : u"柱边") + u"（" +
         kSides[s.side] + u"，控制荷载“" + s.load + u"”），a_ub(1)ub_ ＝ " + num(s.a1, u"0") +
         u"mm，a' ＝ " + num(s.a_prime, u"0") + u"mm，垂直于计算方向的底边长 l ＝ " +
         num(s.width, u"0") + u"mm，p_ub(j,max)ub_ ＝ " + num(s.p_edge) + u"kPa，p_ub(j)ub_ ＝ " +
         num(s.p_section) + u"kPa");
    equation(u"M ＝ " + num(s.a1 / 1000, u"0.000") + u"_up(2)up_/12 × [(2 × " +
             num(s.width / 1000, u"0.000") + u" + " + num(s.a_prime / 1000, u"0.000") + u") × (" +
             num(s.p_edge) + u" + " + num(s.p_section) + u") + (" + num(s.p_edge) + u" − " +
             num(s.p_section) + u") × " + num(s.width / 1000, u"0.000") + u"]" + eq(s.m) + u"kN·m");
    equation(u"A_ub(s)ub_ ＝ M/(0.9f_ub(y)ub_·h_ub(0)ub_) ＝ " + num(s.m) +
             u"×10_up(6)up_/(0.9 × " + num(d_.fy, u"0") + u" × " + num(s.h0, u"0") + u")" +
             eq(s.as_need, u"0.0") + u"mm_up(2)up_");
    line(u"最小配筋率 0.15%（8.2.1 条），截面按附录 U 折算 b_ub(0)ub_ ＝ " +
         num(d_.width0[dir], u"0.0") + u"mm：A_ub(s,min)ub_ ＝ 0.15% × " +
         num(d_.width0[dir], u"0.0") + u" × " + num(in_.h - in_.as, u"0") + u" ＝ " +
         num(d_.as_min[dir], u"0.0") + u"mm_up(2)up_；取 A_ub(s)ub_ ＝ " +
         num(d_.as_total[dir], u"0.0") + u"mm_up(2)up_");
    const BarSet& bars = d_.bars[dir];
    if (!in_.auto_bars) {
      line(u"未选择自动选筋：请按 A_ub(s)ub_ 配置直径不小于 10mm、间距 100～200mm 的钢筋。");
    } else if (bars.found) {
      line(u"选用 " + chr_.tGjFhByFy(frame::Variant(in_.steel)) + num(bars.d, u"0") + u"@" +
           num(bars.s, u"0") + u"，实配 " + num(bars.area, u"0.0") + u"mm_up(2)up_");
    } else {
      conclude(
          false,
          Text(names[dir]) + u"：直径 " + num(in_.d_min, u"0") + u"～" + num(in_.d_max, u"0") +
              u"mm、间距不小于 100mm 的钢筋不能满足所需 A_ub(s)ub_：应放宽直径范围或加大基础高度");
    }
  }
}

void Writer::detailing() {
  heading(u"构造（8.2.1 条）");
  if (in_.shape == FootingShape::kTapered) {
    conclude(d_.edge_ok, u"锥形基础的边缘高度 " + num(in_.h1, u"0") +
                             (d_.edge_ok ? u"mm 不小于 200mm" : u"mm 小于 200mm（不宜）"));
    conclude(d_.slope_ok,
             d_.slope_ok ? u"锥形基础的坡度不大于 1:3" : u"锥形基础的坡度大于 1:3（不宜）");
  } else {
    conclude(d_.step_ok, d_.step_ok ? u"阶梯形基础每阶高度在 300～500mm 之间"
                                    : u"阶梯形基础每阶高度宜为 300～500mm");
  }
  line(u"底板钢筋保护层：有垫层时不小于 40mm，无垫层时不小于 70mm；垫层厚度不宜小于 70mm。");
}

std::vector<Text> Writer::write() {
  data();
  load_table();
  bearing();
  punching();
  shear();
  bending();
  detailing();
  summary();
  return std::move(lines_);
}

}  // namespace

std::vector<Text> footing_report(const std::vector<Text>& values,
                                 const std::vector<FootingLoad>& loads, clsCharacter& chr,
                                 const FootingLoadSource* source,
                                 const std::vector<Text>& load_faults) {
  std::vector<Text> lines;
  const auto add = [&](TextView text) {
    for (Text& one : split_text(text, chr.tConEnter1())) {
      if (!one.empty()) lines.push_back(std::move(one));
    }
  };
  std::vector<Text> unread;
  const FootingInput in = footing_input(values, chr, &unread);
  // The footing's codes, and the load code whose factors combined the
  // loads (《工程结构通用规范》59001 or 《建筑结构荷载规范》59009).
  std::vector<int32_t> standards = kStandards;
  if (source)
    standards.insert(standards.begin() + 1, source->code == u"GB 50009-2012" ? 59009 : 59001);
  add(chr.tCalHead(u"柱下独立基础计算", values.empty() ? Text() : Text(trim(values[0])),
                   standards));
  if (!unread.empty()) {
    Text names;
    for (const Text& one : unread) names += (names.empty() ? u"" : u"、") + one;
    add(u"无法计算：以下数据为空或无效：" + names + u"。");
    return lines;
  }
  if (!load_faults.empty()) {
    for (const Text& fault : load_faults) add(u"无法计算：" + fault);
    return lines;
  }
  const FootingDesign design = design_footing(in, loads);
  if (!design.faults.empty()) {
    for (const Text& fault : design.faults) add(u"无法计算：" + fault);
    return lines;
  }
  for (Text& line : Writer(chr, in, loads, design, source).write())
    lines.push_back(std::move(line));
  return lines;
}

}  // namespace zelkora::desk
