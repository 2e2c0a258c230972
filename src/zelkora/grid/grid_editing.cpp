// clsGridCell: the cell editing cycle — the handlers of the grid control's
// events, the group rule, the bold marks of changed values, the hidden marks
// and the default values.
#include <string>

#include "zelkora/frame/error_numbers.h"
#include "zelkora/grid/cls_grid_cell.h"
#include "zelkora/grid/grid_appearance.h"
#include "zelkora/grid/group_value.h"
#include "zelkora/grid/layout.h"
#include "zelkora/grid/row_facts.h"

namespace zelkora {

namespace {

constexpr int16_t kSpaceKey = 32;
constexpr int16_t kEnterKey = 13;
// "The value has more parts than the group has members."

}  // namespace

// ---- Cells ---------------------------------------------------------------------

void clsGridCell::take_active_cell() {
  const platform::CellRef active = grid_->ActiveCell();
  current_row_ = active.row;
  current_col_ = active.col;
}

void clsGridCell::set_value(int32_t row, TextView text) {
  const int32_t item = value_item(row);
  if (item >= 0) items_.current[static_cast<std::size_t>(item)] = text;
  grid_->Text(row, grid::kValueCol, text);
}

void clsGridCell::update_bold(int32_t row) {
  const int32_t item = value_item(row);
  if (item < 0) return;
  const auto i = static_cast<std::size_t>(item);
  grid_->FontBold(row, grid::kValueCol,
                  grid::differs_from_default(items_.current[i], items_.defaults[i]));
}

// A refused value: the cell gets back the text its row had when entered.
// That write is a change of the value cell, so the item takes the text too:
// what the cell shows is what is checked, saved and undone.
void clsGridCell::restore_entered_text(int32_t row) { set_value(row, entered_text_); }

// The program wrote the current row's value cell (a file, the defaults, an
// undo): that text is the one a refusal returns to, and it was not typed.
void clsGridCell::keep_entered_text() {
  if (ready() && valid_row(current_row_)) {
    entered_text_ = grid_->Text(current_row_, grid::kValueCol);
  }
}

// ---- The group rule ------------------------------------------------------------

bool clsGridCell::apply_group_rule(int32_t row) {
  const int32_t kind = kind_of(row);
  if (kind == grid::kKindGroup) {
    const auto i = static_cast<std::size_t>(value_item(row));
    const auto [first, last] = members_of(row);
    const std::size_t members =
        last < first ? 0 : static_cast<std::size_t>(last) - static_cast<std::size_t>(first) + 1;
    std::vector<Text> parts = grid::split_group_value(items_.current[i]);
    if (parts.size() > members) {
      clsErrChr& err = *errors_;
      err.bMessageIgnore(false);
      err.lError_ID(error_id::kPartCount);
      err.tCaption1(character_->tString(caption_of(row)));
      err.TextValue1(items_.current[i]);
      err.GenMsgErrorX();
      restore_entered_text(row);
      return false;
    }
    set_value(row, grid::join_group_value(parts));
    parts.resize(members);
    for (int32_t r = first; r <= last; ++r) {
      set_value(r, parts[static_cast<std::size_t>(r - first)]);
    }
  } else if (kind == grid::kKindMember) {
    if (const int32_t group = group_of(row)) {
      const auto [first, last] = members_of(group);
      std::vector<Text> parts;
      for (int32_t r = first; r <= last; ++r) {
        const int32_t item = value_item(r);
        parts.push_back(item < 0 ? Text() : items_.current[static_cast<std::size_t>(item)]);
      }
      set_value(group, grid::join_group_value(parts));
    }
  }
  return true;
}

bool clsGridCell::leave_current_cell(bool check) {
  const int32_t row = current_row_;
  if (!ready() || !valid_row(row) || current_col_ != grid::kValueCol) return true;
  const int32_t item = value_item(row);
  if (item < 0 || folded_away(row)) return true;
  // Only a value changed in the cell is checked: one refused without being
  // typed (from a file, or by another value) keeps its mark until mended,
  // and its row can be left.
  if (check && items_.current[static_cast<std::size_t>(item)] != entered_text_) {
    clsErrChr& err = *errors_;
    err.bMessageIgnore(false);
    if (grid::check_entry(err, *character_, check_of(row), caption_of(row), list_of(row),
                          items_.current[static_cast<std::size_t>(item)]) != 0) {
      restore_entered_text(row);
      return false;
    }
  }
  if (!apply_group_rule(row)) return false;
  // Only the edited row's mark follows its value; rows the group rule
  // rewrote keep theirs.
  if (row == edited_row_) update_bold(row);
  return true;
}

// ---- Handlers --------------------------------------------------------------------

void clsGridCell::GridCell_EnterRow() {
  if (!ready()) return;
  take_active_cell();
  if (!valid_row(current_row_)) return;
  entered_text_ = grid_->Text(current_row_, grid::kValueCol);
  tShowRowTitle();
}

void clsGridCell::GridCell_CellChanging() {
  if (!ready() || loading_) return;
  take_active_cell();
  const int32_t row = current_row_;
  if (!valid_row(row) || current_col_ != grid::kValueCol || kind_of(row) == grid::kKindHeading) {
    return;
  }
  const int32_t item = value_item(row);
  if (item < 0) return;
  items_.current[static_cast<std::size_t>(item)] = grid_->Text(row, grid::kValueCol);
  edited_row_ = row;
}

void clsGridCell::GridCell_LeaveCell(bool& Cancel) {
  if (!leave_current_cell(false)) Cancel = true;
}

void clsGridCell::GridCell_LeaveCellA(int32_t Row, int32_t Col, bool& Cancel) {
  current_row_ = Row;
  current_col_ = Col;
  if (!leave_current_cell(false)) {
    Cancel = true;
    return;
  }
  ControlEnableA(Row);
}

void clsGridCell::GridCell_LeaveCellB(int32_t Row, int32_t Col, bool& Cancel) {
  current_row_ = Row;
  current_col_ = Col;
  if (!leave_current_cell(false)) {
    Cancel = true;
    return;
  }
  ControlEnableB(Row);
}

void clsGridCell::pick_from_list() {
  if (!ready() || loading_) return;
  take_active_cell();
  const int32_t row = current_row_;
  if (!valid_row(row) || kind_of(row) == grid::kKindHeading) return;
  const int32_t item = value_item(row);
  if (item < 0) return;
  items_.current[static_cast<std::size_t>(item)] = grid_->Text(row, grid::kValueCol);
  edited_row_ = row;
  apply_group_rule(row);
  update_bold(row);
}

void clsGridCell::GridCell_ComboClick() { pick_from_list(); }

void clsGridCell::GridCell_ComboClickA() {
  pick_from_list();
  ControlEnableA(current_row_);
}

void clsGridCell::GridCell_ComboClickB() {
  pick_from_list();
  ControlEnableB(current_row_);
}

void clsGridCell::GridCell_ComboDropDown() {
  if (!ready()) return;
  take_active_cell();
  const int32_t row = current_row_;
  if (!valid_row(row) || kind_of(row) == grid::kKindHeading) return;
  grid_->ComboList(row, grid::kValueCol, character_->ComboBoxList(list_of(row)));
}

void clsGridCell::GridCell_KeyDown(int16_t& KeyCode, int16_t /*Shift*/) {
  if (!ready()) return;
  take_active_cell();
  const int32_t row = current_row_;
  if (!valid_row(row)) return;
  if (KeyCode == kSpaceKey) {
    toggle(row, current_col_);
  } else if (KeyCode == kEnterKey && row == grid::lowest_shown_row(*grid_)) {
    // Row 0 is the hidden header row: from the last row the focus goes there.
    grid_->SetFocus(0, current_col_);
  }
}

void clsGridCell::GridCell_Click() {
  if (!ready()) return;
  const platform::CellRef active = grid_->ActiveCell();
  GridCell_ClickA(active.row, active.col);
}

void clsGridCell::GridCell_ClickA(int32_t Row, int32_t Col) {
  if (!ready()) return;
  current_row_ = Row;
  current_col_ = Col;
  if (valid_row(Row) && Col == grid::kPictureCol) toggle(Row, Col);
}

void clsGridCell::GridCell_DblClick() {
  if (!ready()) return;
  take_active_cell();
  if (valid_row(current_row_)) toggle(current_row_, current_col_);
}

void clsGridCell::GridCell_DblClickA() {
  GridCell_DblClick();
  ControlEnableA(current_row_);
}

void clsGridCell::GridCell_DblClickB() {
  GridCell_DblClick();
  ControlEnableB(current_row_);
}

void clsGridCell::GridCell_LostFocus() {
  if (!ready() || loading_) return;
  const platform::CellRef active = grid_->ActiveCell();
  if (!valid_row(active.row) || active.col != grid::kValueCol) return;
  const int32_t item = value_item(active.row);
  if (item < 0 || kind_of(active.row) == grid::kKindHeading) return;
  if (grid_->Text(active.row, grid::kValueCol) != items_.current[static_cast<std::size_t>(item)]) {
    GridCell_CellChanging();
  }
}

// ---- Default values ------------------------------------------------------------------

void clsGridCell::LoadDefaultEnter(bool bMsg) {
  if (!rows_.split) return;
  if (character_->vbLoadDefaultData(bMsg) == platform::MessageBox::kCancel) return;
  LoadingScope loading(*this);
  const bool cells = ready();
  if (cells) grid_->AutoRedraw(false);
  for (int32_t r = 1; r <= rows_.rows; ++r) {
    const int32_t item = value_item(r);
    if (item < 0 || kind_of(r) == grid::kKindHeading) continue;
    Text text = tDefaultText(r);
    if (cells) grid_->Text(r, grid::kValueCol, text);
    items_.defaults[static_cast<std::size_t>(item)] = std::move(text);
  }
  items_.current = items_.defaults;
  if (!cells) return;
  keep_entered_text();
  for (int32_t r = 1; r <= rows_.rows; ++r) grid_->FontBold(r, grid::kValueCol, false);
  grid::finish_grid(*grid_);
}

void clsGridCell::LoadDefaultEnterA(bool bMsg) {
  LoadDefaultEnter(bMsg);
  ControlEnableA(0);
}

void clsGridCell::LoadDefaultEnterB(bool bMsg) {
  LoadDefaultEnter(bMsg);
  ControlEnableB(0);
}

// ---- Hidden marks ----------------------------------------------------------------------

void clsGridCell::ControlEnable() {
  if (!ready()) return;
  grid_->AutoRedraw(false);
  for (int32_t r = 1; r <= rows_.rows; ++r) {
    if (kind_of(r) == grid::kKindHeading || value_item(r) < 0) continue;
    if (!collapsed_[static_cast<std::size_t>(r)]) {
      grid_->RowHeight(r, item_hidden(r) ? 0 : row_height_);
    }
  }
  // From the bottom up: a heading stays while any item row under it applies.
  bool any_applies = false;
  for (int32_t r = rows_.rows; r >= 1; --r) {
    if (kind_of(r) == grid::kKindHeading) {
      grid_->RowHeight(r, any_applies ? row_height_ : 0);
      any_applies = false;
    } else if (value_item(r) >= 0 && !item_hidden(r)) {
      any_applies = true;
    }
  }
  grid::finish_grid(*grid_);
}

void clsGridCell::ControlEnableA(int32_t Row) {
  if (!ready() || loading_) return;
  if (Row > 0 && (!valid_row(Row) || !rows_.event[static_cast<std::size_t>(Row)])) return;
  if (form_) {
    std::vector<Text> texts = items_.current;
    form_->Let_Text(texts);
    form_->ControlEnable(items_.hidden);
    items_.hidden.resize(items_.current.size(), false);
  }
  ControlEnable();
}

void clsGridCell::ControlEnableB(int32_t Row) {
  if (!ready() || loading_) return;
  if (Row > 0 && (!valid_row(Row) || !rows_.event[static_cast<std::size_t>(Row)])) return;
  if (form_) {
    std::vector<Text> texts = items_.current;
    form_->ControlEnable(texts, items_.hidden);
    items_.hidden.resize(items_.current.size(), false);
  }
  ControlEnable();
}

// ---- Values as a whole -------------------------------------------------------------------

void clsGridCell::LetCurrentText(const std::vector<Text>& X) {
  const std::size_t size = items_.current.size();
  std::vector<Text> texts(X.begin(),
                          X.begin() + static_cast<std::ptrdiff_t>(std::min(size, X.size())));
  texts.resize(size);
  items_.current = std::move(texts);
}

void clsGridCell::LetTextInvalid(const std::vector<bool>& bIn) {
  const std::size_t size = items_.current.size();
  std::vector<bool> marks(bIn.begin(),
                          bIn.begin() + static_cast<std::ptrdiff_t>(std::min(size, bIn.size())));
  marks.resize(size, false);
  items_.hidden = std::move(marks);
}

bool clsGridCell::bLeaveCellCanCelA() {
  if (!ready()) return false;
  take_active_cell();
  if (!leave_current_cell(true)) return true;
  ControlEnableA(current_row_);
  return false;
}

bool clsGridCell::bLeaveCellCanCelB() {
  if (!ready()) return false;
  take_active_cell();
  if (!leave_current_cell(true)) return true;
  ControlEnableB(current_row_);
  return false;
}

}  // namespace zelkora
