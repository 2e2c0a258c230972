// The load cases of a foundation program's form: a table the form shows
// beside its values, one row a case, its cells the case's name, its kind and
// its forces at the top of the footing:
//
//   工况名称 | 类别 (永久, 可变, 风, 地震) | N (kN) | Mx (kN·m) | My (kN·m) | Vx (kN) | Vy (kN)
//
// The table is a platform::ListView (the item's text is the name, sub-items
// 1..6 the rest), so the same work runs on the desktop's list view and on
// the headless one. Its texts are kept as typed; they are read, checked and
// turned into numbers only when the form saves or calculates.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "zelkora/platform/controls.h"
#include "zelkora/platform/text.h"

namespace zelkora::desk {

inline constexpr int32_t kCaseColumns = 7;
inline constexpr int32_t kMostCases = 50;

// The cells of the table's rows, row by row.
using CaseRows = std::vector<std::vector<Text>>;

// The columns' captions, in order.
const std::array<TextView, kCaseColumns>& case_captions();

// The table's texts; a row always has kCaseColumns cells.
CaseRows case_rows(const platform::ListView& table);
// The table made to hold `rows` (cells past kCaseColumns are left out).
void set_case_rows(platform::ListView& table, const CaseRows& rows);
// The row a new case starts with: the next free name "工况N", the kind of a
// first case (永久) or of a further one (可变), its forces 0.
std::vector<Text> new_case_row(const CaseRows& rows);
// The cases a new form starts with.
CaseRows default_case_rows();

}  // namespace zelkora::desk
