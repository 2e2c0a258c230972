// The combinations of load effects; see the header. Clause numbers are those
// of GB 50009-2012 unless another code is named.
#include "program/load_combination.h"
#include "program/form_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <optional>

#include "zelkora/frame/variant.h"

namespace zelkora::desk {

namespace {

// Items of "clsLoadCombination".
constexpr int32_t kId = 1, kLife = 2, kClass = 3, kSgk = 4, kSqk = 5, kSwk = 6, kSehk = 7,
                  kGammaG = 8, kGammaGFavourable = 9, kGammaQ = 10, kGammaEh = 11, kPsiC = 12,
                  kPsiQ = 13, kPsiW = 14, kPsiE = 15, kPsiWE = 16, kSeismic = 17, kWind = 18,
                  kAll = 19, kEdition = 20, kPsiF = 21;

// The least partial factors of each edition. GB 50009 3.2.4: γG 1.2, γQ 1.4
// (1.3 for an industrial floor's live load above 4 kN/m², so 1.3 is taken for
// the variable actions without wind). GB 55001-2021 edition: γG 1.3, γQ 1.5,
// the values of GB 50068-2018 table 8.2.9 (confirmed as quoted, see
// load_combination_rules.md); GB 55001's own clause number is unconfirmed.
constexpr double kLeastGammaG50009 = 1.2, kLeastGammaQ50009 = 1.3, kLeastGammaQWind50009 = 1.4;
constexpr double kLeastGammaG55001 = 1.3, kLeastGammaQ55001 = 1.5;
// GB 50011 table 5.4.1: γEh 1.3 with the horizontal earthquake alone.
constexpr double kLeastGammaEh = 1.3;
// GB 50009 8.1.4: the wind's ψf and ψq.
constexpr double kWindPsiF = 0.4, kWindPsiQ = 0.0;
// Variable actions at most: their subsets are combined.
constexpr std::size_t kMostVariable = 12;
// Effects beyond this are no load effects but a typing slip; likewise partial
// factors above this.
constexpr double kLargestEffect = 1e9, kLargestGamma = 10;

Text number_text(double value) {
  char buffer[40];
  std::snprintf(buffer, sizeof buffer, "%.4f", value);
  std::string s = buffer;
  while (!s.empty() && s.back() == '0') s.pop_back();
  if (!s.empty() && s.back() == '.') s.pop_back();
  if (s == "-0") s = "0";
  return from_utf8(s);
}

// The index of every action of a kind.
std::vector<std::size_t> of_kind(const std::vector<Action>& actions, ActionKind kind) {
  std::vector<std::size_t> at;
  for (std::size_t i = 0; i < actions.size(); ++i) {
    if (actions[i].kind == kind) at.push_back(i);
  }
  return at;
}

std::vector<Text> check(const std::vector<Action>& actions, const Options& o) {
  std::vector<Text> faults;
  if (actions.empty()) faults.emplace_back(u"没有荷载工况。");
  const std::size_t n = actions.empty() ? 0 : actions.front().effects.size();
  bool same = n > 0, finite = true, psi_ok = true;
  for (const Action& a : actions) {
    if (a.effects.size() != n) same = false;
    for (double e : a.effects) finite = finite && std::isfinite(e) && std::fabs(e) < kLargestEffect;
    for (double psi : {a.psi_c, a.psi_f, a.psi_q, a.psi_e}) psi_ok = psi_ok && psi >= 0 && psi <= 1;
  }
  if (!actions.empty() && !same)
    faults.emplace_back(u"各荷载工况的效应分量数应相同且不少于 1 个。");
  if (of_kind(actions, ActionKind::kVariable).size() > kMostVariable)
    faults.emplace_back(u"可变荷载工况不应多于 12 个（组合数随其个数成倍增长）。");
  if (!finite) faults.emplace_back(u"荷载效应标准值超出本计算的范围（绝对值应小于 10^9）。");
  if (!psi_ok || !(o.psi_we >= 0 && o.psi_we <= 1))
    faults.emplace_back(
        u"组合值系数、频遇值系数、准永久值系数、ψ_ub(E)ub_ 和 ψ_ub(wE)ub_ 应在 0～1.0 之间。");
  if (!(o.gamma_0 >= 0.9 && o.gamma_0 <= 2))
    faults.emplace_back(u"结构重要性系数 γ_ub(0)ub_ 应在 0.9～2.0 之间。");
  if (!(o.gamma_l >= 0.9 && o.gamma_l <= 1.1))
    faults.emplace_back(u"设计使用年限的调整系数 γ_ub(L)ub_ 应在 0.9～1.1 之间（3.2.5 条）。");
  const bool gb50009 = o.edition == Edition::kGB50009;
  const double least_g = gb50009 ? kLeastGammaG50009 : kLeastGammaG55001;
  const bool wind = o.wind && !of_kind(actions, ActionKind::kWind).empty();
  const double least_q =
      gb50009 ? (wind ? kLeastGammaQWind50009 : kLeastGammaQ50009) : kLeastGammaQ55001;
  const Text code = gb50009 ? u"GB 50009－2012 第 3.2.4 条" : u"GB 50068－2018 表 8.2.9";
  // Above kLargestGamma a factor is a typing slip: the message gives the range.
  if (!(o.gamma_g >= least_g - 1e-12 && o.gamma_g <= kLargestGamma))
    faults.push_back(u"永久荷载的分项系数 γ_ub(G)ub_ 应在 " + number_text(least_g) +
                     u"～10 之间（不应小于 " + number_text(least_g) + u"，" + code + u"）。");
  if (!(o.gamma_q >= least_q - 1e-12 && o.gamma_q <= kLargestGamma)) {
    faults.push_back(u"可变荷载的分项系数 γ_ub(Q)ub_ 应在 " + number_text(least_q) +
                     u"～10 之间（不应小于 " + number_text(least_q) + u"，" + code +
                     (gb50009 && wind ? u"：风荷载取 1.4" : u"") + u"）。");
  }
  if (!(o.gamma_g_favourable >= 0 && o.gamma_g_favourable <= 1))
    faults.emplace_back(
        u"永久荷载对结构有利时的分项系数 γ_ub(G)ub_' 应在 0～1.0 之间（不应大于 1.0）。");
  if (o.seismic && !(o.gamma_eh >= kLeastGammaEh - 1e-12 && o.gamma_eh <= kLargestGamma))
    faults.emplace_back(
        u"水平地震作用的分项系数 γ_ub(Eh)ub_ 应在 1.3～10 之间（不应小于 1.3，GB 50011－2010 表 "
        u"5.4.1）。");
  if (o.seismic && !actions.empty() && of_kind(actions, ActionKind::kSeismic).empty())
    faults.emplace_back(u"考虑地震作用时应有水平地震作用的工况。");
  return faults;
}

class Builder {
 public:
  Builder(const std::vector<Action>& actions, const Options& o) : a_(actions), o_(o) {
    permanent_ = of_kind(a_, ActionKind::kPermanent);
    variable_ = of_kind(a_, ActionKind::kVariable);
    if (o_.wind) wind_ = of_kind(a_, ActionKind::kWind);
    if (o_.seismic) seismic_ = of_kind(a_, ActionKind::kSeismic);
    components_ = a_.front().effects.size();
  }

