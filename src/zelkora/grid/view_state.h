// The view of a property grid that a desktop host keeps per form between
// sessions: which headings and groups are unfolded, the current row, the row
// at the top, and the sizes of the panes beside the grid. Rows are named by
// item index, so that a layout whose rows are hidden, or come back, finds
// its rows again: an item row by its item ("12"), a heading by the first
// item under it ("h12").
//
//   grid::ViewState view = grid::capture_view(cell, current_row, top_row);
//   settings.set(app, u"View", u"clsBeamSteel", grid::view_state_text(view));
//   ...
//   grid::restore_view(cell, grid::parse_view_state(saved));
#pragma once

#include <cstdint>
#include <vector>

#include "zelkora/grid/cls_grid_cell.h"

namespace zelkora::grid {

struct ViewState {
  std::vector<Text> open;      // the unfolded headings and groups
  std::vector<Text> closed;    // the folded ones
  Text current;                // the current row
  Text top;                    // the row at the top of the view
  std::vector<int32_t> panes;  // the sizes of the panes, in pixels
  int32_t caption = 0;         // the caption column's width in pixels; 0: the layout's
};

// "open=h1,15;closed=h20;row=10;top=h1;panes=560,440", and ";caption=180"
// when the caption column has a width of its own.
Text view_state_text(const ViewState& view);
// The text read back. Fields and names it does not know, and numbers out of
// range, are passed over: a damaged text gives what can be read of it.
ViewState parse_view_state(TextView text);

// The name of row `row`, or empty for a row without one (a heading with no
// item under it, a row outside 1..R).
Text row_key(clsGridCell& cell, int32_t row);
// The row of a name, or 0 when the layout has no such row.
int32_t key_row(clsGridCell& cell, TextView key);

ViewState capture_view(clsGridCell& cell, int32_t current_row, int32_t top_row);
// Unfolds and folds the named headings, then the named groups, as the view
// had them; names the layout does not have are passed over.
void restore_view(clsGridCell& cell, const ViewState& view);

}  // namespace zelkora::grid
