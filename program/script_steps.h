// Pieces of the desktop program's script language (desk/script.h) that
// every runner of it reads and writes alike: a step's verb and the rest of
// its line, an item named by index or caption, and the lines a run prints.
// Words are parted by plain spaces.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <vector>

#include "zelkora/grid/cls_grid_cell.h"
#include "zelkora/platform/grid_control.h"
#include "zelkora/platform/text.h"

namespace zelkora::desk {

// A step that cannot run: the reason.
struct StepError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// The text's first word (up to its first space) and all after that space,
// as it is: "a  b c" gives "a" and " b c".
struct FirstWord {
  Text word;
  Text after;
};
FirstWord first_word(TextView text);

// The words of the text, its spaces left out.
std::vector<Text> words_of(TextView text);

// The texts one a line, each line ended ("" for none).
Text lines_of(const std::vector<Text>& texts);

// A line's verb (its first word) and the rest, trimmed.
struct ScriptStep {
  Text verb;
  Text rest;
};
ScriptStep parse_step(TextView line);

// The row of an item given by its index or by its caption (the text of
// column 2 without its blanks); a StepError when the form has none.
int32_t row_of_item(clsGridCell& cell, const platform::GridControl& grid, TextView item);

// A step on the table of load cases ("case ..."): add a case; delete, or
// move up or down, case ROW; or replace the text of cell ROW COL (both from
// 1) by typing TEXT (empty: the cell emptied).
struct CaseStep {
  enum class Kind { kAdd, kDelete, kUp, kDown, kSet };
  Kind kind = Kind::kAdd;
  int32_t row = 0, col = 0;
  Text text;
};
CaseStep parse_case_step(TextView rest);

// What a run prints for a message box met ("message: TITLE | TEXT", the
// text on one line) and for a copy ("copied: " and the lines, "|" between).
Text message_line(TextView title, TextView text);
Text copied_line(TextView lines);

}  // namespace zelkora::desk
