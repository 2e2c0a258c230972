// The headless form: the user's actions as the grid control's events.
#include "zelkora/platform/headless/headless_form.h"

namespace zelkora::platform::headless {

void HeadlessForm::enter(int32_t row, int32_t col) {
  grid.ActiveCell(row, col);
  if (events_) events_->EnterRow();
}

void HeadlessForm::type(TextView text) {
  const CellRef at = grid.ActiveCell();
  if (grid.Locked(at.row)) return;
  bool cancel = false;
  if (events_) events_->BeforeEdit(at.row, at.col, cancel);
  if (cancel) return;
  grid.Text(at.row, at.col, text);
  if (events_) events_->CellChanging();
}

bool HeadlessForm::leave() {
  bool cancel = false;
  const CellRef at = grid.ActiveCell();
  if (events_) events_->LeaveCell(at.row, at.col, cancel);
  return cancel;
}

void HeadlessForm::pick(TextView text) {
  const CellRef at = grid.ActiveCell();
  if (events_) events_->ComboDropDown();
  grid.Text(at.row, at.col, text);
  if (events_) events_->ComboClick();
}

void HeadlessForm::key(int16_t key_code) {
  if (events_) events_->KeyDown(key_code, 0);
}

void HeadlessForm::click(int32_t row, int32_t col) {
  grid.ActiveCell(row, col);
  if (events_) events_->Click(row, col);
}

void HeadlessForm::double_click() {
  if (events_) events_->DblClick();
}

void HeadlessForm::lose_focus() {
  if (events_) events_->LostFocus();
}

}  // namespace zelkora::platform::headless
