// Pieces of the desktop program's script language (desk/script.h) that
// every runner of it reads and writes alike: a step's verb and the rest of
// its line, an item named by index or caption, and the lines a run prints.
#pragma once

#include <QString>
#include <cstdint>
#include <stdexcept>

#include "zelkora/grid/cls_grid_cell.h"
#include "zelkora/platform/grid_control.h"
#include "zelkora/platform/text.h"

namespace zelkora::desk {

// A step that cannot run: the reason.
struct StepError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// A line's verb (its first word) and the rest, trimmed.
struct ScriptStep {
  QString verb;
  QString rest;
};
ScriptStep parse_step(const QString& line);

// The row of an item given by its index or by its caption (the text of
// column 2 without its blanks); a StepError when the form has none.
int32_t row_of_item(clsGridCell& cell, const platform::GridControl& grid, const QString& item);

// A step on the table of load cases ("case ..."): add a case; delete, or
// move up or down, case ROW; or replace the text of cell ROW COL (both from
// 1) by typing TEXT (empty: the cell emptied).
struct CaseStep {
  enum class Kind { kAdd, kDelete, kUp, kDown, kSet };
  Kind kind = Kind::kAdd;
  int32_t row = 0, col = 0;
  QString text;
};
CaseStep parse_case_step(const QString& rest);

// What a run prints for a message box met ("message: TITLE | TEXT", the
// text on one line) and for a copy ("copied: " and the lines, "|" between).
QString message_line(TextView title, TextView text);
QString copied_line(QString lines);

}  // namespace zelkora::desk