  std::vector<Combination> build() {
    fundamental();
    serviceability();
    if (o_.seismic) seismic();
    return std::move(out_);
  }

 private:
  // A combination's terms as they are added: the label grows with them.
  struct Draft {
    Combination c;
    void add(const Action& action, std::size_t at, double factor, TextView shown) {
      if (factor == 0) return;
      c.factors[at] += factor;
      if (!c.label.empty()) c.label += u"+";
      c.label += Text(shown) + action.name;
    }
  };

  Draft draft(CombinationKind kind) const {
    Draft d;
    d.c.kind = kind;
    d.c.factors.assign(a_.size(), 0.0);
    return d;
  }

  void finish(Draft d) {
    d.c.effects.assign(components_, 0.0);
    for (std::size_t i = 0; i < a_.size(); ++i) {
      for (std::size_t k = 0; k < components_; ++k)
        d.c.effects[k] += d.c.factors[i] * a_[i].effects[k];
    }
    for (double& e : d.c.effects) e *= d.c.gamma_0;
    out_.push_back(std::move(d.c));
  }

  // A factor as the label shows it: "1.5", "1.5×0.6", "1.5×1.1×0.7".
  static Text product(std::initializer_list<double> parts) {
    Text text;
    for (double p : parts) {
      if (p == 1 && parts.size() > 1) continue;
      if (!text.empty()) text += u"×";
      text += number_text(p);
    }
    return text.empty() || text == u"1" ? Text() : text;
  }

  void permanent(Draft& d, double gamma) const {
    for (std::size_t at : permanent_) d.add(a_[at], at, gamma, product({gamma}));
  }

