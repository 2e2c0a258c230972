// The combinations of load effects of GB 50009-2012 (建筑结构荷载规范) 3.2,
// with the partial factors of either GB 50009-2012 or GB 55001-2021
// (工程结构通用规范), and the seismic combination of GB 50011-2010 (2016
// edition) 5.4.1. The numbers only: the report (load_combination_report)
// writes them out. The rules, their clauses and sources are in
// desk/testdata/load_combination_rules.md.
//
// Any number of load cases, each with the same number of effect components
// (1 for a single effect S; 5 for N, Mx, My, Vx, Vy of a foundation):
//   - the permanent cases act together, all with γG (unfavourable) or, when a
//     favourable permanent action could govern, also all with γG' (≤ 1.0);
//   - the variable cases each lead in turn (γQ·γL), the others accompany with
//     ψc; in the standard and frequent combinations likewise;
//   - the wind cases are alternatives (directions): a combination has at most
//     one of them, and one set of combinations has none;
//   - the seismic cases are alternatives too: one in each seismic combination.
// Effects are linear in the loads (GB 50009 3.2.3 note 1).
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/text.h"

namespace zelkora::desk {

enum class Edition {
  kGB50009,  // GB 50009-2012: γG 1.2 (1.35 when the permanent load governs), γQ 1.4
  kGB55001,  // GB 55001-2021: γG 1.3, γQ 1.5, no permanent-governing combination
};

enum class ActionKind { kPermanent, kVariable, kWind, kSeismic };

struct Action {
  Text name;  // "G", "Q", "W左"...: the label's symbol
  ActionKind kind = ActionKind::kPermanent;
  std::vector<double> effects;  // the characteristic (standard) value's effects
  // Of a variable or wind action: combination, frequent and quasi-permanent
  // value factors (GB 50009 5.1.1, 8.1.4).
  double psi_c = 0, psi_f = 0, psi_q = 0;
  // Of a variable action: its share in the gravity load's representative value
  // (GB 50011 5.1.3, e.g. 0.5 for a floor's live load).
  double psi_e = 0;
};

struct Options {
  Edition edition = Edition::kGB55001;
  double gamma_0 = 1.0;  // by the safety class (1.1, 1.0, 0.9)
  double gamma_l = 1.0;  // of the variable (not wind) actions, by the design life (GB 50009 3.2.5)
  // The partial factors used: at least the edition's (see combine's faults).
  double gamma_g = 1.3;             // permanent, unfavourable
  double gamma_g_favourable = 1.0;  // permanent, favourable (≤ 1.0); also the gravity load's in
                                    // the seismic combination when favourable
  double gamma_q = 1.5;             // variable and wind actions
  double gamma_eh = 1.3;            // horizontal earthquake (GB 50011 table 5.4.1: 1.3)
  bool wind = false;                // the wind actions take part
  bool seismic = false;             // the seismic combinations are formed
  double psi_we = 0;                // ψw of the wind in the seismic combination (GB 50011 5.4.1)
  bool frequent = true;             // form the frequent combinations (ψf of every action known)
};

// GB 50009 3.2.4-1: γG of the permanent-governing combination (3.2.3-2).
constexpr double kGammaGPermanentGoverning = 1.35;
// GB 50011 5.4.1: the gravity load's factor and the wind's in the seismic
// combination.
constexpr double kGammaGSeismic = 1.2, kGammaWSeismic = 1.4;

enum class CombinationKind { kFundamental, kStandard, kFrequent, kQuasiPermanent, kSeismic };

struct Combination {
  CombinationKind kind = CombinationKind::kFundamental;
  Text label;                        // "1.3G+1.5Q+1.5×0.6W左"
  std::vector<double> factors;       // per action (0: not in the combination)
  double gamma_0 = 1;                // γ0: the fundamental combinations' only
  std::vector<double> effects;       // γ0·Σ factor·effect, per component
  bool permanent_governing = false;  // GB 50009 3.2.3-2
  bool favourable = false;           // the permanent actions with γG'
};

// The combinations of the actions; none, and the reasons in `faults`, when the
// actions or the options are outside what the combinations cover.
std::vector<Combination> combine(const std::vector<Action>& actions, const Options& options,
                                 std::vector<Text>& faults);

// For each kind formed and each effect component: the combinations with the
// largest and the smallest value (indices into the combinations).
struct Governing {
  CombinationKind kind;
  std::size_t component = 0;
  std::size_t largest = 0, smallest = 0;
};
std::vector<Governing> governing(const std::vector<Combination>& combinations);

// γL of GB 50009 table 3.2.5 for a design life of 5 to 100 years (straight
// lines between, note 1); 0 outside.
double design_life_factor(double years);

// ---- The form (layout "clsLoadCombination") ------------------------------------------

struct LoadCombinationInput {
  Text id;
  Options options;
  double years = 50;
  int32_t safety_class = 2;  // 1, 2, 3 (一级, 二级, 三级)
  double sgk = 0, sqk = 0, swk = 0, sehk = 0;
  double psi_c = 0.7, psi_f = 0.5, psi_q = 0.4, psi_w = 0.6, psi_e = 0.5;
  bool all = false;  // 输出全部荷载组合
};

// The form's values (by item) read; a value that cannot be read keeps its
// default and is named in `unread`.
LoadCombinationInput load_combination_input(const std::vector<Text>& values,
                                            const clsCharacter& chr,
                                            std::vector<Text>* unread = nullptr);

// The form's actions: G, Q; W左 (+SWk) and W右 (−SWk) with wind; E左 (+SEhk)
// and E右 (−SEhk) with the earthquake.
std::vector<Action> form_actions(const LoadCombinationInput& in);

}  // namespace zelkora::desk
