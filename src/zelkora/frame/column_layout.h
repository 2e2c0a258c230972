// The column layout of a report table, held by each clsCharacter: per column a
// width in display cells, an alignment and the blanks reserved besides the
// text. The text of a column may use width - extra blanks cells; a column of
// width 0 or less is switched off (its cell is empty).
//
//   ColumnLayout layout;
//   layout.ubound = 2;                              // columns 0 to 2 ...
//   layout.initialize(1, 10, zkLeftJustify, 1);     // ... made now
//   layout.set_width(0, 5);
//
// The upper index takes effect only when the columns are made anew. A
// negative upper index makes a table without columns. An index outside the
// columns made throws Fault(IndexOutOfRange).
#pragma once

#include <cstdint>
#include <vector>

#include "zelkora/frame/shared_types.h"

namespace zelkora::frame {

struct ColumnLayout {
  // The upper column index for the next initialize().
  int32_t ubound = 0;
  // Indexed 0 to upper(); all three always have the same size.
  std::vector<int32_t> width;
  std::vector<int32_t> alignment;
  std::vector<int32_t> extra_blanks;

  // The upper index of the columns made, -1 when there are none.
  int32_t upper() const { return static_cast<int32_t>(width.size()) - 1; }

  // Makes columns 0 to `ubound`, all zero, then gives columns `start` to
  // `ubound` this width, alignment and extra blanks. A negative `start` (with
  // columns to set) throws Fault(IndexOutOfRange) and changes nothing.
  void initialize(int32_t start, int32_t column_width, int32_t column_alignment,
                  int32_t column_extra);

  // Throws Fault(IndexOutOfRange) unless `index` is a column made.
  void check(int32_t index) const;

  void set_width(int32_t index, int32_t value);
  void set_alignment(int32_t index, int32_t value);
  void set_extra_blanks(int32_t index, int32_t value);
};

}  // namespace zelkora::frame
