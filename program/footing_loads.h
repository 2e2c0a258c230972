// The loads of the spread footing form: its table of load cases (standard
// values of each action at the top of the footing, program/load_cases.h) read
// and checked as every foundation program reads them
// (clsLoadSave::ReadCellToArray_Gk_Nl_Text), then combined
// (load_combination.h) into the standard combinations that the soil
// pressures take and the fundamental ones that punching, shear and bending
// take (GB 50007-2011 3.0.5), with the factors of the code the form names:
//
//   item 18  执行规范: GB 50009-2012 (γG 1.2, and 1.35 where the permanent
//            load governs; γQ 1.4) or GB 55001-2021 (γG 1.3, γQ 1.5)
//   item 19  ψc of the variable cases (the wind's is 0.6, GB 50009 8.1.4)
//   item 20  结构的安全等级: γ0 1.1 for 一级, else 1.0 (GB 50007 3.0.5-4: γ0
//            not below 1.0)
//   item 30  设计使用年限: γL of the variable cases (GB 50009 3.2.5)
//
// A seismic case is outside the footing's design (no seismic check of the
// soil is made) and is named as a fault, as is anything the table's reader
// or the combinations refuse.
#pragma once

#include <vector>

#include "program/footing_design.h"
#include "program/footing_figure.h"
#include "program/footing_report.h"
#include "program/load_cases.h"
#include "zelkora/frame/cls_character.h"

namespace zelkora::desk {

struct FootingLoadSet {
  std::vector<FootingLoad> loads;  // "标准1"..., then "基本1"...
  FootingLoadSource source;        // what the report says of them
  std::vector<Text> faults;        // none: the loads can be used
};

FootingLoadSet footing_loads(const std::vector<Text>& values, const CaseRows& cases,
                             const clsCharacter& chr);

// The footing's plan under the governing standard load (the one of the
// greatest edge pressure) for the report's figure; without a design (a
// fault), the plan of the values alone or, without a usable base, nothing.
FootingSketch footing_sketch(const std::vector<Text>& values, const CaseRows& cases,
                             const clsCharacter& chr);

// The report of the footing form: its values and its load cases.
std::vector<Text> footing_calculation(const std::vector<Text>& values, const CaseRows& cases,
                                      clsCharacter& chr);

}  // namespace zelkora::desk