  // The sets of variable actions that may act together: every subset of the
  // variable actions (one that would be favourable is left out, its γQ being
  // 0), each without wind or with one wind case.
  std::vector<std::vector<std::size_t>> sets() const {
    std::vector<std::vector<std::size_t>> out;
    const std::size_t n = variable_.size();
    for (std::size_t mask = 0; mask < (std::size_t{1} << n); ++mask) {
      std::vector<std::size_t> s;
      for (std::size_t i = 0; i < n; ++i) {
        if (mask & (std::size_t{1} << i)) s.push_back(variable_[i]);
      }
      out.push_back(s);
      for (std::size_t w : wind_) {
        out.push_back(s);
        out.back().push_back(w);
      }
    }
    return out;
  }
  // γL of an action: the variable ones' (3.2.5-1); the wind's return period
  // carries the design life instead (3.2.5-2).
  double gamma_l(std::size_t at) const {
    return a_[at].kind == ActionKind::kVariable ? o_.gamma_l : 1.0;
  }

  // A favourable permanent action could govern (3.2.4-1-2; GB 50011 5.4.1):
  // in some component one of `against` acts against the sum of `base`, each
  // action weighted (the gravity load's ψE); or, with several components,
  // `base` has an effect in one component and one of `against` in another (the
  // least N beside the largest M: a smaller permanent part is the worse one).
  bool favourable_could_govern(const std::vector<std::pair<std::size_t, double>>& base,
                               const std::vector<std::size_t>& against) const {
    std::vector<double> sums(components_, 0.0);
    for (std::size_t k = 0; k < components_; ++k) {
      for (const auto& [at, weight] : base) sums[k] += weight * a_[at].effects[k];
    }
    for (std::size_t k = 0; k < components_; ++k) {
      for (std::size_t at : against) {
        if (sums[k] * a_[at].effects[k] < 0) return true;
        for (std::size_t other = 0; other < components_; ++other) {
          if (other != k && sums[other] != 0 && a_[at].effects[k] != 0) return true;
        }
      }
    }
    return false;
  }
  std::vector<std::pair<std::size_t, double>> permanent_sum() const {
    std::vector<std::pair<std::size_t, double>> base;
    for (std::size_t at : permanent_) base.emplace_back(at, 1.0);
    return base;
  }

  // 3.2.3-1 (each variable action leading in turn), and 3.2.3-2 of GB 50009.
  void fundamental() {
    std::vector<std::size_t> against = variable_;
    against.insert(against.end(), wind_.begin(), wind_.end());
    const bool favourable = favourable_could_govern(permanent_sum(), against);
    for (const std::vector<std::size_t>& s : sets()) {
      for (const bool fav : {false, true}) {
        if (fav && !favourable) continue;
        const double gamma_g = fav ? o_.gamma_g_favourable : o_.gamma_g;
        if (s.empty()) {
          Draft d = draft(CombinationKind::kFundamental);
          d.c.gamma_0 = o_.gamma_0;
          d.c.favourable = fav;
          permanent(d, gamma_g);
          finish(std::move(d));
        }
        for (const std::size_t lead : s) {
          Draft d = draft(CombinationKind::kFundamental);
          d.c.gamma_0 = o_.gamma_0;
          d.c.favourable = fav;
          permanent(d, gamma_g);
          d.add(a_[lead], lead, o_.gamma_q * gamma_l(lead), product({o_.gamma_q, gamma_l(lead)}));
          for (const std::size_t other : s) {
            if (other == lead) continue;
            const double psi = a_[other].psi_c;
            d.add(a_[other], other, o_.gamma_q * gamma_l(other) * psi,
                  product({o_.gamma_q, gamma_l(other), psi}));
          }
          finish(std::move(d));
        }
      }
      if (o_.edition == Edition::kGB50009) {  // 3.2.3-2 with γG 1.35 (3.2.4-1)
        Draft d = draft(CombinationKind::kFundamental);
        d.c.gamma_0 = o_.gamma_0;
        d.c.permanent_governing = true;
        permanent(d, kGammaGPermanentGoverning);
        for (const std::size_t at : s) {
          const double psi = a_[at].psi_c;
          d.add(a_[at], at, o_.gamma_q * gamma_l(at) * psi,
                product({o_.gamma_q, gamma_l(at), psi}));
        }
        finish(std::move(d));
      }
    }
  }

