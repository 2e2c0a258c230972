// What a desktop host shows and searches about the rows of a property grid:
// each row's kind, caption, help, value and default, whether it applies and
// whether it is folded away, and which values their rows' checks refuse.
// Read from a built clsGridCell; nothing here changes it.
//
//   std::vector<grid::RowFacts> rows = grid::row_facts(cell);
//   rows[0].caption;                       // row 1's caption
//   grid::refusal(cell, 8);                // "" or the message for row 8's value
#pragma once

#include <cstdint>
#include <vector>

#include "zelkora/grid/cls_grid_cell.h"

namespace zelkora::grid {

struct RowFacts {
  int32_t row = 0;
  int32_t kind = 0;     // kKindHeading, kKindItem, kKindGroup or kKindMember
  int32_t item = -1;    // the item shown in the row; -1 for a heading
  int32_t heading = 0;  // the heading row the row is under, 0 for none
  int32_t group = 0;    // for a member, its group row; else 0
  Text caption;         // as the caption column shows it
  Text help;            // as the title box shows it
  Text value;           // the item's current text
  Text default_value;   // the item's default text
  bool hidden = false;  // the item does not apply (the form's ControlEnable)
  bool folded = false;  // collapsed under its heading or group
};

// The rows 1..R of the grid in order (element i is row i + 1); none before
// the grid is built.
std::vector<RowFacts> row_facts(clsGridCell& cell);

// The rule of the bold mark: a value differs from its default when the two,
// trimmed, differ without regard to case.
bool differs_from_default(TextView value, TextView default_value);

// The help of the caption with catalogue id `caption_id` (`caption` its
// text): catalogue text caption_id + 1, or else, for a caption "name symbol"
// of two parts, "symbol——name"; "。" follows.
Text help_text(const clsCharacter& chr, int32_t caption_id, TextView caption);

// Checks `value` as the grid checks a value entered in a row with check
// expression `check`, caption id `caption` and list `list`: the error number
// (0: accepted), its message in checker.tError_Txt(). The checker's ignore
// flag stays as the caller set it.
int32_t check_entry(clsErrChr& checker, const clsCharacter& chr, TextView check, int32_t caption,
                    int32_t list, TextView value);

// The message with which the check expression of row `row` refuses the
// row's current value, or empty when it accepts it (or the row has no item).
// The check runs on a clsErrChr of its own: nothing is shown, and the
// grid's error state (lError_ID, tError_Txt) stays as it was.
Text refusal(clsGridCell& cell, int32_t row);
// The refusals of rows 1..R at once (element i is row i + 1): every item row
// shown or not, headings empty.
std::vector<Text> refusals(clsGridCell& cell);

}  // namespace zelkora::grid
