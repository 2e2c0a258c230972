// Tables of the design codes held in texts, and linear interpolation in them
// (clsCharacter::dInterpolate, clsErrChr::GenCheckInterpolateErrW).
//
// A table is written in a text as rows of items, the items separated by "|"
// as in the catalogue's lists, the rows by ";" or a line break (CR LF, LF).
// A row may end with "|"; empty rows (blanks, or "|" alone) are skipped.
//
//   one dimension: the keys, then the values
//     "20|25|30|35;9.6|11.9|14.3|16.7"
//   two dimensions: the column keys after a corner item (any text), then one
//   row per row key: the key, then one value per column key
//     "b/h|1|2|3;100|0.5|0.6|0.7;200|0.8|0.9|1.0"
//
// Every item is read by its leading number with "." as decimal point, so
// "30MPa" is 30 and "C30" no number. The table is damaged, and nothing is
// read from it, when an item is no number, a row has another count of values
// than there are keys, or the keys of a dimension are not strictly
// increasing or strictly decreasing (repeated keys included); a single key is
// allowed.
//
// A point between two keys takes the straight line between their values; a
// point on a key takes that key's value exactly. In two dimensions the two
// rows around the row key are interpolated along the columns first, then
// between each other. A point outside the keys (NaN too) is not
// extrapolated: it is outside the table.
#pragma once

#include <cstdint>
#include <vector>

#include "zelkora/platform/text.h"

namespace zelkora::frame {

// What went wrong, if anything; `value` is 0 then.
enum class TableFault { kNone, kDamaged, kOutsideRows, kOutsideColumns };

// For a point outside, `low` and `high` are the least and the greatest key
// of the coordinate that is outside (the row keys or the column keys).
struct TableValue {
  double value = 0;
  TableFault fault = TableFault::kNone;
  double low = 0, high = 0;
};

// The value at `x` of a one-dimensional table (x is a key of the first row;
// a point outside is kOutsideRows).
TableValue interpolate(TextView table, double x);

// The value at row key `x` and column key `y` of a two-dimensional table.
TableValue interpolate(TextView table, double x, double y);

// The error number of a fault: 0, 39997 for a point outside the table,
// 39999 for a damaged table.
int32_t error_number(TableFault fault);

}  // namespace zelkora::frame