  // 3.2.8 standard, 3.2.9 frequent, 3.2.10 quasi-permanent.
  void serviceability() {
    for (const CombinationKind kind : {CombinationKind::kStandard, CombinationKind::kFrequent}) {
      if (kind == CombinationKind::kFrequent && !o_.frequent) continue;
      const bool standard = kind == CombinationKind::kStandard;
      for (const std::vector<std::size_t>& s : sets()) {
        if (s.empty()) {
          Draft d = draft(kind);
          permanent(d, 1);
          finish(std::move(d));
        }
        for (const std::size_t lead : s) {
          Draft d = draft(kind);
          permanent(d, 1);
          const double first = standard ? 1.0 : a_[lead].psi_f;
          d.add(a_[lead], lead, first, product({first}));
          for (const std::size_t other : s) {
            if (other == lead) continue;
            const double psi = standard ? a_[other].psi_c : a_[other].psi_q;
            d.add(a_[other], other, psi, product({psi}));
          }
          finish(std::move(d));
        }
      }
    }
    for (const std::vector<std::size_t>& s : sets()) {
      // A set with a wind case whose ψq is 0 is the same as the set without.
      if (!s.empty() && a_[s.back()].kind == ActionKind::kWind && a_[s.back()].psi_q == 0) continue;
      Draft d = draft(CombinationKind::kQuasiPermanent);
      permanent(d, 1);
      for (const std::size_t at : s) d.add(a_[at], at, a_[at].psi_q, product({a_[at].psi_q}));
      finish(std::move(d));
    }
  }

  // GB 50011 5.4.1: S = γG·SGE + γEh·SEhk + ψw·γw·Swk, SGE = ΣGk + ΣψE·Qk
  // (5.1.3); no γ0 (5.4.2 uses γRE instead).
  void seismic() {
    std::vector<std::size_t> winds = {npos};
    if (o_.psi_we > 0 && !wind_.empty()) winds = wind_;
    std::vector<std::pair<std::size_t, double>> gravity_load = permanent_sum();
    for (std::size_t at : variable_) gravity_load.emplace_back(at, a_[at].psi_e);
    std::vector<std::size_t> against = seismic_;
    if (winds.front() != npos) against.insert(against.end(), winds.begin(), winds.end());
    const bool favourable = favourable_could_govern(gravity_load, against);
    for (const std::size_t e : seismic_) {
      for (const std::size_t w : winds) {
        for (const bool fav : {false, true}) {
          if (fav && !favourable) continue;
          const double gamma_g = fav ? o_.gamma_g_favourable : kGammaGSeismic;
          Draft d = draft(CombinationKind::kSeismic);
          d.c.favourable = fav;
          // The gravity load's terms, labelled "1.2(G+0.5Q)".
          Text gravity;
          for (std::size_t at : permanent_) {
            d.c.factors[at] += gamma_g;
            gravity += (gravity.empty() ? u"" : u"+") + a_[at].name;
          }
          for (std::size_t at : variable_) {
            if (a_[at].psi_e == 0) continue;
            d.c.factors[at] += gamma_g * a_[at].psi_e;
            gravity += (gravity.empty() ? u"" : u"+") + product({a_[at].psi_e}) + a_[at].name;
          }
          // "1.2(G+0.5Q)", "1.0(G+0.5Q)": the factor always shown.
          if (!gravity.empty()) {
            d.c.label = number_text(gamma_g) + (gamma_g == std::floor(gamma_g) ? u".0(" : u"(") +
                        gravity + u")";
          }
          d.add(a_[e], e, o_.gamma_eh, product({o_.gamma_eh}));
          if (w != npos)
            d.add(a_[w], w, o_.psi_we * kGammaWSeismic, product({o_.psi_we, kGammaWSeismic}));
          finish(std::move(d));
        }
      }
    }
  }

