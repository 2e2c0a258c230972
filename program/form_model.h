// What a calculation form should hold, stated apart from the code that holds
// it: the rules of the property grid's editing cycle and of the form's aids
// (docs/engineers-guide.md, "The desktop program" and "The grid of a form")
// written once more, plainly, over the layout's rows. The random tester
// (desk/monkey.h) feeds it the grid's events as a host raises them and the
// form's actions as the user takes them, and compares what it predicts with
// what the form shows.
//
// It holds per item the value, the bold mark and the hidden mark; per
// heading and group whether it is unfolded; the current row, the text the
// row had when it was entered (the text a refusal returns to) and the edited
// row; the undo history as whole snapshots; the values last saved or opened
// and the project files it saved.
//
//   FormModel model(platform, program, rows, state);   // as the form opened
//   model.enter_row(8);
//   model.cell_changing(8, 3, u"300");
//   bool cancel = model.leave_cell(8, 3);              // the check's verdict
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "program/programs.h"
#include "zelkora/checking/cls_err_chr.h"
#include "zelkora/grid/row_facts.h"

namespace zelkora::desk {

// A row of the layout as the model reads it (rows 1..R).
struct ModelRow {
  grid::RowFacts facts;        // kind, item, heading, group, caption, help, default
  bool event = false;          // a change in the row lets the form hide or show rows
  bool starts_folded = false;  // a heading or group folded in the layout
  bool keeps_text = false;     // no default of its own: the defaults keep its text
  int32_t caption_id = 0;
  int32_t list = 0;
  Text check;
};

// The state the model compares: per item its value and marks, per row
// whether it is shown.
struct ModelState {
  std::vector<Text> values;
  std::vector<bool> bold;
  std::vector<bool> hidden;
  std::vector<bool> unfolded;  // per row: a heading's or group's picture shows "-"
};

class FormModel {
 public:
  FormModel(std::shared_ptr<const platform::Platform> platform, const Program& program,
            std::vector<ModelRow> rows, ModelState opened);

  // ---- The grid's events (row and column the grid's; `text` what the
  // active cell holds at the event).
  void enter_row(int32_t row);
  // `editing`: the cell's editor is open (a change once it closed, as by
  // Escape, is taken at once).
  void cell_changing(int32_t row, int32_t col, TextView text, bool editing);
  // Whether the form must keep the focus in the cell (a refused value).
  bool leave_cell(int32_t row, int32_t col);
  void combo_click(int32_t row, TextView text);
  void click(int32_t row, int32_t col);
  void key_down(int32_t row, int32_t col, int16_t key);
  void double_click(int32_t row, int32_t col);

  // ---- The form's actions, as the user takes them.
  // A pending change becomes a step (the form does so before it closes).
  void record_pending() { record(); }
  // A column pasted: its leaves make one step at its end.
  void paste_begins() { pasting_ = true; }
  void paste_ends();
  void undo();
  void redo();
  // The defaults, answered yes.
  void defaults();
  // 恢复默认值 on row `row`.
  void reset_row(int32_t row);
  // 新建 (after the changes were dealt with).
  void new_project();
  // The project file `file` opened with these values.
  void opened(TextView file, const std::vector<Text>& values);
  void saved_to(TextView file);
  // The project's file, empty before the first save or open.
  const Text& file() const { return file_; }
  // The filter as its box and toggles say.
  void filter(TextView text, bool changed, bool refused);

  // ---- What the form should show.
  const ModelState& state() const { return state_; }
  const std::vector<ModelRow>& rows() const { return rows_; }
  bool changed() const { return state_.values != saved_; }
  // An item's default as the model has it (after 默认值, the layout's anew).
  const Text& default_of(std::size_t item) const { return defaults_[item]; }
  bool can_undo() const { return at_ > 0; }
  bool can_redo() const { return at_ + 1 < history_.size(); }
  // Whether row 1..R is shown: by its heading and group, the items that
  // apply, and the filter.
  bool row_shown(int32_t row) const;
  // The rows whose values their checks refuse (shown items only).
  std::vector<int32_t> refused_rows() const;
  // Refusals explained in a box since the last call.
  int32_t peek_refusals() const { return refusals_; }
  int32_t take_refusals() {
    const int32_t n = refusals_;
    refusals_ = 0;
    return n;
  }
  int32_t current_row() const { return current_row_; }
  // F8 from row `after`: the row it goes to (its heading and group
  // unfolded, the filter cleared when it hides the row), or 0 when no value
  // is refused.
  int32_t next_refused(int32_t after);
  bool filtered() const { return !filter_text_.empty() || filter_changed_ || filter_refused_; }

 private:
  const ModelRow* row_at(int32_t row) const;
  int32_t item_of(int32_t row) const;
  bool folded(int32_t row) const;
  Text refusal(int32_t row, TextView value) const;
  // The group rule on leaving row `row`; false when a group value has more
  // parts than members.
  bool apply_group_rule(int32_t row);
  void set_value(int32_t item, Text text);
  // The form's rules, as the grid lets the form apply them after a change
  // of an event row (or of everything, row 0).
  void form_rules(int32_t row);
  // One step of the history when the values differ from the last one.
  void record();
  void take_history();
  void move_history(std::size_t from, std::size_t to);
  void unfold_heading(int32_t heading, bool unfold);
  bool kept_by_filter(int32_t row) const;
  // The filter applied to the values as they are (the form applies it when
  // a value is taken, not while one is typed).
  void refilter();
  void entered_from_current();
  bool keeps_text(int32_t item) const;

  std::shared_ptr<const platform::Platform> platform_;
  const Program& program_;
  clsCharacter chr_;
  std::vector<ModelRow> rows_;  // rows_[r - 1] is row r
  std::vector<Text> defaults_;
  std::vector<Text> base_defaults_;  // as the form opened
  ModelState state_;
  int32_t current_row_ = 0;
  int32_t edited_row_ = 0;
  // The row a value was just picked in: the filter keeps it until its cell
  // is left (0: none).
  int32_t held_row_ = 0;
  Text entered_;
  std::vector<ModelState> history_;
  // Per point of the history, the marks as the form last took them there (a
  // row left without a change of value marks it all the same): what an undo
  // back to the point gives back.
  std::vector<std::vector<bool>> marks_left_;
  std::size_t at_ = 0;
  bool pasting_ = false;
  std::vector<Text> saved_;
  Text file_;
  Text filter_text_;
  bool filter_changed_ = false;
  bool filter_refused_ = false;
  std::vector<bool> kept_;  // by row, as the filter was last applied
  int32_t refusals_ = 0;
};

}  // namespace zelkora::desk
