// Report tables: the fixed-pitch column formatter behind the ListOut_ and
// tFormatByLen operations of clsCharacter, and the keystroke filter of text
// boxes that accept only certain characters.
//
// A cell is fitted into the cells its column leaves for text (avail = width -
// extra blanks; widths are display widths, markup not counted, a Chinese
// character two cells). A text that is too wide is shortened:
//   - avail below 4: avail "*";
//   - a number with the decimal symbol: the last two characters dropped, again
//     and again while it is too wide ("3.14159265" in 9 cells: "3.141592");
//   - anything else: its first avail - 3 characters and "..." (characters,
//     not cells, so a shortened Chinese text may still be too wide).
// Then it is padded (see cell_paddings). Width 10, extra 1, "abc":
//   right "      abc ", left " abc      ", centre "   abc    ".
//
// Faults: a column index outside the layout or a cell index outside the row
// throws Fault(IndexOutOfRange); a width sum beyond 32 bits Fault(Overflow);
// the width adjustment with room to fill and nothing to divide it by
// Fault(DivisionByZero). A fault leaves the layout and the row text as they
// were.
#pragma once

#include <cstdint>
#include <vector>

#include "zelkora/frame/column_layout.h"
#include "zelkora/frame/numbers.h"
#include "zelkora/platform/text.h"

namespace zelkora::reporttext {

using frame::ColumnLayout;

// What the shortening needs of the user's number notation: the symbols of
// the numeric test and the decimal symbol text (tDecimalSymbol).
struct Notation {
  frame::NumberSymbols symbols;
  TextView decimal_symbol = u".";
};

// The display width of a text as a Long.
int32_t text_width(TextView text);

struct FittedText {
  Text text;
  bool shortened = false;
  int32_t width = 0;  // display width of `text`
};

// `text` made to fit `avail` cells as described above; with a negative avail
// a text is shortened to empty text.
FittedText fit_text(TextView text, int32_t avail, const Notation& notation);

struct Paddings {
  int32_t left = 0;
  int32_t right = 0;
};

// The blanks left and right of a cell text of width `width` (\ truncates):
//
//   alignment    shortened text     text that fits (room = avail - width)
//   -1 left      S, 0               S, room
//    0 centre    S\2, S - S\2       S\2 + room\2, (S - S\2) + (room - room\2)
//    1 right     0, S               room, S
//
// S is the column's extra blanks; any other alignment gives no padding.
Paddings cell_paddings(int32_t alignment, int32_t extra, int32_t avail, int32_t width,
                       bool shortened);

// The cell text of column `index` for `text`: fitted, then padded (a negative
// padding gives no blanks). A column of width 0 or less gives empty text.
Text format_cell(const ColumnLayout& layout, int32_t index, TextView text,
                 const Notation& notation);

// The cells `first` to `last` of a row, each formatted in its column, joined.
// `cells` is indexed by column.
Text format_row(const ColumnLayout& layout, const std::vector<Text>& cells, int32_t first,
                int32_t last, const Notation& notation);

// Widens the columns so that the table fills `line_width`, and returns the
// table's width before widening: add + 2 plus the widths of the columns in
// use (width > 0). The room left, divided by the number of columns in use
// from `adjust_start` on and then by `adjust`, is added to each of them.
// Room 0 or less widens nothing.
int32_t adjust_widths(ColumnLayout& layout, int32_t line_width, int32_t adjust_start, int32_t add,
                      int32_t adjust);

// The control keys that always pass the filter: 3, 22, 24 and 26 (copy,
// paste, cut, undo).
bool is_edit_key(int16_t key);

// `key` when it may be typed, else 0: an edit key always, any other when its
// character is backspace (8) or occurs, without regard to case, in `allowed`.
int16_t filter_key(int16_t key, TextView allowed);

}  // namespace zelkora::reporttext
