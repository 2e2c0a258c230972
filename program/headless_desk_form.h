// A calculation form of the desktop program without any widget: the same
// work (program/form_work.h) on the library's in-memory grid, title box and
// panel, worked by a user's hand (HeadlessUser) that raises the grid events
// the desktop grid raises. The window's parts are kept as text: its title,
// status line, count of refused values, report. Message boxes are the
// platform's (a RecordingMessageBox answers questions with `answer`).
//
//   HeadlessDeskForm form(Platform::headless(), *program_of(u"梁配筋计算"));
//   form.user().click(8, 3);
//   form.user().type(u"300");
//   form.user().key(HeadlessUser::kEnter);
//   form.work().save_file(u"beam.zks");
#pragma once

#include <functional>
#include <map>
#include <memory>

#include "program/form_view.h"
#include "program/form_work.h"
#include "zelkora/platform/headless/headless_controls.h"
#include "zelkora/platform/headless/headless_form.h"

namespace zelkora::desk {

class HeadlessDeskForm : private FormView {
 public:
  HeadlessDeskForm(std::shared_ptr<const platform::Platform> platform, const Program& program);
  ~HeadlessDeskForm() override;

  FormWork& work() { return *work_; }
  platform::headless::HeadlessForm& controls() { return controls_; }
  platform::headless::HeadlessUser& user() { return user_; }
  // The table of load cases (null on a form without one).
  platform::headless::MemoryListView* cases() { return cases_.get(); }

  const Text& title() const { return title_; }
  bool title_changed() const { return title_changed_; }
  const Text& status() const { return status_; }
  const Text& refused_count() const { return refused_count_; }
  bool can_undo() const { return can_undo_; }
  bool can_redo() const { return can_redo_; }
  // The report shown (empty: none) and whether it is marked out of date.
  const std::vector<Text>& report() const { return report_; }
  bool report_stale() const { return report_stale_; }

  // Answers the question about a changed project (Save, Discard, Cancel);
  // without it the platform's question answers: kYes saves, kCancel
  // cancels, anything else discards.
  std::function<SaveChanges(TextView text, TextView title)> on_save_changes;

 private:
  // ---- FormView ----
  platform::GridControl& grid_control() override { return controls_.grid; }
  platform::RichTextBox& title_box_control() override { return controls_.title; }
  platform::Panel& panel_control() override { return controls_.panel; }
  platform::ListView* case_table() override { return cases_.get(); }
  void connect_events(platform::GridEvents* events) override { controls_.connect(events); }
  bool leave_cell() override { return user_.leave_cell(); }
  bool type_into(int32_t row, TextView text) override;
  bool edit_cell(int32_t row) override;
  void make_current(int32_t row) override;
  bool editing() const override { return user_.editing(); }
  int32_t current_row() const override { return controls_.grid.ActiveCell().row; }
  // The headless grid selects no cells: the current row counts.
  std::vector<int32_t> selected_rows() const override { return {}; }
  void clear_selection() override {}
  void show_only(std::vector<bool> kept) override { controls_.grid.show_only(std::move(kept)); }
  bool filtered() const override { return controls_.grid.filtered(); }
  bool row_shown(int32_t row) const override { return controls_.grid.row_shown(row); }
  int32_t next_editable_row(int32_t row, int step) const override;
  void mark_refused(int32_t row, TextView note) override;
  bool marked(int32_t row) const override { return marks_.count(row) > 0; }
  void show_title(TextView title, bool changed) override;
  void show_status(TextView text, int32_t /*milliseconds*/) override { status_ = text; }
  void clear_status() override { status_.clear(); }
  void show_refused_count(TextView text) override { refused_count_ = text; }
  void show_history(bool can_undo, bool can_redo) override;
  void show_filter(const grid::RowFilter& /*filter*/) override {}
  void show_values(const std::vector<Text>& /*values*/) override {}
  void show_report(const std::vector<Text>& lines, const std::vector<Text>& values) override;
  void show_report_stale() override { report_stale_ = true; }
  void fit_title_box(bool /*grows*/) override {}
  // No chooser: as if the user cancelled it.
  Text choose_file(bool, TextView, TextView, TextView) override { return {}; }
  SaveChanges ask_save_changes(TextView text, TextView title) override;

  std::shared_ptr<const platform::Platform> platform_;
  platform::headless::HeadlessForm controls_;
  // The table of load cases, on a form that has one.
  std::unique_ptr<platform::headless::MemoryListView> cases_;
  platform::headless::HeadlessUser user_{controls_};
  std::map<int32_t, Text> marks_;  // refused values' rows, their refusals
  Text title_;
  bool title_changed_ = false;
  Text status_;
  Text refused_count_;
  bool can_undo_ = false;
  bool can_redo_ = false;
  std::vector<Text> report_;
  bool report_stale_ = false;
  std::unique_ptr<FormWork> work_;
};

}  // namespace zelkora::desk
