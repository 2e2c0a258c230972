// A calculation form's clsGridCell on its controls.
#include "zelkora/grid/form_session.h"

#include "zelkora/grid/grid_appearance.h"

namespace zelkora::grid {

FormSession::FormSession(std::shared_ptr<const platform::Platform> platform,
                         platform::GridControl& grid, platform::RichTextBox& title,
                         platform::Panel& panel, platform::GridForm& form)
    : cell_(std::move(platform)), grid_(grid), title_(title), panel_(panel), form_(form) {}

void FormSession::build(int32_t layout) {
  cell_.lInterfaceResID(layout);
  cell_.GridCell_InitializeA(&grid_, &title_, &panel_, &form_);
  cell_.GridTitle_Initialize();
  cell_.LoadDefaultEnter(false);
}

void FormSession::LeaveCell(int32_t row, int32_t col, bool& cancel) {
  if (check_on_leave_) {
    // The check takes the grid's active cell, which is the cell being left.
    if (cell_.bLeaveCellCanCelA()) cancel = true;
    return;
  }
  cell_.GridCell_LeaveCellA(row, col, cancel);
}

void FormSession::BeforeEdit(int32_t /*row*/, int32_t col, bool& cancel) {
  if (col != kValueCol) cancel = true;
}

}  // namespace zelkora::grid