  static constexpr std::size_t npos = static_cast<std::size_t>(-1);
  const std::vector<Action>& a_;
  const Options& o_;
  std::vector<std::size_t> permanent_, variable_, wind_, seismic_;
  std::size_t components_ = 0;
  std::vector<Combination> out_;
};

}  // namespace

std::vector<Combination> combine(const std::vector<Action>& actions, const Options& options,
                                 std::vector<Text>& faults) {
  faults = check(actions, options);
  if (!faults.empty()) return {};
  return Builder(actions, options).build();
}

std::vector<Governing> governing(const std::vector<Combination>& combinations) {
  std::vector<Governing> out;
  for (const CombinationKind kind :
       {CombinationKind::kFundamental, CombinationKind::kStandard, CombinationKind::kFrequent,
        CombinationKind::kQuasiPermanent, CombinationKind::kSeismic}) {
    std::vector<std::size_t> of;
    for (std::size_t i = 0; i < combinations.size(); ++i) {
      if (combinations[i].kind == kind) of.push_back(i);
    }
    if (of.empty()) continue;
    for (std::size_t k = 0; k < combinations[of.front()].effects.size(); ++k) {
      Governing g{kind, k, of.front(), of.front()};
      for (const std::size_t i : of) {  // the first of equal values
        if (combinations[i].effects[k] > combinations[g.largest].effects[k]) g.largest = i;
        if (combinations[i].effects[k] < combinations[g.smallest].effects[k]) g.smallest = i;
      }
      out.push_back(g);
    }
  }
  return out;
}

double design_life_factor(double years) {
  // Table 3.2.5: 5 years 0.9, 50 years 1.0, 100 years 1.1.
  if (!(years >= 5 && years <= 100)) return 0;
  if (years <= 50) return 0.9 + 0.1 * (years - 5) / 45;
  return 1.0 + 0.1 * (years - 50) / 50;
}

LoadCombinationInput load_combination_input(const std::vector<Text>& values,
                                            const clsCharacter& chr, std::vector<Text>* unread) {
  LoadCombinationInput in;
  Options& o = in.options;
  const FormValues form(values, chr, unread);
  const auto text = [&](int32_t item) { return form.text(item); };
  const auto fail = [&](TextView what) { form.fail(what); };
  const auto read = [&](int32_t item, double& into, TextView what) { form.read(item, into, what); };
  in.id = text(kId);
  o.seismic = yes(text(kSeismic), chr);
  o.wind = yes(text(kWind), chr);
  in.all = yes(text(kAll), chr);
  const Text edition = text(kEdition);
  if (edition.find(u"50009") != Text::npos)
    o.edition = Edition::kGB50009;
  else if (edition.find(u"55001") != Text::npos)
    o.edition = Edition::kGB55001;
  else
    fail(u"执行规范");
  read(kLife, in.years, u"设计使用年限");
  const Text grade = text(kClass);
  if (grade == u"一级")
    in.safety_class = 1;
  else if (grade == u"二级")
    in.safety_class = 2;
  else if (grade == u"三级")
    in.safety_class = 3;
  else
    fail(u"结构的安全等级");
  read(kSgk, in.sgk, u"SGk");
  read(kSqk, in.sqk, u"SQk");
  if (o.wind) read(kSwk, in.swk, u"SWk");
  if (o.seismic) read(kSehk, in.sehk, u"SEhk");
  read(kGammaG, o.gamma_g, u"γG");
  read(kGammaGFavourable, o.gamma_g_favourable, u"γG'");
  read(kGammaQ, o.gamma_q, u"γQ");
  if (o.seismic) read(kGammaEh, o.gamma_eh, u"γEh");
  read(kPsiC, in.psi_c, u"ψc");
  read(kPsiQ, in.psi_q, u"ψq");
  read(kPsiF, in.psi_f, u"ψf");
  if (o.wind) read(kPsiW, in.psi_w, u"ψw");
  if (o.seismic) read(kPsiE, in.psi_e, u"ψE");
  if (o.seismic && o.wind) read(kPsiWE, o.psi_we, u"ψwE");
  // γ0 by the safety class: 1.1, 1.0, 0.9 (GB 50068-2001 as quoted in
  // load_combination_rules.md; the clause number in GB 50068-2018 is
  // unconfirmed).
  o.gamma_0 = std::array<double, 3>{1.1, 1.0, 0.9}[static_cast<std::size_t>(in.safety_class - 1)];
  o.gamma_l = design_life_factor(in.years);
  return in;
}

std::vector<Action> form_actions(const LoadCombinationInput& in) {
  std::vector<Action> actions;
  actions.push_back({u"G", ActionKind::kPermanent, {in.sgk}, 0, 0, 0, 0});
  actions.push_back(
      {u"Q", ActionKind::kVariable, {in.sqk}, in.psi_c, in.psi_f, in.psi_q, in.psi_e});
  if (in.options.wind) {
    actions.push_back({u"W左", ActionKind::kWind, {in.swk}, in.psi_w, kWindPsiF, kWindPsiQ, 0});
    actions.push_back({u"W右", ActionKind::kWind, {-in.swk}, in.psi_w, kWindPsiF, kWindPsiQ, 0});
  }
  if (in.options.seismic) {
    actions.push_back({u"E左", ActionKind::kSeismic, {in.sehk}, 0, 0, 0, 0});
    actions.push_back({u"E右", ActionKind::kSeismic, {-in.sehk}, 0, 0, 0, 0});
  }
  return actions;
}

}  // namespace zelkora::desk
