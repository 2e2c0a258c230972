// A calculation form of the desktop program without any widget.
#include "program/headless_desk_form.h"

#include "zelkora/grid/grid_appearance.h"

namespace zelkora::desk {

HeadlessDeskForm::HeadlessDeskForm(std::shared_ptr<const platform::Platform> platform,
                                   const Program& program)
    : platform_(platform) {
  if (program.load_cases) {
    cases_ = std::make_unique<platform::headless::MemoryListView>();
    cases_->columns = kCaseColumns;
  }
  work_ = std::make_unique<FormWork>(platform, program, static_cast<FormView&>(*this));
  // Shown, the grid takes the focus and enters its first shown cell.
  const platform::headless::MemoryGrid& grid = controls_.grid;
  int32_t row = 0, col = 0;
  while (row + 1 < grid.Rows() && !grid.row_shown(row)) ++row;
  while (col + 1 < grid.Cols() && grid.ColWidth(col) <= 0) ++col;
  user_.move_to(row, col);
  // The view kept by the form last closed (on any host).
  if (const std::optional<grid::ViewState> kept = work_->kept_view()) {
    work_->restore_kept_view(*kept);
  }
}

HeadlessDeskForm::~HeadlessDeskForm() = default;

bool HeadlessDeskForm::type_into(int32_t row, TextView text) {
  return user_.type_into(row, grid::kValueCol, text);
}

bool HeadlessDeskForm::edit_cell(int32_t row) { return user_.edit_cell(row, grid::kValueCol); }

void HeadlessDeskForm::make_current(int32_t row) { user_.move_to(row, grid::kValueCol); }

int32_t HeadlessDeskForm::next_editable_row(int32_t row, int step) const {
  return controls_.grid.next_editable_row(row, grid::kValueCol, step);
}

void HeadlessDeskForm::mark_refused(int32_t row, TextView note) {
  if (note.empty()) {
    marks_.erase(row);
  } else {
    marks_[row] = Text(note);
  }
}

void HeadlessDeskForm::show_title(TextView title, bool changed) {
  title_ = title;
  title_changed_ = changed;
}

void HeadlessDeskForm::show_history(bool can_undo, bool can_redo) {
  can_undo_ = can_undo;
  can_redo_ = can_redo;
}

void HeadlessDeskForm::show_report(const std::vector<Text>& lines,
                                   const std::vector<Text>& /*values*/) {
  report_ = lines;
  report_stale_ = false;
}

FormView::SaveChanges HeadlessDeskForm::ask_save_changes(TextView text, TextView title) {
  if (on_save_changes) return on_save_changes(text, title);
  switch (platform_->messages->question(text, title)) {
    case platform::MessageBox::kYes:
      return SaveChanges::kSave;
    case platform::MessageBox::kCancel:
      return SaveChanges::kCancel;
    default:
      return SaveChanges::kDiscard;
  }
}

}  // namespace zelkora::desk
