// A calculation form's state as text lines.
#include "program/form_state.h"

#include <string>

#include "zelkora/grid/grid_appearance.h"

namespace zelkora::desk {

namespace {

Text number(int64_t n) { return from_utf8(std::to_string(n)); }
Text yes_no(bool yes) { return yes ? Text(u"yes") : Text(u"no"); }

}  // namespace

std::vector<Text> form_state(FormWork& work) {
  clsGridCell& cell = work.cell();
  FormView& view = work.view();
  const platform::GridControl& grid = view.grid_control();
  std::vector<Text> lines;
  for (int32_t row = 1; row < grid.Rows(); ++row) {
    const int32_t item = cell.lGetIndexByRow(row);
    Text line = u"row " + number(row) + u": " + (item >= 0 ? cell.tGetText(item) : Text(u"-")) +
                u" | " + grid.Text(row, grid::kValueCol);
    if (grid.FontBold(row, grid::kValueCol)) line += u" bold";
    if (!view.row_shown(row)) line += u" hidden";
    if (view.marked(row)) line += u" refused";
    lines.push_back(std::move(line));
  }
  const platform::CellRef active = grid.ActiveCell();
  lines.push_back(u"active " + number(active.row) + u"," + number(active.col) +
                  (view.editing() ? Text(u" editing") : Text()));
  lines.push_back(u"changed " + yes_no(work.changed()) + u", refused " +
                  number(static_cast<int64_t>(work.refused_rows().size())) + u", undo " +
                  yes_no(work.history().can_undo()) + u", redo " +
                  yes_no(work.history().can_redo()));
  const grid::RowFilter& filter = work.filter();
  lines.push_back(u"filter \"" + filter.text + u"\"" +
                  (filter.changed ? Text(u" changed") : Text()) +
                  (filter.refused ? Text(u" refused") : Text()));
  lines.push_back(u"title " + work.window_title());
  lines.push_back(u"notes " + replace_all(view.title_box_control().Text(), u"\r\n", u" / "));
  for (const std::vector<Text>& row : work.cases()) {
    Text line = u"case";
    for (const Text& cell : row) line += u" | " + cell;
    lines.push_back(std::move(line));
  }
  lines.push_back(u"report " + number(static_cast<int64_t>(work.report_lines().size())) +
                  u" lines" + (work.report_stale() ? Text(u" stale") : Text()));
  return lines;
}

}  // namespace zelkora::desk
