// The calculation of the spread footing form: the soil pressures, punching,
// shear and bending of a footing under a list of loads, written as a report
// in formula markup.
#pragma once

#include <vector>

#include "program/footing_design.h"
#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/text.h"

namespace zelkora::desk {

// The report of the footing form's values (by item of "clsFoundationSpread")
// under `loads`, one line of markup each; a value that cannot be used ends
// the report with the reason.
// Where the loads came from, for the report: the load cases (the cells of
// the form's table), the code whose factors combined them, γ0 and γL, and
// each load's definition ("基本1 ＝ 1.3恒载+1.5活载").
struct FootingLoadSource {
  std::vector<std::vector<Text>> cases;
  Text code;
  double gamma_0 = 1, gamma_l = 1;
  std::vector<Text> definitions;
};

// The report of the footing form's values (by item of "clsFoundationSpread")
// under `loads` (with `source`, where they came from); `load_faults`, the
// reasons the loads could not be formed, end the report as the unusable
// values do.
std::vector<Text> footing_report(const std::vector<Text>& values,
                                 const std::vector<FootingLoad>& loads, clsCharacter& chr,
                                 const FootingLoadSource* source = nullptr,
                                 const std::vector<Text>& load_faults = {});

}  // namespace zelkora::desk
