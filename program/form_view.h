// What shows a calculation form's work (program/form_work.h) to the user: the
// grid control and the controls around it, what the grid does on the form's
// behalf as the user's hand would, and the window's other parts. The desktop
// form (desk/calc_form.h) is one; the headless form
// (program/headless_desk_form.h) keeps the same in memory.
//
// Rows are the grid's; every row named here is edited in its value column.
#pragma once

#include <cstdint>
#include <vector>

#include "zelkora/grid/row_filter.h"
#include "zelkora/platform/controls.h"
#include "zelkora/platform/grid_control.h"
#include "zelkora/platform/text.h"

namespace zelkora::desk {

class FormView {
 public:
  enum class SaveChanges { kSave, kDiscard, kCancel };

  virtual ~FormView() = default;

  // ---- The controls the form is built on.
  virtual platform::GridControl& grid_control() = 0;
  virtual platform::RichTextBox& title_box_control() = 0;
  virtual platform::Panel& panel_control() = 0;
  // The table of load cases of a form that has one (Program::load_cases),
  // else null. Its edits are told to FormWork::cases_changed.
  virtual platform::ListView* case_table() { return nullptr; }
  // The grid's events go to `events` (null: nowhere).
  virtual void connect_events(platform::GridEvents* events) = 0;

  // ---- The grid, worked for the form as the user works it.
  // The active cell left, as a click elsewhere leaves it; false when its
  // value is refused (its editor stays open).
  virtual bool leave_cell() = 0;
  // `text` entered into the row's value as if typed; false when refused.
  virtual bool type_into(int32_t row, TextView text) = 0;
  // The row's value made active, its editor open; false when refused.
  virtual bool edit_cell(int32_t row) = 0;
  // The row's value made the current cell.
  virtual void make_current(int32_t row) = 0;
  virtual bool editing() const = 0;
  virtual int32_t current_row() const = 0;
  // The rows with a selected cell, in order (none: the current one counts).
  virtual std::vector<int32_t> selected_rows() const = 0;
  virtual void clear_selection() = 0;
  // The rows a filter keeps (MemoryGrid::show_only); empty: every row.
  virtual void show_only(std::vector<bool> kept) = 0;
  virtual bool filtered() const = 0;
  virtual bool row_shown(int32_t row) const = 0;
  // The next row after `row` (`step` 1) or before it (-1) whose value can be
  // edited, or -1.
  virtual int32_t next_editable_row(int32_t row, int step) const = 0;
  // A refused value's mark, `note` the refusal; an empty note clears it.
  virtual void mark_refused(int32_t row, TextView note) = 0;
  virtual bool marked(int32_t row) const = 0;

  // ---- The window.
  // The title ("梁配筋计算 - 某办公楼[*]"; "[*]" where the changed mark goes).
  virtual void show_title(TextView title, bool changed) = 0;
  // A note on the status line, for `milliseconds` (0: until the next).
  virtual void show_status(TextView text, int32_t milliseconds) = 0;
  virtual void clear_status() = 0;
  // How many values are refused ("2 个数据有错误（F8 转到）"; empty: none).
  virtual void show_refused_count(TextView text) = 0;
  virtual void show_history(bool can_undo, bool can_redo) = 0;
  // The filter as the form applies it (after the form changed it itself).
  virtual void show_filter(const grid::RowFilter& filter) = 0;
  // The values as they are now, after each change.
  virtual void show_values(const std::vector<Text>& values) = 0;
  // A report calculated from `values` (no lines: none), and the report shown
  // marked out of date.
  virtual void show_report(const std::vector<Text>& lines, const std::vector<Text>& values) = 0;
  virtual void show_report_stale() = 0;
  // The title box shows the current row's notes; `grows` while they hold a
  // refusal (it grows to show them whole).
  virtual void fit_title_box(bool grows) = 0;
  // The user's choice of a file to open or save (`filter` the kinds of
  // files, `file` the project's); empty when none was chosen.
  virtual Text choose_file(bool saving, TextView title, TextView file, TextView filter) = 0;
  // Save, Discard or Cancel, asked about a changed project.
  virtual SaveChanges ask_save_changes(TextView text, TextView title) = 0;
};

}  // namespace zelkora::desk
