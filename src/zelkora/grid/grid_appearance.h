// What the property grid and the program menu grid share when they are built:
// the saved row height, the appearance of the grid control, its columns and
// pictures, and the look of a heading row.
//
// Columns: 0 hidden (width 0), 1 the "+"/"-" picture (17), 2 the captions
// (the form's caption width + 15), 3 the values (the rest). Row 0 is a header
// row of height 0.
#pragma once

#include <cstdint>

#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/grid_control.h"

namespace zelkora::grid {

inline constexpr int32_t kPictureCol = 1;
inline constexpr int32_t kCaptionCol = 2;
inline constexpr int32_t kValueCol = 3;
inline constexpr TextView kExpandedKey = u"-";
inline constexpr TextView kCollapsedKey = u"+";

// The row height of the user's options ("cboOpt11"; 19 when there is none).
// A saved value is used as it stands, however small or large; one that is no
// number, or beyond 32 bits, counts as missing.
int32_t saved_row_height(const clsCharacter& chr);

// Switches AutoRedraw off and sets up the grid for `rows` rows below the
// header row: fonts, colours and behaviour, the two pictures, the columns and
// their widths, the picture column's colour and the value column's alignment.
void prepare_grid(platform::GridControl& grid, int32_t rows, int32_t row_height,
                  int32_t label_col_width);

// A heading row: columns 1 to 3 merged, the caption in bold in the heading
// colour, the row locked and the range coloured.
void format_heading_row(platform::GridControl& grid, int32_t row, TextView caption);

// AutoRedraw on again, and Refresh.
void finish_grid(platform::GridControl& grid);

// The lowest row a user sees: scanning from BottomRow up to row 1, the first
// whose RowHeight is above 0; 0 when there is none. (Enter on that row sends
// the focus to row 0, the hidden header row.)
int32_t lowest_shown_row(const platform::GridControl& grid);

}  // namespace zelkora::grid
