// The axial compression check of a reinforced concrete column with a
// rectangular section and tied reinforcement, GB 50010-2010 clause 6.2.15.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "zelkora/grid/cls_grid_cell.h"
#include "zelkora/platform/text.h"

namespace column_form {

// The values of the form, by item of the layout ColumnForm.
enum Item : int32_t {
  kMember = 0,     // 构件编号
  kConcrete = 1,   // concrete grade: 30 for C30
  kSteel = 2,      // rebar grade: "HRB400"
  kWidth = 3,      // b, mm
  kDepth = 4,      // h, mm
  kLength = 5,     // l0, mm
  kSteelArea = 6,  // As', mm²
  kForce = 7,      // N, kN
  kItems = 8
};

// The numbers of a column, read from checked values.
struct Column {
  int32_t concrete = 0;
  zelkora::Text steel;
  double b = 0, h = 0, l0 = 0, as = 0, n = 0;
};

// What the calculation found: the report's lines (with formula markup) and
// whether N ≤ Nu; or the refusal that stopped it.
struct Outcome {
  std::vector<zelkora::Text> lines;
  bool passes = false;
  zelkora::Text refusal;
};

// The form's values checked, each against its row's check expression (and a
// list row's list) as the grid checks a value the user types, and the grades
// against the material tables; the column when all are accepted, else the
// first refusal in the suite's words.
std::optional<Column> read_column(zelkora::clsGridCell& form, zelkora::Text& refusal);

// The check of clause 6.2.15 and its report.
Outcome check_column(const Column& column);

}  // namespace column_form
