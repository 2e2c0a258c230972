/// Checking every value of a form at once, as the grid checks one value when
/// its cell is left: each item's current text against the check expression
/// of its row (the grammar in checking/cls_err_chr.h), through a clsErrChr of
/// its own that shows nothing, so the form's error state (lError_ID,
/// tError_Txt) stays as it was. A program runs it before it calculates:
///
///   for (const zelkora::grid::ValueRefusal& r : zelkora::grid::check_form_values(form)) {
///     show(r.message);  // "错误：梁的截面宽度 b ＝ -250 ≤ 0，..."
///   } @file
#pragma once

#include <cstdint>
#include <vector>

#include "zelkora/grid/cls_grid_cell.h"
#include "zelkora/platform/text.h"

namespace zelkora::grid {
/// A value that its row's check refuses.
struct ValueRefusal {
  int32_t row = 0;    ///< the first row (1..R) that shows the item
  int32_t item = 0;   ///< the item (0..lMax)
  int32_t error = 0;  ///< the error number (frame/error_numbers.h, or the layout's)
  Text caption;       ///< the row's caption
  Text value;         ///< the item's current text
  Text message;       ///< the message of the error, as clsErrChr composes it
};

/// The values that their rows' checks refuse, in row order; each item is
/// checked once, at its first row, whether its row is shown or not. None
/// when every value is accepted or the form has no rows yet.
std::vector<ValueRefusal> check_form_values(clsGridCell& cell);

}  // namespace zelkora::grid
