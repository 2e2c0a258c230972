// The headless form: the user's actions as the grid control's events.
#include "zelkora/platform/headless/headless_form.h"

#include <algorithm>

namespace zelkora::platform::headless {
namespace {

// The first item of a list that is `text` exactly, or -1.
int32_t item_of(const std::vector<zelkora::Text>& items, const zelkora::Text& text) {
  const auto at = std::find(items.begin(), items.end(), text);
  return at == items.end() ? -1 : static_cast<int32_t>(at - items.begin());
}

}  // namespace

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

// ---- A user's whole actions ------------------------------------------------------

bool HeadlessUser::raise_leave() {
  if (left_) return true;
  const CellRef at = view_.grid.ActiveCell();
  bool cancel = false;
  if (events()) events()->LeaveCell(at.row, at.col, cancel);
  left_ = !cancel;
  // The value taken is what Escape goes back to in an edit of the cell
  // begun without entering it again (after a paste into it, say).
  if (!cancel) {
    entered_at_ = at;
    entered_text_ = known_text_ = view_.grid.Text(at.row, at.col);
  }
  // A refused value keeps its editor open, showing the cell's text selected,
  // unless the value it went back to took its row out of the filter's view.
  if (cancel && at.col == HeadlessForm::kValueCol) {
    editing_ = view_.grid.row_shown(at.row);
    selected_ = editor_focused_ = true;
  }
  return !cancel;
}

void HeadlessUser::make_active(int32_t row, int32_t col) {
  const CellRef was = view_.grid.ActiveCell();
  view_.grid.ActiveCell(row, col);
  entered_text_ = known_text_ = view_.grid.Text(row, col);
  entered_at_ = {row, col};
  left_ = false;
  if (row != was.row && events()) events()->EnterRow();
}

bool HeadlessUser::begin_edit() {
  const CellRef at = view_.grid.ActiveCell();
  if (editing_) return true;
  // A row not shown (folded, hidden, or kept out by the filter while it
  // stays current) is not edited: keys there would change what is not seen.
  if (view_.grid.Locked(at.row) || !view_.grid.row_shown(at.row)) return false;
  bool cancel = false;
  if (events()) events()->BeforeEdit(at.row, at.col, cancel);
  if (cancel) return false;
  editing_ = selected_ = editor_focused_ = true;
  ++editors_opened_;
  list_open_ = false;
  left_ = false;
  // The editor takes as many characters as it opened with, at least the
  // typed most.
  max_length_ = std::max(kMaxTypedLength, view_.grid.Text(at.row, at.col).size());
  return true;
}

void HeadlessUser::take_form_writes() {
  const CellRef at = view_.grid.ActiveCell();
  if (at.row < 0 || at.col < 0 || at.row >= view_.grid.Rows() || at.col >= view_.grid.Cols())
    return;
  const zelkora::Text& now = view_.grid.Text(at.row, at.col);
  if (!(at == entered_at_)) {
    entered_at_ = at;  // made active by the form
    entered_text_ = now;
  } else if (now != known_text_) {
    entered_text_ = now;  // the form wrote into it
  }
  known_text_ = now;
}

void HeadlessUser::change_text(TextView text) {
  const CellRef at = view_.grid.ActiveCell();
  view_.grid.Text(at.row, at.col, text);
  known_text_ = zelkora::Text(text);
  left_ = false;
  if (events()) events()->CellChanging();
}

void HeadlessUser::click(int32_t row, int32_t col) {
  take_form_writes();
  if (list_open_) close_list();  // the click closes it and goes on to the cell
  const CellRef active = view_.grid.ActiveCell();
  const bool same = active == CellRef{row, col};
  if (!same) {
    if (!raise_leave()) return;
    editing_ = false;
    make_active(row, col);
  }
  if (same && editing_) selected_ = editor_focused_ = false;
  if (events()) events()->Click(row, col);
  if (same && !editing_) begin_edit();
}

void HeadlessUser::click_empty() {
  if (list_open_) close_list();  // the click goes on to the grid
  if (editing_) selected_ = editor_focused_ = false;
}

void HeadlessUser::type(TextView text) {
  take_form_writes();
  if (list_open_ && editing_) return;        // the list's own search
  if (editing_ && !editor_focused_) return;  // the grid has the keys
  for (const char16_t c : text) {
    if (!editing_) {
      const int16_t code =
          c < 0x80 ? static_cast<int16_t>(c >= u'a' && c <= u'z' ? c - 32 : c) : int16_t{0};
      if (code > 0 && events()) {
        int16_t key_code = code;
        events()->KeyDown(key_code, 0);
      }
      if (c == u' ' || !begin_edit()) continue;
    }
    // A key replaces the selected text, or goes on the end of it; a full
    // editor takes no more.
    const CellRef at = view_.grid.ActiveCell();
    const zelkora::Text now = view_.grid.Text(at.row, at.col);
    if (!selected_ && now.size() >= max_length_) continue;
    change_text(selected_ ? zelkora::Text(1, c) : now + c);
    selected_ = false;
  }
}

void HeadlessUser::key(Key key) {
  take_form_writes();
  const CellRef at = view_.grid.ActiveCell();
  if (list_open_ && editing_) return list_key(key);
  // The grid has the focus over an open editor: keys that would edit are lost.
  const bool edits = key == kSpace || key == kF2 || key == kF4 || key == kAltDown;
  if (editing_ && !editor_focused_ && edits) return;
  switch (key) {
    case kEscape:
      if (!editing_) return;
      editing_ = false;
      view_.grid.Text(at.row, at.col, entered_text_);
      known_text_ = entered_text_;
      if (events()) events()->CellChanging();
      return;
    case kSpace:
      if (editing_) return type(u" ");
      if (events()) {
        int16_t code = 32;
        events()->KeyDown(code, 0);
      }
      return;
    case kF2:
      begin_edit();
      return;
    case kF4:
    case kAltDown:
      if (view_.grid.CellType(at.row, at.col) != GridControl::kComboCell || !begin_edit()) return;
      if (events()) events()->ComboDropDown();
      list_open_ = true;
      list_item_ = item_of(view_.grid.ComboList(at.row, at.col), view_.grid.Text(at.row, at.col));
      return;
    case kUp:
    case kDown:
      // Out of an editor too: the cell is left through the check, as by Enter.
      if (!raise_leave()) return;
      editing_ = false;
      return move_row(key == kUp ? -1 : 1);
    case kEnter:
    case kTab:
    case kBackTab: {
      if (!raise_leave()) return;
      editing_ = false;
      if (key != kEnter) return advance(at, key == kTab ? 1 : -1, false);
      if (events()) {
        int16_t code = 13;
        events()->KeyDown(code, 0);
      }
      // The form may have moved the focus (to row 0 from the lowest row).
      if (view_.grid.ActiveCell() == at && view_.grid.enter_key_move_to != 0) {
        advance(at, 1, true);
      }
      return;
    }
  }
}

void HeadlessUser::list_key(Key key) {
  const CellRef at = view_.grid.ActiveCell();
  const std::vector<zelkora::Text> items = view_.grid.ComboList(at.row, at.col);
  const int32_t last = static_cast<int32_t>(items.size()) - 1;
  switch (key) {
    case kUp:
    case kDown:
      if (last >= 0)
        list_item_ = list_item_ < 0 ? 0 : std::clamp(list_item_ + (key == kUp ? -1 : 1), 0, last);
      return;
    case kEnter:
    case kF4:
    case kAltDown:
      close_list();
      if (list_item_ >= 0 && list_item_ <= last) pick(items[static_cast<std::size_t>(list_item_)]);
      return;
    case kEscape:
      close_list();
      return;
    default:
      return;
  }
}

void HeadlessUser::pick(TextView text) {
  take_form_writes();
  if (!editing_) return;
  close_list();
  const CellRef at = view_.grid.ActiveCell();
  view_.grid.Text(at.row, at.col, text);
  known_text_ = zelkora::Text(text);
  left_ = false;
  if (events()) events()->ComboClick();
}

void HeadlessUser::select_all() {
  if (editing_) selected_ = true;
}

void HeadlessUser::paste(TextView text) {
  if (!editing_) return;
  const CellRef at = view_.grid.ActiveCell();
  // Nothing to paste over no selected text (none, or an empty one) changes
  // nothing.
  if (text.empty() && (!selected_ || view_.grid.Text(at.row, at.col).empty())) return;
  change_text(selected_ ? zelkora::Text(text)
                        : view_.grid.Text(at.row, at.col) + zelkora::Text(text));
  selected_ = false;
}

void HeadlessUser::other_key(int16_t key_code) {
  if (!editing_ && events()) events()->KeyDown(key_code, 0);
}

bool HeadlessUser::focus_away() {
  if (list_open_) close_list();  // the click goes on to the other control
  // The grid, which had the focus over its open editor, loses it: the
  // editor is not left (it had not the focus to lose).
  if (editing_ && editor_focused_) return leave_cell();
  if (events()) events()->LostFocus();
  return true;
}

void HeadlessUser::advance(CellRef from, int step, bool enter) {
  const int32_t next = view_.grid.next_editable_row(from.row, HeadlessForm::kValueCol, step);
  if (next >= 0) {
    make_active(next, HeadlessForm::kValueCol);
    begin_edit();
    return;
  }
  if (!enter) return;
  const int32_t below = view_.grid.next_shown_row(from.row);
  if (below != from.row) make_active(below, from.col);
}

void HeadlessUser::move_row(int step) {
  const CellRef at = view_.grid.ActiveCell();
  const CellRef to = view_.grid.vertical_step(at, cursor_, step);
  if (!(to == at)) make_active(to.row, to.col);
}

bool HeadlessUser::edit_cell(int32_t row, int32_t col) {
  if (row < 0 || row >= view_.grid.Rows() || col < 0 || col >= view_.grid.Cols()) return false;
  const CellRef active = view_.grid.ActiveCell();
  const bool same = active == CellRef{row, col};
  if (same && editing_) return true;
  if (!same) {
    if (!raise_leave()) return false;
    editing_ = false;
    make_active(row, col);
  }
  return begin_edit();
}

bool HeadlessUser::leave_cell() {
  if (!raise_leave()) return false;
  editing_ = false;
  return true;
}

bool HeadlessUser::type_into(int32_t row, int32_t col, TextView text) {
  if (text.size() > kMaxTypedLength || !edit_cell(row, col)) return false;
  change_text(text);
  selected_ = false;
  return leave_cell();
}

void HeadlessUser::move_to(int32_t row, int32_t col) {
  if (view_.grid.ActiveCell() == CellRef{row, col}) return;
  editing_ = false;
  make_active(row, col);
}

}  // namespace zelkora::platform::headless
