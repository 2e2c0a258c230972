// The filter over a property grid's rows: the rows whose caption, help or
// value contains a text, or whose value differs from its default, or whose
// value its check refuses, with the headings and groups they are under.
//
//   grid::RowFilter filter{u"钢筋"};
//   std::vector<bool> shown = grid::rows_kept(grid::row_facts(cell), filter, {});
//   // shown[row] for rows 0..R; row 0, the header row, is always kept
#pragma once

#include <vector>

#include "zelkora/grid/row_facts.h"

namespace zelkora::grid {

struct RowFilter {
  Text text;             // kept: rows whose caption, help or value contains it
  bool changed = false;  // and only values that differ from their default
  bool refused = false;  // and only values that their checks refuse
  // A row kept whatever it holds (0: none): the row a value was just picked
  // in keeps its place until its cell is left, through its check.
  int32_t held_row = 0;

  // False for the filter that keeps every row.
  bool active() const;
};

// Whether `text` contains `part`, Latin letters compared without regard to
// case or width ("ｂ" finds "B"). An empty part is in every text.
bool contains_text(TextView text, TextView part);

// Which rows the filter keeps, indexed by row 0..R. An item row is kept when
// it passes the filter: its caption, help or value contains the text, or
// those of its heading or group do, and it meets the "changed" and "refused"
// conditions (`refused[i]` for row facts i; missing ones count as accepted).
// A heading or group row is kept when a row under it is kept. Folded rows
// count as unfolded; rows whose item does not apply are never kept.
std::vector<bool> rows_kept(const std::vector<RowFacts>& rows, const RowFilter& filter,
                            const std::vector<bool>& refused);

// Tells the grid which rows a filter shows (`kept` as rows_kept gives it;
// empty when no filter is applied): a folded row the filter shows is one the
// user can see and edit, so leaving it checks its value, applies the group
// rule and sets its mark like any shown row.
void show_kept_rows(clsGridCell& cell, std::vector<bool> kept);

}  // namespace zelkora::grid
